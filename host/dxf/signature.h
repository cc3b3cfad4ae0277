// Tells drawings from files that only carry a drawing's name.
#pragma once

#include <string>
#include <string_view>

namespace headless {

/// Why the bytes cannot be a DXF drawing: "line 1: not a DXF drawing (looks like a JPEG picture)".
/// Empty when they may be one.
[[nodiscard]] std::string refusalOf(std::string_view bytes);

} // namespace headless
