// What all sheets of a workbook file share while it is read.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "excel/foreign_contents.h"
#include "excel/style_reader.h"
#include "excel/workbook.h"
#include "excel/workbook_files.h"
#include "excel/zip_package.h"

namespace headless::excel {

/// The place among groups that a row or column tells.
[[nodiscard]] OutlinePlace outlinePlace(const pugi::xml_node& node);

struct FileContents {
    FileContents(const std::string& path, LetterFonts fonts) : package(path), letterFonts(fonts) {}

    ZipPackage package;
    LetterFonts letterFonts;
    std::unique_ptr<Workbook> book = std::make_unique<Workbook>();
    std::vector<FormatId> formats; ///< In the order in which cells name them.
    std::vector<std::string> strings;
    std::unique_ptr<ColorReader> colors;
    bool since1904 = false; ///< The day that days count from.
    ForeignContents foreign;

    [[nodiscard]] FormatId formatOf(const pugi::xml_attribute& style) const {
        const auto index = static_cast<std::size_t>(style.as_uint());
        return index < formats.size() ? formats[index] : kDefaultFormat;
    }
    /// The text of a cell; what is lost of its looks is noted.
    [[nodiscard]] std::string plainText(const pugi::xml_node& node);
};

} // namespace headless::excel
