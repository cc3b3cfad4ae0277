#include "excel/sheet.h"

#include <algorithm>
#include <cmath>

namespace headless::excel {
namespace {

// The default font's widest digit and the margin on both sides, in pixels.
constexpr int kDigitPixels = 7;
constexpr int kMarginPixels = 5;
constexpr double kPointsOfPixel = 0.75;

template <class Key, class Value>
std::optional<std::pair<Key, Key>> keySpan(const std::map<Key, Value>& map) {
    if (map.empty()) return std::nullopt;
    return std::pair(map.begin()->first, map.rbegin()->first);
}

} // namespace

int widthPixels(double characters) {
    if (characters < 1.0) {
        return static_cast<int>(characters * (kDigitPixels + kMarginPixels) + 0.5);
    }
    return static_cast<int>(characters * kDigitPixels + 0.5) + kMarginPixels;
}

double widthOfPixels(int pixels) {
    const double characters = pixels < kDigitPixels + kMarginPixels
                                  ? pixels / double(kDigitPixels + kMarginPixels)
                                  : (pixels - kMarginPixels) / double(kDigitPixels);
    return std::round(characters * 100.0) / 100.0;
}

const Cell* Sheet::find(int row, int column) const {
    const auto cells = cells_.find(row);
    if (cells == cells_.end()) return nullptr;
    const auto cell = cells->second.find(column);
    return cell == cells->second.end() ? nullptr : &cell->second;
}

Sheet::Row& Sheet::rowAt(int row) {
    if (last_.row != row) {
        last_.cells = &cells_[row];
        last_.row = row;
        last_.column = 0;
    }
    return *last_.cells;
}

Cell& Sheet::at(int row, int column) {
    Row& cells = rowAt(row);
    if (last_.column == column) return *last_.cell;
    const auto [cell, made] = cells.try_emplace(column);
    if (made) cell->second.format = rows.at(row).format.value_or(columns.at(column).format);
    last_.column = column;
    last_.cell = &cell->second;
    return cell->second;
}

FormatId Sheet::formatAt(int row, int column) const {
    const Cell* cell = find(row, column);
    return cell != nullptr ? cell->format : rows.at(row).format.value_or(columns.at(column).format);
}

void Sheet::erase(int row, int column) {
    const auto cells = cells_.find(row);
    if (cells == cells_.end()) return;
    last_.forget();
    cells->second.erase(column);
    if (cells->second.empty()) cells_.erase(cells);
}

std::optional<Area> Sheet::usedArea() const {
    std::optional<Area> used;
    const auto include = [&used](const Area& area) { used = used ? hull(*used, area) : area; };
    for (const auto& [row, cells] : cells_) {
        if (const auto span = keySpan(cells)) include({row, span->first, row, span->second});
    }
    for (const auto& [place, comment] : comments)
        include({place.first, place.second, place.first, place.second});
    for (const Area& merged : merges)
        include(merged);
    return used;
}

const Area* Sheet::mergeAt(int row, int column) const {
    const auto found = std::ranges::find_if(
        merges, [&](const Area& merged) { return merged.contains(row, column); });
    return found == merges.end() ? nullptr : &*found;
}

void Sheet::merge(const Area& area) {
    unmerge(area);
    if (area.cells() == 1) return;
    // The first cell that has something gives it to the corner.
    std::optional<std::pair<int, int>> first;
    forEach(area, [&](int row, int column, Cell& cell) {
        if (!first && cell.hasContent()) first = {row, column};
    });
    if (first && *first != std::pair(area.top, area.left)) {
        Cell& source = at(first->first, first->second);
        Cell& corner = at(area.top, area.left);
        corner.value = source.value;
        corner.formula = source.formula;
    }
    forEach(area, [&](int row, int column, Cell& cell) {
        if (row == area.top && column == area.left) return;
        cell.value = {};
        cell.formula.clear();
    });
    merges.push_back(area);
}

void Sheet::unmerge(const Area& area) {
    std::erase_if(merges,
                  [&](const Area& merged) { return intersection(merged, area).has_value(); });
}

/// A move of the cells from `first` on within a band of rows or columns.
struct Sheet::Shift {
    bool vertical;
    int bandFirst; ///< Columns of a vertical move, rows of a horizontal one.
    int bandLast;
    int first; ///< The first row (or column) that moves.
    int by;    ///< Positive away from the start.

