// Where ranges are, and how high and wide their rows and columns.
#include <algorithm>

#include "excel/range_object.h"
#include "win/code_page.h"

namespace headless::excel {

OwnedVariant Range::rowHeight() const {
    place_.check();
    const Sheet& sheet = *place_.sheet;
    const double first = sheet.rowPoints(area_.top);
    for (int row = area_.top; row <= area_.bottom && !area_.wholeColumns(); ++row) {
        if (sheet.rowPoints(row) != first) return OwnedVariant::null();
    }
    return first;
}

void Range::setRowHeight(const VARIANT& value) {
    const double height = realOf(value);
    if (!(height >= 0.0 && height <= 409.5)) failToSet("RowHeight");
    place_.check();
    place_.edit().rows.change(area_.top, area_.bottom, [&](RowProperties& row) {
        row.hidden = height == 0.0;
        if (height > 0.0) row.height = height;
    });
}

OwnedVariant Range::columnWidth() const {
    place_.check();
    const Sheet& sheet = fitted();
    const auto widthOf = [&](int column) {
        const ColumnProperties& properties = sheet.columns.at(column);
        return properties.hidden ? 0.0 : properties.width.value_or(kUsualWidth);
    };
    for (int column = area_.left; column <= area_.right; ++column) {
        if (widthOf(column) != widthOf(area_.left)) return OwnedVariant::null();
    }
    return widthOf(area_.left);
}

void Range::setColumnWidth(const VARIANT& value) {
    const double width = realOf(value);
    if (!(width >= 0.0 && width <= 255.0)) failToSet("ColumnWidth");
    place_.check();
    place_.noteChange();
    // Widths are whole pixels.
    fitted().columns.change(area_.left, area_.right, [&](ColumnProperties& column) {
        column.hidden = width == 0.0;
        if (width > 0.0) column.width = widthOfPixels(widthPixels(width));
    });
}

void Range::autoFit() {
    place_.check();
    Sheet& sheet = place_.edit();
    if (area_.wholeRows() && !area_.wholeColumns()) {
        sheet.rows.change(area_.top, area_.bottom, [](RowProperties& row) { row.height.reset(); });
        return;
    }
    if (!area_.wholeColumns() && unit_ != RangeUnit::kColumn) {
        fail("only whole rows and columns can be fitted");
    }
    const auto used = sheet.usedArea();
    for (int column = area_.left; used && column <= std::min(area_.right, used->right); ++column) {
        sheet.columnsToFit.insert(column);
    }
}

OwnedVariant Range::hidden() const {
    place_.check();
    return area_.wholeRows() && !area_.wholeColumns() ? place_.sheet->rows.at(area_.top).hidden
                                                      : place_.sheet->columns.at(area_.left).hidden;
}

void Range::setHidden(const VARIANT& value) {
    const bool hidden = booleanOf(value);
    place_.check();
    if (area_.wholeRows()) {
        place_.edit().rows.change(area_.top, area_.bottom,
                                  [&](RowProperties& row) { row.hidden = hidden; });
    } else if (area_.wholeColumns()) {
        place_.edit().columns.change(area_.left, area_.right,
                                     [&](ColumnProperties& c) { c.hidden = hidden; });
    } else {
        failToSet("Hidden");
    }
}

double Range::left() const { return fitted().leftOf(area_.left); }

double Range::top() const { return fitted().topOf(area_.top); }

double Range::width() const { return fitted().leftOf(area_.right + 1) - left(); }

double Range::height() const { return fitted().topOf(area_.bottom + 1) - top(); }

LONG Range::row() const { return area_.top; }

LONG Range::column() const { return area_.left; }

double Range::count() const {
    switch (unit_) {
    case RangeUnit::kRow:
        return area_.rows();
    case RangeUnit::kColumn:
        return area_.columns();
    case RangeUnit::kCell:
        break;
    }
    return static_cast<double>(area_.cells());
}

std::wstring Range::address(const CallArguments& arguments) const {
    const bool absolute = arguments.boolean(0, true) && arguments.boolean(1, true);
    return fromUtf8(areaText(area_, absolute));
}

Sheet& Range::fitted() const {
    place_.check();
    fitColumns(*place_.sheet, place_.formats());
    return *place_.sheet;
}

} // namespace headless::excel
