// One sheet for the library that writes workbook files.
#pragma once

#include "excel/library_format.h"
#include "excel/sheet.h"

namespace headless::excel {

/// Throws WorkbookError when something in the sheet is not for files.
void writeSheet(const Sheet& sheet, lxw_worksheet* target, LibraryFormats& formats);

} // namespace headless::excel
