// The polynomial pieces of a B-spline as Bezier curves.
#pragma once

#include <vector>

#include "ge/spline.h"

namespace headless {

/// Degrees beyond this are damaged data; the platform's own limit is 25.
inline constexpr int kMostDegree = 25;

/// A point times its weight, and the weight.
struct Homogeneous {
    AcGeVector3d p;
    double w = 1.0;

    friend Homogeneous operator+(const Homogeneous& a, const Homogeneous& b) {
        return {a.p + b.p, a.w + b.w};
    }
    friend Homogeneous operator*(const Homogeneous& a, double s) { return {a.p * s, a.w * s}; }
};

/// The piece over [from, to]: degree + 1 control points, and those of its derivative by the share
/// of that range.
struct BezierPiece {
    double from = 0.0;
    double to = 0.0;
    std::vector<Homogeneous> points;
    std::vector<Homogeneous> slopes;
};

/// Index k of the span with knots[k] <= t < knots[k + 1], the last one for the curve's end.
[[nodiscard]] std::size_t spanAt(const Spline& spline, double t);

/// The blossom of the piece over span k: symmetric, affine in each of its `degree` arguments, and
/// the curve where all are equal. Control points of any part of the piece are values of it.
[[nodiscard]] Homogeneous blossom(const Spline& spline, std::size_t k,
                                  std::span<const double> arguments);

/// The pieces in order, none for an invalid spline.
[[nodiscard]] std::vector<BezierPiece> bezierPieces(const Spline& spline);

} // namespace headless
