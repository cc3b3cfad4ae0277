// The office program as the engine sees it. The module that drives it is loaded only when it is
// asked for, so that everything else works without one.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "excel/file_kind.h"
#include "excel/sheet.h"

namespace headless::excel {

struct OfficeOptions {
    std::string program;  ///< Its path; empty for the one that the module was built with.
    bool visible = false; ///< Starts with a desktop to show windows on.
    std::chrono::seconds startLimit{60}; ///< It is ended when it does not answer by then,
    std::chrono::seconds workLimit{600}; ///< or does not finish one piece of work.
};

struct OfficeFile {
    std::string path; ///< Absolute.
    FileKind kind;
};

struct OfficeViews {
    std::size_t activeSheet = 0;
    std::vector<SheetView> sheets; ///< In their order; of grid lines it does not tell.
};

/// A running office; it ends with the object. All members throw WorkbookError with what went wrong.
class Office {
public:
    virtual ~Office() = default;
    /// A folder of its own for files to exchange; it is gone with the office.
    [[nodiscard]] virtual const std::string& folder() const = 0;
    /// False once the program has ended, whoever ended it.
    [[nodiscard]] virtual bool runs() = 0;
    /// Loads a workbook, calculates all of it and stores it.
    /// @return  what windows show of it, which .xls and .xlsx files from an office do not tell.
    virtual OfficeViews convert(const OfficeFile& from, const OfficeFile& to) = 0;
    /// Shows the file in a window, instead of what it showed of that path before.
    virtual void show(const OfficeFile& file) = 0;
};

/// What the module exports under kStartOffice: starts an office, the caller's to delete.
/// Throws WorkbookError when it is not installed or does not start.
using StartOffice = Office* (*)(const OfficeOptions& options);
inline constexpr const char* kStartOffice = "ornStartOffice";
inline constexpr const char* kOfficeModule = "libhost_office.so";

} // namespace headless::excel
