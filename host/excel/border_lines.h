// Which lines of which cells an index of automation names.
#pragma once

#include <span>
#include <vector>

#include "excel/area.h"
#include "excel/cell_format.h"
#include "win/types.h"

namespace headless::excel {

using Line = BorderLine Borders::*;

/// Some cells of a range, and which lines of each.
struct LinesOfCells {
    Area cells;
    std::span<const Line> lines;
};

enum BorderIndex : LONG {
    kDiagonalDown = 5,
    kDiagonalUp = 6,
    kEdgeLeft = 7,
    kEdgeTop = 8,
    kEdgeBottom = 9,
    kEdgeRight = 10,
    kInsideVertical = 11,
    kInsideHorizontal = 12
};

/// The lines of a range that an index names; any other index names all that lie along edges of
/// cells.
[[nodiscard]] std::vector<LinesOfCells> linesOf(const Area& area, LONG index);

} // namespace headless::excel
