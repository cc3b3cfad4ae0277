#include <algorithm>

#include "ge/spline.h"
#include "ge/spline_pieces.h"

namespace headless {
namespace {

/// The knots of a part that is clamped at both ends.
std::vector<double> clampedKnots(const Spline& spline, double from, double to) {
    const auto ends = static_cast<std::size_t>(spline.degree) + 1;
    std::vector<double> knots(ends, from);
    std::copy_if(spline.knots.begin(), spline.knots.end(), std::back_inserter(knots),
                 [&](double knot) { return knot > from && knot < to; });
    knots.insert(knots.end(), ends, to);
    return knots;
}

} // namespace

Spline splinePart(const Spline& spline, double from, double to) {
    const auto p = static_cast<std::size_t>(spline.degree);
    Spline part{.degree = spline.degree, .points = {}, .weights = {}, .knots = {}};
    part.knots = clampedKnots(spline, from, to);
    for (std::size_t i = 0; i + p + 1 < part.knots.size(); ++i) {
        // A control point is the blossom of the knots behind its own; any piece that it shapes
        // gives the same.
        const std::span<const double> arguments(&part.knots[i + 1], p);
        const double within = (part.knots[i] + part.knots[i + p + 1]) / 2.0;
        const Homogeneous value = blossom(spline, spanAt(spline, within), arguments);
        part.points.push_back((value.p / value.w).asPoint());
        if (!spline.weights.empty()) part.weights.push_back(value.w);
    }
    return part;
}

} // namespace headless
