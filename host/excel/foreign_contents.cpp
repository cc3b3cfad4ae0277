#include "excel/foreign_contents.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "excel/zip_package.h"

namespace headless::excel {
namespace {

/// What is read, or means nothing without what is told of elsewhere.
constexpr const char* kNothing = nullptr;

/// What stands in a sheet, in a workbook, and in their extensions by newer versions.
const std::map<std::string_view, const char*> kElements = {
    {"sheetPr", kNothing},
    {"dimension", kNothing},
    {"sheetViews", kNothing},
    {"sheetFormatPr", kNothing},
    {"cols", kNothing},
    {"sheetData", kNothing},
    {"sheetCalcPr", kNothing},
    {"sheetProtection", kNothing},
    {"protectedRanges", "protection of sheets"},
    {"scenarios", "scenarios"},
    {"autoFilter", kNothing},
    {"sortState", "sort orders"},
    {"dataConsolidate", "consolidations"},
    {"customSheetViews", "views of sheets"},
    {"mergeCells", kNothing},
    {"phoneticPr", kNothing},
    {"conditionalFormatting", "conditional formats"},
    {"dataValidations", kNothing},
    {"hyperlinks", kNothing},
    {"printOptions", kNothing},
    {"pageMargins", kNothing},
    {"pageSetup", kNothing},
    {"headerFooter", kNothing},
    {"rowBreaks", kNothing},
    {"colBreaks", kNothing},
    {"customProperties", "properties of sheets"},
    {"cellWatches", "watched cells"},
    {"ignoredErrors", kNothing},
    {"smartTags", "smart tags"},
    {"drawing", kNothing},
    {"legacyDrawing", kNothing},
    {"legacyDrawingHF", "pictures in headers"},
    {"picture", "background pictures"},
    {"oleObjects", "embedded objects"},
    {"controls", "controls"},
    {"webPublishItems", "web pages"},
    {"tableParts", "tables"},
    // Workbooks.
    {"fileVersion", kNothing},
    {"fileRecoveryPr", kNothing},
    {"fileSharing", "reservation for writing"},
    {"workbookPr", kNothing},
    {"workbookProtection", "protection of the workbook"},
    {"bookViews", kNothing},
    {"sheets", kNothing},
    {"functionGroups", "groups of functions"},
    {"externalReferences", "links to other workbooks"},
    {"definedNames", kNothing},
    {"calcPr", kNothing},
    {"oleSize", kNothing},
    {"customWorkbookViews", "views of the workbook"},
    {"pivotCaches", "pivot tables"},
    {"smartTagPr", kNothing},
    {"smartTagTypes", "smart tags"},
    {"webPublishing", kNothing},
    {"webPublishObjects", "web pages"},
    {"absPath", kNothing},
    {"revisionPtr", kNothing},
    // Extensions.
    {"conditionalFormattings", "conditional formats"},
    {"sparklineGroups", "sparklines"},
    {"slicerList", "slicers"},
    {"timelineRefs", "timelines"},
    {"workbookPr", kNothing},
};

/// Elements that may stand there empty or switched off.
bool saysNothing(const pugi::xml_node& node, std::string_view name) {
    const bool speaksByAttributes = name == "picture" || name == "legacyDrawingHF" ||
                                    name == "fileSharing" || name == "workbookProtection";
    return !(speaksByAttributes ? static_cast<bool>(node.first_attribute())
                                : static_cast<bool>(node.first_child()));
}

/// Parts of the archive that nobody read.
const std::pair<std::string_view, const char*> kParts[] = {
    {"vbaProject", "macros"},
    {"xl/charts/", "charts"},
    {"xl/pivotTables/", "pivot tables"},
    {"xl/pivotCache/", "pivot tables"},
    {"xl/embeddings/", "embedded objects"},
    {"xl/activeX/", "controls"},
    {"xl/ctrlProps/", "controls"},
    {"xl/threadedComments/", "threaded comments"},
    {"xl/slicer", "slicers"},
    {"xl/timeline", "timelines"},
    {"xl/tables/", "tables"},
    {"xl/queryTables/", "connections to data"},
    {"xl/connections.xml", "connections to data"},
    {"xl/model/", "connections to data"},
    {"xl/xmlMaps.xml", "connections to data"},
    {"xl/richData/", "data types"},
    {"xl/externalLinks/", "links to other workbooks"},
    {"xl/chartsheets/", "chart sheets"},
    {"xl/macrosheets/", "macros"},
    {"xl/dialogsheets/", "dialog sheets"},
    {"xl/diagrams/", "drawn shapes"},
    {"xl/revisions/", "history of changes"},
    {"customUI", "menus"},
    {"_xmlsignatures/", "signatures"},
    {"customXml/item", "attached data"},
    // What other parts lead to, and what is made anew.
    {".rels", kNothing},
    {"[Content_Types].xml", kNothing},
    {"docProps/", kNothing},
    {"docMetadata/", kNothing},
    {"_xmlsignatures", kNothing},
    {"customXml/", kNothing},
    {"xl/media/", kNothing},
    {"xl/drawings/", kNothing},
    {"xl/calcChain", kNothing},
    {"xl/printerSettings/", kNothing},
    {"xl/persons/", kNothing},
    {"xl/metadata.xml", kNothing},
    {"xl/volatileDependencies", kNothing},
    {"xl/worksheets/", kNothing},
    {"xl/theme/", kNothing},
    {"mimetype", kNothing},
};

constexpr const char* kUnknown = "contents of an unknown kind";

} // namespace

void ForeignContents::noteElements(const pugi::xml_node& parent) {
    for (const pugi::xml_node& node : parent.children()) {
        const std::string_view name = localName(node.name());
        // Newer versions write some elements as one choice among several.
        if (name == "AlternateContent") {
            if (localName(parent.name()) == "Choice")
                add(kUnknown);
            else
                noteElements(child(node, "Choice"));
        } else if (name == "extLst") {
            // Those of workbooks hold nothing that shows.
            if (localName(parent.name()) == "workbook") continue;
            for (const pugi::xml_node& extension : node.children())
                noteElements(extension);
        } else if (node.type() == pugi::node_element) {
            const auto known = kElements.find(name);
            if (known == kElements.end())
                add(localName(parent.name()) == "ext" ? "extensions of newer versions" : kUnknown);
            else if (known->second != kNothing && !saysNothing(node, name))
                add(known->second);
        }
    }
}

void ForeignContents::noteWorkbook(const pugi::xml_node& root) {
    const pugi::xml_node calculation = child(root, "calcPr");
    const bool usual =
        std::string_view(calculation.attribute("calcMode").as_string("auto")) == "auto" &&
        calculation.attribute("fullPrecision").as_bool(true) &&
        !calculation.attribute("iterate").as_bool();
    if (!usual) add("settings of calculation");
    const pugi::xml_node views = child(root, "bookViews");
    const pugi::xml_node view = child(views, "workbookView");
    if (view.next_sibling() || !view.attribute("showSheetTabs").as_bool(true))
        add("views of the workbook");
}

void ForeignContents::noteParts(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const auto* known = std::ranges::find_if(
            kParts, [&](const auto& part) { return name.find(part.first) != std::string::npos; });
        const bool isFolder = name.ends_with('/');
        if (known == std::end(kParts)) {
            if (!isFolder) add(kUnknown);
        } else if (known->second != kNothing) {
            add(known->second);
        }
    }
}

} // namespace headless::excel
