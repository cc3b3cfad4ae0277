// Reads hatches: the one kind of record whose groups mean different things by where they stand.
#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "db/dxf_fields.h"
#include "db/hatch_loop.h"
#include "ge/angles.h"

using headless::CurvePiece;
using headless::DxfTag;

namespace {

double radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

AcGePoint3d lifted(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

/// The parameter sweep of an edge, in (0, 2 pi].
double sweepOf(double start, double end) {
    const double sweep = headless::normalizedAngle(end - start);
    return sweep == 0.0 ? headless::kFullTurn : sweep;
}

} // namespace

/// Goes through the groups in order; each step takes the groups that belong to it.
class AcDbHatch::Reader {
public:
    Reader(AcDbHatch& hatch, AcDbDxfFiler& filer)
        : hatch_(hatch), filer_(filer), tags_(filer.subclass("AcDbHatch")) {}

    void read() {
        readHead();
        while (at(92))
            readLoop();
        readPattern();
    }

private:
    bool done() const { return next_ >= tags_.size(); }
    bool at(int code) const { return !done() && tags_[next_].code == code; }
    const DxfTag& take() { return tags_[next_++]; }
    /// The next group's value when it has that code; else 0, and the group stays.
    double real(int code) { return at(code) ? take().real() : 0.0; }
    std::int64_t integer(int code) { return at(code) ? take().integer() : 0; }
    AcGePoint2d point(int code) {
        const double x = real(code);
        return {x, real(code + 10)};
    }
    /// A stated count, at most that of the groups left.
    std::size_t count(int code) {
        const auto left = static_cast<std::int64_t>(tags_.size());
        return static_cast<std::size_t>(std::clamp<std::int64_t>(integer(code), 0, left));
    }

    void readHead();
    void readLoop();
    void readPolyline(Loop& loop);
    void readEdge(Loop& loop);
    /// Of an arc's ends, counted counter-clockwise.
    struct Angles {
        double start;
        double end;
        bool clockwise;
    };
    Angles readAngles();
    Edge readLine();
    Edge readArc();
    Edge readEllipse();
    void readSpline(Loop& loop);
    void readFit(Edge& edge);
    void readSources(Loop& loop);
    void readPattern();
    void readPatternLine();
    void readSeeds();

