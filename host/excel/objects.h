// The objects that the application serves, by what makes them.
#pragma once

#include "excel/application_state.h"

namespace headless::excel {

using StatePointer = std::shared_ptr<ApplicationState>;
using BookPointer = std::shared_ptr<OpenBook>;

/// Base of all of them.
class ExcelObject : public ServedObject {
protected:
    [[nodiscard]] const wchar_t* source() const override { return L"Excel"; }
};

[[nodiscard]] inline SheetPlace activePlace(const StatePointer& state, const BookPointer& book) {
    return {state, book, book->activeSheet()};
}

// Each answer is one reference, the caller's.

[[nodiscard]] IDispatch* makeApplication(const StatePointer& state);
[[nodiscard]] IDispatch* makeWorkbooks(const StatePointer& state);
[[nodiscard]] IDispatch* makeWorkbook(const StatePointer& state, const BookPointer& book);
[[nodiscard]] IDispatch* makeWindow(const StatePointer& state, const BookPointer& book);
[[nodiscard]] IDispatch* makeSheets(const StatePointer& state, const BookPointer& book);
/// The sheet of that number or name.
[[nodiscard]] IDispatch* sheetItem(const StatePointer& state, const BookPointer& book,
                                   const CallArguments& arguments);
[[nodiscard]] IDispatch* makeSheet(const SheetPlace& place);
/// Where a sheet goes that is told to stand before or after another one; `fallback` when it is not.
[[nodiscard]] std::size_t newPosition(const OpenBook& book, const CallArguments& arguments,
                                      std::size_t fallback);
[[nodiscard]] IDispatch* makeNames(const StatePointer& state, const BookPointer& book);
[[nodiscard]] IDispatch* makePageSetup(const SheetPlace& place);
[[nodiscard]] IDispatch* makeShapes(const SheetPlace& place);
[[nodiscard]] IDispatch* makeComment(const SheetPlace& place, int row, int column);

/// What the cells of a range are counted by: cells, whole rows or whole columns.
enum class RangeUnit { kCell, kRow, kColumn };

[[nodiscard]] IDispatch* makeRange(const SheetPlace& place, const Area& area,
                                   RangeUnit unit = RangeUnit::kCell);
/// The selected range of the active sheet; its first cell when nothing was selected there.
[[nodiscard]] IDispatch* selectionOf(const StatePointer& state, const BookPointer& book);
[[nodiscard]] IDispatch* makeFont(const SheetPlace& place, const Area& area);
[[nodiscard]] IDispatch* makeInterior(const SheetPlace& place, const Area& area);
[[nodiscard]] IDispatch* makeBorders(const SheetPlace& place, const Area& area);

/// The range that one or two texts or ranges name, on the sheet: Range("A1:B2"), Range("A1", "B2"),
/// Range("Name").
[[nodiscard]] IDispatch* namedRange(const SheetPlace& place, const CallArguments& arguments);
/// The area of a text such as "A1", "$A:$B", "Sheet1!A1" or a defined name on that sheet.
[[nodiscard]] Area areaOfText(const SheetPlace& place, const std::string& text);

/// The area of a range object of ours, or nothing for another object.
[[nodiscard]] std::optional<std::pair<SheetPlace, Area>> rangeOf(IDispatch* object);

} // namespace headless::excel
