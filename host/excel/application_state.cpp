#include "excel/application_state.h"

#include <algorithm>
#include <filesystem>

#include "excel/cell_text.h"
#include "excel/workbook_error.h"
#include "win/class_objects.h"
#include "win/code_page.h"
#include "win/constants.h"
#include "win/native_path.h"
#include "win/user.h"

namespace headless::excel {
namespace {

constexpr HRESULT kApplicationFailed = static_cast<HRESULT>(0x800A03ECU);

std::string fullPath(const std::wstring& path) {
    std::error_code ignored;
    return std::filesystem::absolute(nativePath(path), ignored).lexically_normal().string();
}

std::string joined(const std::vector<std::string>& phrases) {
    std::string text;
    for (const std::string& phrase : phrases)
        text += (text.empty() ? "" : ", ") + phrase;
    return text;
}

std::wstring fileName(const std::string& path) {
    return fromUtf8(std::filesystem::path(path).filename().string());
}

FileKind kindByName(const std::string& path) {
    const auto kind = kindOfEnding(path);
    if (!kind) fail(path + " cannot be written: workbooks end in .xlsx, .xls or .ods");
    return *kind;
}

/// Runs an action of the engine; its errors become the application's.
template <class Action>
auto guarded(Action action) {
    try {
        return action();
    } catch (const WorkbookError& error) {
        fail(error.what());
    }
}

} // namespace

void fail(const std::string& message) { throw AutomationError(kApplicationFailed, message); }

void failToSet(const char* property) {
    fail(std::string("Unable to set the ") + property + " property");
}

std::shared_ptr<OpenBook> ApplicationState::add(std::unique_ptr<Workbook> workbook,
                                                const std::wstring& name) {
    auto book = std::make_shared<OpenBook>();
    book->workbook = std::move(workbook);
    book->name = name;
    books.push_back(book);
    activeBook = book;
    return book;
}

std::shared_ptr<OpenBook> ApplicationState::addBook() {
    return add(newWorkbook(static_cast<int>(sheetsInNewBook)), newName());
}

std::shared_ptr<OpenBook> ApplicationState::addBookAfter(const std::wstring& path) {
    auto workbook = guarded([&] { return engine->open(fullPath(path)); });
    return add(std::move(workbook), newName());
}

std::shared_ptr<OpenBook> ApplicationState::openBook(const std::wstring& path) {
    const std::string full = fullPath(path);
    const auto open = std::ranges::find_if(books, [&](const auto& b) { return b->path == full; });
    if (open != books.end()) return activeBook = *open;
    auto book = add(guarded([&] { return engine->open(full); }), fileName(full));
    book->path = full;
    book->kind = kindOfEnding(full).value_or(FileKind::kXlsx);
    show(*book);
    return book;
}

std::vector<std::string> ApplicationState::write(OpenBook& book, const std::string& path,
                                                 FileKind kind) {
    for (const auto& sheet : book.workbook->sheets)
        fitColumns(*sheet, book.workbook->formats);
    calculate(book);
    return guarded([&] { return engine->save(*book.workbook, path, kind); });
}

void ApplicationState::tellLost(const std::string& path,
                                const std::vector<std::string>& lost) const {
    if (lost.empty() || !displayAlerts) return;
    const std::string text = path + " was saved without what could not be kept: " + joined(lost);
    MessageBoxW(nullptr, fromUtf8(text).c_str(), L"Excel", MB_OK | MB_ICONWARNING);
}

void ApplicationState::show(OpenBook& book) {
    if (visible) guarded([&] { engine->show(*book.workbook, toUtf8(book.name)); });
}

void ApplicationState::calculate(OpenBook& book) {
    if (book.calculated) return;
    guarded([&] { engine->calculate(*book.workbook); });
    book.calculated = true;
}

void ApplicationState::setVisible(bool on) {
    visible = on;
    for (const auto& book : books)
        show(*book);
}

void ApplicationState::save(OpenBook& book) {
    if (!book.path) return saveAs(book, book.name + L".xlsx");
    if (!book.workbook->leftOut.empty()) {
        fail(*book.path + " was not saved: it holds " + joined(book.workbook->leftOut) +
             ", which would be lost. Save it under a new name.");
    }
    const std::vector<std::string> lost = write(book, *book.path, book.kind);
    book.saved = true;
    show(book);
    tellLost(*book.path, lost);
}

void ApplicationState::saveAs(OpenBook& book, const std::wstring& path,
                              std::optional<FileKind> kind) {
    std::string full = fullPath(path);
    if (std::filesystem::path(full).extension().empty()) {
        full += endingOf(kind.value_or(FileKind::kXlsx));
    }
    if (!kind) kind = kindByName(full);
    if (book.path == full && book.kind == *kind) return save(book);
    const auto other = std::ranges::find_if(books, [&](const auto& b) { return b->path == full; });
    if (other != books.end()) fail("another open workbook is " + full);
    const std::vector<std::string> lost = write(book, full, *kind);
    std::vector<std::string> all;
    std::swap(all, book.workbook->leftOut);
    all.insert(all.end(), lost.begin(), lost.end());
    book.path = full;
    book.kind = *kind;
    book.name = fileName(full);
    book.saved = true;
    show(book);
    tellLost(full, all);
}

void ApplicationState::saveCopy(OpenBook& book, const std::wstring& path) {
    const std::string full = fullPath(path);
    tellLost(full, write(book, full, kindByName(full)));
}

bool ApplicationState::close(const std::shared_ptr<OpenBook>& book,
                             std::optional<bool> saveChanges) {
    if (!saveChanges) {
        saveChanges = false;
        // Nobody could answer an application that is not seen.
        if (!book->saved && displayAlerts && visible) {
            const std::wstring text = L"Save the changes to " + book->name + L"?";
            const int answer = MessageBoxW(nullptr, text.c_str(), L"Excel",
                                           MB_YESNOCANCEL | MB_ICONWARNING | MB_DEFBUTTON2);
            if (answer == IDCANCEL) return false;
            saveChanges = answer == IDYES;
        }
    }
    if (*saveChanges && !book->saved) save(*book);
    book->closed = true;
    std::erase(books, book);
    if (activeBook == book) activeBook = books.empty() ? nullptr : books.back();
    return true;
}

bool ApplicationState::quit() {
    while (!books.empty()) {
        if (!close(books.back(), std::nullopt)) return false;
    }
    engine->rest();
    return true;
}

void SheetPlace::check() const {
    const auto& sheets = book->workbook->sheets;
    if (book->closed || std::ranges::find(sheets, sheet) == sheets.end()) {
        throw AutomationError(RPC_E_DISCONNECTED,
                              "the object invoked has disconnected from its workbook");
    }
}

void fitColumns(Sheet& sheet, const FormatTable& formats) {
    for (const int column : std::exchange(sheet.columnsToFit, {})) {
        const double width = neededWidth(sheet, formats, column);
        sheet.columns.change(column, column, [&](ColumnProperties& properties) {
            properties.width = width > 0.0 ? std::optional(width) : std::nullopt;
        });
    }
}

} // namespace headless::excel
