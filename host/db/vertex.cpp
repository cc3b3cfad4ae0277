#include "db/vertex.h"

#include <cstdlib>
#include <numbers>

#include "db/dxf_fields.h"
#include "db/geometry_sink.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertex, AcDbEntity)
HEADLESS_DXF_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolygonMeshVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolyFaceMeshVertex, AcDbVertex, "VERTEX")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbFaceRecord, AcDbVertex, "VERTEX")

namespace {

// Bits of a vertex's flags in files.
constexpr std::int64_t kCurveFit = 1;
constexpr std::int64_t kTangent = 2;
constexpr std::int64_t kSplineFit = 8;
constexpr std::int64_t kSplineFrame = 16;

AcDb::Vertex2dType flatType(std::int64_t flags) {
    if ((flags & kSplineFrame) != 0) return AcDb::k2dSplineCtlVertex;
    if ((flags & kSplineFit) != 0) return AcDb::k2dSplineFitVertex;
    return (flags & kCurveFit) != 0 ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

AcDb::Vertex3dType spaceType(std::int64_t flags) {
    if ((flags & kSplineFrame) != 0) return AcDb::k3dControlVertex;
    return (flags & kSplineFit) != 0 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}

} // namespace

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth,
                           double endWidth, double tangent, Adesk::Int32 vertexIdentifier)
    : position_(position), shape_{bulge, startWidth, endWidth}, tangent_(tangent),
      identifier_(vertexIdentifier) {}

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbVertex::dxfInFields(filer); status != Acad::eOk) return status;
    for (const headless::DxfTag& tag : filer->record().all()) {
        switch (tag.code) {
        case 10:
        case 20:
        case 30:
            headless::setCoordinate(position_, tag);
            break;
        case 40:
            shape_.startWidth = tag.real();
            break;
        case 41:
            shape_.endWidth = tag.real();
            break;
        case 42:
            shape_.bulge = tag.real();
            break;
        case 50:
            tangent_ = tag.real() * std::numbers::pi / 180.0;
            break;
        case 70:
            type_ = flatType(tag.integer());
            tangentUsed_ = (tag.integer() & kTangent) != 0;
            break;
        case 91:
            identifier_ = static_cast<Adesk::Int32>(tag.integer());
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

namespace headless {

Acad::ErrorStatus SpaceVertex::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbVertex::dxfInFields(filer); status != Acad::eOk) return status;
    for (const DxfTag& tag : filer->record().all()) {
        switch (tag.code) {
        case 10:
        case 20:
        case 30:
            setCoordinate(position_, tag);
            break;
        case 70:
            type_ = spaceType(tag.integer());
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus SpaceVertex::subTransformBy(const AcGeMatrix3d& transform) {
    position_.transformBy(transform);
    return Acad::eOk;
}

void SpaceVertex::subDescribe(GeometrySink& sink) const { sink.point(position_); }

} // namespace headless

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
