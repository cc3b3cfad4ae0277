#include "ge/bulge.h"

#include <cmath>
#include <iterator>

namespace headless {

namespace {

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// `v` turned counter-clockwise by the angle with this cosine and sine.
AcGeVector2d turned(const AcGeVector2d& v, double cosine, double sine) {
    return v * cosine + v.perpVector() * sine;
}

/// Area between a unit chord and the arc over it.
double unitSegmentArea(double bulge) noexcept {
    const double b2 = bulge * bulge;
    // The closed form loses about 1 / b^2 units in the last place, the series' first left-out term
    // is 1e-17 of the sum at the limit; at 0.25 both are good to 4e-15.
    constexpr double kShallow = 0.25;
    if (std::abs(bulge) >= kShallow) {
        const double grown = 1.0 + b2;
        return (grown * grown * std::atan(bulge) - bulge * (1.0 - b2)) / (8.0 * b2);
    }
    // The sum of (-1)^k b^(2k-1) / ((2k-3) (2k-1) (2k+1)) from k = 1 on, by Horner's rule.
    constexpr double kTerms[] = {1.0 / 3.0,     1.0 / 15.0,   -1.0 / 105.0,  1.0 / 315.0,
                                 -1.0 / 693.0,  1.0 / 1287.0, -1.0 / 2145.0, 1.0 / 3315.0,
                                 -1.0 / 4845.0, 1.0 / 6783.0};
    double sum = 0.0;
    for (int k = static_cast<int>(std::size(kTerms)) - 1; k >= 0; --k)
        sum = sum * b2 + kTerms[k];
    return sum * bulge;
}

/// How much longer the arc is than its chord; `bulge` is not 0.
double arcOverChord(double bulge) noexcept {
    return (1.0 + bulge * bulge) * std::atan(bulge) / bulge;
}

/// Calls `visit` with each segment of a polyline.
template <class Visit>
void forEachSegment(std::span<const AcGePoint2d> points, std::span<const double> bulges,
                    bool closed, const Visit& visit) {
    const std::size_t count = points.size();
    if (count < 2) return;
    const std::size_t shaped = std::min(count - 1, bulges.size());
    for (std::size_t i = 0; i < shaped; ++i)
        visit(points[i], points[i + 1], bulges[i]);
    for (std::size_t i = shaped; i + 1 < count; ++i)
        visit(points[i], points[i + 1], 0.0);
    if (closed)
        visit(points[count - 1], points[0], bulges.size() >= count ? bulges[count - 1] : 0.0);
}

/// The row of an affine map as a function of a plane's two coordinates at a given height.
struct LinearForm {
    AcGeVector2d gradient;
    double constant;
};

LinearForm rowOf(const AcGeMatrix3d& m, unsigned int row, double elevation) {
    return {{m.entry[row][0], m.entry[row][1]}, m.entry[row][2] * elevation + m.entry[row][3]};
}

void addSegment(Extents3d& extents, const BulgeSegment& segment, double elevation,
                const AcGeMatrix3d& toWorld) {
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const LinearForm form = rowOf(toWorld, axis, elevation);
        extents.addRange(axis, form.constant - farthestAlong(segment, -form.gradient),
                         form.constant + farthestAlong(segment, form.gradient));
    }
}

} // namespace

Arc2d arcFromBulge(const AcGePoint2d& start, const AcGePoint2d& end, double bulge) noexcept {
    const AcGeVector2d chord = end - start;
    const double b2 = bulge * bulge;
    Arc2d arc;
    arc.center = start + chord * 0.5 + chord.perpVector() * ((1.0 - b2) / (4.0 * bulge));
    arc.radius = chord.length() * (1.0 + b2) / (4.0 * std::abs(bulge));
    arc.startAngle = (start - arc.center).angle();
    arc.sweep = 4.0 * std::atan(bulge);
    return arc;
}

double bulgeOfSweep(double sweep) noexcept { return std::tan(sweep / 4.0); }

double arcLength(double chord, double bulge) noexcept {
    return bulge == 0.0 ? chord : chord * arcOverChord(bulge);
}

double circularSegmentArea(double chord, double bulge) noexcept {
    return chord * chord * unitSegmentArea(bulge);
}

AcGePoint2d pointOnSegment(const BulgeSegment& segment, double share) noexcept {
    const AcGeVector2d chord = segment.end - segment.start;
    if (segment.bulge == 0.0) return segment.start + chord * share;
    // The chord of the arc's first part, seen from the start: no centre needed.
    const double quarter = std::atan(segment.bulge);
    const double ratio = std::sin(2.0 * quarter * share) / std::sin(2.0 * quarter);
    const double turn = -2.0 * quarter * (1.0 - share);
    return segment.start + turned(chord, std::cos(turn), std::sin(turn)) * ratio;
}

