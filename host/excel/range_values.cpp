#include "excel/range_values.h"

#include <array>
#include <utility>

#include "excel/cell_text.h"
#include "excel/formula_references.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr std::pair<const char*, SCODE> kErrors[] = {
    {"#NULL!", static_cast<SCODE>(0x800A07D0U)},  {"#DIV/0!", static_cast<SCODE>(0x800A07D7U)},
    {"#VALUE!", static_cast<SCODE>(0x800A07DFU)}, {"#REF!", static_cast<SCODE>(0x800A07E7U)},
    {"#NAME?", static_cast<SCODE>(0x800A07EDU)},  {"#NUM!", static_cast<SCODE>(0x800A07F4U)},
    {"#N/A", static_cast<SCODE>(0x800A07FAU)},
};

CellValue errorOf(SCODE code) {
    for (const auto& [text, known] : kErrors) {
        if (known == code) return CellError{text};
    }
    return CellError{"#N/A"};
}

/// Gives one cell a value.
void enter(const SheetPlace& place, Cell& cell, const VARIANT& value, bool typed) {
    const CellFormat& format = place.formats().at(cell.format);
    cell.formula.clear();
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
        cell.value = {};
        return;
    case VT_BSTR:
        return enterText(cell, format, toUtf8(textOf(value.bstrVal)));
    case VT_BOOL:
        cell.value = value.boolVal != VARIANT_FALSE;
        return;
    case VT_ERROR:
        cell.value = errorOf(value.scode);
        return;
    default:
        break;
    }
    cell.value = realOf(value);
    const char* ownFormat = value.vt == VT_DATE ? "yyyy/m/d" : value.vt == VT_CY ? "#,##0.00" : "";
    if (typed && *ownFormat != '\0' && format.numberFormat == "General") {
        cell.format = place.formats().changed(
            cell.format, [&](CellFormat& changed) { changed.numberFormat = ownFormat; });
    }
}

/// Calls `visit(row, column)` for the cells of the area that take contents.
template <class Visit>
void forEachTaker(const Sheet& sheet, const Area& area, Visit visit) {
    checkSize(area);
    for (int row = area.top; row <= area.bottom; ++row) {
        for (int column = area.left; column <= area.right; ++column) {
            const Area* merged =
                area.cells() == 1 || sheet.merges.empty() ? nullptr : sheet.mergeAt(row, column);
            const bool covered =
                merged != nullptr && (merged->top != row || merged->left != column);
            if (!covered) visit(row, column);
        }
    }
}

/// The element of an array of one or two dimensions for a cell counted from 0; one of one
/// dimension is a row. #N/A past its end.
OwnedVariant elementAt(SAFEARRAY* array, int row, int column) {
    const UINT dimensions = SafeArrayGetDim(array);
    if (dimensions > 2) fail("an array for cells has one or two dimensions");
    std::array<LONG, 2> indices{};
    std::array<LONG, 2> offsets = {row, column};
    if (dimensions == 1) offsets[0] = column;
    OwnedVariant element = OwnedVariant::error(static_cast<SCODE>(0x800A07FAU));
    for (UINT i = 0; i < dimensions; ++i) {
        LONG lower = 0;
        LONG upper = 0;
        SafeArrayGetLBound(array, i + 1, &lower);
        SafeArrayGetUBound(array, i + 1, &upper);
        // A single row or column serves all rows or columns.
        indices[i] = lower == upper ? lower : lower + offsets[i];
        if (indices[i] > upper) return element;
    }
    VARTYPE type = VT_EMPTY;
    SafeArrayGetVartype(array, &type);
    OwnedVariant value;
    if (type == VT_VARIANT) {
        if (FAILED(SafeArrayGetElement(array, indices.data(), &value))) return element;
    } else {
        if (FAILED(SafeArrayGetElement(array, indices.data(), &value.llVal))) return element;
        value.vt = type;
    }
    return value;
}

} // namespace

OwnedVariant variantOf(const CellValue& value, bool asDate) {
    if (const auto* number = std::get_if<double>(&value)) {
        return asDate ? OwnedVariant::date(*number) : OwnedVariant(*number);
    }
    if (const auto* text = std::get_if<std::string>(&value)) return fromUtf8(*text);
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    if (const auto* error = std::get_if<CellError>(&value)) {
        for (const auto& [known, code] : kErrors) {
            if (error->text == known) return OwnedVariant::error(code);
        }
    }
    return {};
}

void writeValues(const SheetPlace& place, const Area& area, const VARIANT& value, bool typed) {
    place.check();
    Sheet& sheet = place.edit();
    OwnedVariant own;
    if (FAILED(VariantCopyInd(&own, &value))) throw AutomationError(DISP_E_TYPEMISMATCH);
    const bool isArray = (own.vt & VT_ARRAY) != 0;
    if (own.vt == VT_BSTR && textOf(own.bstrVal).starts_with(L'=')) {
        return writeFormula(place, area, toUtf8(textOf(own.bstrVal)));
    }
    if (own.vt == VT_DISPATCH) fail("a cell cannot hold an object");
    forEachTaker(sheet, area, [&](int row, int column) {
        Cell& cell = sheet.at(row, column);
        if (!isArray) return enter(place, cell, own, typed);
        enter(place, cell, elementAt(own.parray, row - area.top, column - area.left), typed);
    });
}

