#include "db/mline.h"

#include <algorithm>
#include <array>
#include <numbers>

#include "db/arc.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/line.h"
#include "db/mline_style.h"
#include "db/named_fields.h"
#include "db/object_pointer.h"
#include "db/residence.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMline, AcDbEntity, "MLINE")

using headless::CurvePiece;
using headless::Residence;
namespace field = headless::field;

namespace {

// Bits of a multiline's flags.
constexpr std::uint32_t kHasVertex = 1;
constexpr std::uint32_t kClosed = 2;
constexpr std::uint32_t kNoStartCaps = 4;
constexpr std::uint32_t kNoEndCaps = 8;

} // namespace

AcGePoint3d AcDbMline::vertexAt(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < look(vertices_).size() ? vertices_[at].place : AcGePoint3d();
}

void AcDbMline::Vertex::transformBy(const AcGeMatrix3d& transform, double scale) {
    place.transformBy(transform);
    for (AcGeVector3d* const vector : {&direction, &miter}) {
        const AcGeVector3d turned = transform * *vector;
        if (!turned.isZeroLength()) *vector = turned.normal();
    }
    for (Element& element : elements)
        for (std::vector<double>* const lengths : {&element.lines, &element.fills})
            for (double& length : *lengths)
                length *= scale;
}

Acad::ErrorStatus AcDbMline::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    for (Vertex& vertex : vertices_)
        vertex.transformBy(transform, flat.scale());
    normal_ = flat.normal();
    scale_ *= flat.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const Vertex& vertex : vertices_)
        points.append(vertex.place);
    return Acad::eOk;
}

std::size_t AcDbMline::elementCount() const {
    return vertices_.empty() ? 0 : std::max<std::size_t>(vertices_.front().elements.size(), 1);
}

template <class Visit>
void AcDbMline::forEachSegment(const Visit& visit) const {
    for (std::size_t i = 0; i + 1 < vertices_.size(); ++i)
        visit(vertices_[i], vertices_[i + 1]);
    if (closed_ && vertices_.size() > 1) visit(vertices_.back(), vertices_.front());
}

std::optional<AcCmEntityColor> AcDbMline::fillOf() const {
    const auto* const style = Residence::peek<AcDbMlineStyle>(style_);
    if (style == nullptr || (style->statesOf() & AcDbMlineStyle::kFilled) == 0) return std::nullopt;
    return style->fillColorOf();
}

void AcDbMline::subDescribe(headless::GeometrySink& sink) const {
    for (const Stroke& stroke : strokes())
        sink.curve(stroke.piece);
    if (!fillOf()) return;
    const std::size_t last = elementCount() - 1;
    forEachSegment([&](const Vertex& from, const Vertex& to) {
        sink.area(std::array{elementPoint(from, 0), elementPoint(to, 0), elementPoint(to, last),
                             elementPoint(from, last)});
    });
}

AcGePoint3d AcDbMline::elementPoint(const Vertex& vertex, std::size_t element) {
    if (element >= vertex.elements.size() || vertex.elements[element].lines.empty())
        return vertex.place;
    return vertex.place + vertex.miter * vertex.elements[element].lines.front();
}

void AcDbMline::addElement(std::vector<Stroke>& strokes, std::size_t element, const Vertex& from,
                           const Vertex& to) {
    const AcGePoint3d start = elementPoint(from, element);
    const AcGePoint3d end = elementPoint(to, element);
    // The first length is the miter's; the others tell in turn where the line begins and breaks.
    std::vector<AcGePoint3d> turns;
    if (element < from.elements.size()) {
        const std::vector<double>& lengths = from.elements[element].lines;
        for (std::size_t i = 1; i < lengths.size(); ++i)
            turns.push_back(start + from.direction * lengths[i]);
    }
    if (turns.empty()) turns.push_back(start);
    if (turns.size() % 2 == 1) turns.push_back(end);
    for (std::size_t i = 0; i < turns.size(); i += 2)
        strokes.push_back({element, CurvePiece::segment(turns[i], turns[i + 1], 0.0, 1.0)});
}

void AcDbMline::addCaps(std::vector<Stroke>& strokes, const Vertex& end,
                        const AcGeVector3d& outward, const Caps& caps) const {
    const std::size_t last = elementCount() - 1;
    if (last == 0) return;
    const auto addArc = [&](std::size_t from, std::size_t to) {
        const AcGePoint3d start = elementPoint(end, from);
        const AcGePoint3d stop = elementPoint(end, to);
        const double bulge =
            (stop - start).crossProduct(normal_).dotProduct(outward) < 0.0 ? -1 : 1;
        strokes.push_back({from, CurvePiece::bulgeArc(start, stop, normal_, bulge, 0.0, 1.0)});
    };
    if (caps.line)
        strokes.push_back(
            {0, CurvePiece::segment(elementPoint(end, 0), elementPoint(end, last), 0.0, 1.0)});
    if (caps.outerArc) addArc(0, last);
    if (caps.innerArcs)
        for (std::size_t i = 1; i < last - i; ++i)
            addArc(i, last - i);
}

