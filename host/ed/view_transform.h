// From world coordinates to those in which a view shows them (DCS), and back.
//
// z of the view's own coordinates is the distance from the target's plane, towards the eye. In a
// perspective view x and y are where the line of sight through the point meets that plane; what is
// not before the eye has no place there.
#pragma once

#include <optional>

#include "db/view.h"
#include "ge/matrix3d.h"

namespace headless {

/// The rotation and the shift that take the view's own coordinates to the world's, regardless of
/// perspective.
[[nodiscard]] AcGeMatrix3d displayMatrix(const View& view);

/// Nothing for a point that a perspective view cannot show.
[[nodiscard]] std::optional<AcGePoint3d> worldToDisplay(const View& view, const AcGePoint3d& point);
[[nodiscard]] std::optional<AcGePoint3d> displayToWorld(const View& view, const AcGePoint3d& point);

/// A direction along the line of sight that meets the target's plane at that point of the world.
[[nodiscard]] AcGeVector3d lineOfSight(const View& view, const AcGePoint3d& onTargetPlane);

} // namespace headless
