#include "OrnCore/outline.h"

#include "OrnCore/area_sum.h"

namespace orncore {
namespace {

/// Counts passes of a direction through that of the x axis, counter-clockwise ones as +1.
///
/// A closed walk through directions turns by as many full circles as it passes any one of them, so
/// counting needs no angles.
class TurnCounter {
public:
    /// Turns the shorter way to the new direction; clockwise when it is opposite.
    void turnTo(const AcGeVector2d& direction) noexcept {
        if (!started_) {
            first_ = direction;
            started_ = true;
        } else {
            count_ += passes(last_, direction);
        }
        last_ = direction;
    }
    [[nodiscard]] int backToFirst() const noexcept {
        return started_ ? count_ + passes(last_, first_) : 0;
    }

private:
    /// Directions from the x axis up to but not including its opposite.
    static bool isUpper(const AcGeVector2d& d) noexcept {
        return d.y > 0.0 || (d.y == 0.0 && d.x > 0.0);
    }
    static int passes(const AcGeVector2d& from, const AcGeVector2d& to) noexcept {
        const bool upper = isUpper(from);
        if (upper == isUpper(to)) return 0;
        const bool counterClockwise = cross(from, to) > 0.0;
        if (counterClockwise) return upper ? 0 : 1;
        return upper ? -1 : 0;
    }

    AcGeVector2d first_;
    AcGeVector2d last_;
    int count_ = 0;
    bool started_ = false;
};

std::size_t segmentCount(Outline outline, bool closed) noexcept {
    if (outline.empty()) return 0;
    return closed ? outline.size() : outline.size() - 1;
}

} // namespace

double signedArea(Outline outline) noexcept {
    AreaSum sum;
    for (std::size_t i = 0; i < outline.size(); ++i)
        sum.add(segmentAt(outline, i));
    return sum.value();
}

double lengthOf(Outline outline, bool closed) noexcept {
    double sum = 0.0;
    const std::size_t count = segmentCount(outline, closed);
    for (std::size_t i = 0; i < count; ++i)
        sum += lengthOf(segmentAt(outline, i));
    return sum;
}

std::optional<int> turningNumber(Outline outline, bool closed) noexcept {
    constexpr double kShortest = 1e-10;
    TurnCounter turns;
    const std::size_t count = segmentCount(outline, closed);
    for (std::size_t i = 0; i < count; ++i) {
        const Segment segment = segmentAt(outline, i);
        const AcGeVector2d chord = chordOf(segment);
        const double square = dot(chord, chord);
        if (!std::isfinite(square + segment.bulge)) return std::nullopt;
        if (square <= kShortest * kShortest) continue;
        if (segment.bulge == 0.0) {
            turns.turnTo(chord);
        } else {
            // An arc is two turns of half its sweep, each less than half a circle.
            turns.turnTo(startTangent(segment));
            turns.turnTo(chord);
            turns.turnTo(endTangent(segment));
        }
    }
    return turns.backToFirst();
}

} // namespace orncore
