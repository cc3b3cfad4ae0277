// Zeros of a number that runs like a B-spline curve. Values only.
#pragma once

#include <vector>

namespace blocks {

/// A B-spline of numbers: n coefficients, n + degree + 1 knots that never fall.
struct NumberSpline {
    int degree = 3;
    std::vector<double> knots = {};
    std::vector<double> coefficients = {};
};

/// The parameters where it crosses zero, in order. Where it merely touches zero, or runs along it,
/// there may be some.
/// @param noise  numbers that are no farther from zero count as zero; above 0.
[[nodiscard]] std::vector<double> zerosOf(const NumberSpline& spline, double noise);

} // namespace blocks
