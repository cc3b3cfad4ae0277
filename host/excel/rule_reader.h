// Links, rules for input and protection of a sheet in a workbook file.
#pragma once

#include "excel/sheet.h"
#include "excel/zip_package.h"

namespace headless::excel {

/// @param relations  what the sheet's part links to.
/// @return           false when some are too long, or lie on too many cells, for files.
[[nodiscard]] bool readLinks(Sheet& sheet, const pugi::xml_node& list,
                             const std::vector<Relation>& relations);

/// @return  false when some are no rules that files can hold.
[[nodiscard]] bool readInputRules(Sheet& sheet, const pugi::xml_node& list);

/// @return  false when a password of the newer kind protects it, which the model does not have.
[[nodiscard]] bool readProtection(Sheet& sheet, const pugi::xml_node& node);

/// Where complaints about cells are not shown.
void readQuietAreas(Sheet& sheet, const pugi::xml_node& list);

} // namespace headless::excel
