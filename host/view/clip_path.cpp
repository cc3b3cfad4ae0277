#include "view/clip_path.h"

#include "db/clip_region.h"
#include "view/sheet_path.h"

namespace headless {
namespace {

void addSheet(Canvas& canvas) {
    const auto corners = canvas.box().corners();
    canvas.moveTo(corners.front());
    for (const AcGePoint2d& corner : corners)
        canvas.lineTo(corner);
    canvas.closePath();
}

} // namespace

void clipTo(Canvas& canvas, const SheetMap& map, const ClipRegion& clip,
            const AcGeMatrix3d& blockToWorld) {
    if (clip.boundary.empty()) return;
    if (clip.hidesInside) addSheet(canvas);
    SheetPath boundary;
    for (const AcGePoint3d& corner : clip.boundary)
        boundary.lineTo(map(blockToWorld * corner));
    boundary.close();
    boundary.putAreaOn(canvas);
    canvas.clip();
}

} // namespace headless
