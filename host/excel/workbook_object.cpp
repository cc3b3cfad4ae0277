// A workbook that is open.
#include "excel/book_part.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

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
        std::optional<FileKind> kind;
        if (arguments.has(1)) {
            kind = kindOfFormat(arguments.integer(1, 0));
            if (!kind) fail("workbooks are saved as .xlsx (51), .xls (56) or .ods (60)");
        }
        if (!arguments.has(0)) return save();
        state_->saveAs(*book_, arguments.text(0), kind);
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
    LONG fileFormat() const {
        (void)workbook();
        return static_cast<LONG>(formatOf(book_->kind));
    }
    void activate() {
        (void)workbook();
        state_->activeBook = book_;
    }
    IDispatch* worksheets(const CallArguments& arguments) const {
        (void)workbook();
        return arguments.has(0) ? sheetItem(state_, book_, arguments) : makeSheets(state_, book_);
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
        book_->noteChange();
    }

protected:
    const MemberTable& members() const override {
        using W = WorkbookObject;
        using D = DocumentProperties;
        static const MemberTable table{
            {110, L"Name", reads<&W::name>},
            {289, L"FullName", reads<&W::fullName>},
            {291, L"Path", reads<&W::path>},
            {288, L"FileFormat", reads<&W::fileFormat>},
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

} // namespace

IDispatch* makeWorkbook(const StatePointer& state, const BookPointer& book) {
    return newServed<WorkbookObject>(state, book);
}

} // namespace headless::excel
