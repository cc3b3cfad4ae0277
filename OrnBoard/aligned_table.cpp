#include "aligned_table.h"

#include <algorithm>

namespace board {
namespace {

constexpr int kGap = 2;

// The blocks of East Asian characters that terminals draw two columns wide.
bool isWide(wchar_t c) {
    struct Range {
        wchar_t first, last;
    };
    static constexpr Range kWide[] = {{0x1100, 0x115F},  {0x2E80, 0x303E}, {0x3041, 0xA4CF},
                                      {0xAC00, 0xD7A3},  {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},
                                      {0xFF01, 0xFF60},  {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF},
                                      {0x20000, 0x3FFFD}};
    return std::ranges::any_of(
        kWide, [c](const Range& range) { return range.first <= c && c <= range.last; });
}

int columns(const CString& text) {
    int count = 0;
    for (int i = 0; i < text.GetLength(); ++i)
        count += isWide(text[i]) ? 2 : 1;
    return count;
}

std::vector<int> columnWidths(const std::vector<TableRow>& rows) {
    std::vector<int> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columns(row[i]));
    }
    return widths;
}

} // namespace

CString alignedTable(const std::vector<TableRow>& rows, const std::vector<Align>& alignment) {
    const std::vector<int> widths = columnWidths(rows);
    CString table;
    for (const TableRow& row : rows) {
        CString line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const CString blanks(L' ', widths[i] - columns(row[i]));
            const bool right = i < alignment.size() && alignment[i] == Align::kRight;
            if (i > 0) line += CString(L' ', kGap);
            line += right ? blanks + row[i] : row[i] + blanks;
        }
        line.TrimRight(L' ');
        table += line + L"\n";
    }
    return table;
}

} // namespace board
