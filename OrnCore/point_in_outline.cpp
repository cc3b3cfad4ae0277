#include "OrnCore/point_in_outline.h"

#include <algorithm>
#include <cmath>

namespace orncore {
namespace {

/// A point with a square about it, as high as twice the tolerance, against which edges are first
/// tested.
struct Target {
    Target(const AcGePoint2d& p, double tol) noexcept
        : point(p), tolerance(std::max(0.0, tol)), limit(tolerance * tolerance),
          left(p.x - tolerance), right(p.x + tolerance), bottom(p.y - tolerance),
          top(p.y + tolerance) {}

    /// 1 above the square, 2 below it, 0 level with it: two ends with a common bit pass it by.
    [[nodiscard]] unsigned level(double y) const noexcept {
        return static_cast<unsigned>(y > top) | static_cast<unsigned>(y < bottom) << 1U;
    }
    [[nodiscard]] bool isBetween(double y1, double y2) const noexcept {
        return (y1 > point.y) != (y2 > point.y);
    }

    AcGePoint2d point;
    double tolerance;
    double limit; // the tolerance squared
    double left, right, bottom, top;
};

/// What one segment says about the target.
struct Answer {
    bool onSegment = false;
    bool crossed = false; // by the ray to the right
};

/// Whether a point beside an edge's line is no farther from the edge than the tolerance.
bool isNear(const Target& target, const AcGeVector2d& toA, const AcGeVector2d& toB) noexcept {
    const AcGeVector2d edge = toB - toA;
    if (dot(edge, toA) >= 0.0) return dot(toA, toA) <= target.limit;
    if (dot(edge, toB) <= 0.0) return dot(toB, toB) <= target.limit;
    const double across = cross(toA, toB);
    return across * across <= target.limit * dot(edge, edge);
}

/// An end of an edge as the target sees it; the next edge begins with it.
struct End {
    End(const Target& target, const AcGePoint2d& p) noexcept
        : fromTarget(p - target.point), above(fromTarget.y > 0.0) {}

