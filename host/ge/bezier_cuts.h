// Common points of any two smooth curves, as rational Bezier curves: ellipses in one plane, and
// splines with everything.
#pragma once

#include <span>
#include <vector>

#include "ge/ellipse.h"
#include "ge/spline_pieces.h"

namespace headless {

/// Control points of a rational Bezier curve, at least two, with positive weights.
using RationalBezier = std::vector<Homogeneous>;

/// An arc as curves of a quarter turn at most.
[[nodiscard]] std::vector<RationalBezier> arcBeziers(const EllipseArc& arc);

/// The places where two curves come as near to each other as `tolerance`, a length.
///
/// Crossings are found to the rounding of the coordinates, touches to about 1e-6 of the curves'
/// size along the curves. Curves that lie on each other along a stretch have no single common
/// points there.
[[nodiscard]] std::vector<AcGePoint3d>
cutBeziers(std::span<const RationalBezier> a, std::span<const RationalBezier> b, double tolerance);

} // namespace headless
