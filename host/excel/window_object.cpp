// The window on a workbook: frozen panes, zoom, what is selected.
#include <algorithm>

#include "excel/book_part.h"

namespace headless::excel {
namespace {

class WindowObject final : public BookPart {
public:
    using BookPart::BookPart;

    bool freezePanes() const { return view().frozenRows > 0 || view().frozenColumns > 0; }
    void setFreezePanes(const VARIANT& value) {
        SheetView& changed = edit();
        if (!booleanOf(value)) {
            changed.frozenRows = changed.frozenColumns = 0;
            return;
        }
        // Where the window was split, else before the selected cell.
        const bool selected = book_->selectedSheet == book_->activeSheet();
        if (splitRow_ > 0 || splitColumn_ > 0) {
            changed.frozenRows = splitRow_;
            changed.frozenColumns = splitColumn_;
        } else if (selected) {
            changed.frozenRows = book_->selection.top - 1;
            changed.frozenColumns = book_->selection.left - 1;
        }
    }
    LONG splitRow() const { return std::max(splitRow_, view().frozenRows); }
    void setSplitRow(const VARIANT& value) { splitRow_ = integerOf(value); }
    LONG splitColumn() const { return std::max(splitColumn_, view().frozenColumns); }
    void setSplitColumn(const VARIANT& value) { splitColumn_ = integerOf(value); }
    LONG zoom() const { return view().zoom; }
    void setZoom(const VARIANT& value) {
        const LONG zoom = integerOf(value);
        if (zoom < 10 || zoom > 400) failToSet("Zoom");
        edit().zoom = zoom;
    }
    bool gridlines() const { return view().gridlines; }
    void setGridlines(const VARIANT& value) { edit().gridlines = booleanOf(value); }

protected:
    const MemberTable& members() const override {
        using W = WindowObject;
        static const MemberTable table{
            {650, L"FreezePanes", reads<&W::freezePanes>, writes<&W::setFreezePanes>},
            {658, L"SplitRow", reads<&W::splitRow>, writes<&W::setSplitRow>},
            {656, L"SplitColumn", reads<&W::splitColumn>, writes<&W::setSplitColumn>},
            {663, L"Zoom", reads<&W::zoom>, writes<&W::setZoom>},
            {645, L"DisplayGridlines", reads<&W::gridlines>, writes<&W::setGridlines>},
        };
        return table;
    }

private:
    const SheetView& view() const {
        (void)workbook();
        return book_->activeSheet()->view;
    }
    SheetView& edit() {
        (void)workbook();
        book_->noteChange();
        return book_->activeSheet()->view;
    }

    int splitRow_ = 0;
    int splitColumn_ = 0;
};

} // namespace

IDispatch* makeWindow(const StatePointer& state, const BookPointer& book) {
    return newServed<WindowObject>(state, book);
}

IDispatch* selectionOf(const StatePointer& state, const BookPointer& book) {
    const SheetPlace place = activePlace(state, book);
    return makeRange(place, book->selectedSheet == place.sheet ? book->selection : Area{});
}

} // namespace headless::excel
