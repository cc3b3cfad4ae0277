#include "excel/file_finish.h"

#include <algorithm>

#include "excel/package_change.h"
#include "excel/zip_package.h"

namespace headless::excel {
namespace {

constexpr const char* kBookPart = "xl/workbook.xml";
constexpr const char* kStylesPart = "xl/styles.xml";
constexpr const char* kThemePart = "xl/theme/theme1.xml";

bool hidesMore(const Workbook& workbook) {
    return std::ranges::any_of(
               workbook.sheets,
               [](const auto& sheet) { return sheet->visibility == Visibility::kVeryHidden; }) ||
           std::ranges::any_of(workbook.names, &DefinedName::hidden);
}

bool hasStyles(const Workbook& workbook) { return workbook.styles.size() > 1; }

/// The names of the file are those of the book, with some of the library's between them.
void hideNames(const Workbook& workbook, const pugi::xml_node& list) {
    for (pugi::xml_node node : list.children()) {
        const std::string_view name = node.attribute("name").value();
        const auto local = node.attribute("localSheetId");
        const auto isThis = [&](const DefinedName& own) {
            const bool sameScope =
                own.sheet == nullptr ? !local
                                     : local && local.as_uint() == workbook.positionOf(*own.sheet);
            return own.hidden && own.name == name && sameScope;
        };
        if (std::ranges::any_of(workbook.names, isThis) && !node.attribute("hidden"))
            node.append_attribute("hidden") = 1;
    }
}

void hideSheets(const Workbook& workbook, const pugi::xml_node& list) {
    std::size_t i = 0;
    for (pugi::xml_node node : list.children()) {
        if (workbook.sheets.at(i++)->visibility == Visibility::kVeryHidden)
            node.attribute("state") = "veryHidden";
    }
}

void setCount(pugi::xml_node list) {
    list.attribute("count") = static_cast<unsigned>(std::ranges::distance(list.children()));
}

/// A named style looks like one of the cell formats.
void addStyle(pugi::xml_node root, std::size_t number, const CellStyle& style,
              const pugi::xml_node& looks) {
    pugi::xml_node formats = child(root, "cellStyleXfs");
    pugi::xml_node names = child(root, "cellStyles");
    pugi::xml_node format = formats.append_copy(looks);
    format.remove_attribute("xfId");
    for (const auto& [rule, on] : style.rules) {
        format.remove_attribute(rule.c_str());
        format.append_attribute(rule.c_str()) = on.c_str();
    }
    pugi::xml_node name = names.append_child("cellStyle");
    name.append_attribute("name") = style.name.c_str();
    name.append_attribute("xfId") = static_cast<unsigned>(number);
    for (const auto& [setting, value] : style.settings)
        name.append_attribute(setting.c_str()) = value.c_str();
}

void addStyles(const Workbook& workbook, const std::vector<int>& styleFormats,
               const pugi::xml_document& document) {
    const pugi::xml_node root = document.document_element();
    std::vector<pugi::xml_node> cells;
    for (const pugi::xml_node& node : child(root, "cellXfs").children())
        cells.push_back(node);
    // The first is the library's own, Normal.
    for (std::size_t i = 1; i < workbook.styles.size(); ++i)
        addStyle(root, i, workbook.styles[i],
                 cells.at(static_cast<std::size_t>(styleFormats[i - 1])));
    setCount(child(root, "cellStyleXfs"));
    setCount(child(root, "cellStyles"));
}

/// Fonts follow the theme where that is to have the same font, else their name alone.
void matchTheme(const std::string& theme, const pugi::xml_document& styles) {
    pugi::xml_document document;
    if (!document.load_buffer(theme.data(), theme.size())) return;
    const pugi::xml_node elements = child(document.document_element(), "themeElements");
    const std::string_view usual = child(child(child(elements, "fontScheme"), "minorFont"), "latin")
                                       .attribute("typeface")
                                       .value();
    for (pugi::xml_node font : child(styles.document_element(), "fonts").children()) {
        if (child(font, "name").attribute("val").value() != usual)
            font.remove_child(child(font, "scheme"));
    }
}

} // namespace

bool needsFinish(const Workbook& workbook) {
    return !workbook.theme.empty() || hasStyles(workbook) || hidesMore(workbook);
}

void finishFile(const Workbook& workbook, const std::vector<int>& styleFormats,
                const std::string& path) {
    std::string book;
    std::string styles;
    {
        ZipPackage written(path);
        const pugi::xml_document document = written.readXml(kBookPart);
        hideSheets(workbook, child(document.document_element(), "sheets"));
        hideNames(workbook, child(document.document_element(), "definedNames"));
        book = xmlText(document);
        const pugi::xml_document formats = written.readXml(kStylesPart);
        addStyles(workbook, styleFormats, formats);
        matchTheme(workbook.theme, formats);
        styles = xmlText(formats);
    }
    PackageChange change(path);
    change.replace(kBookPart, book);
    change.replace(kStylesPart, styles);
    if (!workbook.theme.empty()) change.replace(kThemePart, workbook.theme);
    change.commit();
}

} // namespace headless::excel
