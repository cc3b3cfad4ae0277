// Grids as workbooks of the spreadsheet application.
#pragma once

#include <span>

#include <afxwin.h>

#include "OrnMfc/draw_grid.h"

namespace table {

/// Writes a workbook with a sheet for each grid, as it looks in the drawing: numbers as numbers
/// with as many decimals as they were written with, merged cells, sizes, alignment, heights and
/// colours of texts.
///
/// @param path  absolute; ends in .xlsx, or in what else the application writes: .xls, .ods. A file
///              that is there is replaced.
/// @return      false when the application does not start or does not save; it has told the user.
[[nodiscard]] AFX_EXT_API bool writeWorkbook(std::span<const CDrawGrid* const> grids,
                                             const CString& path);

} // namespace table
