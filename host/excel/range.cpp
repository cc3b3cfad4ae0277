// Ranges of cells.
#include <algorithm>

#include "excel/area_object.h"
#include "excel/cell_text.h"
#include "excel/format_names.h"
#include "excel/formula_references.h"
#include "excel/number_formats.h"
#include "excel/range_values.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr LONG kXlUp = -4162;
constexpr LONG kXlDown = -4121;
constexpr LONG kXlToLeft = -4159;
constexpr LONG kXlToRight = -4161;

// Changes that formats remember.
constexpr std::uint32_t kChangeHorizontal = 1;
constexpr std::uint32_t kChangeVertical = 2;
constexpr std::uint32_t kChangeIndent = 3;

/// A stretch of rows or columns as wide as the sheet the other way.
Area wholeRowsOf(const Area& area) { return {area.top, 1, area.bottom, kColumns}; }
Area wholeColumnsOf(const Area& area) { return {1, area.left, kRows, area.right}; }

Area moved(const Area& area, int down, int right) {
    return {area.top + down, area.left + right, area.bottom + down, area.right + right};
}

class Range final : public AreaObject {
public:
    Range(const SheetPlace& place, const Area& area, RangeUnit unit)
        : AreaObject(place, area), unit_(unit) {}

    const SheetPlace& place() const { return place_; }
    const Area& area() const { return area_; }

    // --- Contents ---

