#include "blocks/reference_clip.h"

#include <dbdict.h>
#include <dbspfilt.h>

#include "frame/object_handle.h"

namespace blocks {
namespace {

AcDbObjectId entryOf(AcDbObjectId dictionaryId, const wchar_t* key) {
    const ReadHandle<AcDbDictionary> dictionary(dictionaryId);
    AcDbObjectId id;
    if (!dictionary || dictionary->getAt(key, id) != Acad::eOk) return AcDbObjectId::kNull;
    return id;
}

std::vector<AcGePoint3d> cornersOf(const AcGePoint2dArray& points) {
    if (points.length() == 2) return rectangle(points[0], points[1]);
    std::vector<AcGePoint3d> corners;
    for (int i = 0; i < points.length(); ++i)
        corners.emplace_back(points[i].x, points[i].y, 0.0);
    return corners;
}

/// Where a point of the block stood in clip space when the reference was clipped.
AcGeMatrix3d blockToClipSpace(const AcDbSpatialFilter& filter) {
    AcGeMatrix3d clipToWorld;
    AcGeMatrix3d worldToBlock;
    filter.getClipSpaceToWCSMatrix(clipToWorld);
    filter.getOriginalInverseBlockXform(worldToBlock);
    return clipToWorld.inverse() * worldToBlock.inverse();
}

} // namespace

std::optional<ClipBoundary> clipOf(const AcDbBlockReference& reference) {
    const AcDbObjectId filters = entryOf(reference.extensionDictionary(), L"ACAD_FILTER");
    const ReadHandle<AcDbSpatialFilter> filter(entryOf(filters, L"SPATIAL"));
    if (!filter) return std::nullopt;
    AcGePoint2dArray points;
    AcGeVector3d normal;
    double elevation = 0.0;
    Adesk::Boolean enabled = Adesk::kFalse;
    ClipBoundary clip;
    filter->getDefinition(points, normal, elevation, clip.front, clip.back, enabled);
    if (!enabled || points.length() < 2) return std::nullopt;
    if (clip.front >= ACDB_INFINITE_XCLIP_DEPTH) clip.front = HUGE_VAL;
    if (clip.back <= -ACDB_INFINITE_XCLIP_DEPTH) clip.back = -HUGE_VAL;
    clip.corners = cornersOf(points);
    clip.inverted = filter->isInverted();
    clip.toClipSpace = blockToClipSpace(*filter);
    return clip;
}

} // namespace blocks
