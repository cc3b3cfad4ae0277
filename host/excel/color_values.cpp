#include "excel/color_values.h"

#include "win/served_object.h"

namespace headless::excel {

Color colorOf(const VARIANT& value, const char* property) {
    const double color = realOf(value);
    if (!(color >= 0.0 && color <= 0xFFFFFF)) failToSet(property);
    return static_cast<std::uint32_t>(color);
}

Color indexedColorOf(const VARIANT& value) {
    const LONG index = integerOf(value);
    if (index == kXlAutomatic || index == kXlNone || index == 0) return std::nullopt;
    const Color color = paletteColor(index);
    if (!color) failToSet("ColorIndex");
    return color;
}

} // namespace headless::excel
