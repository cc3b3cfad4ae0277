// Segments of outlines as values: a straight line or a circular arc from one point to another.
//
// The bulge, tan(sweep / 4), shapes the segment: 0 is straight, positive turns counter-clockwise.
// Everything here is computed from the chord and the bulge, never from the circle's centre, so
// that an arc flattening to a line loses no digits on the way and needs no special case.
//
// In the segment's own frame (origin at the chord's middle, the chord from u = -1 to u = +1, v to
// the left) a position s from -1 at the start to +1 at the end is the point
//     u = (1 + b²) s / (1 + b² s²),    v = b (s² - 1) / (1 + b² s²).
#pragma once

#include <algorithm>
#include <cmath>

#include <gepnt2d.h>
#include <gevec2d.h>

namespace orncore {

/// A piece of an outline; coordinates in drawing units.
struct Segment {
    AcGePoint2d start;
    AcGePoint2d end;
    double bulge = 0.0;
};

[[nodiscard]] inline double dot(const AcGeVector2d& a, const AcGeVector2d& b) noexcept {
    return a.x * b.x + a.y * b.y;
}

/// z of the cross product: positive when b points to the left of a.
[[nodiscard]] inline double cross(const AcGeVector2d& a, const AcGeVector2d& b) noexcept {
    return a.x * b.y - a.y * b.x;
}

[[nodiscard]] inline AcGeVector2d leftOf(const AcGeVector2d& v) noexcept { return {-v.y, v.x}; }

[[nodiscard]] inline double norm(const AcGeVector2d& v) noexcept { return std::sqrt(dot(v, v)); }

[[nodiscard]] inline AcGeVector2d chordOf(const Segment& s) noexcept { return s.end - s.start; }

[[nodiscard]] inline AcGePoint2d chordMiddle(const Segment& s) noexcept {
    return s.start + chordOf(s) * 0.5;
}

[[nodiscard]] inline Segment reversed(const Segment& s) noexcept {
    return {s.end, s.start, -s.bulge};
}

/// The angle the segment turns through, in radians, negative when clockwise.
[[nodiscard]] inline double sweepOf(double bulge) noexcept { return 4.0 * std::atan(bulge); }

/// Arc length over chord length.
[[nodiscard]] inline double lengthOverChord(double bulge) noexcept {
    return bulge == 0.0 ? 1.0 : (1.0 + bulge * bulge) * std::atan(bulge) / bulge;
}

[[nodiscard]] inline double lengthOf(const Segment& s) noexcept {
    return norm(chordOf(s)) * lengthOverChord(s.bulge);
}

/// Radius of the segment's circle, infinite for a line.
[[nodiscard]] inline double radiusOf(const Segment& s) noexcept {
    const double b = std::abs(s.bulge);
    return norm(chordOf(s)) * (1.0 + b * b) / (4.0 * b);
}

/// The chord turned into the direction in which the segment leaves its start; as long as the chord.
[[nodiscard]] inline AcGeVector2d startTangent(const Segment& s) noexcept {
    const double b = s.bulge;
    const AcGeVector2d chord = chordOf(s);
    return (chord * (1.0 - b * b) - leftOf(chord) * (2.0 * b)) / (1.0 + b * b);
}

/// The chord turned into the direction in which the segment reaches its end.
[[nodiscard]] inline AcGeVector2d endTangent(const Segment& s) noexcept {
    const double b = s.bulge;
    const AcGeVector2d chord = chordOf(s);
    return (chord * (1.0 - b * b) + leftOf(chord) * (2.0 * b)) / (1.0 + b * b);
}

/// The point at position s of the frame described above.
[[nodiscard]] inline AcGePoint2d pointAt(const Segment& segment, double s) noexcept {
    const double b = segment.bulge;
    const AcGeVector2d half = chordOf(segment) * 0.5;
    const double scale = 1.0 / (1.0 + b * b * s * s);
    return chordMiddle(segment) + half * ((1.0 + b * b) * s * scale) +
           leftOf(half) * (b * (s * s - 1.0) * scale);
}

/// Position s of a point of the segment's line or circle; the inverse of pointAt.
[[nodiscard]] inline double positionOf(const Segment& s, const AcGePoint2d& point) noexcept {
    const AcGeVector2d half = chordOf(s) * 0.5;
    const AcGeVector2d fromMiddle = point - chordMiddle(s);
    const double square = dot(half, half);
    return dot(half, fromMiddle) / (square - s.bulge * cross(half, fromMiddle));
}

/// The stretch between two positions; the reverse direction when `from` is after `to`.
[[nodiscard]] inline Segment partOf(const Segment& s, double from, double to) noexcept {
    const double b = s.bulge;
    return {pointAt(s, from), pointAt(s, to),
            std::tan((std::atan(b * to) - std::atan(b * from)) / 2.0)};
}

/// Which side of the segment's line or circle a point is on: positive on the left of the direction
/// of travel, 0 on it. Grows with the distance, in square units, without a cancellation for shallow
/// arcs; distanceToCarrier makes a length of it.
[[nodiscard]] inline double sideOf(const Segment& s, const AcGePoint2d& point) noexcept {
    const double b = s.bulge;
    const AcGeVector2d half = chordOf(s) * 0.5;
    const AcGeVector2d fromMiddle = point - chordMiddle(s);
    return (1.0 - b * b) * cross(half, fromMiddle) -
           b * (dot(fromMiddle, fromMiddle) - dot(half, half));
}

/// Where the side value grows less: away from the centre of a counter-clockwise arc, towards that
/// of a clockwise one, to the right of a line.
[[nodiscard]] inline AcGeVector2d rightwards(const Segment& s, const AcGePoint2d& point) noexcept {
    const double b = s.bulge;
    return (point - chordMiddle(s)) * b - leftOf(chordOf(s)) * ((1.0 - b * b) / 4.0);
}

/// Distance of a point from the segment's whole line or circle. The chord must not be null.
[[nodiscard]] inline double distanceToCarrier(const Segment& s, const AcGePoint2d& point) noexcept {
    const double b = s.bulge;
    const double reach = norm(rightwards(s, point)) + norm(chordOf(s)) * (1.0 + b * b) / 4.0;
    return std::abs(sideOf(s, point)) / reach;
}

/// True when the carrier's point nearest to `point` belongs to the segment.
[[nodiscard]] inline bool isBesideSegment(const Segment& s, const AcGePoint2d& point) noexcept {
    const bool afterStart = dot(startTangent(s), point - s.start) >= 0.0;
    const bool beforeEnd = dot(endTangent(s), point - s.end) <= 0.0;
    return std::abs(s.bulge) <= 1.0 ? afterStart && beforeEnd : afterStart || beforeEnd;
}

[[nodiscard]] inline double distanceToEnds(const Segment& s, const AcGePoint2d& point) noexcept {
    return std::min(norm(point - s.start), norm(point - s.end));
}

[[nodiscard]] inline double distanceTo(const Segment& s, const AcGePoint2d& point) noexcept {
    const bool hasChord = s.start.x != s.end.x || s.start.y != s.end.y;
    return hasChord && isBesideSegment(s, point) ? distanceToCarrier(s, point)
                                                 : distanceToEnds(s, point);
}

/// The carrier's point nearest to `point`; for a circle's centre, which is as near to all of them,
/// the start. The chord must not be null.
[[nodiscard]] inline AcGePoint2d projectToCarrier(const Segment& s,
                                                  const AcGePoint2d& point) noexcept {
    const AcGeVector2d right = rightwards(s, point);
    const double length = norm(right);
    if (length == 0.0) return s.start;
    const double step = std::copysign(distanceToCarrier(s, point), sideOf(s, point));
    return point + right * (step / length);
}

[[nodiscard]] inline AcGePoint2d nearestEnd(const Segment& s, const AcGePoint2d& point) noexcept {
    return norm(point - s.start) <= norm(point - s.end) ? s.start : s.end;
}

/// The segment's own point nearest to `point`.
[[nodiscard]] inline AcGePoint2d closestPoint(const Segment& s, const AcGePoint2d& point) noexcept {
    const bool hasChord = s.start.x != s.end.x || s.start.y != s.end.y;
    return hasChord && isBesideSegment(s, point) ? projectToCarrier(s, point)
                                                 : nearestEnd(s, point);
}

} // namespace orncore
