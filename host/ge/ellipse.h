// Arcs of ellipses, circles among them, anywhere in space.
#pragma once

#include "ge/extents.h"

namespace headless {

/// center + u cos t + v sin t for t from `start` over `sweep` radians.
///
/// Any affine map of such an arc is one again, so u and v need neither equal lengths nor a right
/// angle between them: this is a circle inside a block reference with uneven scales, too.
struct EllipseArc {
    AcGePoint3d center;
    AcGeVector3d u;
    AcGeVector3d v;
    double start = 0.0;
    double sweep = 0.0; ///< Either sign, within +-2 pi.

    [[nodiscard]] AcGePoint3d pointAt(double t) const noexcept;
    /// The derivative of the given order, from 1 on.
    [[nodiscard]] AcGeVector3d derivativeAt(double t, int order) const noexcept;
    void transformBy(const AcGeMatrix3d& matrix) noexcept;
};

/// The arc of a circle from angle `start`, counter-clockwise about `normal`, with angles counted
/// from the normal's object x axis.
[[nodiscard]] EllipseArc circleArc(const AcGePoint3d& center, const AcGeVector3d& normal,
                                   double radius, double start, double sweep) noexcept;

/// Exact extents: both ends and each coordinate's extremes that lie on the arc.
[[nodiscard]] Extents3d ellipseExtents(const EllipseArc& arc) noexcept;

/// Length between two parameters, to 1e-12 of itself.
[[nodiscard]] double ellipseLength(const EllipseArc& arc, double from, double to) noexcept;
[[nodiscard]] double ellipseLength(const EllipseArc& arc) noexcept;

/// Area between the arc and its chord; the ellipse's area for a full turn.
[[nodiscard]] double ellipseSegmentArea(const EllipseArc& arc) noexcept;

/// Parameter within the arc of the point nearest to `point`.
[[nodiscard]] double ellipseClosestParam(const EllipseArc& arc, const AcGePoint3d& point) noexcept;

} // namespace headless
