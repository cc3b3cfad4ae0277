// The styles part of a workbook file.
#pragma once

#include <vector>

#include "excel/workbook.h"
#include "excel/zip_package.h"

namespace headless::excel {

/// Colours as files write them: by value, by an index into the old palette, by theme and tint.
class ColorReader {
public:
    /// @param theme   the theme part, for colours named by it; may be empty.
    /// @param styles  the styles part, which may have a palette of its own.
    ColorReader(const pugi::xml_document& theme, const pugi::xml_document& styles);
    /// Of an element such as <color rgb="FF102030"/>; none for automatic.
    [[nodiscard]] Color read(const pugi::xml_node& node) const;

private:
    // 0x00RRGGBB
    std::vector<std::uint32_t> theme_;
    std::vector<std::uint32_t> palette_;
};

/// Reads the cell formats into the workbook's table, and its named styles; its default format
/// becomes the file's first.
/// @return  the table's ids in the order in which cells name formats.
[[nodiscard]] std::vector<FormatId> readStyles(const pugi::xml_document& styles,
                                               const ColorReader& colors, Workbook& book);

} // namespace headless::excel
