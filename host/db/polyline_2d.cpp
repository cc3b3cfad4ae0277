#include "db/polyline_2d.h"

#include <memory>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"
#include "db/wide_chain.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, "POLYLINE")

using headless::CurvePiece;
namespace field = headless::field;

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation,
                               Adesk::Boolean closed, double defaultStartWidth,
                               double defaultEndWidth, AcGeDoubleArray* bulges)
    : elevation_(elevation), startWidth_(defaultStartWidth), endWidth_(defaultEndWidth),
      type_(type), closed_(closed) {
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges != nullptr && i < bulges->length() ? bulges->at(i) : 0.0;
        appendVertex(new AcDb2dVertex(vertices[i], bulge, defaultStartWidth, defaultEndWidth));
    }
}

Acad::ErrorStatus AcDb2dPolyline::length(double& length) const {
    double end = 0.0;
    const Acad::ErrorStatus status = getEndParam(end);
    return status == Acad::eOk ? getDistAtParam(end, length) : status;
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
    return vertices_.append(*this, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
    return vertices_.append(*this, vertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(const AcDb2dVertex* before, AcDb2dVertex* vertex) {
    if (before == nullptr) return vertices_.insert(*this, 0, vertex);
    const std::size_t index = vertices_.find(before);
    if (index == vertices_.size()) return Acad::eInvalidInput;
    return vertices_.insert(*this, index + 1, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(AcDbObjectId& id, const AcDbObjectId& before,
                                                 AcDb2dVertex* vertex) {
    if (database() == nullptr) return Acad::eNotInDatabase;
    const auto* const previous = headless::Residence::peek<AcDb2dVertex>(before);
    if (previous == nullptr && !before.isNull()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = insertVertexAt(previous, vertex);
    if (status == Acad::eOk) id = vertex->objectId();
    return status;
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    return vertices_.open(vertex, id, mode, openErased);
}

Acad::ErrorStatus AcDb2dPolyline::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) {
    return vertices_.openSequenceEnd(end, mode);
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const {
    assertReadEnabled();
    return vertices_.newIterator();
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    return toWorld(vertex.position());
}

AcGePoint3d AcDb2dPolyline::toWorld(const AcGePoint3d& position) const {
    // The polyline's own elevation counts whatever z a vertex has.
    return headless::ocsToWorld({position.x, position.y, elevation_}, normal_);
}

bool AcDb2dPolyline::takesSubentity(const AcDbEntity& part) const {
    return part.isKindOf(AcDb2dVertex::desc()) || part.isKindOf(AcDbSequenceEnd::desc());
}

Acad::ErrorStatus AcDb2dPolyline::reverseCurve() {
    assertWriteEnabled();
    // A vertex shapes the segment that leaves it, so each takes the shape of the one before it. The
    // first one's new segment is the closing one, which the last shaped.
    const AcDb2dVertex* last = nullptr;
    vertices_.forEach<AcDb2dVertex>([&](const AcDb2dVertex& vertex) { last = &vertex; });
    if (last == nullptr) return Acad::eOk;
    AcDb2dVertex::Shape before = last->shape_;
    vertices_.change<AcDb2dVertex>([&](AcDb2dVertex& vertex) {
        const AcDb2dVertex::Shape own = vertex.shape_;
        vertex.shape_ = before.reversed();
        before = own;
    });
    vertices_.reverse();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    assertReadEnabled();
    plane = AcGePlane(toWorld(AcGePoint3d::kOrigin), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDb2dPolyline::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

bool AcDb2dPolyline::forEachPiece(const headless::PieceVisitor& visit) const {
    const AcDb2dVertex* first = nullptr;
    const AcDb2dVertex* previous = nullptr;
    double param = 0.0;
    bool goesOn = true;
    const auto join = [&](const AcDb2dVertex& from, const AcDb2dVertex& to) {
        const AcGePoint3d start = toWorld(from.position_);
        const AcGePoint3d end = toWorld(to.position_);
        goesOn = from.shape_.bulge == 0.0
                     ? visit(CurvePiece::segment(start, end, param, param + 1.0))
                     : visit(CurvePiece::bulgeArc(start, end, normal_, from.shape_.bulge, param,
                                                  param + 1.0));
        param += 1.0;
    };
    vertices_.forEach<AcDb2dVertex>([&](const AcDb2dVertex& vertex) {
        if (!goesOn || vertex.type_ == AcDb::k2dSplineCtlVertex) return;
        if (first == nullptr) first = &vertex;
        if (previous != nullptr) join(*previous, vertex);
        previous = &vertex;
    });
    if (!goesOn || first == nullptr) return goesOn;
    if (first == previous) {
        const AcGePoint3d only = toWorld(first->position_);
        return visit(CurvePiece::segment(only, only, 0.0, 0.0));
    }
    if (closed_) join(*previous, *first);
    return goesOn;
}

headless::WideSegment AcDb2dPolyline::wideSegment(const AcDb2dVertex& from,
                                                  const AcDb2dVertex& to) const {
    const AcDb2dVertex::Shape& shape = from.shape_;
    return {{{from.position_.x, from.position_.y}, {to.position_.x, to.position_.y}, shape.bulge},
            shape.ownWidths ? shape.startWidth : startWidth_,
            shape.ownWidths ? shape.endWidth : endWidth_};
}

void AcDb2dPolyline::subDescribe(headless::GeometrySink& sink) const {
    AcDbCurve::subDescribe(sink);
    const AcDb2dVertex* first = nullptr;
    const AcDb2dVertex* previous = nullptr;
    std::vector<headless::WideSegment> segments;
    vertices_.forEach<AcDb2dVertex>([&](const AcDb2dVertex& vertex) {
        if (vertex.type_ == AcDb::k2dSplineCtlVertex) return;
        if (first == nullptr) first = &vertex;
        if (previous != nullptr) segments.push_back(wideSegment(*previous, vertex));
        previous = &vertex;
    });
    if (first != nullptr && closed_) segments.push_back(wideSegment(*previous, *first));
    headless::describeWide(sink, segments, closed_, elevation_, normal_);
}

Acad::ErrorStatus AcDb2dPolyline::subErase(bool erasing) {
    vertices_.erase(erasing);
    return AcDbCurve::subErase(erasing);
}

Acad::ErrorStatus AcDb2dPolyline::subExplode(headless::NewEntities& parts) const {
    return explodePieces(parts, normal_, thickness_);
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    bool bulging = false;
    vertices_.forEach<AcDb2dVertex>(
        [&](const AcDb2dVertex& vertex) { bulging = bulging || vertex.shape_.bulge != 0.0; });
    if (bulging && !flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;

    const double height = (flat.local() * AcGePoint3d(0.0, 0.0, elevation_)).z;
    vertices_.change<AcDb2dVertex>([&](AcDb2dVertex& vertex) {
        vertex.position_.z = elevation_;
        vertex.position_.transformBy(flat.local());
        vertex.shape_.startWidth *= flat.scale();
        vertex.shape_.endWidth *= flat.scale();
        vertex.tangent_ = flat.angle(vertex.tangent_);
    });
    elevation_ = height;
    normal_ = flat.normal();
    thickness_ *= flat.normalScale();
    startWidth_ *= flat.scale();
    endWidth_ *= flat.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    vertices_.forEach<AcDb2dVertex>(
        [&](const AcDb2dVertex& vertex) { points.append(toWorld(vertex.position_)); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    const auto kind = [this](const headless::DxfTag& tag) {
        if (tag.code == 70) readFlags(tag.integer());
        if (tag.code == 75 && tag.integer() == 5) type_ = AcDb::k2dQuadSplinePoly;
        if (tag.code == 75 && tag.integer() == 6) type_ = AcDb::k2dCubicSplinePoly;
        return false;
    };
    field::read(*filer, filer->record().all(), kind, field::Real{30, elevation_},
                field::Real{39, thickness_}, field::Real{40, startWidth_},
                field::Real{41, endWidth_}, field::Normal{normal_});
    return Acad::eOk;
}

void AcDb2dPolyline::readFlags(std::int64_t flags) {
    closed_ = (flags & 1) != 0;
    if ((flags & 2) != 0) type_ = AcDb::k2dFitCurvePoly;
    if ((flags & 4) != 0 && type_ == AcDb::k2dSimplePoly) type_ = AcDb::k2dCubicSplinePoly;
    linetypeGeneration_ = (flags & 128) != 0;
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 39, 40, 41, 66, 70, 75, 210, 220, 230};
    constexpr int kQuadratic = 5;
    constexpr int kCubic = 6;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDb2dPolyline", kCodes);
    out.integer(66, 1); // vertices follow
    out.point(10, AcGePoint3d(0.0, 0.0, elevation_));
    out.real(39, thickness_, 0.0);
    out.integer(70, flags(), 0);
    out.real(40, startWidth_, 0.0);
    out.real(41, endWidth_, 0.0);
    if (type_ == AcDb::k2dQuadSplinePoly) out.integer(75, kQuadratic);
    if (type_ == AcDb::k2dCubicSplinePoly) out.integer(75, kCubic);
    out.normal(normal_);
    return Acad::eOk;
}

std::int64_t AcDb2dPolyline::flags() const {
    std::int64_t flags = closed_ ? 1 : 0;
    if (type_ == AcDb::k2dFitCurvePoly) flags |= 2;
    if (type_ == AcDb::k2dQuadSplinePoly || type_ == AcDb::k2dCubicSplinePoly) flags |= 4;
    if (linetypeGeneration_) flags |= 128;
    return flags;
}
