#include "excel/foreign_contents.h"

#include <map>
#include <string_view>

#include "excel/zip_package.h"

namespace headless::excel {
namespace {

/// What stands in a sheet, or beside it in the archive, and is not carried.
const std::map<std::string_view, const char*, std::less<>> kForeignElements = {
    {"conditionalFormatting", "conditional formats"},
    {"dataValidations", "rules for input"},
    {"hyperlinks", "links"},
    {"sheetProtection", "protection of sheets"},
    {"protectedRanges", "protection of sheets"},
    {"tableParts", "tables"},
    {"oleObjects", "embedded objects"},
    {"controls", "controls"},
    {"picture", "background pictures"},
    {"rowBreaks", "page breaks"},
    {"colBreaks", "page breaks"},
    {"scenarios", "scenarios"},
    {"dataConsolidate", "consolidations"},
    {"customSheetViews", "views of sheets"},
    {"sortState", "sort orders"},
    {"legacyDrawingHF", "pictures in headers"},
    {"extLst", "extensions of newer versions"},
    {"workbookProtection", "protection of the workbook"},
    {"externalReferences", "links to other workbooks"},
    {"pivotCaches", "pivot tables"},
    {"customWorkbookViews", "views of the workbook"},
};
const std::pair<std::string_view, const char*> kForeignParts[] = {
    {"vbaProject", "macros"},
    {"xl/charts/", "charts"},
    {"xl/pivotTables/", "pivot tables"},
    {"xl/embeddings/", "embedded objects"},
    {"xl/activeX/", "controls"},
    {"xl/threadedComments/", "threaded comments"},
    {"xl/slicers/", "slicers"},
    {"xl/connections.xml", "connections to data"},
    {"xl/chartsheets/", "chart sheets"},
    {"xl/macrosheets/", "macros"},
    {"xl/dialogsheets/", "dialog sheets"},
    {"_xmlsignatures/", "signatures"},
    {"customXml/item", "attached data"},
};

} // namespace

void ForeignContents::noteElements(const pugi::xml_node& parent) {
    for (const pugi::xml_node& node : parent.children()) {
        const std::string_view name = localName(node.name());
        // The newer versions' extension of the workbook itself holds nothing that shows.
        if (name == "extLst" && localName(parent.name()) == "workbook") continue;
        const auto known = kForeignElements.find(name);
        if (known != kForeignElements.end() && node.first_child()) add(known->second);
        // Protection that is off is written by some programs, as an element without anything.
        const bool bare = name == "picture" || name == "legacyDrawingHF" ||
                          (name == "workbookProtection" && node.first_attribute()) ||
                          node.attribute("sheet").as_bool();
        if (known != kForeignElements.end() && bare) add(known->second);
    }
}

void ForeignContents::noteParts(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (const auto& [piece, phrase] : kForeignParts) {
            if (name.find(piece) != std::string::npos) add(phrase);
        }
    }
}

} // namespace headless::excel
