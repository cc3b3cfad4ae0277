// The comments of a sheet in a workbook file.
#pragma once

#include "excel/file_contents.h"

namespace headless::excel {

/// @param relations  what the sheet's part links to.
void readComments(FileContents& contents, Sheet& sheet, const std::vector<Relation>& relations);

} // namespace headless::excel
