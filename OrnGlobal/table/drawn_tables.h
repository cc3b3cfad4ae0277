// The tables among the entities of a drawing, each for itself.
#pragma once

#include <memory>
#include <vector>

#include "table/grid_to_cad_table.h"

namespace table {

using DrawnTables = std::vector<std::unique_ptr<CGridToCadTable>>;

/// Whether ruling lines without a text are a table: a blank form to who asks for them, an axis grid
/// or a window in a whole drawing.
enum class BlankForms { kNone, kTables };

/// Finds the tables that lines, polylines and texts of one or several lines draw.
///
/// Lines that meet make up one grid, in whatever pieces they were drawn. It is a table when it has
/// two closed cells or more, one for every ten of its rows times its columns at least, which lie
/// side by side and fill at least half of it, and a text in one of them unless blank forms count.
/// Nothing is added to the drawing.
/// @return  with their grids filled, by their top edges from above, then from the left.
/// Errors: entities that cannot be opened are left out.
[[nodiscard]] AFX_EXT_API DrawnTables tablesAmong(const AcArray<AcDbObjectId>& ids,
                                                  BlankForms blank = BlankForms::kNone);

} // namespace table
