// Directions as automation numbers them.
#pragma once

#include "win/types.h"

namespace headless::excel {

inline constexpr LONG kXlUp = -4162;
inline constexpr LONG kXlDown = -4121;
inline constexpr LONG kXlToLeft = -4159;
inline constexpr LONG kXlToRight = -4161;

} // namespace headless::excel
