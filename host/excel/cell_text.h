// What cells show, and what typing into them means.
#pragma once

#include <string>
#include <string_view>

#include "excel/sheet.h"

namespace headless::excel {

/// What a cell shows, UTF-8: numbers in their format as far as it is one of digits, per cent or
/// dates, other formats as plain numbers.
[[nodiscard]] std::string shownText(const Cell& cell, const CellFormat& format);

/// Fills a cell as typing the text does: a text after "=" is a formula, one that reads as a number,
/// TRUE or FALSE becomes that, an apostrophe before it or the text format keep it a text.
void enterText(Cell& cell, const CellFormat& format, std::string_view text);

/// The width, in characters of the default font, that a column's contents need; 0 when it is empty.
[[nodiscard]] double neededWidth(Sheet& sheet, const FormatTable& formats, int column);

} // namespace headless::excel
