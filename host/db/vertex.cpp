#include "db/vertex.h"

#include <cstdlib>
#include <numbers>

#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertex, AcDbEntity)
HEADLESS_DXF_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolygonMeshVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolyFaceMeshVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbFaceRecord, AcDbVertex, "VERTEX")

namespace field = headless::field;

Acad::ErrorStatus AcDbVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status == Acad::eOk) filer->output().subclass("AcDbVertex", {});
    return status;
}

namespace {

// Bits of a vertex's flags in files.
constexpr std::int64_t kCurveFit = 1;
constexpr std::int64_t kTangent = 2;
constexpr std::int64_t kSplineFit = 8;
constexpr std::int64_t kSplineFrame = 16;
constexpr std::int64_t kSpatial = 32;
constexpr std::int64_t kMesh = 64;
constexpr std::int64_t kPolyface = 128;

constexpr std::int16_t kPlaceCodes[] = {10, 20, 30, 70};

AcDb::Vertex2dType flatType(std::int64_t flags) {
    if ((flags & kSplineFrame) != 0) return AcDb::k2dSplineCtlVertex;
    if ((flags & kSplineFit) != 0) return AcDb::k2dSplineFitVertex;
    return (flags & kCurveFit) != 0 ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

AcDb::Vertex3dType spaceType(std::int64_t flags) {
    if ((flags & kSplineFrame) != 0) return AcDb::k3dControlVertex;
    return (flags & kSplineFit) != 0 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}

std::int64_t flagsOf(AcDb::Vertex2dType type) {
    if (type == AcDb::k2dSplineCtlVertex) return kSplineFrame;
    if (type == AcDb::k2dSplineFitVertex) return kSplineFit;
    return type == AcDb::k2dCurveFitVertex ? kCurveFit : 0;
}

std::int64_t flagsOf(AcDb::Vertex3dType type) {
    if (type == AcDb::k3dControlVertex) return kSplineFrame;
    return type == AcDb::k3dFitVertex ? kSplineFit : 0;
}

} // namespace

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth,
                           double endWidth, double tangent, Adesk::Int32 vertexIdentifier)
    : position_(position), shape_{bulge, startWidth, endWidth, true}, tangent_(tangent),
      identifier_(vertexIdentifier) {}

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbVertex::dxfInFields(filer); status != Acad::eOk) return status;
    const auto others = [this](const headless::DxfTag& tag) {
        shape_.ownWidths = shape_.ownWidths || tag.code == 40 || tag.code == 41;
        if (tag.code == 70) type_ = flatType(tag.integer());
        return false;
    };
    field::read(*filer, filer->record().all(), others, field::Point{10, position_},
                field::Real{40, shape_.startWidth}, field::Real{41, shape_.endWidth},
                field::Real{42, shape_.bulge}, field::Angle{50, tangent_},
                field::Bit{70, kTangent, tangentUsed_}, field::Integer{91, identifier_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbVertex::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 40, 41, 42, 50, 70, 91};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDb2dVertex", kCodes);
    out.point(10, position_);
    if (shape_.ownWidths) {
        out.real(40, shape_.startWidth);
        out.real(41, shape_.endWidth);
    }
    out.real(42, shape_.bulge, 0.0);
    out.integer(70, flagsOf(type_) | (tangentUsed_ ? kTangent : 0), 0);
    out.angle(50, tangent_, 0.0);
    if (out.since(headless::DrawingVersion::k2010)) out.integer(91, identifier_, 0);
    return Acad::eOk;
}

namespace headless {

Acad::ErrorStatus SpaceVertex::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbVertex::dxfInFields(filer); status != Acad::eOk) return status;
    const auto type = [this](const DxfTag& tag) {
        if (tag.code == 70) type_ = spaceType(tag.integer());
        return false;
    };
    field::read(*filer, filer->record().all(), field::Point{10, position_}, type);
    return Acad::eOk;
}

Acad::ErrorStatus SpaceVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbVertex::dxfOutFields(filer); status != Acad::eOk) return status;
    DxfOutput& out = filer->output();
    out.subclass(recordKind().marker, kPlaceCodes);
    out.point(10, position_);
    out.integer(70, recordKind().flags | flagsOf(type_));
    return Acad::eOk;
}

Acad::ErrorStatus SpaceVertex::subTransformBy(const AcGeMatrix3d& transform) {
    position_.transformBy(transform);
    return Acad::eOk;
}

void SpaceVertex::subDescribe(GeometrySink& sink) const { sink.point(position_); }

} // namespace headless

headless::SpaceVertex::RecordKind AcDb3dPolylineVertex::recordKind() const {
    return {"AcDb3dPolylineVertex", kSpatial};
}

headless::SpaceVertex::RecordKind AcDbPolygonMeshVertex::recordKind() const {
    return {"AcDbPolygonMeshVertex", kMesh};
}

headless::SpaceVertex::RecordKind AcDbPolyFaceMeshVertex::recordKind() const {
    return {"AcDbPolyFaceMeshVertex", kMesh | kPolyface};
}

Acad::ErrorStatus AcDbFaceRecord::getVertexAt(Adesk::UInt16 index, Adesk::Int16& vertex) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    vertex = look(vertices_)[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFaceRecord::setVertexAt(Adesk::UInt16 index, Adesk::Int16 vertex) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    return change(vertices_[index], vertex);
}

Acad::ErrorStatus AcDbFaceRecord::isEdgeVisibleAt(Adesk::UInt16 index,
                                                  Adesk::Boolean& visible) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    visible = look(vertices_)[index] >= 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFaceRecord::makeEdgeVisibleAt(Adesk::UInt16 index) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    return change(vertices_[index], static_cast<Adesk::Int16>(std::abs(vertices_[index])));
}

Acad::ErrorStatus AcDbFaceRecord::makeEdgeInvisibleAt(Adesk::UInt16 index) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    return change(vertices_[index], static_cast<Adesk::Int16>(-std::abs(vertices_[index])));
}

Acad::ErrorStatus AcDbFaceRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbVertex::dxfInFields(filer); status != Acad::eOk) return status;
    for (const headless::DxfTag& tag : filer->record().all()) {
        if (tag.code < 71 || tag.code > 74) continue;
        vertices_[static_cast<std::size_t>(tag.code - 71)] =
            static_cast<Adesk::Int16>(tag.integer());
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFaceRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 70, 71, 72, 73, 74};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbFaceRecord", kCodes);
    out.point(10, AcGePoint3d::kOrigin);
    out.integer(70, kPolyface);
    for (std::size_t i = 0; i < vertices_.size(); ++i)
        out.integer(71 + static_cast<int>(i), vertices_[i], 0);
    return Acad::eOk;
}
