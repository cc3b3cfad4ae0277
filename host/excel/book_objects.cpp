// The application, its workbooks, and their sheets and names.
#include <algorithm>

#include "excel/objects.h"
#include "excel/server.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr LONG kXlOpenXmlWorkbook = 51;

SheetPlace activePlace(const StatePointer& state, const BookPointer& book) {
    return {state, book, book->activeSheet()};
}

/// The selected range of the active sheet; its first cell when nothing was selected there.
IDispatch* selectionOf(const StatePointer& state, const BookPointer& book) {
    const SheetPlace place = activePlace(state, book);
    return makeRange(place, book->selectedSheet == place.sheet ? book->selection : Area{});
}

// --- Sheet ---

class WorksheetObject final : public ExcelObject {
public:
    explicit WorksheetObject(const SheetPlace& place) : place_(place) {}

    const SheetPlace& place() const { return place_; }

    std::wstring name() const {
        place_.check();
        return fromUtf8(place_.sheet->name);
    }
    void setName(const VARIANT& value) {
        place_.check();
        const std::string name = toUtf8(textOf(value));
        const std::string refusal = place_.book->workbook->nameRefusal(*place_.sheet, name);
        if (!refusal.empty()) fail(refusal);
        place_.edit().name = name;
    }
    LONG index() const {
        place_.check();
        return static_cast<LONG>(place_.book->workbook->positionOf(*place_.sheet)) + 1;
    }
    LONG visible() const {
        place_.check();
        return place_.sheet->hidden ? 0 : -1;
    }
    void setVisible(const VARIANT& value) {
        place_.check();
        const bool hide = integerOf(value) == 0 || integerOf(value) == 2;
        if (hide && visibleSheets() == 1 && !place_.sheet->hidden) {
            fail("a workbook must keep one visible sheet");
        }
        place_.edit().hidden = hide;
    }
    void activate() {
        place_.check();
        place_.book->workbook->activeSheet = place_.book->workbook->positionOf(*place_.sheet);
        place_.application->activeBook = place_.book;
    }
    void remove() {
        place_.check();
        if (visibleSheets() == 1 && !place_.sheet->hidden) {
            fail("a workbook must keep one visible sheet");
        }
        place_.book->saved = false;
        Workbook& workbook = *place_.book->workbook;
        std::erase(workbook.sheets, place_.sheet);
        std::erase_if(workbook.names,
                      [&](const DefinedName& name) { return name.sheet == place_.sheet; });
        workbook.activeSheet = std::min(workbook.activeSheet, workbook.sheets.size() - 1);
    }
    /// A copy before or after a sheet of the same book.
    void copy(const CallArguments& arguments) {
        place_.check();
        Workbook& workbook = *place_.book->workbook;
        auto copied = std::make_shared<Sheet>(*place_.sheet);
        const std::string base = copied->name.substr(0, 25);
        for (int number = 2; workbook.findSheet(copied->name) != nullptr; ++number)
            copied->name = base + " (" + std::to_string(number) + ")";
        const std::size_t at = positionFor(arguments);
        workbook.sheets.insert(workbook.sheets.begin() + static_cast<std::ptrdiff_t>(at), copied);
        workbook.activeSheet = at;
        place_.book->saved = false;
    }
    void move(const CallArguments& arguments) {
        place_.check();
        Workbook& workbook = *place_.book->workbook;
        std::size_t at = positionFor(arguments);
        const std::size_t from = workbook.positionOf(*place_.sheet);
        if (at > from) --at;
        std::erase(workbook.sheets, place_.sheet);
        workbook.sheets.insert(workbook.sheets.begin() + static_cast<std::ptrdiff_t>(at),
                               place_.sheet);
        workbook.activeSheet = at;
        place_.book->saved = false;
    }
    void paste(const CallArguments& arguments) {
        const VARIANT* target = arguments.find(0);
        OwnedVariant range(target != nullptr && target->vt == VT_DISPATCH
                               ? nullptr
                               : selectionOf(place_.application, place_.book));
        IDispatch* destination = range.pdispVal != nullptr ? range.pdispVal : target->pdispVal;
        DISPPARAMS none = {};
        const HRESULT status = destination->Invoke(
            1027, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
        if (FAILED(status)) fail("nothing was copied that could be pasted there");
    }
    IDispatch* range(const CallArguments& arguments) const { return namedRange(place_, arguments); }
    IDispatch* cells(const CallArguments& arguments) const { return part(238, arguments); }
    IDispatch* rows(const CallArguments& arguments) const { return part(258, arguments); }
    IDispatch* columns(const CallArguments& arguments) const { return part(241, arguments); }
    IDispatch* usedRange() const {
        place_.check();
        return makeRange(place_, place_.sheet->usedArea().value_or(Area{}));
    }
    IDispatch* pageSetup() const { return makePageSetup(place_); }
    IDispatch* shapes() const { return makeShapes(place_); }
    IDispatch* parent() const { return makeWorkbook(place_.application, place_.book); }
    bool autoFilterMode() const {
        place_.check();
        return place_.sheet->autoFilter.has_value();
    }
    void setAutoFilterMode(const VARIANT& value) {
        place_.check();
        if (booleanOf(value)) failToSet("AutoFilterMode");
        place_.edit().autoFilter.reset();
    }
    double standardWidth() const { return kUsualWidth; }
    double standardHeight() const { return kUsualHeight; }

protected:
    const MemberTable& members() const override {
        using W = WorksheetObject;
        static const MemberTable table{
            {110, L"Name", reads<&W::name>, writes<&W::setName>},
            {486, L"Index", reads<&W::index>},
            {558, L"Visible", reads<&W::visible>, writes<&W::setVisible>},
            {304, L"Activate", nullptr, nullptr, calls<&W::activate>},
            {235, L"Select", nullptr, nullptr, calls<&W::activate>},
            {117, L"Delete", nullptr, nullptr, calls<&W::remove>},
            {551, L"Copy", nullptr, nullptr, calls<&W::copy>},
            {637, L"Move", nullptr, nullptr, calls<&W::move>},
            {211, L"Paste", nullptr, nullptr, calls<&W::paste>},
            {197, L"Range", reads<&W::range>},
            {238, L"Cells", reads<&W::cells>},
            {258, L"Rows", reads<&W::rows>},
            {241, L"Columns", reads<&W::columns>},
            {412, L"UsedRange", reads<&W::usedRange>},
            {998, L"PageSetup", reads<&W::pageSetup>},
            {1377, L"Shapes", reads<&W::shapes>},
            {150, L"Parent", reads<&W::parent>},
            {792, L"AutoFilterMode", reads<&W::autoFilterMode>, writes<&W::setAutoFilterMode>},
            {408, L"StandardWidth", reads<&W::standardWidth>},
            {407, L"StandardHeight", reads<&W::standardHeight>},
        };
        return table;
    }

private:
    /// A member of the range of all cells.
    IDispatch* part(DISPID member, const CallArguments& arguments) const {
        const OwnedVariant all(makeRange(place_, wholeSheet()));
        std::vector<VARIANT> reversed;
        for (std::size_t i = arguments.count(); i-- > 0;) {
            const VARIANT* value = arguments.find(i);
            reversed.push_back(value == nullptr ? OwnedVariant::error(DISP_E_PARAMNOTFOUND)
                                                : *value);
        }
        DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        OwnedVariant found;
        const HRESULT status =
            all.pdispVal->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                 &parameters, &found, nullptr, nullptr);
        if (FAILED(status)) fail("the range would lie off the sheet");
        return found.release().pdispVal;
    }
    std::ptrdiff_t visibleSheets() const {
        return std::ranges::count(place_.book->workbook->sheets, false,
                                  [](const auto& sheet) { return sheet->hidden; });
    }
    std::size_t positionFor(const CallArguments& arguments) const;

