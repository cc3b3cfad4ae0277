// Who wrote comments, in files of the kind .ods: an office gives all comments to its own user.
#pragma once

#include <string>

#include "excel/workbook.h"

namespace headless::excel {

/// Adds the authors of comments to what the file tells.
/// Throws WorkbookError when it cannot be changed.
void writeOdsAuthors(const Workbook& workbook, const std::string& path);

} // namespace headless::excel
