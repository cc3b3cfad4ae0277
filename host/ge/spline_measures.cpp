// Extents, lengths, areas and nearest points of B-splines, piece by piece.
#include <algorithm>
#include <cmath>
#include <limits>

#include "ge/minimum.h"
#include "ge/quadrature.h"
#include "ge/spline_pieces.h"

namespace headless {

namespace {

Homogeneous valueOf(const std::vector<Homogeneous>& points, double share) {
    Homogeneous d[kMostDegree + 1];
    std::copy(points.begin(), points.end(), d);
    for (std::size_t left = points.size() - 1; left > 0; --left)
        for (std::size_t i = 0; i < left; ++i)
            d[i] = d[i] * (1.0 - share) + d[i + 1] * share;
    return d[0];
}

AcGePoint3d pointOn(const BezierPiece& piece, double share) {
    const Homogeneous value = valueOf(piece.points, share);
    return (value.p / value.w).asPoint();
}

/// The derivative by the piece's share of its range.
AcGeVector3d velocityOn(const BezierPiece& piece, double share) {
    const Homogeneous value = valueOf(piece.points, share);
    const Homogeneous slope = valueOf(piece.slopes, share);
    return (slope.p - value.p * (slope.w / value.w)) / value.w;
}

/// Bernstein coefficients of a polynomial over [0, 1].
using Bernstein = std::vector<double>;

double binomial(std::size_t n, std::size_t k) {
    double result = 1.0;
    for (std::size_t i = 1; i <= k; ++i)
        result = result * static_cast<double>(n - k + i) / static_cast<double>(i);
    return result;
}

Bernstein product(const Bernstein& a, const Bernstein& b) {
    const std::size_t p = a.size() - 1;
    const std::size_t q = b.size() - 1;
    Bernstein result(p + q + 1, 0.0);
    for (std::size_t i = 0; i <= p; ++i)
        for (std::size_t j = 0; j <= q; ++j)
            result[i + j] += a[i] * b[j] * binomial(p, i) * binomial(q, j) / binomial(p + q, i + j);
    return result;
}

Bernstein derivative(const Bernstein& a) {
    Bernstein result;
    for (std::size_t i = 0; i + 1 < a.size(); ++i)
        result.push_back((a[i + 1] - a[i]) * static_cast<double>(a.size() - 1));
    return result;
}

/// The sign of a coordinate's slope as a polynomial: x'w - xw' for x / w.
Bernstein slopeSign(const Bernstein& x, const Bernstein& w) {
    if (std::all_of(w.begin(), w.end(), [&](double v) { return v == w[0]; })) return derivative(x);
    Bernstein result = product(derivative(x), w);
    const Bernstein other = product(x, derivative(w));
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] -= other[i];
    return result;
}

/// The halves of a polynomial's range, by de Casteljau's scheme.
std::pair<Bernstein, Bernstein> halves(Bernstein c) {
    Bernstein first;
    Bernstein second(c.size());
    for (std::size_t left = c.size(); left > 0; --left) {
        first.push_back(c[0]);
        second[left - 1] = c[left - 1];
        for (std::size_t i = 0; i + 1 < left; ++i)
            c[i] = (c[i] + c[i + 1]) / 2.0;
    }
    return {first, second};
}

double valueOf(Bernstein c, double share) {
    for (std::size_t left = c.size() - 1; left > 0; --left)
        for (std::size_t i = 0; i < left; ++i)
            c[i] += (c[i + 1] - c[i]) * share;
    return c[0];
}

std::size_t signChanges(const Bernstein& c) {
    std::size_t changes = 0;
    double last = 0.0;
    for (const double value : c) {
        if (value * last < 0.0) ++changes;
        if (value != 0.0) last = value;
    }
    return changes;
}

/// The share at which a polynomial with values of opposite sign at its ends is zero, by false
/// position with halved ends, to where the remaining area under it is below `tolerance`.
double zeroBetweenEnds(const Bernstein& c, double tolerance) {
    double low = 0.0;
    double high = 1.0;
    double atLow = c.front();
    double atHigh = c.back();
    double share = 0.5;
    for (int i = 0; i < 100; ++i) {
        share = (low * atHigh - high * atLow) / (atHigh - atLow);
        const double value = valueOf(c, share);
        if (std::abs(value * (high - low)) <= tolerance) break;
        if (value * atHigh < 0.0) {
            low = high;
            atLow = atHigh;
        } else {
            atLow /= 2.0;
        }
        high = share;
        atHigh = value;
    }
    return share;
}

/// Calls `visit` near each zero between a and b: near enough that the polynomial's integral from
/// there to the zero is below `tolerance`. Ends are not looked at.
template <class Visit>
void forEachZero(const Bernstein& c, double a, double b, double tolerance, const Visit& visit) {
    // No more zeros than sign changes of the coefficients.
    const std::size_t changes = signChanges(c);
    if (changes == 0) return;
    if (changes == 1 && c.front() * c.back() < 0.0) {
        visit(a + (b - a) * zeroBetweenEnds(c, tolerance / (b - a)));
        return;
    }
    const double middle = (a + b) / 2.0;
    visit(middle); // A zero exactly here is an end of both halves.
    const auto [low, high] = std::minmax_element(c.begin(), c.end());
    if (std::max(-*low, *high) * (b - a) <= tolerance || !(a < middle && middle < b)) return;
    const auto [first, second] = halves(c);
    forEachZero(first, a, middle, tolerance, visit);
    forEachZero(second, middle, b, tolerance, visit);
}

void addPiece(Extents3d& extents, const BezierPiece& piece, double tolerance) {
    Bernstein weights;
    for (const Homogeneous& point : piece.points)
        weights.push_back(point.w);
    const double lightest = *std::min_element(weights.begin(), weights.end());

    extents.add(pointOn(piece, 0.0));
    extents.add(pointOn(piece, 1.0));
    // Seen from the piece's start, so that far coordinates keep the digits of their differences.
    const AcGeVector3d origin = pointOn(piece, 0.0).asVector();
    for (unsigned int axis = 0; axis < 3; ++axis) {
        Bernstein values;
        for (const Homogeneous& point : piece.points)
            values.push_back(point.p[axis] - origin[axis] * point.w);
        forEachZero(slopeSign(values, weights), 0.0, 1.0, tolerance * lightest * lightest,
                    [&](double share) {
                        const double value = pointOn(piece, share)[axis];
                        extents.addRange(axis, value, value);
                    });
    }
}

/// The part of [from, to] within a piece, as shares of its range; empty when they do not meet.
struct Shares {
    double from;
    double to;
};

Shares sharesOf(const BezierPiece& piece, double from, double to) {
    const double width = piece.to - piece.from;
    return {std::clamp((from - piece.from) / width, 0.0, 1.0),
            std::clamp((to - piece.from) / width, 0.0, 1.0)};
}

} // namespace

