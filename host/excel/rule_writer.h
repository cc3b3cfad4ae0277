// Links, rules for input and protection of a sheet for the library that writes workbook files.
#pragma once

#include <xlsxwriter.h>

#include "excel/sheet.h"

namespace headless::excel {

/// Where a link of the library leads.
[[nodiscard]] std::string libraryTarget(const Link& link);

void writeInputRule(const InputRule& rule, lxw_worksheet* target);
void writeProtection(const Protection& protection, lxw_worksheet* target);
void writeQuietAreas(const QuietAreas& quiet, lxw_worksheet* target);

} // namespace headless::excel
