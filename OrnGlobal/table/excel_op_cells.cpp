// What CExcelOP does with ranges.
#include "table/excel_members.h"
#include "table/excel_op.h"

using namespace excel;

namespace {

CString dateText(DATE days) {
    CString text;
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(days, &time) == FALSE) return text;
    text.Format(L"%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute, time.wSecond);
    return text;
}

/// A cell's value as text; nothing for what is no value.
CString textOf(COleVariant value) {
    CString text;
    switch (value.vt) {
    case VT_BSTR:
        return value.bstrVal;
    case VT_DATE:
        return dateText(value.date);
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? L"TRUE" : L"FALSE";
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_INT:
        value.ChangeType(VT_I4);
        text.Format(L"%d", value.lVal);
        return text;
    case VT_R4:
    case VT_R8:
    case VT_CY:
        value.ChangeType(VT_R8);
        text.Format(L"%f", value.dblVal);
        return text;
    default:
        return text;
    }
}

void drawLines(COleDispatchDriver& borders, long lineStyle, long weight, long color) {
    put(borders, kLineStyle, lineStyle);
    put(borders, kWeight, weight);
    put(borders, kColor, color);
}

} // namespace

/// Gets the range and runs calls on it.
template <class Calls>
int CExcelOP::onRange(const CString& cell1, const CString& cell2, Calls calls) {
    return GetCellRange(cell1, cell2) != 0 ? attempt(calls) : 0;
}

/// Gets the range and its font, in the holder of parts.
template <class Calls>
int CExcelOP::onFont(const CString& cell1, const CString& cell2, Calls calls) {
    return onRange(cell1, cell2, [&] {
        m_part = getObject(m_range, kFont);
        calls();
    });
}

/// One property of the range, and of its font.
template <class Value>
int CExcelOP::setOnRange(const CString& cell1, const CString& cell2, Member member,
                         const Value& value) {
    return onRange(cell1, cell2, [&] { put(m_range, member, value); });
}
template <class Value>
int CExcelOP::setOnFont(const CString& cell1, const CString& cell2, Member member,
                        const Value& value) {
    return onFont(cell1, cell2, [&] { put(m_part, member, value); });
}

int CExcelOP::SetCellValue(CString cell, VARIANT value) {
    return setOnRange(cell, cell, kValue2, value);
}

int CExcelOP::SetCellValue(int row, int col, VARIANT value) {
    return SetCellValue(GetCellName(col, row), value);
}

int CExcelOP::SetCellFormula(CString cell1, CString cell2, CString formula) {
    return setOnRange(cell1, cell2, kFormula, formula);
}

int CExcelOP::SetCellComment(CString cell1, CString cell2, CString text) {
    return onRange(cell1, cell2, [&] {
        static const BYTE kinds[] = VTS_BSTR;
        (void)getObject(m_range, kAddComment, DISPATCH_METHOD, kinds, text.GetString());
    });
}

CString CExcelOP::GetCellValue(CString cell) {
    CString text;
    onRange(cell, cell, [&] {
        COleVariant value;
        m_range.InvokeHelper(kValue, DISPATCH_PROPERTYGET, VT_VARIANT, &value, nullptr);
        text = textOf(value);
    });
    return text;
}

CString CExcelOP::GetCellValue(int row, int col) { return GetCellValue(GetCellName(col, row)); }

int CExcelOP::InsertRow(CString cell1, CString cell2) {
    return onRange(cell1, cell2, [&] {
        static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT;
        constexpr long kShiftDown = -4121;
        const COleVariant shift(kShiftDown);
        const COleVariant origin = missing();
        m_range.InvokeHelper(kInsert, DISPATCH_METHOD, VT_EMPTY, nullptr, kinds,
                             static_cast<LPCVARIANT>(shift), static_cast<LPCVARIANT>(origin));
    });
}

