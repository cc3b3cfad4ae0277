#include "OrnCore/segment_intersection.h"

#include <algorithm>
#include <cmath>

namespace orncore {
namespace {

/// a s² + b s + c
struct Quadratic {
    double a, b, c;

    [[nodiscard]] double discriminant() const noexcept { return b * b - 4.0 * a * c; }
    /// Where it is nearest to zero when it has no root.
    [[nodiscard]] double apex() const noexcept { return -b / (2.0 * a); }
};

/// The second segment's side value (sideOf) along the first one's carrier.
///
/// Both coordinates of the carrier are quadratics over the same 1 + b² s², and so is the square of
/// the distance from any point: multiplied by that, the side value is a quadratic in s.
Quadratic sideAlong(const Segment& first, const Segment& second) noexcept {
    const double b1 = first.bulge;
    const double b2 = second.bulge;
    const AcGeVector2d half1 = chordOf(first) * 0.5;
    const AcGeVector2d half2 = chordOf(second) * 0.5;
    const AcGeVector2d up1 = leftOf(half1);
    const AcGeVector2d offset = chordMiddle(first) - chordMiddle(second);
    const double straight = 1.0 - b2 * b2;
    const double square1 = dot(half1, half1);

    const double level =
        straight * cross(half2, offset) - b2 * (dot(offset, offset) - dot(half2, half2));
    const double alongChord = straight * cross(half2, half1) - 2.0 * b2 * dot(offset, half1);
    const double acrossChord = straight * dot(half2, half1) - 2.0 * b2 * dot(offset, up1);
    return {level * b1 * b1 + acrossChord * b1 - b2 * square1, alongChord * (1.0 + b1 * b1),
            level - acrossChord * b1 - b2 * square1 * b1 * b1};
}

/// Real roots in ascending order, found without cancellation.
std::vector<double> rootsOf(const Quadratic& q) {
    const double discriminant = q.discriminant();
    if (!(discriminant >= 0.0)) return {};
    const double sum = -(q.b + std::copysign(std::sqrt(discriminant), q.b)) / 2.0;
    std::vector<double> roots;
    if (q.a != 0.0) roots.push_back(sum / q.a);
    if (sum != 0.0) roots.push_back(q.c / sum);
    std::erase_if(roots, [](double root) { return !std::isfinite(root); });
    std::ranges::sort(roots);
    return roots;
}

/// Collects positions on the first segment whose points lie on both.
class Meeting {
public:
    Meeting(const Segment& first, const Segment& second, double tolerance)
        : first_(first), second_(second), tolerance_(tolerance) {}

    void tryPosition(double position) {
        const double s = std::clamp(position, -1.0, 1.0);
        tryPoint(s, pointAt(first_, s));
    }
    void tryEndOfSecond(const AcGePoint2d& end) {
        if (distanceTo(first_, end) <= tolerance_)
            tryPoint(std::clamp(positionOf(first_, end), -1.0, 1.0), end);
    }
    [[nodiscard]] std::vector<AcGePoint2d> points() {
        std::ranges::sort(found_, {}, &Found::position);
        std::vector<AcGePoint2d> points;
        for (const Found& found : found_)
            points.push_back(found.point);
        return points;
    }

private:
    struct Found {
        double position;
        AcGePoint2d point;
    };

    void tryPoint(double position, const AcGePoint2d& point) {
        if (!(distanceTo(second_, point) <= tolerance_)) return;
        const auto isSame = [&](const Found& other) {
            return norm(other.point - point) <= tolerance_;
        };
        if (std::ranges::none_of(found_, isSame)) found_.push_back({position, point});
    }

    const Segment& first_;
    const Segment& second_;
    double tolerance_;
    std::vector<Found> found_;
};

} // namespace

std::vector<double> carrierCrossings(const Segment& first, const Segment& second) {
    return rootsOf(sideAlong(first, second));
}

std::vector<AcGePoint2d> intersect(const Segment& first, const Segment& second, double tolerance) {
    Meeting meeting(first, second, tolerance);
    const Quadratic side = sideAlong(first, second);
    for (const double root : rootsOf(side))
        meeting.tryPosition(root);
    if (side.discriminant() < 0.0) meeting.tryPosition(side.apex());
    meeting.tryPosition(-1.0);
    meeting.tryPosition(1.0);
    meeting.tryEndOfSecond(second.start);
    meeting.tryEndOfSecond(second.end);
    return meeting.points();
}

} // namespace orncore