Extents3d splineExtents(const Spline& spline) {
    Extents3d polygon;
    for (const AcGePoint3d& point : spline.points)
        polygon.add(point);
    const double tolerance =
        1e-13 * (polygon.isValid() ? polygon.min.distanceTo(polygon.max) : 0.0);
    Extents3d extents;
    for (const BezierPiece& piece : bezierPieces(spline))
        addPiece(extents, piece, tolerance);
    return extents;
}

double splineLength(const Spline& spline, double from, double to) {
    if (from > to) std::swap(from, to);
    double length = 0.0;
    for (const BezierPiece& piece : bezierPieces(spline)) {
        const Shares part = sharesOf(piece, from, to);
        if (!(part.from < part.to)) continue;
        length += integrate(part.from, part.to,
                            [&](double share) { return velocityOn(piece, share).length(); });
    }
    return length;
}

double splineLength(const Spline& spline) {
    return spline.isValid() ? splineLength(spline, spline.startParam(), spline.endParam()) : 0.0;
}

AcGeVector3d splineVectorArea(const Spline& spline) {
    AcGeVector3d area;
    if (!spline.isValid()) return area;
    const AcGePoint3d origin = spline.pointAt(spline.startParam());
    for (const BezierPiece& piece : bezierPieces(spline)) {
        for (unsigned int axis = 0; axis < 3; ++axis) {
            area[axis] += integrate(0.0, 1.0, [&](double share) {
                const AcGeVector3d out = pointOn(piece, share) - origin;
                return out.crossProduct(velocityOn(piece, share))[axis] / 2.0;
            });
        }
    }
    return area;
}

double splineClosestParam(const Spline& spline, const AcGePoint3d& point) {
    constexpr int kSteps = 32; // To a piece of the usual degrees; each has few valleys.
    double best = 0.0;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const BezierPiece& piece : bezierPieces(spline)) {
        const auto distance = [&](double share) { return pointOn(piece, share).distanceTo(point); };
        const auto consider = [&](double share) {
            if (distance(share) >= bestDistance) return;
            bestDistance = distance(share);
            best = piece.from + (piece.to - piece.from) * share;
        };
        double heights[kSteps + 1];
        for (int i = 0; i <= kSteps; ++i)
            heights[i] = distance(static_cast<double>(i) / kSteps);
        for (int i = 0; i <= kSteps; ++i) {
            const int before = std::max(i - 1, 0);
            const int after = std::min(i + 1, kSteps);
            if (heights[i] > heights[before] || heights[i] > heights[after]) continue;
            consider(static_cast<double>(i) / kSteps);
            consider(goldenMinimum(static_cast<double>(before) / kSteps,
                                   static_cast<double>(after) / kSteps, distance));
        }
    }
    return best;
}

} // namespace headless
