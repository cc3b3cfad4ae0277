// Filling a table's model. Inside this folder only.
#pragma once

#include <functional>
#include <span>

#include "table/cell_search.h"
#include "table/cell_texts.h"
#include "table/grid_to_cad_table.h"

namespace table {

/// How many cells a table may have: each takes some fifty bytes, and a drawing that is no table
/// makes a grid of all its lines.
inline constexpr long long kMostCells = 4'000'000;

/// Where a table's lines are.
struct Coordinates {
    std::vector<double> columns; // x
    std::vector<double> rows;    // y, from the top
};

/// Coordinates where columns stand on the lowest row, and rows on the leftmost column.
[[nodiscard]] Coordinates coordinatesOf(const EndLists& rows, const EndLists& columns);

using TextReader = std::function<std::vector<CellText>()>;

/// Adds sizes and empty cells for the coordinates.
void addCells(TableModel& model, const Coordinates& coordinates);

/// Finds the cells, notes which ranges are merged and what the cells say.
/// @param readTexts  reads the candidates; called when a cell asks for them first.
void fillCells(TableModel& model, const Coordinates& coordinates, const Crossings& crossings,
               const TextReader& readTexts);

} // namespace table