void writeFormula(const SheetPlace& place, const Area& area, const std::string& text) {
    place.check();
    Sheet& sheet = place.edit();
    forEachTaker(sheet, area, [&](int row, int column) {
        Cell& cell = sheet.at(row, column);
        enterText(cell, place.formats().at(cell.format), text);
        if (!cell.formula.empty()) {
            cell.formula = copiedFormula(cell.formula, row - area.top, column - area.left);
        }
    });
}

Clipboard copyCells(const SheetPlace& place, const Area& area) {
    Clipboard copied;
    copied.area = area;
    place.sheet->forEach(area, [&](int row, int column, const Cell& cell) {
        copied.cells.push_back({{row - area.top, column - area.left}, cell});
    });
    return copied;
}

namespace {

void pasteOnce(const SheetPlace& place, int top, int left, const Clipboard& copied, LONG what) {
    Sheet& sheet = place.edit();
    for (const auto& [offset, source] : copied.cells) {
        const int row = top + offset.first;
        const int column = left + offset.second;
        if (row > kRows || column > kColumns) continue;
        Cell& cell = sheet.at(row, column);
        if (what != kPasteFormats) {
            cell.value = source.value;
            cell.formula.clear();
            if (what != kPasteValues && !source.formula.empty()) {
                cell.formula = copiedFormula(source.formula, row - copied.area.top - offset.first,
                                             column - copied.area.left - offset.second);
            }
        }
        if (what == kPasteAll || what == kPasteFormats) cell.format = source.format;
    }
}

} // namespace

void pasteCells(const SheetPlace& place, const Area& area, const Clipboard& copied, LONG what) {
    if (what != kPasteAll && what != kPasteValues && what != kPasteFormats &&
        what != kPasteFormulas) {
        fail("this kind of pasting is not known");
    }
    const int rows = copied.area.rows();
    const int columns = copied.area.columns();
    const bool fits = area.rows() % rows == 0 && area.columns() % columns == 0;
    const int down = fits ? area.rows() / rows : 1;
    const int right = fits ? area.columns() / columns : 1;
    checkSize(area);
    for (int i = 0; i < down; ++i) {
        for (int j = 0; j < right; ++j)
            pasteOnce(place, area.top + i * rows, area.left + j * columns, copied, what);
    }
}

namespace {

/// A row (or column) number after the move; `isLast` for the end of a range. 0 when it is gone.
int shifted(int index, int first, int count, bool inserted, bool isLast) {
    if (inserted) return index >= first ? index + count : index;
    if (index < first) return index;
    if (index >= first + count) return index - count;
    return isLast ? first - 1 : first;
}

} // namespace

void shiftReferences(const SheetPlace& place, const Area& area, bool vertical, bool inserted) {
    const int first = vertical ? area.top : area.left;
    const int count = vertical ? area.rows() : area.columns();
    const std::wstring name = fromUtf8(place.sheet->name);
    const auto change = [&](bool onSheet) {
        return [&, onSheet](Reference& reference) {
            std::string sheet(reference.sheet);
            if (sheet.starts_with('\'')) sheet = sheet.substr(1, sheet.size() - 2);
            const bool concerned = sheet.empty() ? onSheet : equalNoCase(fromUtf8(sheet), name);
            ReferenceCorner& from = reference.first;
            ReferenceCorner& to = reference.last;
            const int across1 = vertical ? from.column : from.row;
            const int across2 = vertical ? to.column : to.row;
            const int bandFirst = vertical ? area.left : area.top;
            const int bandLast = vertical ? area.right : area.bottom;
            const bool inBand = (across1 == 0 && bandFirst == 1) ||
                                (across1 >= bandFirst && across2 <= bandLast && across1 > 0);
            int& start = vertical ? from.row : from.column;
            int& end = vertical ? to.row : to.column;
            if (!concerned || !inBand || start == 0) return true;
            const bool gone = !inserted && start >= first && end < first + count;
            start = shifted(start, first, count, inserted, false);
            end = shifted(end, first, count, inserted, reference.isRange);
            return !gone;
        };
    };
    for (const auto& sheet : place.book->workbook->sheets) {
        const bool own = sheet == place.sheet;
        sheet->forEach(wholeSheet(), [&](int, int, Cell& cell) {
            if (!cell.formula.empty()) cell.formula = changeReferences(cell.formula, change(own));
        });
    }
    for (DefinedName& defined : place.book->workbook->names)
        defined.refersTo = changeReferences(defined.refersTo, change(false));
}

} // namespace headless::excel