    SheetPlace place_;
};

/// Where a sheet goes that is told to stand before or after another one; the first place without.
std::size_t newPosition(const OpenBook& book, const CallArguments& arguments,
                        std::size_t fallback) {
    for (std::size_t i = 0; i < 2; ++i) {
        const VARIANT* value = arguments.find(i);
        if (value == nullptr) continue;
        const auto* sheet =
            value->vt == VT_DISPATCH ? dynamic_cast<WorksheetObject*>(value->pdispVal) : nullptr;
        if (sheet == nullptr || sheet->place().book.get() != &book) {
            fail("the sheet to stand beside is none of this workbook");
        }
        return book.workbook->positionOf(*sheet->place().sheet) + i;
    }
    return fallback;
}

std::size_t WorksheetObject::positionFor(const CallArguments& arguments) const {
    return newPosition(*place_.book, arguments, place_.book->workbook->sheets.size());
}

/// Base of what belongs to one open workbook.
class BookPart : public ExcelObject {
public:
    BookPart(const StatePointer& state, const BookPointer& book) : state_(state), book_(book) {}

protected:
    Workbook& workbook() const {
        if (book_->closed) {
            throw AutomationError(RPC_E_DISCONNECTED,
                                  "the object invoked has disconnected from its workbook");
        }
        return *book_->workbook;
    }

