// How ranges change the sheet: merged, moved, copied and filtered cells.
#include "excel/directions.h"
#include "excel/formula_references.h"
#include "excel/range_object.h"
#include "excel/range_values.h"

namespace headless::excel {

OwnedVariant Range::mergeCells() const {
    place_.check();
    bool touched = false;
    for (const Area& merged : place_.sheet->merges) {
        if (merged.contains(area_)) return true;
        touched = touched || intersection(merged, area_).has_value();
    }
    return touched ? OwnedVariant::null() : OwnedVariant(false);
}

void Range::setMergeCells(const VARIANT& value) {
    place_.check();
    booleanOf(value) ? place_.edit().merge(area_) : place_.edit().unmerge(area_);
}

void Range::merge(const CallArguments& arguments) {
    place_.check();
    if (!arguments.boolean(0, false)) return place_.edit().merge(area_);
    checkSize(area_);
    for (int row = area_.top; row <= area_.bottom; ++row)
        place_.edit().merge({row, area_.left, row, area_.right});
}

void Range::unmerge() {
    place_.check();
    place_.edit().unmerge(area_);
}

void Range::insert(const CallArguments& arguments) {
    place_.check();
    // Without being told, wide ranges push down and tall ones to the right.
    const bool wide = area_.wholeRows() || area_.columns() >= area_.rows();
    const LONG fallback = wide && !area_.wholeColumns() ? kXlDown : kXlToRight;
    const bool down = arguments.integer(0, fallback) == kXlDown;
    fitted();
    const std::shared_ptr<Sheet> sheet = place_.sheet;
    if (!place_.edit().insertCells(area_, down)) {
        fail("cells in use would be pushed off the sheet");
    }
    shiftReferences(place_, area_, down, true);
}

void Range::remove(const CallArguments& arguments) {
    place_.check();
    const bool wide = area_.wholeRows() || area_.columns() >= area_.rows();
    const LONG fallback = wide && !area_.wholeColumns() ? kXlUp : kXlToLeft;
    const bool up = arguments.integer(0, fallback) == kXlUp;
    fitted();
    place_.edit().deleteCells(area_, up);
    shiftReferences(place_, area_, up, false);
}

void Range::copy(const CallArguments& arguments) {
    place_.check();
    const Clipboard copied = copyCells(place_, area_);
    const VARIANT* target = arguments.find(0);
    if (target == nullptr) {
        place_.application->clipboard = copied;
        return;
    }
    const auto found = target->vt == VT_DISPATCH ? rangeOf(target->pdispVal) : std::nullopt;
    if (!found) fail("the destination is no range");
    pasteCells(found->first, found->second, copied, kPasteAll);
}

void Range::cut(const CallArguments& arguments) {
    copy(arguments);
    clear();
}

void Range::pasteSpecial(const CallArguments& arguments) {
    place_.check();
    if (!place_.application->clipboard) fail("nothing was copied");
    pasteCells(place_, area_, *place_.application->clipboard, arguments.integer(0, kPasteAll));
}

void Range::autoFilter() {
    place_.check();
    Sheet& sheet = place_.edit();
    // A second call takes the filter away.
    if (sheet.autoFilter) {
        sheet.autoFilter.reset();
    } else if (const auto used = sheet.usedArea()) {
        sheet.autoFilter = area_.cells() == 1 ? *used : intersection(area_, *used);
    }
}

void Range::select() {
    place_.check();
    place_.book->workbook->activeSheet = place_.book->workbook->positionOf(*place_.sheet);
    place_.book->selectedSheet = place_.sheet;
    place_.book->selection = area_;
}

} // namespace headless::excel