int CExcelOP::InsertPic(CString cell1, CString cell2, CString path, double colWidth,
                        double rowHeight) {
    // A picture that is not there must not leave the cells resized.
    CFile file;
    CFileException error;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone, &error)) {
        error.ReportError(MB_OK | MB_ICONEXCLAMATION);
        return 0;
    }
    file.Close();
    return onRange(cell1, cell2, [&] {
        put(m_range, kColumnWidth, colWidth);
        put(m_range, kRowHeight, rowHeight);
        const double left = getReal(m_range, kLeft);
        const double top = getReal(m_range, kTop);
        const double width = getReal(m_range, kWidth);
        const double height = getReal(m_range, kHeight);
        m_part = getObject(m_worksheet, kShapes);
        static const BYTE kinds[] = VTS_BSTR VTS_I4 VTS_I4 VTS_R8 VTS_R8 VTS_R8 VTS_R8;
        constexpr long kNoLink = 0;
        constexpr long kSaveWithDocument = -1;
        m_item = getObject(m_part, kAddPicture, DISPATCH_METHOD, kinds, path.GetString(), kNoLink,
                           kSaveWithDocument, left, top, width, height);
        constexpr long kFree = 0;
        put(m_item, kLockAspectRatio, kFree);
        put(m_item, kWidth, width);
    });
}

int CExcelOP::SetNumFormat(CString cell1, CString cell2, CString format) {
    return setOnRange(cell1, cell2, kNumberFormat, format);
}

int CExcelOP::SetNumFormat(CString format) {
    if (m_worksheet.m_lpDispatch == nullptr) return refuse(L"Sheet获取失败!");
    return attempt([&] {
        m_part = getObject(m_worksheet, kCells);
        put(m_part, kNumberFormat, format);
    });
}

int CExcelOP::SetCellHAlignment(CString cell1, CString cell2, long alignment, long indent) {
    return onRange(cell1, cell2, [&] {
        put(m_range, kHorizontalAlignment, alignment);
        put(m_range, kIndentLevel, indent);
    });
}

int CExcelOP::SetCellVAlignment(CString cell1, CString cell2, long alignment) {
    return setOnRange(cell1, cell2, kVerticalAlignment, alignment);
}

int CExcelOP::SetCellTextControl(CString cell1, CString cell2, int wrap, int shrink, int merge) {
    return onRange(cell1, cell2, [&] {
        putFlag(m_range, kWrapText, wrap);
        putFlag(m_range, kShrinkToFit, shrink);
        putFlag(m_range, kMergeCells, merge);
    });
}

int CExcelOP::SetCellOrientation(CString cell1, CString cell2, long degrees) {
    return setOnRange(cell1, cell2, kOrientation, degrees);
}

int CExcelOP::SetRowHeight(CString cell1, CString cell2, double height) {
    return setOnRange(cell1, cell2, kRowHeight, height);
}

int CExcelOP::SetColumnWidth(CString cell1, CString cell2, double width) {
    return setOnRange(cell1, cell2, kColumnWidth, width);
}

int CExcelOP::SetColumnAutoFit(CString cell1, CString cell2) {
    return onRange(cell1, cell2, [&] {
        m_part = getObject(m_range, kEntireColumn);
        call(m_part, kAutoFit);
    });
}

int CExcelOP::SetCellFont(CString cell1, CString cell2, CString name, CString style, double size,
                          long underline, int strikethrough, long color, int superscript,
                          int subscript) {
    return onFont(cell1, cell2, [&] {
        put(m_part, kName, name);
        put(m_part, kFontStyle, style);
        put(m_part, kSize, size);
        put(m_part, kUnderline, underline);
        putFlag(m_part, kStrikethrough, strikethrough);
        put(m_part, kColor, color);
        putFlag(m_part, kSuperscript, superscript);
        putFlag(m_part, kSubscript, subscript);
        m_item = getObject(m_range, kEntireColumn);
        call(m_item, kAutoFit);
    });
}

int CExcelOP::SetCellFontName(CString cell1, CString cell2, CString name) {
    return setOnFont(cell1, cell2, kName, name);
}

