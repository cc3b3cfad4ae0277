// Lines that nearly meet made to meet. Inside this folder only.
#pragma once

#include <vector>

#include "table/ruling.h"

namespace table {

/// Level and upright lines whose rows or columns lie closer together than that become one row or
/// column, and those that end that close to a row or column end at it. Nothing else moves.
///
/// @param reach  drawing units; with 0 all lines stay as they are.
[[nodiscard]] std::vector<Ruling> snapped(std::vector<Ruling> lines, double reach);

} // namespace table
