#include "geometry/outer_outline.h"

#include <algorithm>
#include <numbers>

namespace geometry {
namespace {

using orncore::Segment;

// Turns smaller than this, a millimetre in ten metres, are the rounding of a drawn straight run.
constexpr double kStraightTurn = 1e-4;
constexpr double kSamePlace = 1e-6;

struct Corner {
    AcGePoint2d point;
    std::size_t segment; // that leaves it, or that it replaces
};

/// Where the tangents at an arc's ends meet; the arc turns by less than half a circle.
AcGePoint2d tangentCorner(const Segment& arc) {
    const double b = arc.bulge;
    return orncore::chordMiddle(arc) - orncore::leftOf(orncore::chordOf(arc)) * (b / (1.0 - b * b));
}

int partsOf(double sweep) {
    // Beyond this the corner of the end tangents runs away: half a circle has none at all.
    constexpr double kOneCorner = 170.0 / 180.0 * std::numbers::pi;
    constexpr double kRounding = 1e-9;
    if (sweep < kOneCorner) return 1;
    return static_cast<int>(std::ceil(sweep / (std::numbers::pi / 2.0) - kRounding));
}

void appendTangentCorners(const Segment& arc, std::size_t segment, std::vector<Corner>& corners) {
    const int parts = partsOf(std::abs(orncore::sweepOf(arc.bulge)));
    const auto position = [&](int cut) {
        const double along = 2.0 * cut / parts - 1.0;
        return std::tan(std::atan(arc.bulge) * along) / arc.bulge;
    };
    for (int i = 0; i < parts; ++i)
        corners.push_back(
            {tangentCorner(orncore::partOf(arc, position(i), position(i + 1))), segment});
}

/// The tangent outline with every vertex still in it.
std::vector<Corner> tangentOutline(orncore::Outline outline) {
    const double direction = orncore::signedArea(outline);
    std::vector<Corner> corners;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Segment segment = orncore::segmentAt(outline, i);
        corners.push_back({segment.start, i});
        if (segment.bulge * direction > 0.0) appendTangentCorners(segment, i, corners);
    }
    return corners;
}

std::vector<Corner> withoutRepeats(const std::vector<Corner>& corners) {
    std::vector<Corner> distinct;
    for (const Corner& corner : corners) {
        if (distinct.empty() || orncore::norm(corner.point - distinct.back().point) > kSamePlace)
            distinct.push_back(corner);
    }
    while (distinct.size() > 1 &&
           orncore::norm(distinct.back().point - distinct.front().point) <= kSamePlace)
        distinct.pop_back();
    return distinct;
}

bool goesStraightOn(const AcGeVector2d& in, const AcGeVector2d& out) {
    const double turn = std::abs(orncore::cross(in, out));
    return orncore::dot(in, out) > 0.0 &&
           turn <= kStraightTurn * orncore::norm(in) * orncore::norm(out);
}

std::vector<Corner> withoutStraightRuns(const std::vector<Corner>& corners) {
    std::vector<Corner> turning;
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const AcGePoint2d& before = corners[(i + n - 1) % n].point;
        const AcGePoint2d& after = corners[(i + 1) % n].point;
        const AcGePoint2d& here = corners[i].point;
        if (!goesStraightOn(here - before, after - here)) turning.push_back(corners[i]);
    }
    return turning;
}

} // namespace

std::vector<AcGePoint2d> outerCorners(orncore::Outline outline) {
    std::vector<Corner> corners = withoutStraightRuns(withoutRepeats(tangentOutline(outline)));
    // When nothing of the first segment is a corner, its side began at the last one.
    if (!corners.empty() && corners.front().segment != 0)
        std::ranges::rotate(corners, corners.end() - 1);
    std::vector<AcGePoint2d> points;
    points.reserve(corners.size());
    for (const Corner& corner : corners)
        points.push_back(corner.point);
    return points;
}

} // namespace geometry
