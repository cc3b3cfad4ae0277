// The area inside a closed chain of segments, added up one by one.
#pragma once

#include "OrnCore/bulge_segment.h"

namespace orncore {

/// Area between an arc and its chord over the chord's square, signed like the bulge.
[[nodiscard]] inline double arcAreaOverChordSquare(double b) noexcept {
    const double square = b * b;
    // The closed form loses digits as 1 / b²; up to here the series is good to the last digit.
    constexpr double kShallow = 0.125;
    if (std::abs(b) < kShallow) {
        constexpr double k7 = 1.0 / 693.0, k9 = 1.0 / 1287.0, k11 = 1.0 / 2145.0;
        return b / 3.0 + b * square *
                             (1.0 / 15.0 -
                              square * (1.0 / 105.0 -
                                        square * (1.0 / 315.0 -
                                                  square * (k7 - square * (k9 - square * k11)))));
    }
    const double wide = 1.0 + square;
    return (wide * wide * std::atan(b) - b * (1.0 - square)) / (8.0 * square);
}

/// Sums in square drawing units, positive for a counter-clockwise chain.
class AreaSum {
public:
    void add(const Segment& segment) noexcept {
        // Measured from the first point: far from the origin the products would drown the area.
        if (!started_) origin_ = segment.start;
        started_ = true;
        const AcGeVector2d from = segment.start - origin_;
        const AcGeVector2d chord = chordOf(segment);
        twice_ += cross(from, chord);
        if (segment.bulge != 0.0)
            arcs_ += dot(chord, chord) * arcAreaOverChordSquare(segment.bulge);
    }
    [[nodiscard]] double value() const noexcept { return twice_ / 2.0 + arcs_; }

private:
    AcGePoint2d origin_;
    double twice_ = 0.0;
    double arcs_ = 0.0;
    bool started_ = false;
};

} // namespace orncore
