#include "ge/circle_cuts.h"

#include <algorithm>
#include <cmath>

namespace headless {

CutPoints cutCircle(const Circle2d& circle, const AcGePoint2d& point, const AcGeVector2d& along,
                    double tolerance) noexcept {
    const AcGeVector2d across = along.perpVector();
    const double distance = (point - circle.center).dotProduct(across);
    const double gap = circle.radius - std::abs(distance);
    CutPoints cuts;
    if (!(gap >= -tolerance)) return cuts;
    const AcGePoint2d foot = circle.center + across * distance;
    if (gap <= tolerance) {
        cuts.add(foot);
        return cuts;
    }
    const double half = std::sqrt(gap * (circle.radius + std::abs(distance)));
    cuts.add(foot - along * half);
    cuts.add(foot + along * half);
    return cuts;
}

CutPoints cutCircle(const Circle2d& circle, const Circle2d& other, double tolerance) noexcept {
    const AcGeVector2d between = other.center - circle.center;
    const double distance = between.length();
    CutPoints cuts;
    if (!(distance > tolerance)) return cuts;
    const AcGeVector2d towards = between / distance;
    const double outerGap = circle.radius + other.radius - distance;
    const double innerGap = distance - std::abs(circle.radius - other.radius);
    if (outerGap < -tolerance || innerGap < -tolerance) return cuts;

    if (outerGap <= tolerance || innerGap <= tolerance) {
        const bool around = innerGap <= tolerance && circle.radius < other.radius;
        cuts.add(circle.center + towards * (around ? -circle.radius : circle.radius));
        return cuts;
    }
    // Distance of the common chord from the first centre, and half its length as a product of
    // sums, which keeps digits where the circles almost touch.
    const double r = circle.radius;
    const double along =
        (distance * distance + (r - other.radius) * (r + other.radius)) / (2.0 * distance);
    const double half = std::sqrt(outerGap * innerGap * (distance + r + other.radius) *
                                  (distance + std::abs(r - other.radius))) /
                        (2.0 * distance);
    const AcGePoint2d middle = circle.center + towards * along;
    cuts.add(middle - towards.perpVector() * half);
    cuts.add(middle + towards.perpVector() * half);
    return cuts;
}

CutPoints cutLine(const AcGePoint2d& point, const AcGeVector2d& along,
                  const AcGePoint2d& otherPoint, const AcGeVector2d& otherAlong) noexcept {
    const AcGeVector2d across = otherAlong.perpVector();
    const double turn = along.dotProduct(across);
    CutPoints cuts;
    if (std::abs(turn) <= AcGeContext::gTol.equalVector()) return cuts;
    cuts.add(point + along * ((otherPoint - point).dotProduct(across) / turn));
    return cuts;
}

} // namespace headless
