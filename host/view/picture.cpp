#include "view/picture.h"

#include <algorithm>
#include <cmath>

#include "db/database.h"
#include "db/object_pointer.h"
#include "db/open.h"
#include "db/residence.h"
#include "view/entity_painter.h"

namespace headless {
namespace {

/// More pixels than this take more memory than a machine may have.
constexpr double kMostPixels = 400e6;

bool isShown(const AcDbEntity& entity) {
    const auto* const layer = Residence::peek<AcDbLayerTableRecord>(entity.layerId());
    return layer == nullptr || layer->showsEntities();
}

/// The box of what shows in a space; empty when nothing does.
AcDbExtents shownExtents(AcDbObjectId space) {
    AcDbExtents box;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(space);
    if (block == nullptr) return box;
    for (const AcDbObjectId id : block->entityIds()) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        AcDbExtents own;
        if (isShown(*entity) && entity->getGeomExtents(own) == Acad::eOk) box.addExt(own);
        entity->close();
    }
    return box;
}

bool isUsable(const PictureWindow& window) {
    const double width = window.right - window.left;
    const double height = window.top - window.bottom;
    return width > 0.0 && height > 0.0 && std::isfinite(width) && std::isfinite(height);
}

/// The box with a margin; a box without area gets one.
PictureWindow windowAround(const AcDbExtents& box) {
    constexpr double kMargin = 0.03;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    double margin = std::max(high.x - low.x, high.y - low.y) * kMargin;
    if (!(margin > 0.0)) margin = 1.0;
    return {low.x - margin, low.y - margin, high.x + margin, high.y + margin};
}

PenScale penScaleOf(const AcDbDatabase& db, const PictureOptions& options, const SheetMap& map) {
    constexpr double kMillimetresPerInch = 25.4;
    const double dotsPerInch = options.format == PictureFormat::kPdf ? 72.0 : 96.0;
    return {map.scale(), dotsPerInch / kMillimetresPerInch, db.ltscale()};
}

} // namespace

std::variant<std::string, PictureFailure> drawPicture(AcDbDatabase& db,
                                                      const PictureOptions& options) {
    if (!(options.width >= 1.0 && options.height >= 1.0) ||
        options.width * options.height > kMostPixels)
        return PictureFailure{"the picture's size is out of range"};
    PictureWindow window;
    if (options.window) {
        window = *options.window;
        if (!isUsable(window)) return PictureFailure{"the window has no area"};
    } else {
        const AcDbExtents box = shownExtents(db.modelSpaceId());
        if (isEmpty(box)) return PictureFailure{"nothing is visible in the drawing"};
        window = windowAround(box);
    }

    Canvas canvas(options.format, options.width, options.height);
    canvas.fillAll(kPaper);
    const SheetMap map(window, options.width, options.height);
    EntityPainter painter(canvas, map, penScaleOf(db, options, map));
    painter.paintSpace(db.modelSpaceId());
    std::string bytes = canvas.finish();
    if (bytes.empty()) return PictureFailure{"there is not enough memory for the picture"};
    return bytes;
}

} // namespace headless
