// Texts as workbook files write them.
#pragma once

#include <string>

#include <pugixml.hpp>

#include "excel/sheet.h"
#include "excel/workbook_files.h"

namespace headless::excel {

struct FileText {
    std::string text;
    bool isRich = false; ///< Some letters look different from the others.
};

/// The text of an element that holds it whole or in pieces.
[[nodiscard]] FileText readText(const pugi::xml_node& node, LetterFonts fonts);

/// "_x000D_" stands for the character with that code.
[[nodiscard]] std::string unescaped(std::string text);

/// "2024-05-06T12:00:00", with or without a time, as a number of days; other texts stay texts.
[[nodiscard]] CellValue dateValue(const std::string& text);

} // namespace headless::excel
