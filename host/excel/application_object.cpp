// The application itself.
#include "excel/objects.h"

namespace headless::excel {
namespace {

class Application final : public ExcelObject {
public:
    explicit Application(const StatePointer& state) : state_(state) {}

    IDispatch* workbooks() const { return makeWorkbooks(state_); }
    IDispatch* activeWorkbook() const {
        return state_->activeBook == nullptr ? nullptr : makeWorkbook(state_, state_->activeBook);
    }
    IDispatch* activeSheet() const {
        return hasBook() ? makeSheet(activePlace(state_, state_->activeBook)) : nullptr;
    }
    IDispatch* activeWindow() const {
        return hasBook() ? makeWindow(state_, state_->activeBook) : nullptr;
    }
    IDispatch* selection() const {
        return hasBook() ? selectionOf(state_, state_->activeBook) : nullptr;
    }
    IDispatch* worksheets() const {
        if (!hasBook()) fail("no workbook is open");
        return makeSheets(state_, state_->activeBook);
    }
    IDispatch* range(const CallArguments& arguments) const {
        if (!hasBook()) fail("no workbook is open");
        return namedRange(activePlace(state_, state_->activeBook), arguments);
    }
    std::wstring name() const { return L"Microsoft Excel"; }
    std::wstring version() const { return L"12.0"; }
    template <bool ApplicationState::*Member>
    bool flag() const {
        return state_.get()->*Member;
    }
    template <bool ApplicationState::*Member>
    void setFlag(const VARIANT& value) {
        state_.get()->*Member = booleanOf(value);
    }
    void setVisible(const VARIANT& value) { state_->setVisible(booleanOf(value)); }
    LONG windowState() const { return state_->windowState; }
    void setWindowState(const VARIANT& value) { state_->windowState = integerOf(value); }
    LONG sheetsInNewBook() const { return state_->sheetsInNewBook; }
    void setSheetsInNewBook(const VARIANT& value) {
        const LONG sheets = integerOf(value);
        if (sheets < 1 || sheets > 255) failToSet("SheetsInNewWorkbook");
        state_->sheetsInNewBook = sheets;
    }
    bool cutCopyMode() const { return state_->clipboard.has_value(); }
    void setCutCopyMode(const VARIANT&) { state_->clipboard.reset(); }
    void calculate() const {
        for (const BookPointer& book : state_->books)
            state_->calculate(*book);
    }
    void quit() const { state_->quit(); }

protected:
    const MemberTable& members() const override {
        using A = Application;
        using S = ApplicationState;
        static const MemberTable table{
            {572, L"Workbooks", reads<&A::workbooks>},
            {308, L"ActiveWorkbook", reads<&A::activeWorkbook>},
            {307, L"ActiveSheet", reads<&A::activeSheet>},
            {759, L"ActiveWindow", reads<&A::activeWindow>},
            {147, L"Selection", reads<&A::selection>},
            {305, L"ActiveCell", reads<&A::selection>},
            {485, L"Sheets", reads<&A::worksheets>},
            {494, L"Worksheets", reads<&A::worksheets>},
            {197, L"Range", reads<&A::range>},
            {110, L"Name", reads<&A::name>},
            {392, L"Version", reads<&A::version>},
            {558, L"Visible", reads<&A::flag<&S::visible>>, writes<&A::setVisible>},
            {343, L"DisplayAlerts", reads<&A::flag<&S::displayAlerts>>,
             writes<&A::setFlag<&S::displayAlerts>>},
            {382, L"ScreenUpdating", reads<&A::flag<&S::screenUpdating>>,
             writes<&A::setFlag<&S::screenUpdating>>},
            {396, L"WindowState", reads<&A::windowState>, writes<&A::setWindowState>},
            {993, L"SheetsInNewWorkbook", reads<&A::sheetsInNewBook>,
             writes<&A::setSheetsInNewBook>},
            {330, L"CutCopyMode", reads<&A::cutCopyMode>, writes<&A::setCutCopyMode>},
            {279, L"Calculate", nullptr, nullptr, calls<&A::calculate>},
            {302, L"Quit", nullptr, nullptr, calls<&A::quit>},
        };
        return table;
    }

private:
    bool hasBook() const { return state_->activeBook != nullptr; }

    StatePointer state_;
};

} // namespace

IDispatch* makeApplication(const StatePointer& state) { return newServed<Application>(state); }

} // namespace headless::excel