int CExcelOP::SetCellFontStyle(CString cell1, CString cell2, CString style) {
    return setOnFont(cell1, cell2, kFontStyle, style);
}

int CExcelOP::SetCellFontSize(CString cell1, CString cell2, double size) {
    return setOnFont(cell1, cell2, kSize, size);
}

int CExcelOP::SetCellFontColor(CString cell1, CString cell2, long color) {
    return setOnFont(cell1, cell2, kColor, color);
}

int CExcelOP::SetCellFontUnderline(CString cell1, CString cell2, long underline) {
    return setOnFont(cell1, cell2, kUnderline, underline);
}

int CExcelOP::SetCellFontStrikethrough(CString cell1, CString cell2, int strikethrough) {
    return onFont(cell1, cell2, [&] { putFlag(m_part, kStrikethrough, strikethrough); });
}

int CExcelOP::SetCellFontSubSuper(CString cell1, CString cell2, int superscript, int subscript) {
    return onFont(cell1, cell2, [&] {
        putFlag(m_part, kSuperscript, superscript);
        putFlag(m_part, kSubscript, subscript);
    });
}

int CExcelOP::SetCellBorder(CString cell1, CString cell2, long which, long lineStyle, long weight,
                            long color) {
    return onRange(cell1, cell2, [&] {
        m_part = getObject(m_range, kBorders);
        static const BYTE kinds[] = VTS_I4;
        m_item = getObject(m_part, kItem, DISPATCH_PROPERTYGET, kinds, which);
        drawLines(m_item, lineStyle, weight, color);
    });
}

int CExcelOP::SetCellBorders(CString cell1, CString cell2, long lineStyle, long weight,
                             long color) {
    return onRange(cell1, cell2, [&] {
        m_part = getObject(m_range, kBorders);
        drawLines(m_part, lineStyle, weight, color);
    });
}

int CExcelOP::SetCellBorderAround(CString cell1, CString cell2, long lineStyle, long weight,
                                  long color) {
    return onRange(cell1, cell2, [&] {
        static const BYTE kinds[] = VTS_VARIANT VTS_I4 VTS_VARIANT VTS_VARIANT;
        const COleVariant style(lineStyle);
        const COleVariant noIndex = missing();
        const COleVariant rgb(color);
        m_range.InvokeHelper(kBorderAround, DISPATCH_METHOD, VT_EMPTY, nullptr, kinds,
                             static_cast<LPCVARIANT>(style), weight,
                             static_cast<LPCVARIANT>(noIndex), static_cast<LPCVARIANT>(rgb));
    });
}

int CExcelOP::SetCellPartern(CString cell1, CString cell2, long pattern, long color) {
    return onRange(cell1, cell2, [&] {
        m_part = getObject(m_range, kInterior);
        put(m_part, kPattern, pattern);
        put(m_part, kColor, color);
    });
}

int CExcelOP::MergeCell(CString cell1, CString cell2, int merge) {
    return onRange(cell1, cell2, [&] { putFlag(m_range, kMergeCells, merge); });
}

int CExcelOP::SetCellValueRHCWColorAlognmentBorders(int row, int col, VARIANT value,
                                                    double rowHeight, double colWidth,
                                                    long horizontal, long vertical, long indent,
                                                    long fontColor, long lineStyle, long weight,
                                                    long borderColor) {
    const CString cell = GetCellName(col, row);
    return onRange(cell, cell, [&] {
        put(m_range, kValue2, value);
        put(m_range, kRowHeight, rowHeight);
        put(m_range, kColumnWidth, colWidth);
        put(m_range, kHorizontalAlignment, horizontal);
        put(m_range, kVerticalAlignment, vertical);
        put(m_range, kIndentLevel, indent);
        m_part = getObject(m_range, kFont);
        put(m_part, kColor, fontColor);
        m_part = getObject(m_range, kBorders);
        drawLines(m_part, lineStyle, weight, borderColor);
    });
}
