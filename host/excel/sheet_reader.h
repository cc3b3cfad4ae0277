// A sheet of a workbook file.
#pragma once

#include "excel/file_contents.h"

namespace headless::excel {

/// @param part  the sheet's.
/// Throws WorkbookError when it is damaged.
void readSheet(FileContents& contents, Sheet& sheet, const std::string& part);

} // namespace headless::excel
