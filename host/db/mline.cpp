#include "db/mline.h"

#include "db/dxf_fields.h"
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

namespace field = headless::field;

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

void AcDbMline::subDescribe(headless::GeometrySink& sink) const {
    for (std::size_t i = 0; i + 1 < vertices_.size(); ++i)
        sink.segment(vertices_[i].place, vertices_[i + 1].place);
    if (closed_ && !vertices_.empty())
        sink.segment(vertices_.back().place, vertices_.front().place);
}

AcGePoint3d AcDbMline::elementPoint(const Vertex& vertex, std::size_t element) {
    if (element >= vertex.elements.size() || vertex.elements[element].lines.empty())
        return vertex.place;
    return vertex.place + vertex.miter * vertex.elements[element].lines.front();
}

void AcDbMline::explodeElement(headless::NewEntities& parts, std::size_t element,
                               const Vertex& from, const Vertex& to) const {
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
        headless::addPart(parts, *this, std::make_unique<AcDbLine>(turns[i], turns[i + 1]));
}

Acad::ErrorStatus AcDbMline::subExplode(headless::NewEntities& parts) const {
    if (vertices_.size() < 2) return Acad::eDegenerateGeometry;
    const std::size_t elements = std::max<std::size_t>(vertices_.front().elements.size(), 1);
    const AcDbObjectPointer<AcDbMlineStyle> style(style_);
    for (std::size_t element = 0; element < elements; ++element) {
        const std::size_t first = parts.size();
        for (std::size_t i = 0; i + 1 < vertices_.size(); ++i)
            explodeElement(parts, element, vertices_[i], vertices_[i + 1]);
        if (closed_) explodeElement(parts, element, vertices_.back(), vertices_.front());
        double offset = 0.0;
        AcCmColor color;
        AcDbObjectId linetype;
        if (style.openStatus() != Acad::eOk ||
            style->getElementAt(static_cast<int>(element), offset, color, linetype) != Acad::eOk)
            continue;
        for (std::size_t i = first; i < parts.size(); ++i) {
            parts[i]->setColor(color);
            parts[i]->setLinetype(linetype);
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    const auto vertices = [this, filer](const headless::DxfTag& tag) {
        return readVertexGroup(*filer, tag);
    };
    field::read(*filer, filer->subclass("AcDbMline"), vertices, field::Real{40, scale_},
                field::Integer{70, justification_}, field::Bit{71, 2, closed_},
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
    constexpr std::uint32_t kHasVertex = 1;
    constexpr std::uint32_t kClosed = 2;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbMline", kCodes);
    const auto* const style = headless::Residence::peek<AcDbMlineStyle>(style_);
    out.text(2, style == nullptr ? std::wstring_view() : style->nameOf());
    out.handle(340, style_);
    out.real(40, scale_);
    out.integer(70, justification_);
    out.flags(71, (vertices_.empty() ? 0 : kHasVertex) | (closed_ ? kClosed : 0),
              kHasVertex | kClosed);
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
