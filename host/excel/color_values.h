// Colours as automation passes them.
#pragma once

#include "excel/application_state.h"
#include "excel/format_names.h"
#include "win/dispatch.h"

namespace headless::excel {

/// @param automatic  what an automatic colour shows.
[[nodiscard]] inline double shownColor(const Color& color, std::uint32_t automatic) {
    return static_cast<double>(color.value_or(automatic));
}

/// Throws for what is no colour, naming the property.
[[nodiscard]] Color colorOf(const VARIANT& value, const char* property);

/// A colour of the palette; none for automatic. Throws for other numbers.
[[nodiscard]] Color indexedColorOf(const VARIANT& value);

} // namespace headless::excel
