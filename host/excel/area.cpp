#include "excel/area.h"

#include <charconv>

namespace headless::excel {
namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// One corner: a column, a row or both; 0 for what is not written.
struct Corner {
    int row = 0;
    int column = 0;
};

std::optional<Corner> parseCorner(std::string_view text) {
    Corner corner;
    if (text.starts_with('$') && text.size() > 1 && isLetter(text[1])) text.remove_prefix(1);
    std::size_t letters = 0;
    while (letters < text.size() && isLetter(text[letters]))
        ++letters;
    if (letters > 0) {
        corner.column = columnNumber(text.substr(0, letters));
        if (corner.column == 0) return std::nullopt;
        text.remove_prefix(letters);
    }
    if (text.empty()) return letters > 0 ? std::optional(corner) : std::nullopt;
    if (text.starts_with('$')) text.remove_prefix(1);
    if (text.empty() || !isDigit(text.front())) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), corner.row);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    if (!whole || corner.row < 1 || corner.row > kRows) return std::nullopt;
    return corner;
}

} // namespace

std::optional<Area> intersection(const Area& a, const Area& b) {
    const Area common = {std::max(a.top, b.top), std::max(a.left, b.left),
                         std::min(a.bottom, b.bottom), std::min(a.right, b.right)};
    if (common.top > common.bottom || common.left > common.right) return std::nullopt;
    return common;
}

Area hull(const Area& a, const Area& b) {
    return {std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom),
            std::max(a.right, b.right)};
}

std::string columnName(int column) {
    std::string name;
    for (; column > 0; column = (column - 1) / 26)
        name.insert(name.begin(), static_cast<char>('A' + (column - 1) % 26));
    return name;
}

int columnNumber(std::string_view letters) {
    int column = 0;
    for (const char letter : letters) {
        if (!isLetter(letter)) return 0;
        column = column * 26 + ((letter & 0x5F) - 'A' + 1);
        if (column > kColumns) return 0;
    }
    return column;
}

std::string cellName(int row, int column) { return columnName(column) + std::to_string(row); }

std::string areaText(const Area& area, bool absolute) {
    const std::string mark = absolute ? "$" : "";
    if (area.wholeColumns() && !area.wholeRows()) {
        return mark + columnName(area.left) + ":" + mark + columnName(area.right);
    }
    if (area.wholeRows()) {
        return mark + std::to_string(area.top) + ":" + mark + std::to_string(area.bottom);
    }
    const auto corner = [&](int row, int column) {
        return mark + columnName(column) + mark + std::to_string(row);
    };
    const std::string first = corner(area.top, area.left);
    return area.cells() == 1 ? first : first + ":" + corner(area.bottom, area.right);
}

std::optional<Area> parseArea(std::string_view text) {
    const std::size_t colon = text.find(':');
    const auto first = parseCorner(text.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseCorner(text.substr(colon + 1));
    if (!first || !last) return std::nullopt;
    const bool sameKind =
        (first->row == 0) == (last->row == 0) && (first->column == 0) == (last->column == 0);
    const bool isCell = first->row != 0 && first->column != 0;
    if (!sameKind || (colon == std::string_view::npos && !isCell)) return std::nullopt;
    Area area = {std::min(first->row, last->row), std::min(first->column, last->column),
                 std::max(first->row, last->row), std::max(first->column, last->column)};
    if (first->row == 0) {
        area.top = 1;
        area.bottom = kRows;
    }
    if (first->column == 0) {
        area.left = 1;
        area.right = kColumns;
    }
    return area;
}

std::string quotedSheetName(std::string_view name) {
    bool plain = !name.empty() && !isDigit(name.front());
    for (const char c : name)
        plain = plain && (isLetter(c) || isDigit(c) || c == '_' || (c & 0x80) != 0);
    // A name that reads as a cell must be quoted too.
    if (plain && !parseArea(name)) return std::string(name);
    std::string quoted = "'";
    for (const char c : name)
        quoted += c == '\'' ? "''" : std::string(1, c);
    return quoted + "'";
}

} // namespace headless::excel
