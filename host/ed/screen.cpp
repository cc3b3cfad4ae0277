#include "ed/screen.h"

#include <algorithm>
#include <cmath>

#include "db/residence.h"
#include "db/view_tables.h"
#include "db/viewport.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"

namespace headless {
namespace {

ScreenArea wholeArea() {
    const AcGePoint2d size = EdState::current().drawingArea;
    return {{size.x / 2.0, size.y / 2.0}, size.x, size.y};
}

ScreenArea tileArea(const AcDbViewportTableRecord& tile) {
    const AcGePoint2d size = EdState::current().drawingArea;
    const AcGePoint2d& low = tile.lowerLeftOf();
    const AcGePoint2d& high = tile.upperRightOf();
    ScreenArea area;
    area.center.set((low.x + high.x) / 2.0 * size.x, (1.0 - (low.y + high.y) / 2.0) * size.y);
    // A damaged file's tile may have no size; at a pixel its proportions still mean something.
    area.width = std::max((high.x - low.x) * size.x, 1.0);
    area.height = std::max((high.y - low.y) * size.y, 1.0);
    return area;
}

AcGePoint2d displayToPixel(const View& view, const ScreenArea& area, const AcGePoint2d& seen) {
    const double scale = area.height / view.height;
    return {area.center.x + (seen.x - view.center.x) * scale,
            area.center.y - (seen.y - view.center.y) * scale};
}

AcGePoint2d pixelToDisplay(const View& view, const ScreenArea& area, const AcGePoint2d& pixel) {
    const double scale = view.height / area.height;
    return {view.center.x + (pixel.x - area.center.x) * scale,
            view.center.y - (pixel.y - area.center.y) * scale};
}

ScreenArea floatingArea(const AcDbDatabase& db, const AcDbViewport& viewport) {
    const View sheet = sheetView(db);
    const ScreenArea whole = wholeArea();
    const double scale = whole.height / sheet.height;
    const AcGePoint3d& center = viewport.centerOf();
    return {displayToPixel(sheet, whole, {center.x, center.y}),
            std::max(viewport.widthOf() * scale, 1.0), std::max(viewport.heightOf() * scale, 1.0)};
}

bool isSheet(const AcDbDatabase& db, short number) {
    return !db.tilemode() && number == kSheetNumber;
}

} // namespace

bool ScreenArea::contains(const AcGePoint2d& pixel) const {
    return std::abs(pixel.x - center.x) <= width / 2.0 &&
           std::abs(pixel.y - center.y) <= height / 2.0;
}

std::optional<ScreenArea> screenArea(const AcDbDatabase& db, short viewport) {
    if (isSheet(db, viewport)) return wholeArea();
    const AcDbObject* object = Residence::peek(modelViewport(db, viewport));
    if (const auto* tile = AcDbViewportTableRecord::cast(object)) return tileArea(*tile);
    if (const auto* floating = AcDbViewport::cast(object)) return floatingArea(db, *floating);
    return std::nullopt;
}

ScreenArea currentScreenArea(const AcDbDatabase& db) {
    return screenArea(db, currentViewport(db)).value_or(wholeArea());
}

std::optional<View> viewOfViewport(const AcDbDatabase& db, short viewport) {
    if (isSheet(db, viewport)) return sheetView(db);
    const AcDbObject* object = Residence::peek(modelViewport(db, viewport));
    if (const auto* tile = AcDbViewportTableRecord::cast(object)) return tile->viewOf();
    if (const auto* floating = AcDbViewport::cast(object)) return floating->viewOf();
    return std::nullopt;
}

std::optional<short> viewportAt(const AcDbDatabase& db, const AcGePoint2d& pixel) {
    if (!wholeArea().contains(pixel)) return std::nullopt;
    if (isSheetCurrent(db)) return kSheetNumber;
    // The current one is on top where floating viewports overlap, and takes the seams of tiles.
    const short current = currentViewport(db);
    if (currentScreenArea(db).contains(pixel)) return current;
    for (const NumberedViewport& viewport : modelViewports(db)) {
        if (screenArea(db, viewport.number)->contains(pixel)) return viewport.number;
    }
    if (db.tilemode()) return std::nullopt;
    return kSheetNumber;
}

std::optional<AcGePoint3d> pixelToWorld(const AcDbDatabase& db, short viewport,
                                        const AcGePoint2d& pixel) {
    const auto area = screenArea(db, viewport);
    const auto view = viewOfViewport(db, viewport);
    if (!area || !view) return std::nullopt;
    const AcGePoint2d seen = pixelToDisplay(*view, *area, pixel);
    const AcGePoint3d onTarget = *displayToWorld(*view, AcGePoint3d(seen.x, seen.y, 0.0));
    const AcGeVector3d sight = lineOfSight(*view, onTarget);

    const AcGeMatrix3d ucs = userToWorld(db);
    const AcGeVector3d normal = ucs * AcGeVector3d::kZAxis;
    const AcGePoint3d onPlane = ucs * AcGePoint3d(0.0, 0.0, db.elevation());
    const double approach = sight.dotProduct(normal);
    if (std::abs(approach) <= AcGeContext::gTol.equalVector() * sight.length()) return onTarget;
    return onTarget + sight * ((onPlane - onTarget).dotProduct(normal) / approach);
}

std::optional<AcGePoint2d> worldToPixel(const AcDbDatabase& db, short viewport,
                                        const AcGePoint3d& point) {
    const auto area = screenArea(db, viewport);
    const auto view = viewOfViewport(db, viewport);
    if (!area || !view) return std::nullopt;
    const auto seen = worldToDisplay(*view, point);
    if (!seen) return std::nullopt;
    return displayToPixel(*view, *area, {seen->x, seen->y});
}

} // namespace headless
