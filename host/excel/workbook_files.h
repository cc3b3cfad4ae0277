// Workbooks in files of the kind .xlsx.
#pragma once

#include <memory>
#include <string>

#include "excel/workbook.h"

namespace headless::excel {

/// Ends the line about a file of another kind.
inline constexpr const char* kNeedsOffice =
    ", which takes LibreOffice: set ORN_SPREADSHEET=libreoffice";

/// What fonts of single letters are. Programs with a font for each script write every text of
/// several scripts as pieces.
enum class LetterFonts { kFormat, kScript };

/// Reads a workbook. What the model does not carry is listed in Workbook::leftOut.
/// @param path  native, UTF-8.
/// Throws WorkbookError, with one line that names the file, when it is missing, no workbook,
/// damaged, protected by a password or of absurd size.
[[nodiscard]] std::unique_ptr<Workbook>
readWorkbook(const std::string& path, LetterFonts letterFonts = LetterFonts::kFormat);

/// Writes a workbook as a whole: a file that was there stays as it was until the new one is
/// complete, also when writing fails.
/// Throws WorkbookError, with one line that names the file.
void writeWorkbook(const Workbook& workbook, const std::string& path);

} // namespace headless::excel
