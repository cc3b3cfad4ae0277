// Changes of formats that the table remembers, by number.
#pragma once

#include <cstdint>

namespace headless::excel {

enum KnownChange : std::uint32_t {
    kChangeHorizontal = 1,
    kChangeVertical,
    kChangeIndent,
    kChangeFontColor,
    // Those of lines leave room for the number of the line and its side.
    kChangeLineStyle = 0x2000,
    kChangeLineWeight = 0x3000,
    kChangeLineColor = 0x4000,
};

} // namespace headless::excel
