// B-splines, rational or not, over any knots.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "ge/extents.h"

namespace headless {

/// A B-spline curve: n control points, n + degree + 1 knots that never fall, n weights or none.
///
/// The curve runs from knot `degree` to knot n; ends may be clamped or not, as in periodic splines.
/// Weights are positive. Evaluate only what `isValid`; a parameter outside the curve's range counts
/// as the end it is beyond.
struct Spline {
    int degree = 3;
    std::vector<AcGePoint3d> points;
    std::vector<double> weights;
    std::vector<double> knots;

    /// True when the counts fit, the numbers are finite and the curve has a range.
    [[nodiscard]] bool isValid() const noexcept;
    [[nodiscard]] double startParam() const noexcept;
    [[nodiscard]] double endParam() const noexcept;

    [[nodiscard]] AcGePoint3d pointAt(double t) const;
    /// The first (order 1) or the second derivative.
    [[nodiscard]] AcGeVector3d derivativeAt(double t, int order) const;

    void transformBy(const AcGeMatrix3d& matrix) noexcept;
    /// Runs the curve the other way over the same range.
    void reverse() noexcept;
};

/// Extents to 1e-12 of the size of the control polygon; not valid for an invalid spline.
[[nodiscard]] Extents3d splineExtents(const Spline& spline);

/// Length between two parameters, to 1e-12 of itself.
[[nodiscard]] double splineLength(const Spline& spline, double from, double to);
[[nodiscard]] double splineLength(const Spline& spline);

/// Area swept by the ray from the start point to the running point, as a vector: for a closed flat
/// curve its length is the enclosed area and it points along the normal about which the curve
/// turns counter-clockwise.
[[nodiscard]] AcGeVector3d splineVectorArea(const Spline& spline);

/// Parameter of the point nearest to `point`.
[[nodiscard]] double splineClosestParam(const Spline& spline, const AcGePoint3d& point);

/// The part between two parameters of the curve's range, `from` the lesser, over the same
/// parameters and clamped at both ends.
[[nodiscard]] Spline splinePart(const Spline& spline, double from, double to);

/// The smooth cubic spline through fit points, its parameter the length along their chords.
///
/// Without a tangent an end is straight (natural); tangents may have any length but zero.
/// Repeated points count once. Nothing for fewer than two different points.
[[nodiscard]] std::optional<Spline> splineThrough(std::span<const AcGePoint3d> fitPoints,
                                                  std::optional<AcGeVector3d> startTangent,
                                                  std::optional<AcGeVector3d> endTangent);

} // namespace headless
