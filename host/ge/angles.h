// Angles on the circle.
#pragma once

#include <cmath>
#include <numbers>

namespace headless {

inline constexpr double kFullTurn = 2.0 * std::numbers::pi;

/// The same direction in [0, 2 pi). NaN stays NaN.
[[nodiscard]] inline double normalizedAngle(double angle) noexcept {
    const double rest = std::fmod(angle, kFullTurn);
    const double positive = rest < 0.0 ? rest + kFullTurn : rest;
    // A tiny negative angle plus the full turn rounds to the full turn itself.
    return positive < kFullTurn ? positive : 0.0;
}

/// The end of a turn from `start` to the direction `end`, at most one full turn ahead. An end
/// equal to the start stays there.
[[nodiscard]] inline double endOfTurn(double start, double end) noexcept {
    if (end >= start && end - start <= kFullTurn * (1.0 + 1e-12)) return end;
    return start + normalizedAngle(end - start);
}

} // namespace headless
