// The workbooks that are open.
#include "excel/objects.h"
#include "win/casing.h"

namespace headless::excel {
namespace {

class Workbooks final : public ExcelObject {
public:
    explicit Workbooks(const StatePointer& state) : state_(state) {}

    LONG count() const { return static_cast<LONG>(state_->books.size()); }
    IDispatch* add(const CallArguments& arguments) const {
        const VARIANT* pattern = arguments.find(0);
        const bool byFile = pattern != nullptr && pattern->vt == VT_BSTR;
        return makeWorkbook(state_,
                            byFile ? state_->addBookAfter(textOf(*pattern)) : state_->addBook());
    }
    IDispatch* open(const CallArguments& arguments) const {
        return makeWorkbook(state_, state_->openBook(arguments.text(0)));
    }
    IDispatch* item(const CallArguments& arguments) const {
        const VARIANT* wanted = arguments.find(0);
        const bool byName = wanted != nullptr && wanted->vt == VT_BSTR;
        const LONG index = byName ? 0 : arguments.integer(0, 0);
        LONG number = 0;
        for (const BookPointer& book : state_->books) {
            if (byName ? equalNoCase(book->name, textOf(*wanted)) : ++number == index) {
                return makeWorkbook(state_, book);
            }
        }
        throw AutomationError(DISP_E_BADINDEX, "there is no such workbook");
    }
    void close() const { state_->quit(); }

protected:
    const MemberTable& members() const override {
        using W = Workbooks;
        static const MemberTable table{
            {118, L"Count", reads<&W::count>},
            {170, L"Item", reads<&W::item>, nullptr, calls<&W::item>},
            {0, L"_Default", reads<&W::item>, nullptr, calls<&W::item>},
            {181, L"Add", nullptr, nullptr, calls<&W::add>},
            {1923, L"Open", nullptr, nullptr, calls<&W::open>},
            {682, L"_Open", nullptr, nullptr, calls<&W::open>},
            {277, L"Close", nullptr, nullptr, calls<&W::close>},
        };
        return table;
    }

private:
    StatePointer state_;
};

} // namespace

IDispatch* makeWorkbooks(const StatePointer& state) { return newServed<Workbooks>(state); }

} // namespace headless::excel
