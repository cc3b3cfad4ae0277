#include "db/wide_chain.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "db/flat_transform.h"
#include "db/geometry_sink.h"

namespace headless {
namespace {

/// The four corners of a straight segment, or of the ends of an arc.
struct Ribbon {
    AcGePoint2d startLeft, startRight, endLeft, endRight;
};

AcGeVector2d leftOf(const AcGeVector2d& along) { return {-along.y, along.x}; }

Ribbon ribbonOf(const WideSegment& segment) {
    const AcGeVector2d atStart = leftOf(tangentOfSegment(segment.path, 0.0));
    const AcGeVector2d atEnd = leftOf(tangentOfSegment(segment.path, 1.0));
    return {segment.path.start + atStart * (segment.startWidth / 2.0),
            segment.path.start - atStart * (segment.startWidth / 2.0),
            segment.path.end + atEnd * (segment.endWidth / 2.0),
            segment.path.end - atEnd * (segment.endWidth / 2.0)};
}

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// Where the line from a to b meets the one from c to d.
std::optional<AcGePoint2d> crossing(const AcGePoint2d& a, const AcGePoint2d& b,
                                    const AcGePoint2d& c, const AcGePoint2d& d) {
    const AcGeVector2d along = b - a;
    const AcGeVector2d other = d - c;
    const double turn = cross(along, other);
    if (!(std::abs(turn) > 1e-12 * along.length() * other.length())) return std::nullopt;
    return a + along * (cross(c - a, other) / turn);
}

void turnCounterClockwise(PlanePolygon& polygon) {
    double area = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i)
        area += cross(polygon[i] - polygon[0], polygon[(i + 1) % polygon.size()] - polygon[0]);
    if (area < 0.0) std::reverse(polygon.begin(), polygon.end());
}

/// A place on an arc and the unit vector along it.
struct Station {
    AcGePoint2d at;
    AcGeVector2d along;
};

/// The ends of that many chords of an arc: what pointOnSegment and tangentOfSegment say, by one
/// sine and cosine each, as drawings may hold millions of them.
std::vector<Station> stationsOn(const BulgeSegment& arc, int chords) {
    const AcGeVector2d chord = arc.end - arc.start;
    const double half = 2.0 * std::atan(arc.bulge); // of the sweep
    const double whole = std::sin(half);
    // The chord turned to where the arc leaves its start.
    const AcGeVector2d leaving(chord.x * std::cos(half) + chord.y * whole,
                               chord.y * std::cos(half) - chord.x * whole);
    const AcGeVector2d begin = leaving.normal();
    std::vector<Station> stations;
    for (int i = 0; i <= chords; ++i) {
        // On the way the direction to a place turns half as fast as the arc.
        const double c = std::cos(half * i / chords);
        const double s = std::sin(half * i / chords);
        const double c2 = c * c - s * s;
        const double s2 = 2.0 * c * s;
        stations.push_back(
            {arc.start +
                 AcGeVector2d(leaving.x * c - leaving.y * s, leaving.y * c + leaving.x * s) *
                     (s / whole),
             AcGeVector2d(begin.x * c2 - begin.y * s2, begin.y * c2 + begin.x * s2)});
    }
    return stations;
}

/// The wide segments of a chain, joined to each other.
class Chain {
public:
    explicit Chain(std::span<const WideSegment> segments) {
        for (const WideSegment& segment : segments) {
            const double length = segment.path.start.distanceTo(segment.path.end);
            if (!(length > 0.0)) continue;
            segments_.push_back(segment);
            ribbons_.push_back(ribbonOf(segment));
        }
    }

    void joinAll(bool closed) {
        for (std::size_t i = 0; i + 1 < segments_.size(); ++i)
            join(i, i + 1);
        if (closed && segments_.size() > 2) join(segments_.size() - 1, 0);
    }

