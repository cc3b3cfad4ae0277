#include "ge/spline.h"

#include <algorithm>
#include <cmath>

#include "ge/spline_pieces.h"

namespace headless {

namespace {

std::size_t degreeOf(const Spline& spline) { return static_cast<std::size_t>(spline.degree); }

double clampedParam(const Spline& spline, double t) {
    return std::clamp(t, spline.startParam(), spline.endParam());
}

/// The homogeneous curve's derivative of order 0, 1 or 2 by differences of the blossom.
Homogeneous homogeneousDerivative(const Spline& spline, double t, int order) {
    const std::size_t k = spanAt(spline, t);
    const double a = spline.knots[k];
    const double b = spline.knots[k + 1];
    const double p = spline.degree;
    std::vector<double> arguments(degreeOf(spline), t);
    const auto at = [&](double first, double second) {
        if (order > 0) arguments[0] = first;
        if (order > 1) arguments[1] = second;
        return blossom(spline, k, arguments);
    };
    if (order == 0) return at(t, t);
    if (spline.degree < order) return {AcGeVector3d(), 0.0};
    const double width = b - a;
    if (order == 1) return (at(b, t) + at(a, t) * -1.0) * (p / width);
    return (at(b, b) + at(a, b) * -2.0 + at(a, a)) * (p * (p - 1.0) / (width * width));
}

} // namespace

bool Spline::isValid() const noexcept {
    const std::size_t n = points.size();
    if (degree < 1 || degree > kMostDegree || n <= degreeOf(*this)) return false;
    if (knots.size() != n + degreeOf(*this) + 1) return false;
    if (!weights.empty() && weights.size() != n) return false;
    const auto finite = [](double value) { return std::isfinite(value); };
    return std::all_of(knots.begin(), knots.end(), finite) &&
           std::is_sorted(knots.begin(), knots.end()) &&
           std::all_of(weights.begin(), weights.end(),
                       [](double w) { return w > 0.0 && std::isfinite(w); }) &&
           std::all_of(
               points.begin(), points.end(),
               [&](const AcGePoint3d& p) { return finite(p.x) && finite(p.y) && finite(p.z); }) &&
           startParam() < endParam();
}

double Spline::startParam() const noexcept { return knots[degreeOf(*this)]; }
double Spline::endParam() const noexcept { return knots[points.size()]; }

AcGePoint3d Spline::pointAt(double t) const {
    const Homogeneous value = homogeneousDerivative(*this, clampedParam(*this, t), 0);
    return (value.p / value.w).asPoint();
}

AcGeVector3d Spline::derivativeAt(double t, int order) const {
    t = clampedParam(*this, t);
    const Homogeneous value = homogeneousDerivative(*this, t, 0);
    const Homogeneous first = homogeneousDerivative(*this, t, 1);
    const AcGeVector3d point = value.p / value.w;
    const AcGeVector3d velocity = (first.p - point * first.w) / value.w;
    if (order == 1) return velocity;
    const Homogeneous second = homogeneousDerivative(*this, t, 2);
    return (second.p - velocity * (2.0 * first.w) - point * second.w) / value.w;
}

void Spline::transformBy(const AcGeMatrix3d& matrix) noexcept {
    for (AcGePoint3d& point : points)
        point.transformBy(matrix);
}

void Spline::reverse() noexcept {
    if (knots.empty()) return;
    const double sum = startParam() + endParam();
    std::reverse(points.begin(), points.end());
    std::reverse(weights.begin(), weights.end());
    std::reverse(knots.begin(), knots.end());
    for (double& knot : knots)
        knot = sum - knot;
}

std::size_t spanAt(const Spline& spline, double t) {
    const auto first = spline.knots.begin() + spline.degree;
    const auto last = spline.knots.begin() + static_cast<std::ptrdiff_t>(spline.points.size());
    auto after = std::upper_bound(first, last, t);
    // The end belongs to the last span that has a width.
    while (*(after - 1) == *after && after - 1 != first)
        --after;
    return static_cast<std::size_t>(after - 1 - spline.knots.begin());
}

Homogeneous blossom(const Spline& spline, std::size_t k, std::span<const double> arguments) {
    const std::size_t p = arguments.size();
    Homogeneous d[kMostDegree + 1];
    for (std::size_t i = 0; i <= p; ++i) {
        const std::size_t index = k - p + i;
        const double w = spline.weights.empty() ? 1.0 : spline.weights[index];
        d[i] = {spline.points[index].asVector() * w, w};
    }
    for (std::size_t r = 1; r <= p; ++r) {
        for (std::size_t i = p; i >= r; --i) {
            const double low = spline.knots[k - p + i];
            const double high = spline.knots[k + i - r + 1];
            const double share = (arguments[r - 1] - low) / (high - low);
            d[i] = d[i - 1] * (1.0 - share) + d[i] * share;
        }
    }
    return d[p];
}

std::vector<BezierPiece> bezierPieces(const Spline& spline) {
    std::vector<BezierPiece> pieces;
    if (!spline.isValid()) return pieces;
    const std::size_t p = degreeOf(spline);
    for (std::size_t k = p; k < spline.points.size(); ++k) {
        BezierPiece piece{spline.knots[k], spline.knots[k + 1], {}, {}};
        if (!(piece.from < piece.to)) continue;
        std::vector<double> arguments(p, piece.from);
        piece.points.push_back(blossom(spline, k, arguments));
        for (std::size_t j = 0; j < p; ++j) {
            arguments[j] = piece.to;
            piece.points.push_back(blossom(spline, k, arguments));
        }
        for (std::size_t j = 0; j < p; ++j)
            piece.slopes.push_back((piece.points[j + 1] + piece.points[j] * -1.0) *
                                   static_cast<double>(p));
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

} // namespace headless
