// Grids as texts that other programs read. All in UTF-8, without the headers, lines ending in a
// line feed.
#pragma once

#include <span>
#include <string>

#include <afxwin.h>

#include "OrnMfc/draw_grid.h"

namespace table {

/// Comma-separated values as RFC 4180 has them, a line a row. A merged range has its text in its
/// first cell. Between two grids stands an empty line.
[[nodiscard]] AFX_EXT_API std::string toCsv(std::span<const CDrawGrid* const> grids);

/// One grid's object: `rows`, `columns`, `widths` and `heights` (of the header first), `merges`
/// (arrays of first column, first row, more columns, more rows), `cells` (`row`, `column`, `text`,
/// `height`, `color`, `style`, by rows), positions from 1. Of any other number of grids, an object
/// with `tables`, an array of these.
[[nodiscard]] AFX_EXT_API std::string toJson(std::span<const CDrawGrid* const> grids);

/// A page with a table for each grid, as it looks in the drawing.
[[nodiscard]] AFX_EXT_API std::string toHtml(std::span<const CDrawGrid* const> grids);

/// One value of a line of comma-separated values, in quotes where it must be.
[[nodiscard]] AFX_EXT_API std::string csvField(const CString& text);

} // namespace table
