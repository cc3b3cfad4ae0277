// Ruled lines as they stand in a drawing: which of them make up one table. Inside this folder only.
#pragma once

#include <vector>

#include "table/ruling.h"

namespace table {

/// The lines with level or upright pieces that touch or overlap on one line joined, in whatever
/// order and direction they were drawn; the rows from the top, then the columns from the left.
/// Lines of other directions are left out.
[[nodiscard]] std::vector<Ruling> joinedPieces(const std::vector<Ruling>& lines);

/// The lines in groups: those that meet, and those that meet these, and so on. Order is kept within
/// groups.
[[nodiscard]] std::vector<std::vector<Ruling>> connected(const std::vector<Ruling>& lines);

} // namespace table
