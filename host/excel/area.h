// Rectangles of cells and how formulas write them. Rows and columns count from 1.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace headless::excel {

constexpr int kRows = 1048576;
constexpr int kColumns = 16384;

struct Area {
    int top = 1;
    int left = 1;
    int bottom = 1;
    int right = 1;

    bool operator==(const Area&) const = default;

    [[nodiscard]] int rows() const { return bottom - top + 1; }
    [[nodiscard]] int columns() const { return right - left + 1; }
    [[nodiscard]] bool wholeRows() const { return left == 1 && right == kColumns; }
    [[nodiscard]] bool wholeColumns() const { return top == 1 && bottom == kRows; }
    [[nodiscard]] std::size_t cells() const {
        return static_cast<std::size_t>(rows()) * static_cast<std::size_t>(columns());
    }
    [[nodiscard]] bool contains(int row, int column) const {
        return row >= top && row <= bottom && column >= left && column <= right;
    }
    [[nodiscard]] bool contains(const Area& other) const {
        return contains(other.top, other.left) && contains(other.bottom, other.right);
    }
    [[nodiscard]] bool onSheet() const {
        return top >= 1 && left >= 1 && bottom <= kRows && right <= kColumns && top <= bottom &&
               left <= right;
    }
};

[[nodiscard]] constexpr Area wholeSheet() { return {1, 1, kRows, kColumns}; }

/// What both have in common, if anything.
[[nodiscard]] std::optional<Area> intersection(const Area& a, const Area& b);
/// The smallest area that holds both.
[[nodiscard]] Area hull(const Area& a, const Area& b);

/// "A", "AA", ...; `column` from 1.
[[nodiscard]] std::string columnName(int column);
/// The column of letters alone; 0 when they name none.
[[nodiscard]] int columnNumber(std::string_view letters);
/// "B3".
[[nodiscard]] std::string cellName(int row, int column);
/// "A1", "A1:B2", "2:3" or "A:C", with a dollar before each part when `absolute`.
[[nodiscard]] std::string areaText(const Area& area, bool absolute);
/// An area written as above, corners in any order, in any case; nothing for other texts and for
/// what lies outside the sheet.
[[nodiscard]] std::optional<Area> parseArea(std::string_view text);

/// A sheet's name as formulas write it, quoted where it must be.
[[nodiscard]] std::string quotedSheetName(std::string_view name);

} // namespace headless::excel
