// Writes hatches, whose groups mean different things by where they stand.
#include <algorithm>
#include <cmath>

#include "db/dxf_output.h"
#include "db/hatch_loop.h"
#include "ge/angles.h"

using headless::CurvePiece;
using headless::DrawingVersion;
using headless::DxfOutput;

namespace {

AcGePoint2d flat(const AcGePoint3d& point) { return {point.x, point.y}; }
AcGePoint2d flat(const AcGeVector3d& vector) { return {vector.x, vector.y}; }
AcGePoint2d flat(const AcGeVector2d& vector) { return {vector.x, vector.y}; }

/// The angle at the centre of a point of an ellipse, whole turns kept: it is never as much as a
/// quarter turn from the parameter.
double centerAngle(double param, double ratio) {
    const double x = std::cos(param);
    const double y = std::sin(param);
    return param + std::atan2((ratio - 1.0) * x * y, x * x + ratio * y * y);
}

} // namespace

class AcDbHatch::Writer {
public:
    Writer(const AcDbHatch& hatch, DxfOutput& out) : hatch_(hatch), out_(out) {}

    void write() const {
        writeHead();
        for (const Loop& loop : hatch_.loops_)
            writeLoop(loop);
        writePattern();
        out_.integer(98, std::ssize(hatch_.seeds_));
        for (const AcGePoint2d& seed : hatch_.seeds_)
            out_.point(10, seed);
    }

private:
    void writeHead() const;
    void writeLoop(const Loop& loop) const;
    void writePolyline(const Loop& loop) const;
    void writeEdge(const Edge& edge) const;
    void writeCircularArc(const Edge& edge) const;
    void writeEllipticArc(const Edge& edge) const;
    void writeAngles(double start, double end, bool clockwise) const;
    void writeSpline(const Edge& edge) const;
    void writePattern() const;

    const AcDbHatch& hatch_;
    DxfOutput& out_;
};

void AcDbHatch::Writer::writeHead() const {
    out_.point(10, AcGePoint3d(0.0, 0.0, hatch_.elevation_));
    out_.point(210, hatch_.normal_);
    out_.text(2, hatch_.patternName_);
    out_.integer(70, hatch_.solid_ ? 1 : 0);
    out_.integer(71, hatch_.associative_ ? 1 : 0);
    out_.integer(91, std::ssize(hatch_.loops_));
}

void AcDbHatch::Writer::writeLoop(const Loop& loop) const {
    out_.integer(92, loop.type);
    if (loop.isPolyline()) {
        writePolyline(loop);
    } else {
        out_.integer(93, std::ssize(loop.edges));
        for (const Edge& edge : loop.edges)
            writeEdge(edge);
    }
    const auto gone = [](AcDbObjectId id) { return id.isErased(); };
    out_.integer(97, std::ssize(loop.sources) -
                         std::count_if(loop.sources.begin(), loop.sources.end(), gone));
    for (const AcDbObjectId id : loop.sources)
        if (!gone(id)) out_.handle(330, id);
}

void AcDbHatch::Writer::writePolyline(const Loop& loop) const {
    out_.integer(72, loop.bulges.empty() ? 0 : 1);
    out_.integer(73, loop.closed ? 1 : 0);
    out_.integer(93, std::ssize(loop.vertices));
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        out_.point(10, loop.vertices[i]);
        if (!loop.bulges.empty()) out_.real(42, i < loop.bulges.size() ? loop.bulges[i] : 0.0);
    }
}

void AcDbHatch::Writer::writeEdge(const Edge& edge) const {
    out_.integer(72, edge.kind);
    switch (edge.kind) {
    case Edge::kLine:
        out_.point(10, flat(edge.piece.start()));
        out_.point(11, flat(edge.piece.end()));
        break;
    case Edge::kCircularArc:
        writeCircularArc(edge);
        break;
    case Edge::kEllipticArc:
        writeEllipticArc(edge);
        break;
    case Edge::kSpline:
        writeSpline(edge);
        break;
    }
}

