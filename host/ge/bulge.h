// Polyline segments: straight, or an arc given by its bulge.
//
// A bulge is tan(sweep / 4) of the arc from one vertex to the next: 0 is straight, positive turns
// counter-clockwise, 1 is a half circle. Everything here holds for the shallowest and the deepest
// bulge, where centre and radius run off to infinity and differences with them lose all digits.
#pragma once

#include <span>

#include "ge/extents.h"

namespace headless {

/// An arc by centre and angles, in radians from the x axis.
struct Arc2d {
    AcGePoint2d center;
    double radius = 0.0;
    double startAngle = 0.0; ///< In [0, 2 pi).
    double sweep = 0.0;      ///< Positive counter-clockwise, within +-2 pi.
};

/// The arc from `start` to `end`. `bulge` is not 0; shallow bulges give far centres.
[[nodiscard]] Arc2d arcFromBulge(const AcGePoint2d& start, const AcGePoint2d& end,
                                 double bulge) noexcept;

/// Bulge of an arc of this sweep.
[[nodiscard]] double bulgeOfSweep(double sweep) noexcept;

/// Length of an arc over a chord; the chord itself for bulge 0.
[[nodiscard]] double arcLength(double chord, double bulge) noexcept;

/// Area between an arc and its chord, signed like the bulge.
[[nodiscard]] double circularSegmentArea(double chord, double bulge) noexcept;

/// One segment with the bulge of the vertex it leaves.
struct BulgeSegment {
    AcGePoint2d start;
    AcGePoint2d end;
    double bulge = 0.0;
};

/// The point at a share of the segment's length, 0 at its start and 1 at its end.
[[nodiscard]] AcGePoint2d pointOnSegment(const BulgeSegment& segment, double share) noexcept;

/// Direction of travel at a share of the segment's length; a unit vector, zero when the segment
/// has no length.
[[nodiscard]] AcGeVector2d tangentOfSegment(const BulgeSegment& segment, double share) noexcept;

/// Largest value of x * direction.x + y * direction.y over the segment.
[[nodiscard]] double farthestAlong(const BulgeSegment& segment,
                                   const AcGeVector2d& direction) noexcept;

/// The segment's exact extents in its plane.
[[nodiscard]] Extents2d segmentExtents(const BulgeSegment& segment) noexcept;

/// The exact extents of a segment at height `elevation` over its plane, mapped by `toWorld`, which
/// may be any affine map.
[[nodiscard]] Extents3d segmentExtents(const BulgeSegment& segment, double elevation,
                                       const AcGeMatrix3d& toWorld) noexcept;

/// Area enclosed by an outline, positive when it runs counter-clockwise.
///
/// @param points  the vertices, the first not repeated at the end.
/// @param bulges  one for each vertex, missing ones are 0; the last one shapes the closing segment.
/// @param closed  when false the last vertex joins the first by a straight line whatever its bulge.
[[nodiscard]] double polylineArea(std::span<const AcGePoint2d> points,
                                  std::span<const double> bulges, bool closed = true) noexcept;

/// Length along all segments; parameters as for `polylineArea`, without a closing segment when
/// open.
[[nodiscard]] double polylineLength(std::span<const AcGePoint2d> points,
                                    std::span<const double> bulges, bool closed) noexcept;

/// Exact extents of a polyline at `elevation` over its plane, mapped by any affine `toWorld`.
[[nodiscard]] Extents3d polylineExtents(std::span<const AcGePoint2d> points,
                                        std::span<const double> bulges, bool closed,
                                        double elevation, const AcGeMatrix3d& toWorld) noexcept;

} // namespace headless
