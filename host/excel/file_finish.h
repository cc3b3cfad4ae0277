// What the library that writes workbook files cannot say, said in the file that it wrote.
#pragma once

#include <string>
#include <vector>

#include "excel/workbook.h"

namespace headless::excel {

/// True for workbooks with something of the kind: a theme, named styles, very hidden sheets,
/// hidden names.
[[nodiscard]] bool needsFinish(const Workbook& workbook);

/// @param styleFormats  for each named style but the first, the number of a cell format in the file
///                      that looks like it.
/// Throws WorkbookError when the file cannot be changed.
void finishFile(const Workbook& workbook, const std::vector<int>& styleFormats,
                const std::string& path);

} // namespace headless::excel
