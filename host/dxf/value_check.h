// Looks over the numbers of a record before objects read them.
#pragma once

#include <optional>
#include <string_view>

#include "db/dxf_filer.h"

namespace headless {

/// Makes sure that the group's value is a number of the kind its code announces. Reals, and whole
/// numbers in odd but clear spellings ("+15", "1.0"), are parsed here and put in as numbers.
/// @return  what is wrong; the value is 0 from then on. Empty when all is well, and for texts.
[[nodiscard]] std::optional<std::string_view> checkValue(DxfTag& tag);

} // namespace headless