    AcDbHatch& hatch_;
    AcDbDxfFiler& filer_;
    std::span<const DxfTag> tags_;
    std::size_t next_ = 0;
};

void AcDbHatch::Reader::readHead() {
    AcGePoint3d elevation;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (; !done() && !at(92) && !at(75); ++next_) {
        const DxfTag& tag = tags_[next_];
        switch (tag.code) {
        case 2:
            hatch_.patternName_ = filer_.text(tag);
            break;
        case 10:
        case 20:
        case 30:
            headless::setCoordinate(elevation, tag);
            break;
        case 70:
            hatch_.solid_ = tag.flag();
            break;
        case 71:
            hatch_.associative_ = tag.flag();
            break;
        case 210:
        case 220:
        case 230:
            headless::setCoordinate(normal, tag);
            break;
        default:
            break;
        }
    }
    hatch_.elevation_ = elevation.z;
    hatch_.normal_ = headless::readNormal(normal);
}

void AcDbHatch::Reader::readLoop() {
    Loop loop;
    loop.type = static_cast<Adesk::Int32>(take().integer());
    if (loop.isPolyline()) {
        readPolyline(loop);
    } else {
        const std::size_t edges = count(93);
        for (std::size_t i = 0; i < edges && at(72); ++i)
            readEdge(loop);
    }
    readSources(loop);
    hatch_.loops_.push_back(std::move(loop));
}

/// The objects that the loop was made from; whatever else stands before the next one is passed by.
void AcDbHatch::Reader::readSources(Loop& loop) {
    for (; !done() && !at(92) && !at(75); ++next_)
        if (at(330)) loop.sources.push_back(filer_.objectId(tags_[next_]));
}

void AcDbHatch::Reader::readPolyline(Loop& loop) {
    for (; at(72) || at(73); ++next_)
        if (at(73)) loop.closed = tags_[next_].flag();
    const std::size_t vertices = count(93);
    loop.vertices.reserve(vertices);
    while (at(10)) {
        loop.vertices.push_back(point(10));
        if (!at(42)) continue;
        loop.bulges.resize(loop.vertices.size());
        loop.bulges.back() = real(42);
    }
}

void AcDbHatch::Reader::readEdge(Loop& loop) {
    const DxfTag& kind = take();
    switch (kind.integer()) {
    case 1:
        loop.edges.push_back(readLine());
        break;
    case 2:
        loop.edges.push_back(readArc());
        break;
    case 3:
        loop.edges.push_back(readEllipse());
        break;
    case 4:
        readSpline(loop);
        break;
    default:
        filer_.report(kind, "no such kind of hatch edge; the rest of the loop is left out");
        break;
    }
}

AcDbHatch::Edge AcDbHatch::Reader::readLine() {
    const AcGePoint2d start = point(10);
    return Edge(Edge::kLine, CurvePiece::segment(lifted(start), lifted(point(11)), 0.0, 1.0));
}

AcDbHatch::Edge AcDbHatch::Reader::readArc() {
    const AcGePoint2d center = point(10);
    const double radius = std::abs(real(40));
    const Angles angles = readAngles();
    Edge edge(Edge::kCircularArc,
              CurvePiece::arc(lifted(center), AcGeVector3d::kXAxis * radius,
                              AcGeVector3d::kYAxis * radius, angles.start,
                              angles.start + sweepOf(angles.start, angles.end)));
    edge.clockwise = angles.clockwise;
    return edge;
}

AcDbHatch::Reader::Angles AcDbHatch::Reader::readAngles() {
    const double start = radians(real(50));
    const double end = radians(real(51));
    // The angles of a clockwise edge count clockwise too.
    if (integer(73) == 0) return {-end, -start, true};
    return {start, end, false};
}

AcDbHatch::Edge AcDbHatch::Reader::readEllipse() {
    const AcGePoint2d center = point(10);
    const AcGeVector2d major = point(11).asVector();
    const double ratio = std::abs(real(40));
    const Angles angles = readAngles();
    // Stated are angles at the centre; a whole ellipse stays whole.
    const auto param = [ratio](double angle) {
        return std::atan2(std::sin(angle), ratio * std::cos(angle));
    };
    const double from = param(angles.start);
    const bool whole = std::abs(angles.end - angles.start) >= headless::kFullTurn - 1e-9;
    const double sweep = whole ? headless::kFullTurn : sweepOf(from, param(angles.end));
    const AcGeVector2d minor = major.perpVector() * ratio;
    Edge edge(Edge::kEllipticArc, CurvePiece::arc(lifted(center), {major.x, major.y, 0.0},
                                                  {minor.x, minor.y, 0.0}, from, from + sweep));
    edge.clockwise = angles.clockwise;
    return edge;
}

void AcDbHatch::Reader::readSpline(Loop& loop) {
    headless::Spline spline;
    spline.degree = static_cast<int>(integer(94));
    integer(73); // rational: its weights tell
    const bool periodic = integer(74) != 0;
    integer(95);
    integer(96);
    while (at(40))
        spline.knots.push_back(real(40));
    while (at(10)) {
        spline.points.push_back(lifted(point(10)));
        if (at(42)) spline.weights.push_back(real(42));
    }
    const bool valid = spline.isValid();
    if (!valid) spline = headless::Spline();
    auto curve = std::make_shared<const headless::Spline>(std::move(spline));
    Edge edge(Edge::kSpline,
              valid ? CurvePiece::spline(std::move(curve)) : CurvePiece::segment({}, {}, 0.0, 1.0));
    edge.periodic = periodic;
    readFit(edge);
    if (valid) loop.edges.push_back(std::move(edge));
}

/// Fit points where there are any; the same group counts the loop's objects.
void AcDbHatch::Reader::readFit(Edge& edge) {
    if (!at(97) || next_ + 1 >= tags_.size() || tags_[next_ + 1].code != 11) return;
    const std::size_t fitPoints = count(97);
    for (std::size_t i = 0; i < fitPoints && at(11); ++i)
        edge.fitPoints.push_back(point(11));
    if (at(12)) edge.startTangent = point(12).asVector();
    if (at(13)) edge.endTangent = point(13).asVector();
}

void AcDbHatch::Reader::readPattern() {
    while (!done()) {
        const DxfTag& tag = take();
        switch (tag.code) {
        case 41:
            hatch_.patternScale_ = tag.real();
            break;
        case 52:
            hatch_.patternAngle_ = radians(tag.real());
            break;
        case 75:
            hatch_.style_ = static_cast<HatchStyle>(std::clamp<std::int64_t>(tag.integer(), 0, 2));
            break;
        case 76:
            hatch_.patternType_ =
                static_cast<HatchPatternType>(std::clamp<std::int64_t>(tag.integer(), 0, 2));
            break;
        case 77:
            hatch_.patternDouble_ = tag.flag();
            break;
        case 53:
            readPatternLine();
            break;
        case 98:
            readSeeds();
            break;
        default:
            break;
        }
    }
}

/// The groups behind the line's angle.
void AcDbHatch::Reader::readPatternLine() {
    PatternLine line;
    line.angle = radians(tags_[next_ - 1].real());
    line.base.x = real(43);
    line.base.y = real(44);
    line.offset.x = real(45);
    line.offset.y = real(46);
    integer(79);
    while (at(49))
        line.dashes.push_back(real(49));
    hatch_.patternLines_.push_back(std::move(line));
}

/// The groups behind the seeds' number.
void AcDbHatch::Reader::readSeeds() {
    while (at(10))
        hatch_.seeds_.push_back(point(10));
}

Acad::ErrorStatus AcDbHatch::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    Reader(*this, *filer).read();
    return Acad::eOk;
}