    StatePointer state_;
    BookPointer book_;
};

class Sheets final : public BookPart {
public:
    using BookPart::BookPart;

    LONG count() const { return static_cast<LONG>(workbook().sheets.size()); }
    IDispatch* item(const CallArguments& arguments) const {
        const VARIANT* wanted = arguments.find(0);
        if (wanted == nullptr) throw AutomationError(DISP_E_PARAMNOTFOUND);
        std::shared_ptr<Sheet> sheet;
        if (wanted->vt == VT_BSTR) {
            sheet = workbook().findSheet(toUtf8(textOf(*wanted)));
        } else {
            const LONG index = integerOf(*wanted);
            if (index >= 1 && index <= count()) {
                sheet = workbook().sheets[static_cast<std::size_t>(index) - 1];
            }
        }
        if (sheet == nullptr) {
            throw AutomationError(DISP_E_BADINDEX, "there is no such sheet");
        }
        return makeSheet({state_, book_, sheet});
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
        book_->saved = false;
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

// --- Names ---

class NameObject final : public BookPart {
public:
    NameObject(const StatePointer& state, const BookPointer& book, const DefinedName& name)
        : BookPart(state, book), name_(name.name), sheet_(name.sheet) {}

    std::wstring name() const { return fromUtf8(defined().name); }
    std::wstring refersTo() const { return fromUtf8("=" + defined().refersTo); }
    void setRefersTo(const VARIANT& value) {
        const std::string text = toUtf8(textOf(value));
        defined().refersTo = text.starts_with('=') ? text.substr(1) : text;
        book_->saved = false;
    }
    IDispatch* range() const {
        const std::string target = defined().refersTo;
        const std::size_t mark = target.rfind('!');
        std::string sheetName = mark == std::string::npos ? "" : target.substr(0, mark);
        if (sheetName.starts_with('\'')) sheetName = sheetName.substr(1, sheetName.size() - 2);
        auto sheet = workbook().findSheet(sheetName);
        if (sheet == nullptr) sheet = book_->activeSheet();
        const SheetPlace place{state_, book_, sheet};
        return makeRange(place, areaOfText(place, target));
    }
    void remove() {
        (void)defined();
        std::erase_if(workbook().names, [&](const DefinedName& name) { return isThis(name); });
        book_->saved = false;
    }

protected:
    const MemberTable& members() const override {
        using N = NameObject;
        static const MemberTable table{
            {110, L"Name", reads<&N::name>},
            {938, L"RefersTo", reads<&N::refersTo>, writes<&N::setRefersTo>},
            {6, L"Value", reads<&N::refersTo>, writes<&N::setRefersTo>},
            {1160, L"RefersToRange", reads<&N::range>},
            {117, L"Delete", nullptr, nullptr, calls<&N::remove>},
        };
        return table;
    }

private:
    bool isThis(const DefinedName& name) const {
        return name.name == name_ && name.sheet == sheet_;
    }
    DefinedName& defined() const {
        auto& names = workbook().names;
        const auto found =
            std::ranges::find_if(names, [&](const DefinedName& name) { return isThis(name); });
        if (found == names.end()) fail("the name was deleted");
        return *found;
    }

    std::string name_;
    std::shared_ptr<Sheet> sheet_;
};

class Names final : public BookPart {
public:
    using BookPart::BookPart;

    LONG count() const { return static_cast<LONG>(workbook().names.size()); }
    IDispatch* item(const CallArguments& arguments) const {
        const VARIANT* wanted = arguments.find(0);
        const bool byName = wanted != nullptr && wanted->vt == VT_BSTR;
        const LONG index = byName ? 0 : arguments.integer(0, 0);
        LONG number = 0;
        for (const DefinedName& name : workbook().names) {
            const bool hit =
                byName ? equalNoCase(fromUtf8(name.name), textOf(*wanted)) : ++number == index;
            if (hit) return newServed<NameObject>(state_, book_, name);
        }
        fail("there is no such name");
    }
    /// @param arguments  name, what it refers to.
    IDispatch* add(const CallArguments& arguments) const {
        const std::string name = toUtf8(arguments.text(0));
        std::string target = toUtf8(arguments.text(1));
        if (target.starts_with('=')) target.erase(0, 1);
        const bool valid = !name.empty() &&
                           name.find_first_of(" !\"'+-*/()[]{}:,;") == std::string::npos &&
                           !parseArea(name) && !(name.front() >= '0' && name.front() <= '9');
        if (!valid || target.empty()) fail("\"" + name + "\" is no valid name");
        std::erase_if(workbook().names, [&](const DefinedName& other) {
            return other.sheet == nullptr && equalNoCase(fromUtf8(other.name), fromUtf8(name));
        });
        workbook().names.push_back({name, target, nullptr});
        book_->saved = false;
        return newServed<NameObject>(state_, book_, workbook().names.back());
    }

protected:
    const MemberTable& members() const override {
        using N = Names;
        static const MemberTable table{
            {118, L"Count", reads<&N::count>},
            {170, L"Item", reads<&N::item>, nullptr, calls<&N::item>},
            {0, L"_Default", reads<&N::item>, nullptr, calls<&N::item>},
            {181, L"Add", nullptr, nullptr, calls<&N::add>},
        };
        return table;
    }
};

// --- Window ---

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
        book_->saved = false;
        return book_->activeSheet()->view;
    }

