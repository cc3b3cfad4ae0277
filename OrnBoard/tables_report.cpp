#include "tables_report.h"

#include "aligned_table.h"
#include "table/sheet_layout.h"

namespace board {
namespace {

/// To the right when what stands in the column is numbers, but perhaps for its heading.
Align alignmentOf(const CDrawGrid& grid, int column) {
    bool hasNumbers = false;
    for (int row = 2; row < grid.GetRowCount(); ++row) {
        const CString& text = grid.GetCell(row, column).text;
        if (text.IsEmpty()) continue;
        if (!table::numberIn(text)) return Align::kLeft;
        hasNumbers = true;
    }
    return hasNumbers ? Align::kRight : Align::kLeft;
}

CString onOneLine(CString text) {
    text.Replace(L'\n', L' ');
    return text;
}

CString contentOf(const CDrawGrid& grid) {
    std::vector<TableRow> rows;
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        TableRow texts;
        for (int column = 1; column < grid.GetColumnCount(); ++column)
            texts.push_back(onOneLine(grid.GetCell(row, column).text));
        rows.push_back(std::move(texts));
    }
    std::vector<Align> alignment;
    for (int column = 1; column < grid.GetColumnCount(); ++column)
        alignment.push_back(alignmentOf(grid, column));
    return alignedTable(rows, alignment);
}

} // namespace

CString tablesReport(const table::DrawnTables& tables) {
    if (tables.empty()) return L"No table.\n";
    CString report;
    for (const auto& table : tables) {
        CString size;
        size.Format(L"%d rows, %d columns\n", table->GetRowCount() - 1,
                    table->GetColumnCount() - 1);
        if (!report.IsEmpty()) report += L"\n";
        report += size + contentOf(*table);
    }
    return report;
}

} // namespace board