std::vector<AcDbMline::Stroke> AcDbMline::strokes() const {
    std::vector<Stroke> strokes;
    if (vertices_.size() < 2) return strokes;
    const std::size_t elements = elementCount();
    for (std::size_t element = 0; element < elements; ++element)
        forEachSegment(
            [&](const Vertex& from, const Vertex& to) { addElement(strokes, element, from, to); });
    const auto* const style = Residence::peek<AcDbMlineStyle>(style_);
    if (style == nullptr) return strokes;
    const auto shows = [style](AcDbMlineStyle::State state) {
        return (style->statesOf() & state) != 0;
    };
    if (shows(AcDbMlineStyle::kShowMiters))
        for (std::size_t i = closed_ ? 0 : 1; i + (closed_ ? 0 : 1) < vertices_.size(); ++i)
            addCaps(strokes, vertices_[i], {}, {true, false, false});
    if (closed_) return strokes;
    using Style = AcDbMlineStyle;
    if (startCaps_)
        addCaps(strokes, vertices_.front(), -vertices_.front().direction,
                {shows(Style::kStartSquareCap), shows(Style::kStartRoundCap),
                 shows(Style::kStartInnerArcs)});
    if (endCaps_)
        addCaps(
            strokes, vertices_.back(), vertices_[vertices_.size() - 2].direction,
            {shows(Style::kEndSquareCap), shows(Style::kEndRoundCap), shows(Style::kEndInnerArcs)});
    return strokes;
}

std::unique_ptr<AcDbEntity> AcDbMline::partOf(const CurvePiece& piece) const {
    if (piece.kind() == CurvePiece::Kind::segment)
        return std::make_unique<AcDbLine>(piece.start(), piece.end());
    // An arc begins where the way round the normal leads.
    const AcGePoint3d start = piece.bulge() < 0.0 ? piece.end() : piece.start();
    const AcGePoint3d middle = piece.start() + (piece.end() - piece.start()) / 2.0;
    const AcGeVector3d from = headless::ocsMatrix(normal_).transpose() * (start - middle);
    const double angle = AcGeVector2d(from.x, from.y).angle();
    return std::make_unique<AcDbArc>(middle, normal_, from.length(), angle,
                                     angle + std::numbers::pi);
}

Acad::ErrorStatus AcDbMline::subExplode(headless::NewEntities& parts) const {
    if (vertices_.size() < 2) return Acad::eDegenerateGeometry;
    const AcDbObjectPointer<AcDbMlineStyle> style(style_);
    for (const Stroke& stroke : strokes()) {
        AcDbEntity& part = headless::addPart(parts, *this, partOf(stroke.piece));
        double offset = 0.0;
        AcCmColor color;
        AcDbObjectId linetype;
        if (style.openStatus() != Acad::eOk ||
            style->getElementAt(static_cast<int>(stroke.element), offset, color, linetype) !=
                Acad::eOk)
            continue;
        part.setColor(color);
        part.setLinetype(linetype);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    const auto vertices = [this, filer](const headless::DxfTag& tag) {
        if (tag.code == 71) {
            startCaps_ = (tag.integer() & kNoStartCaps) == 0;
            endCaps_ = (tag.integer() & kNoEndCaps) == 0;
        }
        return readVertexGroup(*filer, tag);
    };
    field::read(*filer, filer->subclass("AcDbMline"), vertices, field::Real{40, scale_},
                field::Integer{70, justification_}, field::Bit{71, kClosed, closed_},
                field::Normal{normal_}, field::Id{340, style_});
    return Acad::eOk;
}

/// Reads a group that belongs to the vertex begun last; false for others.
bool AcDbMline::readVertexGroup(AcDbDxfFiler& filer, const headless::DxfTag& tag) {
    if (tag.code == 11) vertices_.emplace_back();
    if (vertices_.empty()) return false;
    Vertex& vertex = vertices_.back();
    if (field::Point{11, vertex.place}.take(tag, filer) ||
        field::Point{12, vertex.direction}.take(tag, filer) ||
        field::Point{13, vertex.miter}.take(tag, filer))
        return true;
    switch (tag.code) {
    case 74: // how many lengths follow
        vertex.elements.emplace_back();
        return true;
    case 41:
        if (!vertex.elements.empty()) vertex.elements.back().lines.push_back(tag.real());
        return true;
    case 42:
        if (!vertex.elements.empty()) vertex.elements.back().fills.push_back(tag.real());
        return true;
    default:
        return false;
    }
}

Acad::ErrorStatus AcDbMline::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 30, 11,  21,  31,  12, 22,
                                              32, 13, 23, 33, 40,  41,  42,  70, 71,
                                              72, 73, 74, 75, 210, 220, 230, 340};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbMline", kCodes);
    const auto* const style = Residence::peek<AcDbMlineStyle>(style_);
    out.text(2, style == nullptr ? std::wstring_view() : style->nameOf());
    out.handle(340, style_);
    out.real(40, scale_);
    out.integer(70, justification_);
    out.flags(71,
              (vertices_.empty() ? 0 : kHasVertex) | (closed_ ? kClosed : 0) |
                  (startCaps_ ? 0 : kNoStartCaps) | (endCaps_ ? 0 : kNoEndCaps),
              kHasVertex | kClosed | kNoStartCaps | kNoEndCaps);
    out.integer(72, std::ssize(vertices_));
    out.integer(73, vertices_.empty() ? 0 : std::ssize(vertices_.front().elements));
    out.point(10, vertices_.empty() ? AcGePoint3d() : vertices_.front().place);
    out.point(210, normal_);
    for (const Vertex& vertex : vertices_)
        vertex.write(out);
    return Acad::eOk;
}

void AcDbMline::Vertex::write(headless::DxfOutput& out) const {
    out.point(11, place);
    out.point(12, direction);
    out.point(13, miter);
    for (const Element& element : elements) {
        out.integer(74, std::ssize(element.lines));
        for (const double length : element.lines)
            out.real(41, length);
        out.integer(75, std::ssize(element.fills));
        for (const double length : element.fills)
            out.real(42, length);
    }
}

void AcDbMline::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(style_, headless::ReferenceKind::kHardPointer);
}
