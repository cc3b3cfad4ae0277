// Grids written to files of the kind that the name asks for. Inside the module only.
#pragma once

#include <span>

#include <afxwin.h>

#include "OrnMfc/draw_grid.h"

namespace board {

/// By its name.
[[nodiscard]] bool isWorkbook(const CString& path);

/// Writes a file that ends in .xlsx, .xls, .ods, .csv, .json or .html, whole or not at all.
/// @return  what is wrong, in words; empty when it was done.
[[nodiscard]] CString writeGrids(std::span<const CDrawGrid* const> grids, const CString& path);

} // namespace board
