// The sheets of a workbook.
#include "excel/book_part.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

class Sheets final : public BookPart {
public:
    using BookPart::BookPart;

    LONG count() const { return static_cast<LONG>(workbook().sheets.size()); }
    IDispatch* item(const CallArguments& arguments) const {
        (void)workbook();
        return sheetItem(state_, book_, arguments);
    }
    /// @param arguments  before, after, how many, type.
    IDispatch* add(const CallArguments& arguments) const {
        Workbook& book = workbook();
        const std::size_t at = newPosition(*book_, arguments, book.activeSheet);
        const LONG count = arguments.integer(2, 1);
        if (count < 1 || count > 255) fail("that many sheets cannot be added");
        std::shared_ptr<Sheet> sheet;
        for (LONG i = 0; i < count; ++i)
            sheet = book.addSheet(at);
        book.activeSheet = at;
        book_->noteChange();
        return makeSheet({state_, book_, sheet});
    }

protected:
    const MemberTable& members() const override {
        using S = Sheets;
        static const MemberTable table{
            {118, L"Count", reads<&S::count>},
            {170, L"Item", reads<&S::item>, nullptr, calls<&S::item>},
            {0, L"_Default", reads<&S::item>, nullptr, calls<&S::item>},
            {181, L"Add", nullptr, nullptr, calls<&S::add>},
        };
        return table;
    }
};

} // namespace

IDispatch* makeSheets(const StatePointer& state, const BookPointer& book) {
    return newServed<Sheets>(state, book);
}

IDispatch* sheetItem(const StatePointer& state, const BookPointer& book,
                     const CallArguments& arguments) {
    const VARIANT* wanted = arguments.find(0);
    if (wanted == nullptr) throw AutomationError(DISP_E_PARAMNOTFOUND);
    const Workbook& workbook = *book->workbook;
    std::shared_ptr<Sheet> sheet;
    if (wanted->vt == VT_BSTR) {
        sheet = workbook.findSheet(toUtf8(textOf(*wanted)));
    } else {
        const LONG index = integerOf(*wanted);
        if (index >= 1 && index <= static_cast<LONG>(workbook.sheets.size())) {
            sheet = workbook.sheets[static_cast<std::size_t>(index) - 1];
        }
    }
    if (sheet == nullptr) throw AutomationError(DISP_E_BADINDEX, "there is no such sheet");
    return makeSheet({state, book, sheet});
}

} // namespace headless::excel
