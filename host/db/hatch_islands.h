// Which loops of a hatch count, by its style.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "db/hatch.h"
#include "ge/point2d.h"

namespace headless {

/// A closed polygon in one plane, its first corner not repeated.
using FlatLoop = std::vector<AcGePoint2d>;

/// True for a point that the loop goes round an odd number of times.
[[nodiscard]] bool encloses(const FlatLoop& loop, const AcGePoint2d& point);

/// The indices of the loops between which the hatch is filled by even and odd: all of them by the
/// normal style, the outermost and those right within them by the outer style, the outermost alone
/// where islands are ignored.
/// @param loops  none of them empty.
[[nodiscard]] std::vector<std::size_t> countingLoops(std::span<const FlatLoop> loops,
                                                     AcDbHatch::HatchStyle style);

} // namespace headless
