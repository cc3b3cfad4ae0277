// How a sheet is printed, for the library that writes workbook files.
#pragma once

#include <xlsxwriter.h>

#include "excel/sheet.h"

namespace headless::excel {

void writePage(const PageSetup& page, lxw_worksheet* target);

} // namespace headless::excel
