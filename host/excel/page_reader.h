// How a sheet of a workbook file is printed.
#pragma once

#include <string_view>

#include <pugixml.hpp>

#include "excel/sheet.h"

namespace headless::excel {

/// Takes over what an element of a sheet says of its pages; others say nothing.
/// @param name  the element's, behind the colon.
/// @return      false when it says more than the model has.
[[nodiscard]] bool readPage(PageSetup& page, std::string_view name, const pugi::xml_node& node);

} // namespace headless::excel
