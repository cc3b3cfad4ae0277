#include "db/record_class.h"

#include <algorithm>
#include <array>

#include "db/block_reference.h"
#include "db/dimension.h"
#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "rx/class_dictionary.h"

namespace headless {

namespace {

bool hasMarker(const DxfRecord& record, std::string_view name) {
    const auto tags = record.all();
    return std::any_of(tags.begin(), tags.end(),
                       [name](const DxfTag& tag) { return tag.code == 100 && tag.text() == name; });
}

std::int64_t integerOf(const DxfRecord& record, int code) {
    const DxfTag* const tag = record.find(code);
    return tag == nullptr ? 0 : tag->integer();
}

AcRxClass* polylineClass(std::int64_t flags) {
    if ((flags & 64) != 0) return AcDbPolyFaceMesh::desc();
    if ((flags & 16) != 0) return AcDbPolygonMesh::desc();
    return (flags & 8) != 0 ? AcDb3dPolyline::desc() : AcDb2dPolyline::desc();
}

AcRxClass* vertexClass(std::int64_t flags) {
    constexpr std::int64_t kPolyface = 128;
    constexpr std::int64_t kMesh = 64;
    if ((flags & kPolyface) != 0)
        return (flags & kMesh) != 0 ? AcDbPolyFaceMeshVertex::desc() : AcDbFaceRecord::desc();
    if ((flags & kMesh) != 0) return AcDbPolygonMeshVertex::desc();
    return (flags & 32) != 0 ? AcDb3dPolylineVertex::desc() : AcDb2dVertex::desc();
}

AcRxClass* referenceClass(const DxfRecord& record) {
    const bool array = hasMarker(record, "AcDbMInsertBlock") || integerOf(record, 70) > 1 ||
                       integerOf(record, 71) > 1;
    return array ? AcDbMInsertBlock::desc() : AcDbBlockReference::desc();
}

AcRxClass* dimensionClass(const DxfRecord& record) {
    // A rotated dimension is an aligned one with a marker more.
    if (hasMarker(record, "AcDbRotatedDimension")) return AcDbRotatedDimension::desc();
    const std::array classes = {
        AcDbRotatedDimension::desc(),      AcDbAlignedDimension::desc(),
        AcDb2LineAngularDimension::desc(), AcDbDiametricDimension::desc(),
        AcDbRadialDimension::desc(),       AcDb3PointAngularDimension::desc(),
        AcDbOrdinateDimension::desc()};
    const auto kind = static_cast<std::size_t>(integerOf(record, 70) & 7);
    return kind < classes.size() ? classes[kind] : AcDbRotatedDimension::desc();
}

} // namespace

AcRxClass* classOfRecord(std::string_view dxfName, const DxfRecord& record) {
    if (dxfName == "POLYLINE") return polylineClass(integerOf(record, 70));
    if (dxfName == "VERTEX") return vertexClass(integerOf(record, 70));
    if (dxfName == "INSERT") return referenceClass(record);
    if (dxfName == "DIMENSION") return dimensionClass(record);
    return ClassDictionary::instance().byDxfName(dxfName);
}

} // namespace headless
