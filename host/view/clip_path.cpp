#include "view/clip_path.h"

#include "db/block_reference.h"
#include "db/dictionary.h"
#include "db/object_pointer.h"
#include "db/residence.h"
#include "db/spatial_filter.h"

namespace headless {
namespace {

/// Null when the reference has none.
AcDbObjectId filterOf(const AcDbBlockReference& reference) {
    const auto* const extensions = Residence::peek<AcDbDictionary>(reference.extensionDictionary());
    if (extensions == nullptr) return {};
    const auto* const filters = Residence::peek<AcDbDictionary>(extensions->find(L"ACAD_FILTER"));
    return filters == nullptr ? AcDbObjectId() : filters->find(L"SPATIAL");
}

/// The corners of a boundary given by two opposite ones.
void completeRectangle(AcGePoint2dArray& points) {
    if (points.length() != 2) return;
    const AcGePoint2d first = points[0];
    const AcGePoint2d opposite = points[1];
    points.insertAt(1, AcGePoint2d(opposite.x, first.y));
    points.append(AcGePoint2d(first.x, opposite.y));
}

void addSheet(Canvas& canvas) {
    canvas.moveTo({0.0, 0.0});
    canvas.lineTo({canvas.width(), 0.0});
    canvas.lineTo({canvas.width(), canvas.height()});
    canvas.lineTo({0.0, canvas.height()});
    canvas.closePath();
}

void clipTo(Canvas& canvas, const SheetMap& map, const AcDbSpatialFilter& filter,
            const AcGeMatrix3d& blockToWorld) {
    AcGePoint2dArray points;
    AcGeVector3d normal;
    double elevation = 0.0;
    double front = 0.0;
    double back = 0.0;
    Adesk::Boolean enabled = false;
    if (filter.getDefinition(points, normal, elevation, front, back, enabled) != Acad::eOk ||
        !enabled || points.length() < 2)
        return;
    completeRectangle(points);
    AcGeMatrix3d clipToWorld;
    AcGeMatrix3d worldToBlock;
    const AcGeMatrix3d toWorld = blockToWorld * filter.getOriginalInverseBlockXform(worldToBlock) *
                                 filter.getClipSpaceToWCSMatrix(clipToWorld);
    if (filter.isInverted()) addSheet(canvas);
    for (int i = 0; i < points.length(); ++i) {
        const AcGePoint2d corner = map(toWorld * AcGePoint3d(points[i].x, points[i].y, 0.0));
        if (i == 0)
            canvas.moveTo(corner);
        else
            canvas.lineTo(corner);
    }
    canvas.closePath();
    canvas.clip();
}

} // namespace

void clipTo(Canvas& canvas, const SheetMap& map, const AcDbBlockReference& reference,
            const AcGeMatrix3d& blockToWorld) {
    AcDbSpatialFilter* filter = nullptr;
    if (acdbOpenObject(filter, filterOf(reference), AcDb::kForRead) != Acad::eOk) return;
    clipTo(canvas, map, *filter, blockToWorld);
    filter->close();
}

} // namespace headless
