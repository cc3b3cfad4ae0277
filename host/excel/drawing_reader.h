// The pictures over a sheet in a workbook file.
#pragma once

#include "excel/file_contents.h"

namespace headless::excel {

/// @param part  the drawing's.
void readDrawing(FileContents& contents, Sheet& sheet, const std::string& part);

} // namespace headless::excel
