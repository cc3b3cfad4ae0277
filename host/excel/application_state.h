// What a running spreadsheet application holds, shared by all objects that lead into it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "excel/engine.h"
#include "win/served_object.h"

namespace headless::excel {

/// The application's own failure, told by a text.
[[noreturn]] void fail(const std::string& message);
/// "Unable to set the NAME property of the Range class" and its kind.
[[noreturn]] void failToSet(const char* property);

/// A workbook that is open.
struct OpenBook {
    std::shared_ptr<Workbook> workbook;
    std::wstring name;               ///< "Book1", or the file's name.
    std::optional<std::string> path; ///< Native; nothing before the first save.
    FileKind kind = FileKind::kXlsx; ///< Of that file.
    bool saved = true;               ///< Nothing has changed since.
    bool calculated = true;          ///< The same of formulas.
    bool closed = false;
    std::shared_ptr<Sheet> selectedSheet;
    Area selection;

    void noteChange() { saved = calculated = false; }
    [[nodiscard]] std::shared_ptr<Sheet> activeSheet() const {
        return workbook->sheets[std::min(workbook->activeSheet, workbook->sheets.size() - 1)];
    }
};

/// Cells that were copied.
struct Clipboard {
    Area area;
    std::vector<std::pair<std::pair<int, int>, Cell>> cells; ///< By row and column in the area.
};

struct ApplicationState {
    std::shared_ptr<Engine> engine;
    std::vector<std::shared_ptr<OpenBook>> books;
    std::shared_ptr<OpenBook> activeBook;
    std::optional<Clipboard> clipboard;
    int booksMade = 0;
    bool visible = false;
    bool displayAlerts = true;
    bool screenUpdating = true;
    LONG windowState = -4143; // xlNormal
    LONG sheetsInNewBook = 3;

    std::shared_ptr<OpenBook> addBook();
    /// A new book with what a file holds.
    std::shared_ptr<OpenBook> addBookAfter(const std::wstring& path);
    std::shared_ptr<OpenBook> openBook(const std::wstring& path);
    void save(OpenBook& book);
    /// @param kind  by the path's ending when it is left out; .xlsx without an ending.
    void saveAs(OpenBook& book, const std::wstring& path, std::optional<FileKind> kind = {});
    void saveCopy(OpenBook& book, const std::wstring& path);
    /// Asks what to do with changes unless told. False when the user would rather not.
    bool close(const std::shared_ptr<OpenBook>& book, std::optional<bool> saveChanges);
    /// Brings formulas up to date, as far as the engine calculates.
    void calculate(OpenBook& book);
    /// Shows the books that are open.
    void setVisible(bool on);
    /// Closes all books; false when the user stopped it.
    bool quit();

private:
    std::shared_ptr<OpenBook> add(std::unique_ptr<Workbook> workbook, const std::wstring& name);
    std::wstring newName() { return L"Book" + std::to_wstring(++booksMade); }
    /// @return  what such a file does not keep.
    std::vector<std::string> write(OpenBook& book, const std::string& path, FileKind kind);
    /// Tells the user what the file lacks, if anything.
    void tellLost(const std::string& path, const std::vector<std::string>& lost) const;
    void show(OpenBook& book);
};

/// A sheet of an open book, and what may be done to it.
struct SheetPlace {
    std::shared_ptr<ApplicationState> application;
    std::shared_ptr<OpenBook> book;
    std::shared_ptr<Sheet> sheet;

    /// Throws when the sheet or its book is gone.
    void check() const;
    void noteChange() const { book->noteChange(); }
    /// The sheet, with the book noted as changed.
    [[nodiscard]] Sheet& edit() const {
        noteChange();
        return *sheet;
    }
    [[nodiscard]] FormatTable& formats() const { return book->workbook->formats; }
};

/// Widens the columns that wait for it to their contents.
void fitColumns(Sheet& sheet, const FormatTable& formats);

} // namespace headless::excel
