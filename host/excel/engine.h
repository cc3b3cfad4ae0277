// What reads, writes and calculates workbooks for the server.
#pragma once

#include <memory>
#include <string>

#include "excel/workbook.h"

namespace headless::excel {

/// The one place where another program may do the work instead. Paths are native, UTF-8; all
/// members throw WorkbookError with one line for people.
class Engine {
public:
    virtual ~Engine() = default;
    [[nodiscard]] virtual std::unique_ptr<Workbook> open(const std::string& path) = 0;
    /// Writes the whole workbook in the kind that the path's ending names.
    virtual void save(const Workbook& workbook, const std::string& path) = 0;
};

/// Reads and writes .xlsx in this process, and nothing else. It does not calculate: a formula keeps
/// the result that its file told, and programs that open the file calculate it.
[[nodiscard]] std::shared_ptr<Engine> embeddedEngine();

} // namespace headless::excel
