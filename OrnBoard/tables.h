// The tables that are drawn in a drawing: found, and written to files.
#pragma once

#include <optional>
#include <vector>

#include <afxwin.h>
#include <dbextents.h>

#include "table/drawn_tables.h"

class AcDbDatabase;

namespace board {

/// Where tables are looked for.
struct TableFilter {
    std::vector<CString> layers = {};         ///< Any case; empty: all layers.
    std::optional<AcDbExtents2d> window = {}; ///< Of what lies in it whole.
};

/// Finds the tables that model space shows with lines, polylines and texts; among the entities of a
/// filter, blank forms too.
/// @param db  null has none.
AFX_EXT_API table::DrawnTables drawnTables(AcDbDatabase* db, const TableFilter& filter);

/// Writes tables to a file whose name ends in .xlsx, .xls, .ods, .csv, .json or .html.
///
/// Nothing is left of a file that could not be written whole; a file there before stays as it was.
/// @return  what is wrong, in words; empty when it was done.
AFX_EXT_API CString writeTables(const table::DrawnTables& tables, const CString& path);

} // namespace board