    std::vector<PlanePolygon> polygons() && {
        for (std::size_t i = 0; i < segments_.size(); ++i)
            if (segments_[i].isWide()) add(outline(i));
        return std::move(polygons_);
    }

private:
    void add(PlanePolygon polygon) {
        turnCounterClockwise(polygon);
        polygons_.push_back(std::move(polygon));
    }

    void join(std::size_t from, std::size_t to) {
        const BulgeSegment& a = segments_[from].path;
        const BulgeSegment& b = segments_[to].path;
        const double reach = std::max(segments_[from].endWidth, segments_[to].startWidth);
        if (a.bulge != 0.0 || b.bulge != 0.0 || !(reach > 0.0)) return;
        const AcGeVector2d along = tangentOfSegment(a, 1.0);
        const AcGeVector2d onward = tangentOfSegment(b, 0.0);
        // Sharper than 28 degrees a mitre would be more than four times as long as the line is
        // wide.
        constexpr double kSharpest = -0.883;
        Ribbon& first = ribbons_[from];
        Ribbon& second = ribbons_[to];
        const auto left =
            crossing(first.startLeft, first.endLeft, second.startLeft, second.endLeft);
        const auto right =
            crossing(first.startRight, first.endRight, second.startRight, second.endRight);
        if (!left || !right) return;
        const double shorter =
            std::min(a.start.distanceTo(a.end), b.start.distanceTo(b.end)) + reach;
        const bool fits = along.dotProduct(onward) > kSharpest &&
                          left->distanceTo(a.end) < shorter && right->distanceTo(a.end) < shorter;
        if (!fits) return bevel(from, to, cross(along, onward) > 0.0);
        first.endLeft = second.startLeft = *left;
        first.endRight = second.startRight = *right;
    }

    void bevel(std::size_t from, std::size_t to, bool turnsLeft) {
        const Ribbon& a = ribbons_[from];
        const Ribbon& b = ribbons_[to];
        add({segments_[from].path.end, turnsLeft ? a.endRight : a.endLeft,
             turnsLeft ? b.startRight : b.startLeft});
    }

    PlanePolygon outline(std::size_t index) const {
        const Ribbon& ribbon = ribbons_[index];
        const WideSegment& segment = segments_[index];
        if (segment.path.bulge == 0.0)
            return {ribbon.startLeft, ribbon.startRight, ribbon.endRight, ribbon.endLeft};
        constexpr double kChord = std::numbers::pi / 90.0;
        const double sweep = std::abs(4.0 * std::atan(segment.path.bulge));
        const int chords = std::clamp(static_cast<int>(std::ceil(sweep / kChord)), 2, 180);
        const std::vector<Station> stations = stationsOn(segment.path, chords);
        const auto count = stations.size();
        PlanePolygon sides(2 * count); // the right one, and the left one back
        for (std::size_t i = 0; i < count; ++i) {
            const double share = static_cast<double>(i) / chords;
            const AcGeVector2d across =
                leftOf(stations[i].along) *
                (std::lerp(segment.startWidth, segment.endWidth, share) / 2);
            sides[i] = stations[i].at - across;
            sides[2 * count - 1 - i] = stations[i].at + across;
        }
        return sides;
    }

    std::vector<WideSegment> segments_;
    std::vector<Ribbon> ribbons_;
    std::vector<PlanePolygon> polygons_;
};

} // namespace

std::vector<PlanePolygon> wideAreas(std::span<const WideSegment> segments, bool closed) {
    Chain chain(segments);
    chain.joinAll(closed);
    return std::move(chain).polygons();
}

void describeWide(GeometrySink& sink, std::span<const WideSegment> segments, bool closed,
                  double elevation, const AcGeVector3d& normal) {
    std::vector<AcGePoint3d> placed;
    for (const PlanePolygon& polygon : wideAreas(segments, closed)) {
        placed.clear();
        for (const AcGePoint2d& corner : polygon)
            placed.push_back(ocsToWorld({corner.x, corner.y, elevation}, normal));
        sink.area(placed);
    }
}

} // namespace headless