    AcGeVector2d fromTarget;
    bool above;
};

/// Free of branches but for points near the edge's line, which are few: the side of an edge is a
/// coin toss that a processor cannot foresee.
inline Answer askLine(const Target& target, const End& a, const End& b) noexcept {
    const AcGeVector2d edge = b.fromTarget - a.fromTarget;
    const double across = cross(a.fromTarget, b.fromTarget);
    if (!(across * across > target.limit * dot(edge, edge))) [[unlikely]] {
        if (isNear(target, a.fromTarget, b.fromTarget)) return {true, false};
        if (std::isnan(across)) return {};
    }
    const auto passes = static_cast<unsigned>(a.above != b.above);
    const auto passesRight = static_cast<unsigned>((across > 0.0) == b.above);
    return {false, (passes & passesRight) != 0};
}

/// The stretches of a counter-clockwise arc between its highest and lowest points.
struct MonotoneRuns {
    double y[4];    // run k goes from y[k] to y[k + 1]
    int count;      // 1 to 3
    bool rising[3]; // a rising run is on the right half of the circle, a falling one on the left
};

/// 1 + cosine, without cancellation near -1.
double onePlus(double cosine, double sine) noexcept {
    return cosine < 0.0 ? sine * sine / (1.0 - cosine) : 1.0 + cosine;
}

MonotoneRuns runsOf(const Segment& arc) noexcept {
    const double chord = norm(chordOf(arc));
    const AcGeVector2d out = startTangent(arc) / chord;
    const AcGeVector2d in = endTangent(arc) / chord;
    // A level tangent belongs to the run that follows the start or comes before the end.
    const bool startsRising = out.y > 0.0 || (out.y == 0.0 && out.x > 0.0);
    const bool endsRising = in.y > 0.0 || (in.y == 0.0 && in.x < 0.0);
    // With both ends on one half the arc stays there or goes once round the other half: that is
    // when its direction has come out behind where it began. Comparing the tangents is doubtful
    // only for arcs of nearly no sweep or nearly a full one, which are clear from their bulge.
    const bool behind = startsRising ? in.x > out.x : in.x < out.x;
    const bool wrapped = arc.bulge > 2.0 || (arc.bulge > 0.5 && behind);
    const int turns = startsRising != endsRising ? 1 : (wrapped ? 2 : 0);

    MonotoneRuns runs{};
    runs.count = turns + 1;
    const double radius = radiusOf(arc);
    double y = arc.start.y;
    bool rising = startsRising;
    for (int k = 0; k <= turns; ++k, rising = !rising) {
        runs.y[k] = y;
        runs.rising[k] = rising;
        const double height =
            k > 0 ? 2.0 * radius : radius * onePlus(rising ? out.x : -out.x, out.y);
        y += rising ? height : -height;
    }
    runs.y[runs.count] = arc.end.y;
    return runs;
}

bool crossesOddly(const Target& target, const Segment& arc) noexcept {
    const double b = arc.bulge;
    const bool inCircle = sideOf(arc, target.point) > 0.0;
    const double centreX =
        chordMiddle(arc).x + leftOf(chordOf(arc)).x * ((1.0 - b * b) / (4.0 * b));
    const bool leftOfCentre = target.point.x < centreX;
    const MonotoneRuns runs = runsOf(arc);
    bool odd = false;
    for (int k = 0; k < runs.count; ++k) {
        if (!target.isBetween(runs.y[k], runs.y[k + 1])) continue;
        const bool toTheRight =
            runs.rising[k] ? inCircle || leftOfCentre : !inCircle && leftOfCentre;
        odd ^= toTheRight;
    }
    return odd;
}

Answer askArc(const Target& target, const Segment& arc) noexcept {
    // No point of the arc is farther from its chord's box than the arc is high.
    const AcGeVector2d chord = chordOf(arc);
    const double height = std::abs(arc.bulge) * (std::abs(chord.x) + std::abs(chord.y)) / 2.0;
    const auto [low, high] = std::minmax(arc.start.y, arc.end.y);
    if (low - height > target.top || high + height < target.bottom) return {};
    if (std::max(arc.start.x, arc.end.x) + height < target.left) return {};
    if (distanceTo(arc, target.point) <= target.tolerance) return {true, false};
    if (dot(chord, chord) == 0.0) return {};
    return {false, crossesOddly(target, arc.bulge > 0.0 ? arc : reversed(arc))};
}

Place placeFrom(bool odd) noexcept { return odd ? Place::kInside : Place::kOutside; }

AcGePoint2d flat(const AcGePoint3d& p) noexcept { return {p.x, p.y}; }

/// In a few edges passing some by is itself the coin toss: all are asked.
Place placeInShort(const Target& target, std::span<const AcGePoint3d> outline) noexcept {
    End from(target, flat(outline.back()));
    bool odd = false;
    for (const AcGePoint3d& vertex : outline) {
        const End to(target, flat(vertex));
        const Answer answer = askLine(target, from, to);
        if (answer.onSegment) return Place::kOnOutline;
        odd ^= answer.crossed;
        from = to;
    }
    return placeFrom(odd);
}

/// The first vertex from i on that is not on the side of the square, above or below it, on which
/// `from` is.
std::size_t passBy(const Target& target, std::span<const AcGePoint3d> outline, double from,
                   std::size_t i) noexcept {
    if (from > target.top) {
        while (i < outline.size() && outline[i].y > target.top)
            ++i;
    } else if (from < target.bottom) {
        while (i < outline.size() && outline[i].y < target.bottom)
            ++i;
    }
    return i;
}

/// Long outlines pass the square by in long runs, which cost one comparison a vertex.
Place placeInLong(const Target& target, std::span<const AcGePoint3d> outline) noexcept {
    const AcGePoint3d* from = &outline.back();
    bool odd = false;
    for (std::size_t i = 0;; ++i) {
        const std::size_t next = passBy(target, outline, from->y, i);
        if (next == outline.size()) return placeFrom(odd);
        if (next != i) from = &outline[next - 1];
        i = next;
        const Answer answer = askLine(target, {target, flat(*from)}, {target, flat(outline[i])});
        if (answer.onSegment) return Place::kOnOutline;
        odd ^= answer.crossed;
        from = &outline[i];
    }
}

} // namespace

Place placeOf(const AcGePoint2d& point, std::span<const AcGePoint3d> outline,
              double tolerance) noexcept {
    if (outline.empty()) return Place::kOutside;
    constexpr std::size_t kShort = 16;
    const Target target(point, tolerance);
    return outline.size() < kShort ? placeInShort(target, outline) : placeInLong(target, outline);
}

Place placeOf(const AcGePoint2d& point, Outline outline, double tolerance) noexcept {
    // Below this an arc of a kilometre is 1e-8 high.
    constexpr double kStraight = 1e-14;
    if (outline.empty()) return Place::kOutside;
    const Target target(point, tolerance);
    const OutlineVertex* from = &outline.back();
    bool odd = false;
    for (const OutlineVertex& to : outline) {
        Answer answer;
        if (std::abs(from->bulge) > kStraight) {
            answer = askArc(target, {from->point, to.point, from->bulge});
        } else if ((target.level(from->point.y) & target.level(to.point.y)) == 0) {
            answer = askLine(target, {target, from->point}, {target, to.point});
        }
        if (answer.onSegment) return Place::kOnOutline;
        odd ^= answer.crossed;
        from = &to;
    }
    return placeFrom(odd);
}

} // namespace orncore
