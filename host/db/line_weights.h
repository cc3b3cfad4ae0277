// The lineweights there are.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace headless {

/// True for a member of AcDb::LineWeight: hundredths of a millimetre, or by layer and so on.
[[nodiscard]] constexpr bool isLineWeight(std::int64_t value) {
    constexpr std::array kWeights = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                     50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    return std::find(kWeights.begin(), kWeights.end(), value) != kWeights.end();
}

} // namespace headless
