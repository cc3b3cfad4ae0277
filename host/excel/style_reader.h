// The styles part of a workbook file.
#pragma once

#include <vector>

#include "excel/workbook.h"
#include "excel/zip_package.h"

namespace headless::excel {

/// Reads the cell formats into the workbook's table; its default format becomes the file's first.
/// @param theme   the theme part, for colours named by it; may be empty.
/// @return        the table's ids in the order in which cells name formats.
[[nodiscard]] std::vector<FormatId>
readStyles(const pugi::xml_document& styles, const pugi::xml_document& theme, FormatTable& formats);

/// Colours as files write them: by value, by an index into the old palette, by theme and tint.
class ColorReader {
public:
    explicit ColorReader(const pugi::xml_document& theme);
    /// Of an element such as <color rgb="FF102030"/>; none for automatic.
    [[nodiscard]] Color read(const pugi::xml_node& node) const;

private:
    std::vector<std::uint32_t> theme_; // 0x00RRGGBB
};

} // namespace headless::excel
