// Where a point stands to a closed outline.
//
// A ray from the point to the right crosses the outline an odd number of times exactly when the
// point is inside. A segment counts when one end is above the ray and the other is not, so that
// vertices on the ray, horizontal edges and repeated vertices count once or not at all.
#pragma once

#include <span>

#include <afxwin.h>
#include <gepnt3d.h>

#include "OrnCore/outline.h"

namespace orncore {

enum class Place { kOutside = -1, kOnOutline = 0, kInside = 1 };

/// Place of a point against straight edges between the points' x and y, the last joined to the
/// first, in either order.
///
/// @param tolerance  distance up to which a point is on the outline; less than 0 counts as 0.
/// @return           kOutside when there are no points or a coordinate is not a number.
[[nodiscard]] AFX_EXT_API Place placeOf(const AcGePoint2d& point,
                                        std::span<const AcGePoint3d> outline,
                                        double tolerance) noexcept;

/// As above with the outline's arcs, exactly.
[[nodiscard]] AFX_EXT_API Place placeOf(const AcGePoint2d& point, Outline outline,
                                        double tolerance) noexcept;

} // namespace orncore
