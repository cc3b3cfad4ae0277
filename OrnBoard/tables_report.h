// Drawn tables as texts that people read.
#pragma once

#include <afxwin.h>

#include "table/drawn_tables.h"

namespace board {

/// Each table with its columns aligned under a line with its size, all lines ending in a line feed.
AFX_EXT_API CString tablesReport(const table::DrawnTables& tables);

} // namespace board
