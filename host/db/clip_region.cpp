#include "db/clip_region.h"

#include "db/dictionary.h"
#include "db/object_pointer.h"
#include "db/residence.h"
#include "db/spatial_filter.h"

namespace headless {

namespace {

AcDbObjectId entryOf(AcDbObjectId dictionaryId, const ACHAR* name) {
    const auto* const dictionary = Residence::peek<AcDbDictionary>(dictionaryId);
    return dictionary == nullptr ? AcDbObjectId() : dictionary->find(name);
}

/// Two points stand for the rectangle between them.
std::vector<AcGePoint2d> polygonOf(const AcGePoint2dArray& points) {
    if (points.length() == 2)
        return {points[0], {points[1].x, points[0].y}, points[1], {points[0].x, points[1].y}};
    return {points.begin(), points.end()};
}

} // namespace

std::optional<ClipRegion> clipRegionOf(const AcDbEntity& reference) {
    const AcDbObjectId extension = reference.extensionDictionary();
    if (extension.isNull()) return std::nullopt;
    const AcDbObjectPointer<AcDbSpatialFilter> filter(
        entryOf(entryOf(extension, L"ACAD_FILTER"), L"SPATIAL"), AcDb::kForRead);
    if (filter.openStatus() != Acad::eOk) return std::nullopt;
    AcGePoint2dArray points;
    AcGeVector3d normal;
    double elevation = 0.0;
    double front = 0.0;
    double back = 0.0;
    Adesk::Boolean enabled = false;
    filter->getDefinition(points, normal, elevation, front, back, enabled);
    if (!enabled || points.length() < 2) return std::nullopt;

    AcGeMatrix3d toWorld;
    AcGeMatrix3d toBlock;
    filter->getClipSpaceToWCSMatrix(toWorld);
    filter->getOriginalInverseBlockXform(toBlock);
    ClipRegion region{{}, filter->isInverted()};
    for (const AcGePoint2d& point : polygonOf(points))
        region.boundary.push_back(toBlock * (toWorld * AcGePoint3d(point.x, point.y, 0.0)));
    return region;
}

} // namespace headless
