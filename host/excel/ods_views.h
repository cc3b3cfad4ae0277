// What windows show, in files of the kind .ods: an office that nobody sees does not write it.
#pragma once

#include <string>

#include "excel/workbook.h"

namespace headless::excel {

/// Adds frozen panes, zoom, grid lines and the active sheet to what the file tells.
/// Throws WorkbookError when it cannot be changed.
void writeOdsViews(const Workbook& workbook, const std::string& path);

/// Takes over which sheets show grid lines, by their names.
/// Throws WorkbookError when the file is damaged.
void takeOdsGridLines(Workbook& workbook, const std::string& path);

} // namespace headless::excel
