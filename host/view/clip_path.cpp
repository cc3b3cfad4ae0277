#include "view/clip_path.h"

#include "db/block_reference.h"
#include "db/clip_region.h"

namespace headless {
namespace {

void addSheet(Canvas& canvas) {
    canvas.moveTo({0.0, 0.0});
    canvas.lineTo({canvas.width(), 0.0});
    canvas.lineTo({canvas.width(), canvas.height()});
    canvas.lineTo({0.0, canvas.height()});
    canvas.closePath();
}

} // namespace

void clipTo(Canvas& canvas, const SheetMap& map, const AcDbBlockReference& reference,
            const AcGeMatrix3d& blockToWorld) {
    const std::optional<ClipRegion> clip = clipRegionOf(reference);
    if (!clip || clip->boundary.empty()) return;
    if (clip->hidesInside) addSheet(canvas);
    canvas.moveTo(map(blockToWorld * clip->boundary.front()));
    for (const AcGePoint3d& corner : clip->boundary)
        canvas.lineTo(map(blockToWorld * corner));
    canvas.closePath();
    canvas.clip();
}

} // namespace headless
