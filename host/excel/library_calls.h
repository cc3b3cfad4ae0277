// Calls of the library that writes workbook files: its numbers for places and colours, its errors.
#pragma once

#include <xlsxwriter.h>

#include "excel/old_palette.h"
#include "excel/workbook_error.h"

namespace headless::excel {

/// What the library answers, as an exception. Throws WorkbookError unless it is well.
inline void check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw WorkbookError(lxw_strerror(error));
}

constexpr lxw_row_t rowIndex(int row) { return static_cast<lxw_row_t>(row - 1); }
constexpr lxw_col_t columnIndex(int column) { return static_cast<lxw_col_t>(column - 1); }

/// The library takes 0x00RRGGBB, and a bit beyond it for black, since 0 is none.
constexpr lxw_color_t libraryColor(std::uint32_t color) {
    const std::uint32_t rgb = swappedColor(color);
    return rgb == 0 ? static_cast<lxw_color_t>(LXW_COLOR_BLACK) : rgb;
}

} // namespace headless::excel