void AcDbHatch::Writer::writeCircularArc(const Edge& edge) const {
    const CurvePiece& arc = edge.piece;
    // Angles are counted from the x axis, the parameter from where the first axis was turned to.
    const double turn = std::atan2(arc.firstAxis().y, arc.firstAxis().x);
    out_.point(10, flat(arc.center()));
    out_.real(40, arc.firstAxis().length());
    writeAngles(arc.startParam() + turn, arc.endParam() + turn, edge.clockwise);
}

void AcDbHatch::Writer::writeEllipticArc(const Edge& edge) const {
    const CurvePiece& arc = edge.piece;
    const double major = arc.firstAxis().length();
    const double ratio = major > 0.0 ? arc.secondAxis().length() / major : 1.0;
    out_.point(10, flat(arc.center()));
    out_.point(11, flat(arc.firstAxis()));
    out_.real(40, ratio);
    writeAngles(centerAngle(arc.startParam(), ratio), centerAngle(arc.endParam(), ratio),
                edge.clockwise);
}

/// Angles counted counter-clockwise; those of a clockwise edge are written counting clockwise. The
/// first is in [0, 360) degrees, the second up to a turn ahead and not beyond 360 unless the arc
/// is whole.
void AcDbHatch::Writer::writeAngles(double start, double end, bool clockwise) const {
    constexpr double kWhole = 360.0;
    const double sweep = headless::degreesOf(end - start);
    double first = std::fmod(headless::degreesOf(clockwise ? -end : start), kWhole);
    if (first < 0.0) first += kWhole;
    double second = first + sweep;
    if (second > kWhole && sweep < kWhole) second -= kWhole;
    out_.real(50, first);
    out_.real(51, second);
    out_.integer(73, clockwise ? 0 : 1);
}

void AcDbHatch::Writer::writeSpline(const Edge& edge) const {
    const headless::Spline& curve = edge.piece.curve();
    out_.integer(94, curve.degree);
    out_.integer(73, curve.weights.empty() ? 0 : 1);
    out_.integer(74, edge.periodic ? 1 : 0);
    out_.integer(95, std::ssize(curve.knots));
    out_.integer(96, std::ssize(curve.points));
    for (const double knot : curve.knots)
        out_.real(40, knot);
    for (std::size_t i = 0; i < curve.points.size(); ++i) {
        out_.point(10, flat(curve.points[i]));
        if (!curve.weights.empty()) out_.real(42, curve.weights[i]);
    }
    // Older files state a number of fit points only where there are any.
    if (edge.fitPoints.empty() && !out_.since(DrawingVersion::k2010)) return;
    out_.integer(97, std::ssize(edge.fitPoints));
    for (const AcGePoint2d& point : edge.fitPoints)
        out_.point(11, point);
    if (edge.fitPoints.empty()) return;
    out_.point(12, flat(edge.startTangent));
    out_.point(13, flat(edge.endTangent));
}

void AcDbHatch::Writer::writePattern() const {
    out_.integer(75, hatch_.style_);
    out_.integer(76, hatch_.patternType_);
    if (hatch_.solid_) return;
    out_.angle(52, hatch_.patternAngle_);
    out_.real(41, hatch_.patternScale_);
    out_.integer(77, hatch_.patternDouble_ ? 1 : 0);
    out_.integer(78, std::ssize(hatch_.patternLines_));
    for (const PatternLine& line : hatch_.patternLines_) {
        out_.angle(53, line.angle);
        out_.real(43, line.base.x);
        out_.real(44, line.base.y);
        out_.real(45, line.offset.x);
        out_.real(46, line.offset.y);
        out_.integer(79, std::ssize(line.dashes));
        for (const double dash : line.dashes)
            out_.real(49, dash);
    }
}

Acad::ErrorStatus AcDbHatch::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {
        2,  10, 20, 30, 11, 21, 12, 22, 13, 23, 40, 41, 42, 43, 44, 45, 46, 49, 50,  51,  52,  53,
        70, 71, 72, 73, 74, 75, 76, 77, 78, 79, 91, 92, 93, 94, 95, 96, 97, 98, 210, 220, 230, 330};
    filer->output().subclass("AcDbHatch", kCodes);
    Writer(*this, filer->output()).write();
    return Acad::eOk;
}
