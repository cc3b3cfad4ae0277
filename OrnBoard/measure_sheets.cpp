#include "measure_sheets.h"

#include <algorithm>

#include "grid_files.h"
#include "measure_report.h"
#include "table/grid_to_cad_table.h"
#include "table/sheet_layout.h"

namespace board {
namespace {

constexpr double kTextHeight = 350.0;
constexpr double kUnit = kTextHeight / TableModel::kUnitsPerSize; // a text height as a grid's size

/// Handles and layers may read as numbers, and are none.
bool holdsNames(const CString& heading) { return heading == L"Handle" || heading == L"Layer"; }

GridCell cellOf(const CString& text, bool isName) {
    const bool isNumber = !isName && table::numberIn(text).has_value();
    return {.text = text == L"-" ? CString() : text,
            .horizontal = isNumber ? AcDb::kTextRight : AcDb::kTextLeft,
            .height = kTextHeight,
            .isName = isName};
}

/// Wide enough for its longest text, if letters are as wide as they are high.
CDrawGrid sheetOf(const std::vector<TableRow>& rows) {
    CDrawGrid grid;
    const int columns = rows.empty() ? 0 : static_cast<int>(rows.front().size());
    grid.SetGridSize(static_cast<int>(rows.size()) + 1, columns + 1);
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        grid.SetRowHeight(row, 1.5 * kUnit);
        for (int column = 1; column <= columns; ++column) {
            const CString& text =
                rows[static_cast<std::size_t>(row) - 1][static_cast<std::size_t>(column) - 1];
            const CString& heading = rows.front()[static_cast<std::size_t>(column) - 1];
            grid.SetCell(row, column, cellOf(text, holdsNames(heading)));
            const double width = (text.GetLength() + 2) * kUnit;
            const double widest = row == 1 ? 0.0 : grid.GetColumnWidth(column);
            grid.SetColumnWidth(column, std::max(width, widest));
        }
    }
    return grid;
}

} // namespace

std::vector<CDrawGrid> measureSheets(const Measurement& measurement) {
    return {sheetOf(outlineRows(measurement)), sheetOf(layerRows(measurement))};
}

CString writeMeasurement(const Measurement& measurement, const CString& path) {
    const std::vector<CDrawGrid> sheets = measureSheets(measurement);
    std::vector<const CDrawGrid*> grids;
    for (const CDrawGrid& sheet : sheets)
        grids.push_back(&sheet);
    return isWorkbook(path) ? writeGrids(grids, path)
                            : path + L": a take-off is written as .xlsx, .xls or .ods";
}

} // namespace board