    OwnedVariant value2() const { return contents(false); }
    OwnedVariant value() const { return contents(true); }
    void setValue2(const VARIANT& value) { writeValues(place_, area_, value, false); }
    void setValue(const CallArguments&, const VARIANT& value) {
        writeValues(place_, area_, value, true);
    }
    OwnedVariant formula() const {
        place_.check();
        return readValues(area_, [&](int row, int column) { return formulaOf(row, column); });
    }
    void setFormula(const VARIANT& value) {
        if (value.vt != VT_BSTR) return writeValues(place_, area_, value, false);
        writeFormula(place_, area_, toUtf8(textOf(value)));
    }
    OwnedVariant hasFormula() const {
        place_.check();
        std::size_t formulas = 0;
        place_.sheet->forEach(area_, [&](int, int, const Cell& cell) {
            if (!cell.formula.empty()) ++formulas;
        });
        if (formulas == 0) return false;
        return formulas == area_.cells() ? OwnedVariant(true) : OwnedVariant::null();
    }
    OwnedVariant text() const {
        place_.check();
        const Cell* cell = place_.sheet->find(area_.top, area_.left);
        if (cell == nullptr) return L"";
        return fromUtf8(shownText(*cell, place_.formats().at(cell->format)));
    }
    void clearContents() {
        place_.check();
        place_.edit().forEach(area_, [](int, int, Cell& cell) {
            cell.value = {};
            cell.formula.clear();
        });
    }
    void clearFormats() {
        change([](CellFormat& format) { format = CellFormat{}; });
    }
    void clear() {
        clearContents();
        clearFormats();
        clearComments();
        place_.edit().unmerge(area_);
    }
    void clearComments() {
        place_.check();
        std::erase_if(place_.edit().comments, [&](const auto& entry) {
            return area_.contains(entry.first.first, entry.first.second);
        });
    }
    OwnedVariant find(const CallArguments& arguments) const {
        place_.check();
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

    // --- Comments ---

    IDispatch* addComment(const CallArguments& arguments) {
        place_.check();
        const std::pair<int, int> cell(area_.top, area_.left);
        if (place_.sheet->comments.contains(cell)) fail("the cell has a comment already");
        place_.edit().comments[cell].text = toUtf8(arguments.text(0));
        return makeComment(place_, area_.top, area_.left);
    }
    IDispatch* comment() const {
        place_.check();
        const bool there = place_.sheet->comments.contains({area_.top, area_.left});
        return there ? makeComment(place_, area_.top, area_.left) : nullptr;
    }

    // --- Format ---

    OwnedVariant numberFormat() const {
        return common([](const CellFormat& f) { return fromUtf8(f.numberFormat); });
    }
    void setNumberFormat(const VARIANT& value) {
        const std::string code = toUtf8(textOf(value));
        if (code.empty()) failToSet("NumberFormat");
        change([&](CellFormat& format) { format.numberFormat = code; });
    }
    OwnedVariant horizontal() const {
        return common([](const CellFormat& f) { return numberOf(f.alignment.horizontal); });
    }
    void setHorizontal(const VARIANT& value) {
        const auto horizontal = horizontalOf(integerOf(value));
        if (!horizontal) failToSet("HorizontalAlignment");
        change(
            [&](CellFormat& format) {
                format.alignment.horizontal = *horizontal;
                format.alignment.indent = 0;
            },
            {kChangeHorizontal, static_cast<std::uint64_t>(*horizontal)});
    }
    OwnedVariant vertical() const {
        return common([](const CellFormat& f) { return numberOf(f.alignment.vertical); });
    }
    void setVertical(const VARIANT& value) {
        const auto vertical = verticalOf(integerOf(value));
        if (!vertical) failToSet("VerticalAlignment");
        change([&](CellFormat& format) { format.alignment.vertical = *vertical; },
               {kChangeVertical, static_cast<std::uint64_t>(*vertical)});
    }
    OwnedVariant indent() const {
        return common([](const CellFormat& f) { return LONG{f.alignment.indent}; });
    }
    void setIndent(const VARIANT& value) {
        const LONG indent = integerOf(value);
        if (indent < 0 || indent > 250) failToSet("IndentLevel");
        change(
            [&](CellFormat& format) {
                Alignment& alignment = format.alignment;
                const bool takesIndent = alignment.horizontal == Horizontal::kLeft ||
                                         alignment.horizontal == Horizontal::kRight ||
                                         alignment.horizontal == Horizontal::kDistributed;
                // Only texts that lean against an edge can stand off it.
                if (indent > 0 && !takesIndent) alignment.horizontal = Horizontal::kLeft;
                alignment.indent = indent;
            },
            {kChangeIndent, static_cast<std::uint64_t>(indent)});
    }
    OwnedVariant wrap() const {
        return common([](const CellFormat& f) { return f.alignment.wrap; });
    }
    void setWrap(const VARIANT& value) {
        change([on = booleanOf(value)](CellFormat& format) {
            format.alignment.wrap = on;
            if (on) format.alignment.shrink = false; // Wrapped texts are not shrunk.
        });
    }
    OwnedVariant shrink() const {
        return common([](const CellFormat& f) { return f.alignment.shrink; });
    }
    void setShrink(const VARIANT& value) {
        change([on = booleanOf(value)](CellFormat& format) {
            format.alignment.shrink = on && !format.alignment.wrap;
        });
    }
    OwnedVariant orientation() const {
        return common([](const CellFormat& f) {
            const int rotation = f.alignment.rotation;
            return rotation == kStackedText ? LONG{-4166}
                   : rotation == 0          ? LONG{-4128}
                                            : LONG{rotation};
        });
    }
    void setOrientation(const VARIANT& value) {
        LONG rotation = integerOf(value);
        if (rotation == -4128) rotation = 0;
        if (rotation == -4171) rotation = 90;
        if (rotation == -4170) rotation = -90;
        if (rotation == -4166) rotation = kStackedText;
        if ((rotation < -90 || rotation > 90) && rotation != kStackedText) {
            failToSet("Orientation");
        }
        change([&](CellFormat& format) { format.alignment.rotation = rotation; });
    }
    OwnedVariant locked() const {
        return common([](const CellFormat& f) { return f.locked; });
    }
    void setLocked(const VARIANT& value) {
        change([on = booleanOf(value)](CellFormat& format) { format.locked = on; });
    }
    IDispatch* font() const { return makeFont(place_, area_); }
    IDispatch* interior() const { return makeInterior(place_, area_); }
    IDispatch* borders(const CallArguments& arguments) const {
        IDispatch* borders = makeBorders(place_, area_);
        if (!arguments.has(0)) return borders;
        const OwnedVariant all(borders);
        OwnedVariant index(arguments.integer(0, 0));
        DISPPARAMS parameters = {&index, nullptr, 1, 0};
        OwnedVariant one;
        const HRESULT status =
            borders->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                            &parameters, &one, nullptr, nullptr);
        if (FAILED(status)) fail("there is no such border");
        return one.release().pdispVal;
    }
    /// @param arguments  line style, weight, palette index, colour.
    void borderAround(const CallArguments& arguments) {
        const OwnedVariant borders(makeBorders(place_, area_));
        for (LONG edge = 7; edge <= 10; ++edge) {
            OwnedVariant index(edge);
            DISPPARAMS parameters = {&index, nullptr, 1, 0};
            OwnedVariant border;
            borders.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                     DISPATCH_PROPERTYGET, &parameters, &border, nullptr, nullptr);
            constexpr DISPID kMembers[] = {119, 120, 97, 99};
            for (std::size_t i = 0; i < std::size(kMembers); ++i) {
                const VARIANT* value = arguments.find(i);
                // A line without a style is a thin one.
                OwnedVariant fallback(LONG{1});
                if (value == nullptr && i > 0) continue;
                putMember(border.pdispVal, kMembers[i], value == nullptr ? fallback : *value);
            }
        }
    }

    // --- Rows, columns, places ---

    OwnedVariant rowHeight() const {
        place_.check();
        const Sheet& sheet = *place_.sheet;
        const double first = sheet.rowPoints(area_.top);
        for (int row = area_.top; row <= area_.bottom && !area_.wholeColumns(); ++row) {
            if (sheet.rowPoints(row) != first) return OwnedVariant::null();
        }
        return first;
    }
    void setRowHeight(const VARIANT& value) {
        const double height = realOf(value);
        if (!(height >= 0.0 && height <= 409.5)) failToSet("RowHeight");
        place_.check();
        place_.edit().rows.change(area_.top, area_.bottom, [&](RowProperties& row) {
            row.hidden = height == 0.0;
            if (height > 0.0) row.height = height;
        });
    }
    OwnedVariant columnWidth() const {
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
    void setColumnWidth(const VARIANT& value) {
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
    void autoFit() {
        place_.check();
        Sheet& sheet = place_.edit();
        if (area_.wholeRows() && !area_.wholeColumns()) {
            sheet.rows.change(area_.top, area_.bottom,
                              [](RowProperties& row) { row.height.reset(); });
            return;
        }
        if (!area_.wholeColumns() && unit_ != RangeUnit::kColumn) {
            fail("only whole rows and columns can be fitted");
        }
        const auto used = sheet.usedArea();
        for (int column = area_.left; used && column <= std::min(area_.right, used->right);
             ++column) {
            sheet.columnsToFit.insert(column);
        }
    }
    OwnedVariant hidden() const {
        place_.check();
        return area_.wholeRows() && !area_.wholeColumns()
                   ? place_.sheet->rows.at(area_.top).hidden
                   : place_.sheet->columns.at(area_.left).hidden;
    }
    void setHidden(const VARIANT& value) {
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
    double left() const { return fitted().leftOf(area_.left); }
    double top() const { return fitted().topOf(area_.top); }
    double width() const { return fitted().leftOf(area_.right + 1) - left(); }
    double height() const { return fitted().topOf(area_.bottom + 1) - top(); }
    LONG row() const { return area_.top; }
    LONG column() const { return area_.left; }
    double count() const {
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
    std::wstring address(const CallArguments& arguments) const {
        const bool absolute = arguments.boolean(0, true) && arguments.boolean(1, true);
        return fromUtf8(areaText(area_, absolute));
    }

    // --- Other ranges ---

    IDispatch* item(const CallArguments& arguments) const {
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
    IDispatch* cells(const CallArguments& arguments) const {
        return Range(place_, area_, RangeUnit::kCell).item(arguments);
    }
    IDispatch* rows(const CallArguments& arguments) const {
        if (arguments.has(0)) return rowAt(steps(arguments, 0, 1));
        return makeRange(place_, area_, RangeUnit::kRow);
    }
    IDispatch* columns(const CallArguments& arguments) const {
        if (arguments.has(0)) return columnAt(columnArgument(arguments, 0));
        return makeRange(place_, area_, RangeUnit::kColumn);
    }
    IDispatch* range(const CallArguments& arguments) const {
        const OwnedVariant found(namedRange(place_, arguments));
        const Area relative = rangeOf(found.pdispVal)->second;
        return checked(moved(relative, area_.top - 1, area_.left - 1));
    }
    IDispatch* offset(const CallArguments& arguments) const {
        return checked(moved(area_, steps(arguments, 0, 0), steps(arguments, 1, 0)));
    }
    IDispatch* resize(const CallArguments& arguments) const {
        return checked({area_.top, area_.left, area_.top + steps(arguments, 0, area_.rows()) - 1,
                        area_.left + steps(arguments, 1, area_.columns()) - 1});
    }
    IDispatch* entireRow() const { return makeRange(place_, wholeRowsOf(area_), RangeUnit::kRow); }
    IDispatch* entireColumn() const {
        return makeRange(place_, wholeColumnsOf(area_), RangeUnit::kColumn);
    }
    /// The end of a block of filled cells, as Ctrl with an arrow finds it.
    IDispatch* end(const CallArguments& arguments) const {
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
    /// The block of filled cells around, up to empty rows and columns.
    IDispatch* currentRegion() const {
        place_.check();
        Area region = area_;
        for (bool grown = true; grown;) {
            const Area around = *intersection(
                {region.top - 1, region.left - 1, region.bottom + 1, region.right + 1},
                wholeSheet());
            Area next = region;
            place_.sheet->forEach(around, [&](int row, int column, const Cell& cell) {
                if (cell.hasContent()) next = hull(next, {row, column, row, column});
            });
            grown = !(next == region);
            region = next;
        }
        return makeRange(place_, region);
    }
    IDispatch* mergeArea() const {
        place_.check();
        const Area* merged = place_.sheet->mergeAt(area_.top, area_.left);
        return makeRange(place_, merged == nullptr ? area_ : *merged);
    }
    IDispatch* worksheet() const { return makeSheet(place_); }

    // --- Changes of the sheet ---

    OwnedVariant mergeCells() const {
        place_.check();
        bool touched = false;
        for (const Area& merged : place_.sheet->merges) {
            if (merged.contains(area_)) return true;
            touched = touched || intersection(merged, area_).has_value();
        }
        return touched ? OwnedVariant::null() : OwnedVariant(false);
    }
    void setMergeCells(const VARIANT& value) {
        place_.check();
        booleanOf(value) ? place_.edit().merge(area_) : place_.edit().unmerge(area_);
    }
    void merge(const CallArguments& arguments) {
        place_.check();
        if (!arguments.boolean(0, false)) return place_.edit().merge(area_);
        checkSize(area_);
        for (int row = area_.top; row <= area_.bottom; ++row)
            place_.edit().merge({row, area_.left, row, area_.right});
    }
    void unmerge() {
        place_.check();
        place_.edit().unmerge(area_);
    }
    void insert(const CallArguments& arguments) {
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
    void remove(const CallArguments& arguments) {
        place_.check();
        const bool wide = area_.wholeRows() || area_.columns() >= area_.rows();
        const LONG fallback = wide && !area_.wholeColumns() ? kXlUp : kXlToLeft;
        const bool up = arguments.integer(0, fallback) == kXlUp;
        fitted();
        place_.edit().deleteCells(area_, up);
        shiftReferences(place_, area_, up, false);
    }
    void copy(const CallArguments& arguments) {
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
    void cut(const CallArguments& arguments) {
        copy(arguments);
        clear();
    }
    void pasteSpecial(const CallArguments& arguments) {
        place_.check();
        if (!place_.application->clipboard) fail("nothing was copied");
        pasteCells(place_, area_, *place_.application->clipboard, arguments.integer(0, kPasteAll));
    }
    void autoFilter() {
        place_.check();
        Sheet& sheet = place_.edit();
        // A second call takes the filter away.
        if (sheet.autoFilter) {
            sheet.autoFilter.reset();
        } else if (const auto used = sheet.usedArea()) {
            sheet.autoFilter = area_.cells() == 1 ? *used : intersection(area_, *used);
        }
    }
    void select() {
        place_.check();
        place_.book->workbook->activeSheet = place_.book->workbook->positionOf(*place_.sheet);
        place_.book->selectedSheet = place_.sheet;
        place_.book->selection = area_;
    }

protected:
    const MemberTable& members() const override {
        using R = Range;
        static const MemberTable table{
            {0, L"_Default", reads<&R::item>, writes<&R::setValue>},
            {6, L"Value", reads<&R::value>, writes<&R::setValue>},
            {1388, L"Value2", reads<&R::value2>, writes<&R::setValue2>},
            {261, L"Formula", reads<&R::formula>, writes<&R::setFormula>},
            {267, L"HasFormula", reads<&R::hasFormula>},
            {138, L"Text", reads<&R::text>},
            {113, L"ClearContents", nullptr, nullptr, calls<&R::clearContents>},
            {112, L"ClearFormats", nullptr, nullptr, calls<&R::clearFormats>},
            {1390, L"ClearComments", nullptr, nullptr, calls<&R::clearComments>},
            {111, L"Clear", nullptr, nullptr, calls<&R::clear>},
            {398, L"Find", nullptr, nullptr, calls<&R::find>},
            {1389, L"AddComment", nullptr, nullptr, calls<&R::addComment>},
            {910, L"Comment", reads<&R::comment>},
            {193, L"NumberFormat", reads<&R::numberFormat>, writes<&R::setNumberFormat>},
            {1097, L"NumberFormatLocal", reads<&R::numberFormat>, writes<&R::setNumberFormat>},
            {136, L"HorizontalAlignment", reads<&R::horizontal>, writes<&R::setHorizontal>},
            {137, L"VerticalAlignment", reads<&R::vertical>, writes<&R::setVertical>},
            {201, L"IndentLevel", reads<&R::indent>, writes<&R::setIndent>},
            {276, L"WrapText", reads<&R::wrap>, writes<&R::setWrap>},
            {209, L"ShrinkToFit", reads<&R::shrink>, writes<&R::setShrink>},
            {134, L"Orientation", reads<&R::orientation>, writes<&R::setOrientation>},
            {269, L"Locked", reads<&R::locked>, writes<&R::setLocked>},
            {146, L"Font", reads<&R::font>},
            {129, L"Interior", reads<&R::interior>},
            {435, L"Borders", reads<&R::borders>},
            {1067, L"BorderAround", nullptr, nullptr, calls<&R::borderAround>},
            {272, L"RowHeight", reads<&R::rowHeight>, writes<&R::setRowHeight>},
            {242, L"ColumnWidth", reads<&R::columnWidth>, writes<&R::setColumnWidth>},
            {237, L"AutoFit", nullptr, nullptr, calls<&R::autoFit>},
            {268, L"Hidden", reads<&R::hidden>, writes<&R::setHidden>},
            {127, L"Left", reads<&R::left>},
            {126, L"Top", reads<&R::top>},
            {122, L"Width", reads<&R::width>},
            {123, L"Height", reads<&R::height>},
            {257, L"Row", reads<&R::row>},
            {240, L"Column", reads<&R::column>},
            {118, L"Count", reads<&R::count>},
            {236, L"Address", reads<&R::address>},
            {170, L"Item", reads<&R::item>},
            {238, L"Cells", reads<&R::cells>},
            {258, L"Rows", reads<&R::rows>},
            {241, L"Columns", reads<&R::columns>},
            {197, L"Range", reads<&R::range>},
            {254, L"Offset", reads<&R::offset>},
            {256, L"Resize", reads<&R::resize>},
            {247, L"EntireRow", reads<&R::entireRow>},
            {246, L"EntireColumn", reads<&R::entireColumn>},
            {500, L"End", reads<&R::end>},
            {243, L"CurrentRegion", reads<&R::currentRegion>},
            {1385, L"MergeArea", reads<&R::mergeArea>},
            {348, L"Worksheet", reads<&R::worksheet>},
            {150, L"Parent", reads<&R::worksheet>},
            {208, L"MergeCells", reads<&R::mergeCells>, writes<&R::setMergeCells>},
            {564, L"Merge", nullptr, nullptr, calls<&R::merge>},
            {1384, L"UnMerge", nullptr, nullptr, calls<&R::unmerge>},
            {252, L"Insert", nullptr, nullptr, calls<&R::insert>},
            {117, L"Delete", nullptr, nullptr, calls<&R::remove>},
            {551, L"Copy", nullptr, nullptr, calls<&R::copy>},
            {565, L"Cut", nullptr, nullptr, calls<&R::cut>},
            {1027, L"PasteSpecial", nullptr, nullptr, calls<&R::pasteSpecial>},
            {793, L"AutoFilter", nullptr, nullptr, calls<&R::autoFilter>},
            {235, L"Select", nullptr, nullptr, calls<&R::select>},
            {304, L"Activate", nullptr, nullptr, calls<&R::select>},
        };
        return table;
    }

private:
    Sheet& fitted() const {
        place_.check();
        fitColumns(*place_.sheet, place_.formats());
        return *place_.sheet;
    }
    OwnedVariant contents(bool typed) const {
        place_.check();
        return readValues(area_, [&](int row, int column) {
            const Cell* cell = place_.sheet->find(row, column);
            if (cell == nullptr) return OwnedVariant();
            return variantOf(cell->value,
                             typed && showsDates(place_.formats().at(cell->format).numberFormat));
        });
    }
    OwnedVariant formulaOf(int row, int column) const {
        const Cell* cell = place_.sheet->find(row, column);
        if (cell == nullptr) return L"";
        if (!cell->formula.empty()) return fromUtf8("=" + cell->formula);
        return fromUtf8(shownText(*cell, CellFormat{}));
    }
    static void putMember(IDispatch* object, DISPID member, const VARIANT& value) {
        VARIANT argument = value;
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {&argument, &put, 1, 1};
        const HRESULT status =
            object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                           nullptr, nullptr, nullptr);
        if (FAILED(status)) failToSet("BorderAround");
    }
    /// A count of cells, as far as it makes a difference: what lies that far off is off the sheet.
    static LONG steps(const CallArguments& arguments, std::size_t index, LONG fallback) {
        constexpr LONG kFar = 1 << 25;
        return std::clamp(arguments.integer(index, fallback), -kFar, kFar);
    }
    IDispatch* checked(const Area& area) const {
        if (!area.onSheet()) fail("the range would lie off the sheet");
        return makeRange(place_, area);
    }
    IDispatch* cellAt(LONG row, LONG column) const {
        const int r = area_.top + row - 1;
        const int c = area_.left + column - 1;
        return checked({r, c, r, c});
    }
    IDispatch* rowAt(LONG row) const {
        const int r = area_.top + row - 1;
        return checked({r, area_.left, r, area_.right});
    }
    IDispatch* columnAt(LONG column) const {
        const int c = area_.left + column - 1;
        return checked({area_.top, c, area_.bottom, c});
    }
    /// A column by its number or its letters.
    static LONG columnArgument(const CallArguments& arguments, std::size_t index) {
        const VARIANT* value = arguments.find(index);
        if (value != nullptr && value->vt == VT_BSTR) {
            const int column = columnNumber(toUtf8(textOf(*value)));
            if (column > 0) return column;
        }
        return steps(arguments, index, 1);
    }

    RangeUnit unit_;
};

} // namespace

IDispatch* makeRange(const SheetPlace& place, const Area& area, RangeUnit unit) {
    return newServed<Range>(place, area, unit);
}

std::optional<std::pair<SheetPlace, Area>> rangeOf(IDispatch* object) {
    const auto* range = dynamic_cast<Range*>(object);
    if (range == nullptr) return std::nullopt;
    return std::pair(range->place(), range->area());
}

Area areaOfText(const SheetPlace& place, const std::string& text) {
    const std::size_t mark = text.rfind('!');
    const std::string local = mark == std::string::npos ? text : text.substr(mark + 1);
    if (const auto area = parseArea(local)) return *area;
    const std::wstring wanted = fromUtf8(local);
    for (const DefinedName& name : place.book->workbook->names) {
        if (!equalNoCase(fromUtf8(name.name), wanted)) continue;
        const std::size_t behind = name.refersTo.rfind('!');
        const auto area = parseArea(behind == std::string::npos ? name.refersTo
                                                                : name.refersTo.substr(behind + 1));
        if (area) return *area;
    }
    fail("\"" + text + "\" names no range");
}

IDispatch* namedRange(const SheetPlace& place, const CallArguments& arguments) {
    place.check();
    std::optional<Area> area;
    for (std::size_t i = 0; i < 2; ++i) {
        const VARIANT* argument = arguments.find(i);
        if (argument == nullptr) continue;
        const auto other = argument->vt == VT_DISPATCH ? rangeOf(argument->pdispVal) : std::nullopt;
        const Area next = other ? other->second : areaOfText(place, toUtf8(textOf(*argument)));
        area = area ? hull(*area, next) : next;
    }
    if (!area) fail("a range needs a name");
    return makeRange(place, *area);
}

} // namespace headless::excel