AcGeVector2d tangentOfSegment(const BulgeSegment& segment, double share) noexcept {
    const AcGeVector2d chord = (segment.end - segment.start).normal();
    const double turn = 4.0 * std::atan(segment.bulge) * (share - 0.5);
    return turned(chord, std::cos(turn), std::sin(turn));
}

double farthestAlong(const BulgeSegment& segment, const AcGeVector2d& direction) noexcept {
    const double atStart = segment.start.asVector().dotProduct(direction);
    const double atEnd = segment.end.asVector().dotProduct(direction);
    const double ends = std::max(atStart, atEnd);
    const double chord = segment.start.distanceTo(segment.end);
    const double steepness = direction.length();
    if (segment.bulge == 0.0 || chord == 0.0 || steepness == 0.0) return ends;

    // Counter-clockwise from here on. The normals at the ends are the chord's turned by half the
    // sweep, whose cosine and sine are rational in the bulge.
    const bool reversed = segment.bulge < 0.0;
    const AcGePoint2d& from = reversed ? segment.end : segment.start;
    const AcGePoint2d& to = reversed ? segment.start : segment.end;
    const double bulge = std::abs(segment.bulge);
    const double grown = 1.0 + bulge * bulge;
    const double cosine = (1.0 - bulge * bulge) / grown;
    const double sine = 2.0 * bulge / grown;
    const AcGeVector2d outward = -(to - from).perpVector() / chord;
    const AcGeVector2d first = turned(outward, cosine, -sine);
    const AcGeVector2d last = turned(outward, cosine, sine);

    const AcGeVector2d wanted = direction / steepness;
    const bool passed = bulge <= 1.0 ? cross(first, wanted) > 0.0 && cross(wanted, last) > 0.0
                                     : cross(last, wanted) <= 0.0 || cross(wanted, first) <= 0.0;
    if (!passed) return ends;

    // radius * (1 - cos) beyond the start, written so that small angles keep their digits.
    const double radius = chord * grown / (4.0 * bulge);
    const double across = cross(first, wanted);
    const double along = first.dotProduct(wanted);
    const double rise = along > 0.0 ? across * across / (1.0 + along) : 1.0 - along;
    return std::max(ends, from.asVector().dotProduct(direction) + steepness * radius * rise);
}

Extents2d segmentExtents(const BulgeSegment& segment) noexcept {
    Extents2d extents;
    const AcGeVector2d axes[] = {AcGeVector2d::kXAxis, AcGeVector2d::kYAxis};
    for (unsigned int i = 0; i < 2; ++i)
        extents.addRange(i, -farthestAlong(segment, -axes[i]), farthestAlong(segment, axes[i]));
    return extents;
}

Extents3d segmentExtents(const BulgeSegment& segment, double elevation,
                         const AcGeMatrix3d& toWorld) noexcept {
    Extents3d extents;
    addSegment(extents, segment, elevation, toWorld);
    return extents;
}

double polylineArea(std::span<const AcGePoint2d> points, std::span<const double> bulges,
                    bool closed) noexcept {
    if (points.empty()) return 0.0;
    // Seen from the first vertex: products of far coordinates would cancel.
    const AcGePoint2d origin = points[0];
    double twice = 0.0;
    double arcs = 0.0;
    forEachSegment(points, bulges, closed,
                   [&](const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
                       twice += cross(start - origin, end - origin);
                       if (bulge != 0.0)
                           arcs += (end - start).lengthSqrd() * unitSegmentArea(bulge);
                   });
    return twice / 2.0 + arcs;
}

double polylineLength(std::span<const AcGePoint2d> points, std::span<const double> bulges,
                      bool closed) noexcept {
    double length = 0.0;
    forEachSegment(points, bulges, closed,
                   [&](const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
                       const double chord = start.distanceTo(end);
                       length += bulge == 0.0 ? chord : chord * arcOverChord(bulge);
                   });
    return length;
}

Extents3d polylineExtents(std::span<const AcGePoint2d> points, std::span<const double> bulges,
                          bool closed, double elevation, const AcGeMatrix3d& toWorld) noexcept {
    Extents3d extents;
    for (const AcGePoint2d& point : points)
        extents.add(toWorld * AcGePoint3d(point.x, point.y, elevation));
    forEachSegment(points, bulges, closed,
                   [&](const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
                       if (bulge != 0.0)
                           addSegment(extents, {start, end, bulge}, elevation, toWorld);
                   });
    return extents;
}

} // namespace headless
