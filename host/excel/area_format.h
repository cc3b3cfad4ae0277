// Formats of whole areas: changed together, read when they agree.
#pragma once

#include <optional>

#include "excel/application_state.h"

namespace headless::excel {

/// An area whose cells are made one by one must not be larger.
inline void checkSize(const Area& area) {
    constexpr std::size_t kMostCells = 2'000'000;
    if (area.cells() > kMostCells) fail("the range is too large for this");
}

/// Changes the format of all cells of the area. Whole rows and columns, and the whole sheet, keep
/// it for cells that are not there yet.
/// @param known  as FormatTable::changed() takes it.
template <class Change>
void changeFormat(const SheetPlace& place, const Area& area, Change change,
                  const FormatChange& known = {}) {
    Sheet& sheet = place.edit();
    FormatTable& formats = place.formats();
    std::optional<std::pair<FormatId, FormatId>> last;
    const auto changed = [&](FormatId id) {
        if (!last || last->first != id) last = {id, formats.changed(id, change, known)};
        return last->second;
    };
    if (area.wholeColumns()) {
        sheet.columns.change(area.left, area.right, [&](ColumnProperties& column) {
            column.format = changed(column.format);
        });
        sheet.rows.change(1, kRows, [&](RowProperties& row) {
            if (row.format && area.wholeRows()) row.format = changed(*row.format);
        });
    } else if (area.wholeRows()) {
        sheet.rows.change(area.top, area.bottom, [&](RowProperties& row) {
            row.format = changed(row.format.value_or(kDefaultFormat));
        });
    } else {
        checkSize(area);
        for (int row = area.top; row <= area.bottom; ++row) {
            for (int column = area.left; column <= area.right; ++column) {
                Cell& cell = sheet.at(row, column);
                cell.format = changed(cell.format);
            }
        }
        return;
    }
    sheet.forEach(area, [&](int, int, Cell& cell) { cell.format = changed(cell.format); });
}

/// What `read(format)` answers for all cells of the area; nothing when they differ.
template <class Read>
auto commonFormat(const SheetPlace& place, const Area& area, Read read)
    -> std::optional<decltype(read(std::declval<const CellFormat&>()))> {
    Sheet& sheet = *place.sheet;
    const FormatTable& formats = place.formats();
    const FormatId first = sheet.formatAt(area.top, area.left);
    auto value = read(formats.at(first));
    bool same = true;
    std::size_t there = 0;
    FormatId last = first;
    sheet.forEach(area, [&](int, int, const Cell& cell) {
        ++there;
        if (cell.format == last) return;
        last = cell.format;
        same = same && read(formats.at(last)) == value;
    });
    // Cells that are not there look like their column.
    if (there < area.cells()) {
        sheet.columns.forEach([&](int from, int to, const ColumnProperties& column) {
            const bool inside = from <= area.right && to >= area.left;
            same = same && (!inside || read(formats.at(column.format)) == value);
        });
        same =
            same && (there == 0 || read(formats.at(sheet.columns.at(area.left).format)) == value);
    }
    if (!same) return std::nullopt;
    return value;
}

} // namespace headless::excel
