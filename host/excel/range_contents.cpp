// What the cells of ranges hold.
#include "excel/cell_text.h"
#include "excel/number_formats.h"
#include "excel/range_object.h"
#include "excel/range_values.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {

OwnedVariant Range::value2() const { return contents(false); }

OwnedVariant Range::value() const { return contents(true); }

void Range::setValue2(const VARIANT& value) { writeValues(place_, area_, value, false); }

void Range::setValue(const CallArguments&, const VARIANT& value) {
    writeValues(place_, area_, value, true);
}

OwnedVariant Range::formula() const {
    place_.check();
    return readValues(area_, [&](int row, int column) { return formulaOf(row, column); });
}

void Range::setFormula(const VARIANT& value) {
    if (value.vt != VT_BSTR) return writeValues(place_, area_, value, false);
    writeFormula(place_, area_, toUtf8(textOf(value)));
}

OwnedVariant Range::hasFormula() const {
    place_.check();
    std::size_t formulas = 0;
    place_.sheet->forEach(area_, [&](int, int, const Cell& cell) {
        if (!cell.formula.empty()) ++formulas;
    });
    if (formulas == 0) return false;
    return formulas == area_.cells() ? OwnedVariant(true) : OwnedVariant::null();
}

OwnedVariant Range::text() const {
    calculate();
    const Cell* cell = place_.sheet->find(area_.top, area_.left);
    if (cell == nullptr) return L"";
    return fromUtf8(shownText(*cell, place_.formats().at(cell->format)));
}

void Range::clearContents() {
    place_.check();
    place_.edit().forEach(area_, [](int, int, Cell& cell) {
        cell.value = {};
        cell.formula.clear();
    });
}

void Range::clearFormats() {
    change([](CellFormat& format) { format = CellFormat{}; });
}

void Range::clear() {
    clearContents();
    clearFormats();
    clearComments();
    place_.edit().unmerge(area_);
}

void Range::clearComments() {
    place_.check();
    std::erase_if(place_.edit().comments, [&](const auto& entry) {
        return area_.contains(entry.first.first, entry.first.second);
    });
}

OwnedVariant Range::find(const CallArguments& arguments) const {
    calculate();
    const std::wstring wanted = arguments.text(0);
    constexpr LONG kWhole = 1;
    const bool whole = arguments.integer(3, 2) == kWhole;
    std::optional<Area> found;
    place_.sheet->forEach(area_, [&](int row, int column, const Cell& cell) {
        if (found) return;
        const std::wstring shown =
            lowerCased(fromUtf8(shownText(cell, place_.formats().at(cell.format))));
        const std::wstring low = lowerCased(wanted);
        const bool hit = whole ? shown == low : shown.find(low) != std::wstring::npos;
        if (hit && cell.hasContent()) found = Area{row, column, row, column};
    });
    return found ? OwnedVariant(makeRange(place_, *found))
                 : OwnedVariant(static_cast<IDispatch*>(nullptr));
}

IDispatch* Range::addComment(const CallArguments& arguments) {
    place_.check();
    const std::pair<int, int> cell(area_.top, area_.left);
    if (place_.sheet->comments.contains(cell)) fail("the cell has a comment already");
    place_.edit().comments[cell].text = toUtf8(arguments.text(0));
    return makeComment(place_, area_.top, area_.left);
}

IDispatch* Range::comment() const {
    place_.check();
    const bool there = place_.sheet->comments.contains({area_.top, area_.left});
    return there ? makeComment(place_, area_.top, area_.left) : nullptr;
}

void Range::calculate() const {
    place_.check();
    bool formulas = false;
    place_.sheet->forEach(
        area_, [&](int, int, const Cell& cell) { formulas = formulas || !cell.formula.empty(); });
    if (formulas) place_.application->calculate(*place_.book);
}

OwnedVariant Range::contents(bool typed) const {
    calculate();
    return readValues(area_, [&](int row, int column) {
        const Cell* cell = place_.sheet->find(row, column);
        if (cell == nullptr) return OwnedVariant();
        return variantOf(cell->value,
                         typed && showsDates(place_.formats().at(cell->format).numberFormat));
    });
}

OwnedVariant Range::formulaOf(int row, int column) const {
    const Cell* cell = place_.sheet->find(row, column);
    if (cell == nullptr) return L"";
    if (!cell->formula.empty()) return fromUtf8("=" + cell->formula);
    return fromUtf8(shownText(*cell, CellFormat{}));
}

} // namespace headless::excel
