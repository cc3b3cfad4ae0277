#include "ed/measures.h"

#include <cmath>
#include <numbers>

ads_real acutAngle(const ads_point from, const ads_point to) {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    const double angle = std::atan2(to[1] - from[1], to[0] - from[0]);
    if (angle >= 0.0) return angle + 0.0; // -0.0 becomes 0.0
    // An angle just below zero would round up to a whole turn.
    const double positive = angle + kTurn;
    return positive < kTurn ? positive : 0.0;
}

ads_real acutDistance(const ads_point from, const ads_point to) {
    return std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
}

void acutPolar(const ads_point from, ads_real angle, ads_real distance, ads_point result) {
    const double x = from[0] + distance * std::cos(angle);
    const double y = from[1] + distance * std::sin(angle);
    const double z = from[2];
    result[0] = x;
    result[1] = y;
    result[2] = z;
}
