// Rows of texts as a table that people read: columns aligned, two blanks between them.
#pragma once

#include <vector>

#include <afxwin.h>

namespace board {

enum class Align { kLeft, kRight };

using TableRow = std::vector<CString>;

/// Lays out rows, the heading among them, each ending in a line feed.
///
/// @param rows       rows of any length; a missing cell is empty.
/// @param alignment  a column each; further columns are aligned left.
/// Chinese characters count as two columns, as terminals show them. No row ends in blanks.
AFX_EXT_API CString alignedTable(const std::vector<TableRow>& rows,
                                 const std::vector<Align>& alignment);

} // namespace board
