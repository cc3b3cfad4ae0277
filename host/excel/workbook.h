// A workbook in memory: what its file holds, as far as the engine carries it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "excel/sheet.h"

namespace headless::excel {

/// A name for an area or a formula.
struct DefinedName {
    std::string name;
    std::string refersTo;         ///< A formula without the equals sign.
    std::shared_ptr<Sheet> sheet; ///< The sheet that it is for; null for the whole workbook.
    bool hidden = false;          ///< From users.
};

struct DocumentProperties {
    std::string title;
    std::string subject;
    std::string author;
    std::string keywords;
    std::string comments;
    std::string category;
    std::string company;
    std::string manager;

    bool operator==(const DocumentProperties&) const = default;
};

/// A named style of cells. What cells look like is all in their own formats; which parts of these
/// the style is meant to rule is noted for programs that change it.
struct CellStyle {
    std::string name = "Normal";
    CellFormat format;
    std::map<std::string, std::string> settings; ///< Attributes of files, "builtinId" and others.
    std::map<std::string, std::string> rules;    ///< Likewise, "applyFont" and others.

    bool operator==(const CellStyle&) const = default;
};

struct Workbook {
    FormatTable formats;
    std::vector<CellStyle> styles = {CellStyle()}; ///< By CellFormat::style; the first is Normal.
    std::string theme; ///< The part of files about it; empty for the usual one.
    std::vector<std::shared_ptr<Sheet>> sheets; ///< In the order of their tabs; never empty.
    std::size_t activeSheet = 0;
    std::vector<DefinedName> names;
    DocumentProperties properties;
    /// What its file held beyond this, one phrase each ("charts"): a file saved from here lacks it.
    std::vector<std::string> leftOut;

    /// A new sheet before position `at`, with a name nobody has.
    std::shared_ptr<Sheet> addSheet(std::size_t at);
    /// The sheet of that name in any case, or null.
    [[nodiscard]] std::shared_ptr<Sheet> findSheet(std::string_view name) const;
    [[nodiscard]] std::size_t positionOf(const Sheet& sheet) const;
    /// Why a sheet cannot have that name; empty when it can.
    [[nodiscard]] std::string nameRefusal(const Sheet& sheet, std::string_view name) const;
};

/// A workbook with so many empty sheets, "Sheet1" and so on.
[[nodiscard]] std::unique_ptr<Workbook> newWorkbook(int sheets);

} // namespace headless::excel
