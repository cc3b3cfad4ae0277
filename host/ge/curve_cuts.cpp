#include "ge/curve_cuts.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "ge/angles.h"
#include "ge/circle_cuts.h"

namespace headless {

namespace {

// Directions closer than this count as parallel; what crosses at a smaller angle has no place that
// doubles could tell.
constexpr double kParallel = 1e-12;
// Planes closer than this count as one: a common line would be off by more than their gap.
constexpr double kSamePlane = 1e-7;

AcGeVector3d planeNormal(const EllipseArc& arc) { return arc.u.crossProduct(arc.v).normal(); }

bool parallel(const AcGeVector3d& a, const AcGeVector3d& b, double sine) {
    return a.crossProduct(b).lengthSqrd() <= sine * sine * a.lengthSqrd() * b.lengthSqrd();
}

/// The arc's parameter nearest to `t`, when the points there are as near as the tolerance.
std::optional<double> paramOnArc(const EllipseArc& arc, double t, double tolerance) {
    const double low = std::min(arc.start, arc.start + arc.sweep);
    const double sweep = std::abs(arc.sweep);
    const double ahead = normalizedAngle(t - low);
    if (ahead <= sweep) return low + ahead;
    // A hair before the start is almost a turn ahead of it.
    const bool nearerToEnd = ahead - sweep < kFullTurn - ahead;
    const double end = nearerToEnd ? low + sweep : low;
    if (arc.pointAt(end).distanceTo(arc.pointAt(t)) > tolerance) return std::nullopt;
    return end;
}

/// The point of the arc at the angle at which its centre sees `point`, when both are one place.
std::optional<AcGePoint3d> placeOnArc(const EllipseArc& arc, const AcGePoint3d& point,
                                      double tolerance) {
    const AcGeVector3d out = point - arc.center;
    const double uu = arc.u.lengthSqrd();
    const double uv = arc.u.dotProduct(arc.v);
    const double vv = arc.v.lengthSqrd();
    const double ou = out.dotProduct(arc.u);
    const double ov = out.dotProduct(arc.v);
    const auto t = paramOnArc(arc, std::atan2(ov * uu - ou * uv, ou * vv - ov * uv), tolerance);
    if (!t || arc.pointAt(*t).distanceTo(point) > tolerance) return std::nullopt;
    return arc.pointAt(*t);
}

/// The places of a line that lies in the arc's plane.
std::vector<AcGePoint3d> cutInPlane(const EllipseArc& arc, const AcGeVector3d& normal,
                                    const LinePart& line, double tolerance) {
    const AcGeVector3d across = normal.crossProduct(line.along).normal();
    // How far off the centre the line runs, and how far the whole ellipse reaches that way.
    const double offset = (line.origin - arc.center).dotProduct(across);
    const double towards = arc.u.dotProduct(across);
    const double beside = arc.v.dotProduct(across);
    const double reach = std::hypot(towards, beside);
    const double gap = reach - std::abs(offset);
    std::vector<AcGePoint3d> places;
    if (!(gap >= -tolerance)) return places;

    const double farthest = std::atan2(beside, towards) + (offset < 0.0 ? std::numbers::pi : 0.0);
    const double half = gap <= tolerance ? 0.0
                                         : std::atan2(std::sqrt(gap * (reach + std::abs(offset))),
                                                      std::abs(offset));
    for (const double angle : {farthest - half, farthest + half}) {
        const auto t = paramOnArc(arc, angle, tolerance);
        if (!t) continue;
        const AcGePoint3d place = arc.pointAt(*t);
        const AcGePoint3d onLine = line.pointAt(line.nearestParam(place));
        if (onLine.distanceTo(place) <= 2.0 * tolerance) places.push_back(place);
        if (half == 0.0) break;
    }
    return places;
}

bool isWhole(const EllipseArc& arc) { return std::abs(arc.sweep) >= kFullTurn * (1.0 - 1e-12); }

/// The ends that two parts of one curve share without lying on each other: they leave it in
/// opposite directions.
std::vector<AcGePoint3d> sharedEnds(const EllipseArc& a, const EllipseArc& b, double tolerance) {
    std::vector<AcGePoint3d> shared;
    if (isWhole(a) || isWhole(b)) return shared;
    const auto inward = [](const EllipseArc& arc, bool atEnd) {
        const double t = arc.start + (atEnd ? arc.sweep : 0.0);
        return arc.derivativeAt(t, 1) * ((arc.sweep < 0.0) == atEnd ? 1.0 : -1.0);
    };
    for (const bool endOfA : {false, true}) {
        for (const bool endOfB : {false, true}) {
            const AcGePoint3d place = a.pointAt(a.start + (endOfA ? a.sweep : 0.0));
            const AcGePoint3d other = b.pointAt(b.start + (endOfB ? b.sweep : 0.0));
            const bool opposite = inward(a, endOfA).dotProduct(inward(b, endOfB)) < 0.0;
            if (opposite && place.distanceTo(other) <= tolerance) shared.push_back(place);
        }
    }
    return shared;
}

/// Circles in one plane.
std::vector<AcGePoint3d> cutCircles(const EllipseArc& a, const EllipseArc& b, double tolerance) {
    const double radius = a.u.length();
    const AcGeVector3d x = a.u / radius;
    const AcGeVector3d y = planeNormal(a).crossProduct(x);
    const AcGeVector3d between = b.center - a.center;
    const Circle2d first{{0.0, 0.0}, radius};
    const Circle2d second{{between.dotProduct(x), between.dotProduct(y)}, b.u.length()};
    const bool same =
        between.length() <= tolerance && std::abs(radius - second.radius) <= tolerance;
    if (same) return sharedEnds(a, b, tolerance);

    std::vector<AcGePoint3d> places;
    const CutPoints cuts = cutCircle(first, second, tolerance);
    for (int i = 0; i < cuts.count; ++i) {
        const AcGePoint3d place = a.center + x * cuts.points[i].x + y * cuts.points[i].y;
        const auto onA = placeOnArc(a, place, 2.0 * tolerance);
        if (onA && placeOnArc(b, place, 2.0 * tolerance)) places.push_back(*onA);
    }
    return places;
}

/// True for parts of one ellipse: five of its points tell it from any other.
bool areOfOneEllipse(const EllipseArc& a, const EllipseArc& b) {
    EllipseArc whole = a;
    whole.start = 0.0;
    whole.sweep = kFullTurn;
    const double size = a.u.length() + a.v.length() + (b.center - a.center).length();
    for (int i = 0; i < 5; ++i)
        if (!placeOnArc(whole, b.pointAt(kFullTurn * i / 5), 1e-11 * size)) return false;
    return true;
}

/// The line that two planes share.
LinePart commonLine(const EllipseArc& a, const AcGeVector3d& normalA, const EllipseArc& b,
                    const AcGeVector3d& normalB) {
    const AcGeVector3d along = normalA.crossProduct(normalB);
    // From a's centre, within its plane, straight at the other plane.
    const AcGeVector3d towards = along.crossProduct(normalA);
    const double step = (b.center - a.center).dotProduct(normalB) / towards.dotProduct(normalB);
    return {a.center + towards * step, along.normal()};
}

} // namespace

double LinePart::nearestParam(const AcGePoint3d& point) const noexcept {
    return std::clamp((point - origin).dotProduct(along) / along.lengthSqrd(), from, to);
}

bool isFlattened(const EllipseArc& arc) noexcept { return parallel(arc.u, arc.v, kParallel); }

bool isCircular(const EllipseArc& arc) noexcept {
    const double size = arc.u.lengthSqrd();
    return std::abs(arc.v.lengthSqrd() - size) <= kParallel * size &&
           std::abs(arc.u.dotProduct(arc.v)) <= kParallel * size;
}

std::vector<AcGePoint3d> cutLines(const LinePart& a, const LinePart& b, double tolerance) {
    const AcGeVector3d across = a.along.crossProduct(b.along);
    double t = 0.0;
    if (parallel(a.along, b.along, kParallel)) {
        // One line, or none in common; of one line only parts that touch share a place.
        const double other = b.along.dotProduct(a.along) / a.along.lengthSqrd();
        const double base = (b.origin - a.origin).dotProduct(a.along) / a.along.lengthSqrd();
        const double first = base + other * b.from;
        const double last = base + other * b.to;
        const double from = std::max(a.from, std::min(first, last));
        const double to = std::min(a.to, std::max(first, last));
        const double length = a.along.length();
        if (!(std::abs(to - from) * length <= tolerance)) return {};
        t = std::clamp(from, a.from, a.to);
    } else {
        t = (b.origin - a.origin).crossProduct(b.along).dotProduct(across) / across.lengthSqrd();
        // Where an end falls short the nearest place may lie beside the crossing.
        t = std::clamp(t, a.from, a.to);
        t = a.nearestParam(b.pointAt(b.nearestParam(a.pointAt(t))));
    }
    const AcGePoint3d place = a.pointAt(t);
    if (!(b.pointAt(b.nearestParam(place)).distanceTo(place) <= tolerance)) return {};
    return {place};
}

std::vector<AcGePoint3d> cutArc(const EllipseArc& arc, const LinePart& line, double tolerance) {
    const AcGeVector3d normal = planeNormal(arc);
    const double rise = line.along.dotProduct(normal);
    const double size = arc.u.length() + arc.v.length();
    const AcGePoint3d nearest = line.pointAt(line.nearestParam(arc.center));
    const double height = (nearest - arc.center).dotProduct(normal);
    // In the plane all along the arc: cut there.
    if (std::abs(height) <= tolerance && std::abs(rise) * size <= tolerance * line.along.length())
        return cutInPlane(arc, normal, line, tolerance);
    if (rise == 0.0) return {};

    const double t = (arc.center - line.origin).dotProduct(normal) / rise;
    const AcGePoint3d through = line.pointAt(std::clamp(t, line.from, line.to));
    const auto place = placeOnArc(arc, through, tolerance);
    return place ? std::vector<AcGePoint3d>{*place} : std::vector<AcGePoint3d>();
}

bool haveClosedForm(const EllipseArc& a, const EllipseArc& b) noexcept {
    if (isCircular(a) && isCircular(b)) return true;
    return !parallel(planeNormal(a), planeNormal(b), kSamePlane) || areOfOneEllipse(a, b);
}

std::vector<AcGePoint3d> cutArcs(const EllipseArc& a, const EllipseArc& b, double tolerance) {
    const AcGeVector3d normalA = planeNormal(a);
    const AcGeVector3d normalB = planeNormal(b);
    if (parallel(normalA, normalB, kSamePlane)) {
        const double height = (b.center - a.center).dotProduct(normalA);
        if (std::abs(height) > tolerance) return {};
        return isCircular(a) ? cutCircles(a, b, tolerance) : sharedEnds(a, b, tolerance);
    }
    std::vector<AcGePoint3d> places;
    for (const AcGePoint3d& place :
         cutInPlane(a, normalA, commonLine(a, normalA, b, normalB), tolerance))
        if (placeOnArc(b, place, tolerance)) places.push_back(place);
    return places;
}

} // namespace headless
