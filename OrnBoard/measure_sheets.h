// A measurement as sheets of a workbook.
#pragma once

#include <vector>

#include "OrnMfc/draw_grid.h"
#include "measure.h"

namespace board {

/// The outlines, and the sums by layer, each with a heading. Areas in square metres, lengths in
/// millimetres; what cannot be measured is empty.
AFX_EXT_API std::vector<CDrawGrid> measureSheets(const Measurement& measurement);

/// Writes them to a workbook (.xlsx or .xls).
///
/// Nothing is left of a file that could not be written whole; a file there before stays as it was.
/// @return  what is wrong, in words; empty when it was done.
AFX_EXT_API CString writeMeasurement(const Measurement& measurement, const CString& path);

} // namespace board