    int splitRow_ = 0;
    int splitColumn_ = 0;
};

// --- Workbook ---

class WorkbookObject final : public BookPart {
public:
    using BookPart::BookPart;

    std::wstring name() const {
        (void)workbook();
        return book_->name;
    }
    std::wstring fullName() const { return book_->path ? fromUtf8(*book_->path) : name(); }
    std::wstring path() const {
        if (!book_->path) return {};
        return fromUtf8(book_->path->substr(0, book_->path->rfind('/')));
    }
    bool saved() const {
        (void)workbook();
        return book_->saved;
    }
    void setSaved(const VARIANT& value) { book_->saved = booleanOf(value); }
    void save() {
        (void)workbook();
        state_->save(*book_);
    }
    /// @param arguments  file name, file format, ...
    void saveAs(const CallArguments& arguments) {
        (void)workbook();
        if (arguments.integer(1, kXlOpenXmlWorkbook) != kXlOpenXmlWorkbook) {
            fail("the workbook can only be saved as .xlsx");
        }
        if (!arguments.has(0)) return save();
        state_->saveAs(*book_, arguments.text(0));
    }
    void saveCopyAs(const CallArguments& arguments) {
        (void)workbook();
        state_->saveCopy(*book_, arguments.text(0));
    }
    /// @param arguments  whether to save changes, file name.
    bool close(const CallArguments& arguments) {
        (void)workbook();
        if (!arguments.has(0)) return state_->close(book_, std::nullopt);
        const bool save = arguments.boolean(0, false);
        if (save && arguments.has(1) && !book_->path) state_->saveAs(*book_, arguments.text(1));
        return state_->close(book_, save);
    }
    void activate() {
        (void)workbook();
        state_->activeBook = book_;
    }
    IDispatch* worksheets(const CallArguments& arguments) const {
        (void)workbook();
        IDispatch* all = makeSheets(state_, book_);
        if (!arguments.has(0)) return all;
        const OwnedVariant owner(all);
        return static_cast<Sheets*>(all)->item(arguments);
    }
    IDispatch* activeSheet() const {
        (void)workbook();
        return makeSheet(activePlace(state_, book_));
    }
    IDispatch* names() const {
        (void)workbook();
        return makeNames(state_, book_);
    }
    IDispatch* application() const { return makeApplication(state_); }
    template <std::string DocumentProperties::*Member>
    std::wstring property() const {
        return fromUtf8(workbook().properties.*Member);
    }
    template <std::string DocumentProperties::*Member>
    void setProperty(const VARIANT& value) {
        workbook().properties.*Member = toUtf8(textOf(value));
        book_->saved = false;
    }

protected:
    const MemberTable& members() const override {
        using W = WorkbookObject;
        using D = DocumentProperties;
        static const MemberTable table{
            {110, L"Name", reads<&W::name>},
            {289, L"FullName", reads<&W::fullName>},
            {291, L"Path", reads<&W::path>},
            {298, L"Saved", reads<&W::saved>, writes<&W::setSaved>},
            {283, L"Save", nullptr, nullptr, calls<&W::save>},
            {1925, L"SaveAs", nullptr, nullptr, calls<&W::saveAs>},
            {175, L"SaveCopyAs", nullptr, nullptr, calls<&W::saveCopyAs>},
            {277, L"Close", nullptr, nullptr, calls<&W::close>},
            {304, L"Activate", nullptr, nullptr, calls<&W::activate>},
            {485, L"Worksheets", reads<&W::worksheets>},
            {485, L"Sheets", reads<&W::worksheets>},
            {494, L"Worksheets", reads<&W::worksheets>},
            {307, L"ActiveSheet", reads<&W::activeSheet>},
            {442, L"Names", reads<&W::names>},
            {148, L"Application", reads<&W::application>},
            {199, L"Title", reads<&W::property<&D::title>>, writes<&W::setProperty<&D::title>>},
            {953, L"Subject", reads<&W::property<&D::subject>>,
             writes<&W::setProperty<&D::subject>>},
            {574, L"Author", reads<&W::property<&D::author>>, writes<&W::setProperty<&D::author>>},
            {577, L"Keywords", reads<&W::property<&D::keywords>>,
             writes<&W::setProperty<&D::keywords>>},
            {575, L"Comments", reads<&W::property<&D::comments>>,
             writes<&W::setProperty<&D::comments>>},
        };
        return table;
    }
};

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

