// The drawing area of the program's window, in pixels from its upper left corner, y downwards.
//
// There is no window, but programs ask where on it things are. Its size is a setting of the
// session.
#pragma once

#include <optional>

#include "db/database.h"
#include "ge/point2d.h"

namespace headless {

/// A viewport's place in the drawing area.
struct ScreenArea {
    AcGePoint2d center; // pixels
    double width = 1.0;
    double height = 1.0;

    bool contains(const AcGePoint2d& pixel) const;
};

/// The place of a viewport by its number; nothing when there is none of that number.
[[nodiscard]] std::optional<ScreenArea> screenArea(const AcDbDatabase& db, short viewport);
/// That of the current one.
[[nodiscard]] ScreenArea currentScreenArea(const AcDbDatabase& db);

/// The number of the viewport under a pixel, which must lie in the drawing area; nothing outside.
/// On a sheet that is current all pixels are its own.
[[nodiscard]] std::optional<short> viewportAt(const AcDbDatabase& db, const AcGePoint2d& pixel);

/// The view of a viewport by its number, see screenArea.
[[nodiscard]] std::optional<View> viewOfViewport(const AcDbDatabase& db, short viewport);

/// The point of the world that a click there means: where the line of sight meets the plane of the
/// user coordinate system at the current elevation, or the plane of the view's target when the two
/// are parallel. Nothing when there is no such viewport.
[[nodiscard]] std::optional<AcGePoint3d> pixelToWorld(const AcDbDatabase& db, short viewport,
                                                      const AcGePoint2d& pixel);
/// Nothing also for a point behind the eye of a perspective view. The pixel may lie outside.
[[nodiscard]] std::optional<AcGePoint2d> worldToPixel(const AcDbDatabase& db, short viewport,
                                                      const AcGePoint3d& point);

} // namespace headless
