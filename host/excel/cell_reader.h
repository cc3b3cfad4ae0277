// The rows and cells of a sheet in a workbook file.
#pragma once

#include "excel/file_contents.h"

namespace headless::excel {

/// @param data  the element that holds the rows.
/// Throws WorkbookError when they are damaged.
void readCells(FileContents& contents, Sheet& sheet, const pugi::xml_node& data);

} // namespace headless::excel