    [[nodiscard]] bool moves(int row, int column) const {
        const int across = vertical ? column : row;
        const int along = vertical ? row : column;
        return across >= bandFirst && across <= bandLast && along >= first;
    }
    void apply(int& row, int& column) const { (vertical ? row : column) += by; }
    /// An area after the move; as it was when it lies only partly in the band.
    [[nodiscard]] Area applied(Area area) const {
        const int firstAcross = vertical ? area.left : area.top;
        const int lastAcross = vertical ? area.right : area.bottom;
        if (firstAcross < bandFirst || lastAcross > bandLast) return area;
        int& start = vertical ? area.top : area.left;
        int& end = vertical ? area.bottom : area.right;
        if (start >= first) start += by;
        if (end >= first) end += by;
        return area;
    }
};

void Sheet::shift(const Shift& by) {
    std::vector<std::pair<std::pair<int, int>, Cell>> moved;
    forEach(wholeSheet(), [&](int row, int column, Cell& cell) {
        if (by.moves(row, column)) moved.push_back({{row, column}, std::move(cell)});
    });
    for (const auto& [place, cell] : moved)
        erase(place.first, place.second);
    for (auto& [place, cell] : moved) {
        auto [row, column] = place;
        by.apply(row, column);
        rowAt(row).insert_or_assign(column, std::move(cell));
    }
    std::map<std::pair<int, int>, Comment> movedComments;
    for (auto& [place, comment] : comments) {
        auto [row, column] = place;
        if (by.moves(row, column)) by.apply(row, column);
        movedComments.insert_or_assign({row, column}, std::move(comment));
    }
    comments = std::move(movedComments);
    for (Area& merged : merges)
        merged = by.applied(merged);
    for (Link& link : links)
        link.area = by.applied(link.area);
    for (InputRule& rule : inputRules)
        rule.area = by.applied(rule.area);
    for (auto& areas : quiet)
        for (Area& area : areas)
            area = by.applied(area);
    for (Picture& picture : pictures) {
        if (by.moves(picture.row, picture.column)) by.apply(picture.row, picture.column);
    }
    for (auto* area : {&autoFilter, &page.printArea, &page.titleRows, &page.titleColumns}) {
        if (*area) **area = by.applied(**area);
    }
}

bool Sheet::insertCells(const Area& area, bool down) {
    const int count = down ? area.rows() : area.columns();
    const Area lost = down ? Area{kRows - count + 1, area.left, kRows, area.right}
                           : Area{area.top, kColumns - count + 1, area.bottom, kColumns};
    bool empty = true;
    forEach(lost, [&](int, int, const Cell& cell) { empty = empty && !cell.hasContent(); });
    if (!empty) return false;
    shift({down, down ? area.left : area.top, down ? area.right : area.bottom,
           down ? area.top : area.left, count});
    if (down && area.wholeRows()) rows.insert(area.top, count);
    if (!down && area.wholeColumns()) columns.insert(area.left, count);
    // New cells look like those before them.
    const int before = (down ? area.top : area.left) - 1;
    if (before == 0) return true;
    std::vector<std::pair<int, FormatId>> formats;
    const Area model = down ? Area{before, area.left, before, area.right}
                            : Area{area.top, before, area.bottom, before};
    forEach(model, [&](int row, int column, const Cell& cell) {
        formats.emplace_back(down ? column : row, cell.format);
    });
    for (const auto& [across, format] : formats) {
        for (int i = 1; i <= count; ++i)
            (down ? at(before + i, across) : at(across, before + i)).format = format;
    }
    return true;
}

void Sheet::deleteCells(const Area& area, bool up) {
    std::vector<std::pair<int, int>> gone;
    forEach(area, [&](int row, int column, const Cell&) { gone.emplace_back(row, column); });
    for (const auto& [row, column] : gone)
        erase(row, column);
    std::erase_if(comments, [&](const auto& entry) {
        return area.contains(entry.first.first, entry.first.second);
    });
    std::erase_if(merges, [&](const Area& merged) { return area.contains(merged); });
    std::erase_if(links, [&](const Link& link) { return area.contains(link.area); });
    std::erase_if(inputRules, [&](const InputRule& rule) { return area.contains(rule.area); });
    const int count = up ? area.rows() : area.columns();
    shift({up, up ? area.left : area.top, up ? area.right : area.bottom,
           (up ? area.bottom : area.right) + 1, -count});
    if (up && area.wholeRows()) rows.remove(area.top, count);
    if (!up && area.wholeColumns()) columns.remove(area.left, count);
}

double Sheet::columnPoints(int column) const {
    const ColumnProperties& properties = columns.at(column);
    if (properties.hidden) return 0.0;
    return widthPixels(properties.width.value_or(kUsualWidth)) * kPointsOfPixel;
}

double Sheet::rowPoints(int row) const {
    const RowProperties& properties = rows.at(row);
    return properties.hidden ? 0.0 : properties.height.value_or(kUsualHeight);
}

double Sheet::leftOf(int column) const {
    double left = widthPixels(kUsualWidth) * kPointsOfPixel * (column - 1);
    columns.forEach([&](int first, int last, const ColumnProperties&) {
        const int count = std::min(last, column - 1) - first + 1;
        if (count > 0) {
            left += count * (columnPoints(first) - widthPixels(kUsualWidth) * kPointsOfPixel);
        }
    });
    return left;
}

double Sheet::topOf(int row) const {
    double top = kUsualHeight * (row - 1);
    rows.forEach([&](int first, int last, const RowProperties&) {
        const int count = std::min(last, row - 1) - first + 1;
        if (count > 0) top += count * (rowPoints(first) - kUsualHeight);
    });
    return top;
}

} // namespace headless::excel
