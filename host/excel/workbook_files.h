// Workbooks in files of the kind .xlsx.
#pragma once

#include <memory>
#include <string>

#include "excel/workbook.h"

namespace headless::excel {

/// Reads a workbook. What the model does not carry is listed in Workbook::leftOut.
/// @param path  native, UTF-8.
/// Throws WorkbookError, with one line that names the file, when it is missing, no workbook,
/// damaged, protected by a password or of absurd size.
[[nodiscard]] std::unique_ptr<Workbook> readWorkbook(const std::string& path);

/// Writes a workbook as a whole: a file that was there stays as it was until the new one is
/// complete, also when writing fails.
/// Throws WorkbookError, with one line that names the file.
void writeWorkbook(const Workbook& workbook, const std::string& path);

} // namespace headless::excel
