#include "table/sheet_layout.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string>

#include <dbcolor.h>

#include "OrnCore/utf8_text.h"
#include "table/grid_to_cad_table.h"

namespace table {
namespace {

constexpr double kRowPoints = 15.0;

double commonestTextHeight(const CDrawGrid& grid) {
    std::map<double, int> counts;
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        for (int column = 1; column < grid.GetColumnCount(); ++column) {
            const GridCell& cell = grid.GetCell(row, column);
            if (!cell.text.IsEmpty() && cell.height > 0.0) ++counts[cell.height];
        }
    }
    if (counts.empty()) return 0.0;
    return std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; })
        ->first;
}

double lowestRow(const CDrawGrid& grid) {
    double lowest = 0.0;
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        const double height = grid.GetRowHeight(row) * TableModel::kUnitsPerSize;
        if (height > 0.0 && (lowest == 0.0 || height < lowest)) lowest = height;
    }
    return lowest;
}

double scaleOf(const CDrawGrid& grid) {
    if (const double text = commonestTextHeight(grid); text > 0.0)
        return SheetLayout::kTextPoints / text;
    if (const double row = lowestRow(grid); row > 0.0) return kRowPoints / row;
    return 1.0;
}

} // namespace

SheetLayout::SheetLayout(const CDrawGrid& grid)
    : grid_(grid), scale_(scaleOf(grid)), spans_(static_cast<std::size_t>(grid.GetRowCount()) *
                                                 static_cast<std::size_t>(grid.GetColumnCount())) {
    for (const GridMerge& merge : grid.GetMerges())
        cover(merge);
}

std::size_t SheetLayout::indexOf(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(grid_.GetColumnCount()) +
           static_cast<std::size_t>(column);
}

// Of ranges that overlap, as crossing lines can draw them, the first one counts.
void SheetLayout::cover(const GridMerge& merge) {
    const auto forEachCell = [&](auto&& call) {
        for (int row = merge.row; row <= merge.row + merge.moreRows; ++row)
            for (int column = merge.column; column <= merge.column + merge.moreColumns; ++column)
                call(spans_[indexOf(row, column)]);
    };
    bool isFree = true;
    forEachCell([&](const CellSpan& cell) {
        isFree = isFree && !cell.isCovered && cell.moreColumns == 0 && cell.moreRows == 0;
    });
    if (!isFree) return;
    forEachCell([](CellSpan& cell) { cell.isCovered = true; });
    spans_[indexOf(merge.row, merge.column)] = {false, merge.moreColumns, merge.moreRows};
}

const CellSpan& SheetLayout::span(int row, int column) const {
    return spans_[indexOf(row, column)];
}

double SheetLayout::width(int column) const {
    return std::max(0.0, grid_.GetColumnWidth(column) * TableModel::kUnitsPerSize * scale_);
}

double SheetLayout::height(int row) const {
    return std::max(0.0, grid_.GetRowHeight(row) * TableModel::kUnitsPerSize * scale_);
}

std::optional<double> numberIn(const CString& text) {
    const std::string bytes = orncore::toUtf8(text);
    const bool isSigned = !bytes.empty() && (bytes[0] == '-' || bytes[0] == '+');
    const std::string digits = bytes.substr(isSigned ? 1 : 0);
    constexpr std::size_t kMostDigits = 15;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto count = static_cast<std::size_t>(std::ranges::count_if(digits, isDigit));
    const bool onlyNumber =
        count > 0 && count <= kMostDigits && digits.size() - count <= 1 &&
        std::ranges::all_of(digits, [&](char c) { return isDigit(c) || c == '.'; });
    if (!onlyNumber || !isDigit(digits.front()) || !isDigit(digits.back())) return std::nullopt;
    if (digits.size() > 1 && digits[0] == '0' && digits[1] != '.') return std::nullopt;
    double value = 0.0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return bytes[0] == '-' ? -value : value;
}

unsigned paperColor(int colorIndex) {
    constexpr int kWhite = 7;
    constexpr int kMost = 255; // 256 is the layer's colour
    if (colorIndex <= 0 || colorIndex > kMost || colorIndex == kWhite) return 0;
    return AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(colorIndex)) & 0xFFFFFFU;
}

} // namespace table