// --- Application ---

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
    void calculate() const {}
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
            {558, L"Visible", reads<&A::flag<&S::visible>>, writes<&A::setFlag<&S::visible>>},
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

constexpr const wchar_t* kProgramId = L"Excel.Application";
constexpr CLSID kClassId = {
    0x6f2d5b10, 0x3c41, 0x4e8a, {0x9b, 0x1e, 0x52, 0x7a, 0x10, 0xc4, 0x88, 0x3d}};

} // namespace

IDispatch* makeApplication(const StatePointer& state) { return newServed<Application>(state); }
IDispatch* makeWorkbooks(const StatePointer& state) { return newServed<Workbooks>(state); }
IDispatch* makeWorkbook(const StatePointer& state, const BookPointer& book) {
    return newServed<WorkbookObject>(state, book);
}
IDispatch* makeWindow(const StatePointer& state, const BookPointer& book) {
    return newServed<WindowObject>(state, book);
}
IDispatch* makeSheets(const StatePointer& state, const BookPointer& book) {
    return newServed<Sheets>(state, book);
}
IDispatch* makeSheet(const SheetPlace& place) { return newServed<WorksheetObject>(place); }
IDispatch* makeNames(const StatePointer& state, const BookPointer& book) {
    return newServed<Names>(state, book);
}

void install(AutomationServers& servers, std::shared_ptr<Engine> engine) {
    servers.add({kProgramId, kClassId, [engine = std::move(engine)] {
                     auto state = std::make_shared<ApplicationState>();
                     state->engine = engine;
                     return makeApplication(state);
                 }});
}

void uninstall(AutomationServers& servers) { servers.remove(kProgramId); }

} // namespace headless::excel
