// The members of ranges, and how ranges are named.
#include "excel/range_object.h"

#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {

const MemberTable& Range::members() const {
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

namespace {

bool sameText(const VARIANT& value, const VARIANT* other) {
    return other != nullptr && value.vt == VT_BSTR && other->vt == VT_BSTR &&
           headless::textOf(value.bstrVal) == headless::textOf(other->bstrVal);
}

} // namespace

IDispatch* namedRange(const SheetPlace& place, const CallArguments& arguments) {
    place.check();
    std::optional<Area> area;
    for (std::size_t i = 0; i < 2; ++i) {
        const VARIANT* argument = arguments.find(i);
        if (argument == nullptr) continue;
        const auto other = argument->vt == VT_DISPATCH ? rangeOf(argument->pdispVal) : std::nullopt;
        // Mostly both corners are the same cell.
        if (i == 1 && area && !other && sameText(*argument, arguments.find(0))) continue;
        const Area next = other ? other->second : areaOfText(place, toUtf8(textOf(*argument)));
        area = area ? hull(*area, next) : next;
    }
    if (!area) fail("a range needs a name");
    return makeRange(place, *area);
}

} // namespace headless::excel
