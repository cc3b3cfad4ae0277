// The independent route to what an outline's arcs enclose: the same outline with its arcs cut into
// many chords, laid out with sines and cosines about their centres.
#pragma once

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "OrnCore/outline.h"

namespace test_support {

inline constexpr int kChords = 2000; // of one arc

/// Points of the segment from its start up to but not including its end.
inline std::vector<AcGePoint2d> flattened(const orncore::Segment& segment, int chords = kChords) {
    const AcGePoint2d a = segment.start;
    const AcGePoint2d b = segment.end;
    if (segment.bulge == 0.0) return {a};
    const double sweep = 4.0 * std::atan(segment.bulge);
    const double chord = std::hypot(b.x - a.x, b.y - a.y);
    const double radius = chord / (2.0 * std::sin(std::abs(sweep) / 2.0));
    // The chord seen from the centre: its direction less a quarter circle, less half the sweep.
    const double chordAngle = std::atan2(b.y - a.y, b.x - a.x);
    const double side = segment.bulge > 0.0 ? 1.0 : -1.0;
    const double startAngle = chordAngle - side * std::numbers::pi / 2.0 - sweep / 2.0;
    const AcGePoint2d centre(a.x - radius * std::cos(startAngle),
                             a.y - radius * std::sin(startAngle));
    std::vector<AcGePoint2d> points;
    for (int i = 0; i < chords; ++i) {
        const double angle = startAngle + sweep * i / chords;
        points.emplace_back(centre.x + radius * std::cos(angle),
                            centre.y + radius * std::sin(angle));
    }
    return points;
}

inline std::vector<AcGePoint2d> flattened(orncore::Outline outline, int chords = kChords) {
    std::vector<AcGePoint2d> points;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const std::vector<AcGePoint2d> part = flattened(orncore::segmentAt(outline, i), chords);
        points.insert(points.end(), part.begin(), part.end());
    }
    return points;
}

/// A star-shaped outline about the origin, so that it does not cross itself while its arcs are
/// shallow; radii from 50 to 100.
inline std::vector<orncore::OutlineVertex> randomStar(std::mt19937& random, int corners,
                                                      double greatestBulge) {
    std::uniform_real_distribution<double> radius(50.0, 100.0);
    std::uniform_real_distribution<double> bulge(-greatestBulge, greatestBulge);
    std::vector<orncore::OutlineVertex> outline;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        const double r = radius(random);
        outline.push_back({{r * std::cos(angle), r * std::sin(angle)}, bulge(random)});
    }
    return outline;
}

} // namespace test_support
