// The tables among the entities of a drawing, each for itself.
#pragma once

#include <memory>
#include <vector>

#include "table/grid_to_cad_table.h"

namespace table {

using DrawnTables = std::vector<std::unique_ptr<CGridToCadTable>>;

/// Finds the tables that lines, polylines and single-line texts draw.
///
/// Lines that meet make up one grid, in whatever pieces they were drawn. It is a table when it has
/// two closed cells or more, one for every ten of its rows times its columns at least, which lie
/// side by side and fill at least half of it, and a text in one of them. Nothing is added to the
/// drawing.
/// @return  with their grids filled, by their top edges from above, then from the left.
/// Errors: entities that cannot be opened are left out.
[[nodiscard]] AFX_EXT_API DrawnTables tablesAmong(const AcArray<AcDbObjectId>& ids);

} // namespace table
