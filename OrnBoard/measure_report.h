// A measurement as the tables that people read.
#pragma once

#include "aligned_table.h"
#include "measure.h"

namespace board {

/// A heading and a row for each outline; "-" for what cannot be measured.
std::vector<TableRow> outlineRows(const Measurement& measurement);
/// A heading, the sums by layer and those of all.
std::vector<TableRow> layerRows(const Measurement& measurement);

/// The outlines, the sums by layer and the coefficient of variation, each line ending in a line
/// feed. Areas in square metres, lengths in millimetres.
AFX_EXT_API CString measureReport(const Measurement& measurement);

} // namespace board
