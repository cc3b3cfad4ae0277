// What reads, writes and calculates workbooks for the server.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "excel/file_kind.h"
#include "excel/workbook.h"

namespace headless::excel {

/// The one place where another program may do the work instead. Paths are native, UTF-8; all
/// members throw WorkbookError with one line for people.
class Engine {
public:
    virtual ~Engine() = default;
    [[nodiscard]] virtual std::unique_ptr<Workbook> open(const std::string& path) = 0;
    /// Writes the whole workbook; a file that was there stays until the new one is complete.
    /// @return  what such a file does not keep, one phrase each.
    virtual std::vector<std::string> save(const Workbook& workbook, const std::string& path,
                                          FileKind kind) = 0;
    /// Brings the results of all formulas up to date, if it calculates.
    virtual void calculate(Workbook& /*workbook*/) {}
    /// Shows the workbook as it is now in a window, if it has windows and there is a desktop.
    /// @param name  the book's; its window is used again.
    virtual void show(const Workbook& /*workbook*/, const std::string& /*name*/) {}
    /// Lets go of what runs beside this process; it comes back when it is needed.
    virtual void rest() {}
};

/// Reads and writes .xlsx in this process, and nothing else. It does not calculate: a formula keeps
/// the result that its file told, and programs that open the file calculate it.
[[nodiscard]] std::shared_ptr<Engine> embeddedEngine();

/// The engine that the environment asks for: ORN_SPREADSHEET is "libreoffice", or "embedded" as
/// when it is not set. Any other value makes an engine that refuses all work and says so.
[[nodiscard]] std::shared_ptr<Engine> chosenEngine();

} // namespace headless::excel
