// A measurement as the tables that people read.
#pragma once

#include "measure.h"

namespace board {

/// The outlines, the sums by layer and the coefficient of variation, each line ending in a line
/// feed. Areas in square metres, lengths in millimetres.
AFX_EXT_API CString measureReport(const Measurement& measurement);

} // namespace board
