// Values and cells in and out of ranges.
#pragma once

#include "excel/area_format.h"
#include "win/safe_array.h"

namespace headless::excel {

/// A cell's value as automation has it; numbers as dates when asked.
[[nodiscard]] OwnedVariant variantOf(const CellValue& value, bool asDate);

/// Gives the area's cells what the value says: one for all, or an array cell by cell; cells beyond
/// an array get #N/A. Texts count as typed. Of merged cells only the first takes it.
/// @param typed  dates and money give cells without a number format one of their own.
void writeValues(const SheetPlace& place, const Area& area, const VARIANT& value, bool typed);

/// Types a formula, or another text, into all cells; relative references move along.
void writeFormula(const SheetPlace& place, const Area& area, const std::string& text);

/// One value, or for several cells an array of rows and columns counted from 1.
template <class Read>
OwnedVariant readValues(const Area& area, Read read);

constexpr LONG kPasteAll = -4104;
constexpr LONG kPasteValues = -4163;
constexpr LONG kPasteFormats = -4122;
constexpr LONG kPasteFormulas = -4123;

[[nodiscard]] Clipboard copyCells(const SheetPlace& place, const Area& area);
/// Puts what was copied at the area's corner, or as often as it fits into the area.
void pasteCells(const SheetPlace& place, const Area& area, const Clipboard& copied, LONG what);

/// Moves the references of all formulas and names of the book after cells of the sheet moved.
/// @param vertical  down or up, else right or left.
/// @param inserted  the area came in between, else it went.
void shiftReferences(const SheetPlace& place, const Area& area, bool vertical, bool inserted);

// --- Implementation ---

template <class Read>
OwnedVariant readValues(const Area& area, Read read) {
    if (area.cells() == 1) return read(area.top, area.left);
    checkSize(area);
    const SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(area.rows()), 1},
                                     {static_cast<ULONG>(area.columns()), 1}};
    OwnedVariant array = OwnedVariant::array(SafeArrayCreate(VT_VARIANT, 2, bounds));
    if (array.parray == nullptr) throw AutomationError(E_OUTOFMEMORY);
    auto* values = static_cast<VARIANT*>(array.parray->pvData);
    for (int column = area.left; column <= area.right; ++column) {
        for (int row = area.top; row <= area.bottom; ++row)
            *values++ = read(row, column).release();
    }
    return array;
}

} // namespace headless::excel
