// The ranges that a range leads to.
#include <algorithm>

#include "excel/directions.h"
#include "excel/range_object.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

/// A stretch of rows or columns as wide as the sheet the other way.
Area wholeRowsOf(const Area& area) { return {area.top, 1, area.bottom, kColumns}; }
Area wholeColumnsOf(const Area& area) { return {1, area.left, kRows, area.right}; }

Area moved(const Area& area, int down, int right) {
    return {area.top + down, area.left + right, area.bottom + down, area.right + right};
}

/// A count of cells, as far as it makes a difference: what lies that far off is off the sheet.
LONG steps(const CallArguments& arguments, std::size_t index, LONG fallback) {
    constexpr LONG kFar = 1 << 25;
    return std::clamp(arguments.integer(index, fallback), -kFar, kFar);
}

/// A column by its number or its letters.
LONG columnArgument(const CallArguments& arguments, std::size_t index) {
    const VARIANT* value = arguments.find(index);
    if (value != nullptr && value->vt == VT_BSTR) {
        const int column = columnNumber(toUtf8(textOf(*value)));
        if (column > 0) return column;
    }
    return steps(arguments, index, 1);
}

} // namespace

IDispatch* Range::item(const CallArguments& arguments) const {
    if (!arguments.has(0)) return makeRange(place_, area_);
    const LONG first = steps(arguments, 0, 1);
    if (unit_ == RangeUnit::kRow) return rowAt(first);
    if (unit_ == RangeUnit::kColumn) return columnAt(columnArgument(arguments, 0));
    if (!arguments.has(1)) {
        const LONG columns = area_.columns();
        return cellAt((first - 1) / columns + 1, (first - 1) % columns + 1);
    }
    return cellAt(first, columnArgument(arguments, 1));
}

IDispatch* Range::cells(const CallArguments& arguments) const {
    return Range(place_, area_, RangeUnit::kCell).item(arguments);
}

IDispatch* Range::rows(const CallArguments& arguments) const {
    if (arguments.has(0)) return rowAt(steps(arguments, 0, 1));
    return makeRange(place_, area_, RangeUnit::kRow);
}

IDispatch* Range::columns(const CallArguments& arguments) const {
    if (arguments.has(0)) return columnAt(columnArgument(arguments, 0));
    return makeRange(place_, area_, RangeUnit::kColumn);
}

IDispatch* Range::range(const CallArguments& arguments) const {
    const OwnedVariant found(namedRange(place_, arguments));
    const Area relative = rangeOf(found.pdispVal)->second;
    return checked(moved(relative, area_.top - 1, area_.left - 1));
}

IDispatch* Range::offset(const CallArguments& arguments) const {
    return checked(moved(area_, steps(arguments, 0, 0), steps(arguments, 1, 0)));
}

IDispatch* Range::resize(const CallArguments& arguments) const {
    return checked({area_.top, area_.left, area_.top + steps(arguments, 0, area_.rows()) - 1,
                    area_.left + steps(arguments, 1, area_.columns()) - 1});
}

IDispatch* Range::entireRow() const {
    return makeRange(place_, wholeRowsOf(area_), RangeUnit::kRow);
}

IDispatch* Range::entireColumn() const {
    return makeRange(place_, wholeColumnsOf(area_), RangeUnit::kColumn);
}

IDispatch* Range::end(const CallArguments& arguments) const {
    place_.check();
    const LONG direction = arguments.integer(0, kXlDown);
    const int down = direction == kXlDown ? 1 : direction == kXlUp ? -1 : 0;
    const int right = direction == kXlToRight ? 1 : direction == kXlToLeft ? -1 : 0;
    if (down == 0 && right == 0) fail("there is no such direction");
    int row = area_.top;
    int column = area_.left;
    const auto inside = [&] { return wholeSheet().contains(row + down, column + right); };
    const auto filled = [&](int r, int c) {
        const Cell* cell = place_.sheet->find(r, c);
        return cell != nullptr && cell->hasContent();
    };
    const bool inBlock = filled(row, column) && inside() && filled(row + down, column + right);
    while (inside()) {
        if (inBlock && !filled(row + down, column + right)) break;
        row += down;
        column += right;
        if (!inBlock && filled(row, column)) break;
    }
    return makeRange(place_, {row, column, row, column});
}

IDispatch* Range::currentRegion() const {
    place_.check();
    Area region = area_;
    for (bool grown = true; grown;) {
        const Area around = *intersection(
            {region.top - 1, region.left - 1, region.bottom + 1, region.right + 1}, wholeSheet());
        Area next = region;
        place_.sheet->forEach(around, [&](int row, int column, const Cell& cell) {
            if (cell.hasContent()) next = hull(next, {row, column, row, column});
        });
        grown = !(next == region);
        region = next;
    }
    return makeRange(place_, region);
}

IDispatch* Range::mergeArea() const {
    place_.check();
    const Area* merged = place_.sheet->mergeAt(area_.top, area_.left);
    return makeRange(place_, merged == nullptr ? area_ : *merged);
}

IDispatch* Range::worksheet() const { return makeSheet(place_); }

IDispatch* Range::checked(const Area& area) const {
    if (!area.onSheet()) fail("the range would lie off the sheet");
    return makeRange(place_, area);
}

IDispatch* Range::cellAt(LONG row, LONG column) const {
    const int r = area_.top + row - 1;
    const int c = area_.left + column - 1;
    return checked({r, c, r, c});
}

IDispatch* Range::rowAt(LONG row) const {
    const int r = area_.top + row - 1;
    return checked({r, area_.left, r, area_.right});
}

IDispatch* Range::columnAt(LONG column) const {
    const int c = area_.left + column - 1;
    return checked({area_.top, c, area_.bottom, c});
}

} // namespace headless::excel
