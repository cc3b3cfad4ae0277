#include "ge/ellipse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "ge/angles.h"
#include "ge/ocs.h"
#include "ge/quadrature.h"

namespace headless {

namespace {

/// How far ahead of the arc's start, along its sweep, the parameter lies; in [0, 2 pi).
double ahead(const EllipseArc& arc, double t) {
    return normalizedAngle(arc.sweep < 0.0 ? arc.start - t : t - arc.start);
}

/// Newton's rule on the slope of the squared distance from `t` on, kept within one step's reach.
double descend(const EllipseArc& arc, const AcGePoint3d& point, double t) {
    for (int i = 0; i < 30; ++i) {
        const AcGeVector3d out = arc.pointAt(t) - point;
        const AcGeVector3d first = arc.derivativeAt(t, 1);
        const double slope = out.dotProduct(first);
        const double bend = first.lengthSqrd() + out.dotProduct(arc.derivativeAt(t, 2));
        // Uphill bends come from points inside, near the centre: step down the slope instead.
        const double step = bend > 0.0 ? slope / bend : std::copysign(0.1, slope);
        const double limited = std::clamp(step, -0.3, 0.3);
        t -= limited;
        if (std::abs(limited) < 1e-15) break;
    }
    return t;
}

} // namespace

AcGePoint3d EllipseArc::pointAt(double t) const noexcept {
    return center + u * std::cos(t) + v * std::sin(t);
}

AcGeVector3d EllipseArc::derivativeAt(double t, int order) const noexcept {
    // Each derivative is the one before it, a quarter turn ahead.
    const AcGeVector3d towards = u * std::cos(t) + v * std::sin(t);
    const AcGeVector3d across = v * std::cos(t) - u * std::sin(t);
    const AcGeVector3d& quarter = order % 2 == 0 ? towards : across;
    return order % 4 < 2 ? quarter : -quarter;
}

void EllipseArc::transformBy(const AcGeMatrix3d& matrix) noexcept {
    center.transformBy(matrix);
    u.transformBy(matrix);
    v.transformBy(matrix);
}

EllipseArc circleArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                     double start, double sweep) noexcept {
    const AcGeMatrix3d axes = ocsMatrix(normal);
    return {center, axes * (AcGeVector3d::kXAxis * radius), axes * (AcGeVector3d::kYAxis * radius),
            start, sweep};
}

Extents3d ellipseExtents(const EllipseArc& arc) noexcept {
    Extents3d extents;
    extents.add(arc.pointAt(arc.start));
    extents.add(arc.pointAt(arc.start + arc.sweep));
    // Ends that meet after a full turn must not hide an extreme between them to a rounding.
    const double reach =
        std::abs(arc.sweep) >= kFullTurn * (1.0 - 1e-15) ? kFullTurn : std::abs(arc.sweep);
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const double highest = std::atan2(arc.v[axis], arc.u[axis]);
        const double amplitude = std::hypot(arc.u[axis], arc.v[axis]);
        if (ahead(arc, highest) <= reach) {
            const double high = arc.center[axis] + amplitude;
            extents.addRange(axis, high, high);
        }
        if (ahead(arc, highest + std::numbers::pi) <= reach) {
            const double low = arc.center[axis] - amplitude;
            extents.addRange(axis, low, low);
        }
    }
    return extents;
}

double ellipseLength(const EllipseArc& arc, double from, double to) noexcept {
    const auto speed = [&](double t) { return arc.derivativeAt(t, 1).length(); };
    // In quarters: a rule over a whole turn could be fooled by its symmetry.
    const int parts =
        std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (std::numbers::pi / 2.0))));
    double length = 0.0;
    for (int i = 0; i < parts; ++i) {
        const double a = from + (to - from) * i / parts;
        const double b = from + (to - from) * (i + 1) / parts;
        length += std::abs(integrate(a, b, speed));
    }
    return length;
}

double ellipseLength(const EllipseArc& arc) noexcept {
    return ellipseLength(arc, arc.start, arc.start + arc.sweep);
}

double ellipseSegmentArea(const EllipseArc& arc) noexcept {
    const double sweep = std::abs(arc.sweep);
    return arc.u.crossProduct(arc.v).length() * (sweep - std::sin(sweep)) / 2.0;
}

double ellipseClosestParam(const EllipseArc& arc, const AcGePoint3d& point) noexcept {
    const double end = arc.start + arc.sweep;
    double best = arc.start;
    double bestDistance = std::numeric_limits<double>::infinity();
    const auto consider = [&](double t) {
        const double distance = arc.pointAt(t).distanceTo(point);
        if (distance >= bestDistance) return;
        bestDistance = distance;
        best = t;
    };
    consider(arc.start);
    consider(end);
    // The distance from a point has at most two valleys; the starts are dense enough for both.
    constexpr int kStarts = 16;
    for (int i = 0; i < kStarts; ++i) {
        const double t = descend(arc, point, arc.start + kFullTurn * i / kStarts);
        const double reached = ahead(arc, t);
        if (reached <= std::abs(arc.sweep)) consider(arc.start + std::copysign(reached, arc.sweep));
    }
    return best;
}

} // namespace headless
