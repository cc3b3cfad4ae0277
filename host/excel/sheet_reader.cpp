#include "excel/sheet_reader.h"

#include <algorithm>
#include <map>

#include "excel/cell_reader.h"
#include "excel/comment_reader.h"
#include "excel/drawing_reader.h"
#include "excel/page_reader.h"
#include "excel/rule_reader.h"
#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

class SheetReader {
public:
    SheetReader(FileContents& contents, Sheet& sheet) : contents_(contents), sheet_(sheet) {}

    void read(const std::string& part) {
        const pugi::xml_document document = contents_.package.readXml(part);
        const pugi::xml_node root = document.document_element();
        if (!root) throw WorkbookError("the file is damaged: it lacks " + part);
        relations_ = readRelations(contents_.package, part);
        contents_.foreign.noteElements(root);
        for (const pugi::xml_node& node : root.children())
            readElement(localName(node.name()), node);
        readComments(contents_, sheet_, relations_);
    }

private:
    void readElement(std::string_view name, const pugi::xml_node& node) {
        using Read = void (SheetReader::*)(const pugi::xml_node&);
        static const std::map<std::string_view, Read> kElements = {
            {"sheetPr", &SheetReader::readProperties},
            {"sheetViews", &SheetReader::readView},
            {"sheetFormatPr", &SheetReader::readUsualSizes},
            {"cols", &SheetReader::readColumns},
            {"sheetData", &SheetReader::readRows},
            {"autoFilter", &SheetReader::readFilter},
            {"mergeCells", &SheetReader::readMerges},
            {"drawing", &SheetReader::readDrawn},
            {"hyperlinks", &SheetReader::readLinks},
            {"dataValidations", &SheetReader::readInputRules},
            {"sheetProtection", &SheetReader::readProtection},
            {"ignoredErrors", &SheetReader::readQuiet},
        };
        const auto found = kElements.find(name);
        if (found != kElements.end()) return (this->*found->second)(node);
        if (!readPage(sheet_.page, name, node)) contents_.foreign.add("settings of printing");
    }

    void readLinks(const pugi::xml_node& list) {
        if (!excel::readLinks(sheet_, list, relations_)) contents_.foreign.add("links");
    }
    void readInputRules(const pugi::xml_node& list) {
        if (!excel::readInputRules(sheet_, list)) contents_.foreign.add("rules for input");
    }
    void readQuiet(const pugi::xml_node& list) { readQuietAreas(sheet_, list); }
    void readProtection(const pugi::xml_node& node) {
        if (!excel::readProtection(sheet_, node)) contents_.foreign.add("passwords of sheets");
    }

    void readProperties(const pugi::xml_node& node) {
        sheet_.tabColor = contents_.colors->read(child(node, "tabColor"));
        sheet_.page.fitToPages = child(node, "pageSetUpPr").attribute("fitToPage").as_bool();
        const pugi::xml_node outline = child(node, "outlinePr");
        sheet_.sumsBelow = outline.attribute("summaryBelow").as_bool(true);
        sheet_.sumsRight = outline.attribute("summaryRight").as_bool(true);
    }

    void readRows(const pugi::xml_node& node) { readCells(contents_, sheet_, node); }

    void readFilter(const pugi::xml_node& node) {
        sheet_.autoFilter = parseArea(node.attribute("ref").value());
        if (node.first_child()) contents_.foreign.add("conditions of filters");
    }

    void readMerges(const pugi::xml_node& list) {
        for (const pugi::xml_node& node : list.children())
            if (const auto area = parseArea(node.attribute("ref").value()))
                sheet_.merges.push_back(*area);
    }

    void readDrawn(const pugi::xml_node& node) {
        if (const auto* found = findId(relations_, linkAttribute(node, "id").value()))
            readDrawing(contents_, sheet_, found->target);
    }

    void readView(const pugi::xml_node& list) {
        const pugi::xml_node node = child(list, "sheetView");
        SheetView& view = sheet_.view;
        const bool usual = !node.attribute("rightToLeft").as_bool() &&
                           !node.attribute("showFormulas").as_bool() &&
                           node.attribute("showZeros").as_bool(true) &&
                           node.attribute("showRowColHeaders").as_bool(true) &&
                           node.attribute("showOutlineSymbols").as_bool(true) &&
                           std::string_view(node.attribute("view").as_string("normal")) == "normal";
        if (!usual || node.next_sibling()) contents_.foreign.add("settings of views");
        view.gridlines = node.attribute("showGridLines").as_bool(true);
        view.zoom = node.attribute("zoomScale").as_int(100);
        const pugi::xml_node pane = child(node, "pane");
        if (std::string_view(pane.attribute("state").value()).starts_with("frozen")) {
            view.frozenRows = std::clamp(pane.attribute("ySplit").as_int(), 0, kRows - 1);
            view.frozenColumns = std::clamp(pane.attribute("xSplit").as_int(), 0, kColumns - 1);
        } else if (pane) {
            contents_.foreign.add("split windows");
        }
    }

    void readUsualSizes(const pugi::xml_node& node) {
        if (node.attribute("zeroHeight").as_bool()) contents_.foreign.add("rows hidden at first");
        const double height = node.attribute("defaultRowHeight").as_double(kUsualHeight);
        if (height != kUsualHeight) {
            sheet_.rows.change(1, kRows, [&](RowProperties& row) { row.height = height; });
        }
        if (const auto width = node.attribute("defaultColWidth")) {
            const double characters = widthFromFile(width.as_double());
            if (characters != kUsualWidth) {
                sheet_.columns.change(1, kColumns,
                                      [&](ColumnProperties& column) { column.width = characters; });
            }
        }
    }

    /// Files count the margins of a column too.
    static double widthFromFile(double width) {
        constexpr double kDigitPixels = 7.0;
        constexpr double kWidest = 256.0;
        width = std::clamp(width, 0.0, kWidest);
        return widthOfPixels(static_cast<int>((256.0 * width + 18.0) / 256.0 * kDigitPixels));
    }

    void readColumns(const pugi::xml_node& list) {
        for (const pugi::xml_node& node : list.children()) {
            const int first = std::max(node.attribute("min").as_int(), 1);
            const int last = std::min(node.attribute("max").as_int(), kColumns);
            if (first > last) continue;
            sheet_.columns.change(first, last, [&](ColumnProperties& column) {
                // A hidden column may be written without a width of its own.
                const double width = node.attribute("width").as_double();
                if (node.attribute("customWidth").as_bool() && width > 0.0) {
                    column.width = widthFromFile(width);
                }
                column.hidden = node.attribute("hidden").as_bool();
                column.outline = outlinePlace(node);
                column.format = contents_.formatOf(node.attribute("style"));
            });
        }
    }

    FileContents& contents_;
    Sheet& sheet_;
    std::vector<Relation> relations_;
};

} // namespace

void readSheet(FileContents& contents, Sheet& sheet, const std::string& part) {
    SheetReader(contents, sheet).read(part);
}

} // namespace headless::excel
