// Points with their heights dropped, for tests in which only x and y take part.
#pragma once

#include <gepnt2d.h>
#include <gepnt3d.h>

namespace geometry {

[[nodiscard]] inline AcGePoint3d flattened(const AcGePoint3d& p) { return {p.x, p.y, 0.0}; }
[[nodiscard]] inline AcGePoint2d planar(const AcGePoint3d& p) { return {p.x, p.y}; }

} // namespace geometry
