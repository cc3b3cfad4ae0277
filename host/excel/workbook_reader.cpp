#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>

#include "excel/file_kind.h"
#include "excel/formula_references.h"
#include "excel/image_info.h"
#include "excel/number_formats.h"
#include "excel/style_reader.h"
#include "excel/workbook_error.h"
#include "excel/workbook_files.h"
#include "excel/zip_package.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr double kEmuOfPoint = 12700.0;
constexpr double kDaysSince1904 = 1462.0;

struct Leftovers {
    std::set<std::string> phrases;

    void add(const std::string& phrase) { phrases.insert(phrase); }
};

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

/// Whether a run of letters looks different from the cell, apart from its font's name if told so.
bool hasLooks(const pugi::xml_node& run, const pugi::xml_node& first, LetterFonts fonts) {
    const auto written = [](const pugi::xml_node& looks) {
        std::ostringstream text;
        for (const pugi::xml_node& one : looks.children()) {
            const std::string_view name = localName(one.name());
            if (name != "rFont" && name != "family" && name != "charset" && name != "scheme")
                one.print(text, "", pugi::format_raw);
        }
        return text.str();
    };
    const pugi::xml_node looks = child(run, "rPr");
    if (fonts == LetterFonts::kFormat) return static_cast<bool>(looks);
    return written(looks) != written(child(first, "rPr"));
}

std::string textOfRuns(const pugi::xml_node& node, LetterFonts fonts, bool& rich) {
    std::string text;
    const pugi::xml_node first = child(node, "r");
    for (const pugi::xml_node& piece : node.children()) {
        const std::string_view name = localName(piece.name());
        if (name == "t") {
            text += piece.text().get();
        } else if (name == "r") {
            rich = rich || hasLooks(piece, first, fonts);
            text += child(piece, "t").text().get();
        }
    }
    return text;
}

/// "_x000D_" stands for the character with that code.
std::string unescaped(std::string text) {
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        unsigned code = 0;
        const char* digits = text.data() + at + 2;
        if (at + 7 > text.size() || text[at + 6] != '_') continue;
        const auto [end, error] = std::from_chars(digits, digits + 4, code, 16);
        if (error != std::errc() || end != digits + 4) continue;
        text.replace(at, 7, toUtf8(std::wstring(1, static_cast<wchar_t>(code))));
    }
    return text;
}

/// "2024-05-06T12:00:00", with or without a time, as a number of days; other texts stay texts.
CellValue dateValue(const std::string& text) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hours = 0;
    int minutes = 0;
    double seconds = 0.0;
    const int found = std::sscanf(text.c_str(), "%d-%2u-%2uT%2d:%2d:%lf", &year, &month, &day,
                                  &hours, &minutes, &seconds);
    using namespace std::chrono;
    const year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                              std::chrono::day{day}};
    if (found < 3 || !date.ok()) return text;
    constexpr sys_days kFirst = 1899y / December / 30;
    return static_cast<double>((sys_days(date) - kFirst).count()) +
           (hours * 3600.0 + minutes * 60.0 + seconds) / 86400.0;
}

class Reader {
public:
    Reader(const std::string& path, LetterFonts letterFonts)
        : package_(path), letterFonts_(letterFonts) {}

    std::unique_ptr<Workbook> read() {
        const auto root = readRelations(package_, "");
        const Relation* document = findKind(root, "officeDocument");
        const std::string part = document == nullptr ? "xl/workbook.xml" : document->target;
        const pugi::xml_document book = package_.readXml(part);
        if (localName(book.document_element().name()) != "workbook") {
            throw WorkbookError("it is not a workbook");
        }
        relations_ = readRelations(package_, part);
        readShared();
        readSheets(book.document_element());
        readNames(child(book.document_element(), "definedNames"));
        if (const Relation* core = findKind(root, "core-properties")) readProperties(*core);
        noteForeign(book.document_element());
        for (const std::string& name : package_.partNames()) {
            for (const auto& [piece, phrase] : kForeignParts) {
                if (name.find(piece) != std::string::npos) foreign_.add(phrase);
            }
        }
        // Some programs always write the list, mostly empty.
        if (package_.readXml("docProps/custom.xml").document_element().first_child())
            foreign_.add("properties of its own");
        book_->leftOut.assign(foreign_.phrases.begin(), foreign_.phrases.end());
        return std::move(book_);
    }

private:
    // --- What all sheets share ---

    void readShared() {
        pugi::xml_document theme;
        if (const Relation* found = findKind(relations_, "theme")) {
            theme = package_.readXml(found->target);
        }
        if (const Relation* found = findKind(relations_, "styles")) {
            const pugi::xml_document styles = package_.readXml(found->target);
            formats_ = readStyles(styles, theme, book_->formats);
            for (const pugi::xml_node& fill : child(styles.document_element(), "fills").children())
                if (child(fill, "gradientFill")) foreign_.add("colour gradients");
        }
        colors_ = std::make_unique<ColorReader>(theme);
        if (const Relation* found = findKind(relations_, "sharedStrings")) {
            const pugi::xml_document strings = package_.readXml(found->target);
            for (const pugi::xml_node& node : strings.document_element().children())
                strings_.push_back(plainText(node));
        }
    }

    std::string plainText(const pugi::xml_node& node) {
        bool rich = false;
        std::string text = unescaped(textOfRuns(node, letterFonts_, rich));
        if (rich) foreign_.add("formats of single letters");
        if (child(node, "rPh")) foreign_.add("phonetic guides");
        return text;
    }

    void noteForeign(const pugi::xml_node& parent) {
        for (const pugi::xml_node& node : parent.children()) {
            const std::string_view name = localName(node.name());
            // The newer versions' extension of the workbook itself holds nothing that shows.
            if (name == "extLst" && localName(parent.name()) == "workbook") continue;
            const auto known = kForeignElements.find(name);
            if (known != kForeignElements.end() && node.first_child()) foreign_.add(known->second);
            // Protection that is off is written by some programs, as an element without anything.
            const bool bare = name == "picture" || name == "legacyDrawingHF" ||
                              (name == "workbookProtection" && node.first_attribute()) ||
                              node.attribute("sheet").as_bool();
            if (known != kForeignElements.end() && bare) foreign_.add(known->second);
        }
    }

    FormatId formatOf(const pugi::xml_attribute& style) const {
        const auto index = static_cast<std::size_t>(style.as_uint());
        return index < formats_.size() ? formats_[index] : kDefaultFormat;
    }

    void readSheets(const pugi::xml_node& root) {
        since1904_ = child(root, "workbookPr").attribute("date1904").as_bool();
        for (const pugi::xml_node& node : child(root, "sheets").children()) {
            const Relation* relation = findId(relations_, linkAttribute(node, "id").value());
            if (relation == nullptr || relation->kind != "worksheet") {
                sheetsByIndex_.push_back(nullptr);
                continue;
            }
            auto sheet = std::make_shared<Sheet>();
            sheet->name = node.attribute("name").value();
            sheet->hidden =
                std::string_view(node.attribute("state").as_string("visible")) != "visible";
            sheetsByIndex_.push_back(sheet);
            book_->sheets.push_back(sheet);
            readSheet(*sheet, relation->target);
        }
        if (book_->sheets.empty()) throw WorkbookError("the file has no sheet with cells");
        const auto active = static_cast<std::size_t>(
            child(child(root, "bookViews"), "workbookView").attribute("activeTab").as_uint());
        if (active < sheetsByIndex_.size() && sheetsByIndex_[active] != nullptr) {
            book_->activeSheet = book_->positionOf(*sheetsByIndex_[active]);
        }
    }

    // --- One sheet ---

    void readSheet(Sheet& sheet, const std::string& part) {
        const pugi::xml_document document = package_.readXml(part);
        const pugi::xml_node root = document.document_element();
        if (!root) throw WorkbookError("the file is damaged: it lacks " + part);
        const auto relations = readRelations(package_, part);
        noteForeign(root);
        sharedFormulas_.clear();
        for (const pugi::xml_node& node : root.children()) {
            const std::string_view name = localName(node.name());
            if (name == "sheetData") {
                readRows(sheet, node);
            } else if (name == "cols") {
                readColumns(sheet, node);
            } else if (name == "mergeCells") {
                for (const pugi::xml_node& merge : node.children())
                    addArea(sheet.merges, merge.attribute("ref").value());
            } else if (name == "sheetViews") {
                readView(sheet.view, child(node, "sheetView"));
            } else if (name == "sheetFormatPr") {
                readUsualSizes(sheet, node);
            } else if (name == "autoFilter") {
                sheet.autoFilter = parseArea(node.attribute("ref").value());
                if (node.first_child()) foreign_.add("conditions of filters");
            } else if (name == "drawing") {
                if (const auto* found = findId(relations, linkAttribute(node, "id").value())) {
                    readDrawing(sheet, found->target);
                }
            } else if (name == "sheetPr") {
                sheet.tabColor = colors_->read(child(node, "tabColor"));
                sheet.page.fitToPages = child(node, "pageSetUpPr").attribute("fitToPage").as_bool();
            } else {
                readPage(sheet.page, name, node);
            }
        }
        readComments(sheet, relations);
    }

    static void addArea(std::vector<Area>& areas, const char* text) {
        if (const auto area = parseArea(text)) areas.push_back(*area);
    }

    void readView(SheetView& view, const pugi::xml_node& node) {
        const bool usual = !node.attribute("rightToLeft").as_bool() &&
                           !node.attribute("showFormulas").as_bool() &&
                           node.attribute("showZeros").as_bool(true) &&
                           node.attribute("showRowColHeaders").as_bool(true);
        if (!usual) foreign_.add("settings of views");
        view.gridlines = node.attribute("showGridLines").as_bool(true);
        view.zoom = node.attribute("zoomScale").as_int(100);
        const pugi::xml_node pane = child(node, "pane");
        if (std::string_view(pane.attribute("state").value()).starts_with("frozen")) {
            view.frozenRows = std::clamp(pane.attribute("ySplit").as_int(), 0, kRows - 1);
            view.frozenColumns = std::clamp(pane.attribute("xSplit").as_int(), 0, kColumns - 1);
        } else if (pane) {
            foreign_.add("split windows");
        }
    }

    static void readUsualSizes(Sheet& sheet, const pugi::xml_node& node) {
        const double height = node.attribute("defaultRowHeight").as_double(kUsualHeight);
        if (height != kUsualHeight) {
            sheet.rows.change(1, kRows, [&](RowProperties& row) { row.height = height; });
        }
        if (const auto width = node.attribute("defaultColWidth")) {
            const double characters = widthFromFile(width.as_double());
            if (characters != kUsualWidth) {
                sheet.columns.change(1, kColumns,
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

    void readColumns(Sheet& sheet, const pugi::xml_node& list) {
        for (const pugi::xml_node& node : list.children()) {
            const int first = std::max(node.attribute("min").as_int(), 1);
            const int last = std::min(node.attribute("max").as_int(), kColumns);
            if (first > last) continue;
            if (node.attribute("outlineLevel").as_int() > 0) foreign_.add("groups of rows");
            sheet.columns.change(first, last, [&](ColumnProperties& column) {
                // A hidden column may be written without a width of its own.
                const double width = node.attribute("width").as_double();
                if (node.attribute("customWidth").as_bool() && width > 0.0) {
                    column.width = widthFromFile(width);
                }
                column.hidden = node.attribute("hidden").as_bool();
                column.format = formatOf(node.attribute("style"));
            });
        }
    }

    void readRows(Sheet& sheet, const pugi::xml_node& data) {
        int number = 0;
        for (const pugi::xml_node& node : data.children()) {
            number = node.attribute("r").as_int(number + 1);
            if (number < 1 || number > kRows) throw WorkbookError("a row lies off the sheet");
            if (node.attribute("outlineLevel").as_int() > 0) foreign_.add("groups of rows");
            readRowProperties(sheet, number, node);
            int column = 0;
            for (const pugi::xml_node& cell : node.children()) {
                if (localName(cell.name()) != "c") continue;
                column = columnOf(cell, column + 1);
                readCell(sheet, number, column, cell);
            }
        }
    }

    static int columnOf(const pugi::xml_node& cell, int next) {
        const std::string_view name = cell.attribute("r").value();
        const std::size_t letters = name.find_first_of("0123456789");
        const int column = name.empty() ? next : columnNumber(name.substr(0, letters));
        if (column < 1 || column > kColumns) throw WorkbookError("a cell lies off the sheet");
        return column;
    }

    void readRowProperties(Sheet& sheet, int number, const pugi::xml_node& node) const {
        const bool ownHeight = node.attribute("customHeight").as_bool();
        const bool ownFormat = node.attribute("customFormat").as_bool();
        const bool hidden = node.attribute("hidden").as_bool();
        if (!ownHeight && !ownFormat && !hidden) return;
        sheet.rows.change(number, number, [&](RowProperties& row) {
            if (ownHeight) row.height = node.attribute("ht").as_double(kUsualHeight);
            row.hidden = hidden;
            if (ownFormat) row.format = formatOf(node.attribute("s"));
        });
    }

    void readCell(Sheet& sheet, int row, int column, const pugi::xml_node& node) {
        Cell& cell = sheet.at(row, column);
        cell.format = formatOf(node.attribute("s"));
        const std::string_view type = node.attribute("t").as_string("n");
        const pugi::xml_node value = child(node, "v");
        cell.value = readValue(type, node, value);
        if (const pugi::xml_node formula = child(node, "f")) {
            cell.formula = readFormula(formula, row, column);
            // The way in which a constant error is written.
            const auto* error = std::get_if<CellError>(&cell.value);
            const auto* text = std::get_if<std::string>(&cell.value);
            if (cell.formula.starts_with('#') &&
                ((error != nullptr && error->text == cell.formula) ||
                 (text != nullptr && *text == cell.formula))) {
                cell.value = CellError{cell.formula};
                cell.formula.clear();
            }
        } else if (since1904_ && showsDays(book_->formats.at(cell.format).numberFormat)) {
            if (auto* days = std::get_if<double>(&cell.value)) *days += kDaysSince1904;
        }
    }

    CellValue readValue(std::string_view type, const pugi::xml_node& node,
                        const pugi::xml_node& value) {
        if (type == "inlineStr") return plainText(child(node, "is"));
        if (!value) return {};
        if (type == "s") {
            const auto index = static_cast<std::size_t>(value.text().as_ullong());
            if (index >= strings_.size())
                throw WorkbookError("a cell names a text that is not there");
            return strings_[index];
        }
        if (type == "b") return value.text().as_bool();
        if (type == "e") return CellError{value.text().get()};
        if (type == "str") return unescaped(value.text().get());
        if (type == "d") return dateValue(value.text().get());
        const std::string_view text = value.text().get();
        double number = 0.0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size()) return std::string(text);
        return number;
    }

    std::string readFormula(const pugi::xml_node& node, int row, int column) {
        const std::string_view type = node.attribute("t").as_string("normal");
        const std::string text = node.text().get();
        if (type == "array" || type == "dataTable") foreign_.add("formulas for whole areas");
        if (type != "shared") return text;
        const int index = node.attribute("si").as_int();
        if (!text.empty()) {
            sharedFormulas_[index] = {row, column, text};
            return text;
        }
        const auto shared = sharedFormulas_.find(index);
        if (shared == sharedFormulas_.end()) return {};
        return copiedFormula(shared->second.text, row - shared->second.row,
                             column - shared->second.column);
    }

    static void readPage(PageSetup& page, std::string_view name, const pugi::xml_node& node) {
        if (name == "pageMargins") {
            page.leftMargin = node.attribute("left").as_double(page.leftMargin);
            page.rightMargin = node.attribute("right").as_double(page.rightMargin);
            page.topMargin = node.attribute("top").as_double(page.topMargin);
            page.bottomMargin = node.attribute("bottom").as_double(page.bottomMargin);
            page.headerMargin = node.attribute("header").as_double(page.headerMargin);
            page.footerMargin = node.attribute("footer").as_double(page.footerMargin);
        } else if (name == "pageSetup") {
            page.landscape = std::string_view(node.attribute("orientation").value()) == "landscape";
            page.paper = node.attribute("paperSize").as_int();
            page.scale = node.attribute("scale").as_int(100);
            page.fitWide = node.attribute("fitToWidth").as_int(1);
            page.fitTall = node.attribute("fitToHeight").as_int(1);
            if (node.attribute("useFirstPageNumber").as_bool()) {
                page.firstPage = node.attribute("firstPageNumber").as_int();
            }
        } else if (name == "printOptions") {
            page.centerHorizontally = node.attribute("horizontalCentered").as_bool();
            page.centerVertically = node.attribute("verticalCentered").as_bool();
            page.printGridlines = node.attribute("gridLines").as_bool();
            page.printHeadings = node.attribute("headings").as_bool();
        } else if (name == "headerFooter") {
            page.header = child(node, "oddHeader").text().get();
            page.footer = child(node, "oddFooter").text().get();
        }
    }

    // --- Comments and pictures ---

    void readComments(Sheet& sheet, const std::vector<Relation>& relations) {
        const Relation* found = findKind(relations, "comments");
        if (found == nullptr) return;
        const pugi::xml_document document = package_.readXml(found->target);
        std::vector<std::string> authors;
        for (const pugi::xml_node& node : child(document.document_element(), "authors").children())
            authors.emplace_back(node.text().get());
        for (const pugi::xml_node& node :
             child(document.document_element(), "commentList").children()) {
            const auto place = parseArea(node.attribute("ref").value());
            if (!place) continue;
            Comment comment;
            bool rich = false; // Comments always have a font of their own.
            comment.text = unescaped(textOfRuns(child(node, "text"), letterFonts_, rich));
            const auto author = static_cast<std::size_t>(node.attribute("authorId").as_uint());
            if (author < authors.size()) comment.author = authors[author];
            sheet.comments[{place->top, place->left}] = comment;
        }
        if (const Relation* drawing = findKind(relations, "vmlDrawing")) {
            readVisibility(sheet, drawing->target);
        }
    }

    /// Which comments stay open is told only where their boxes are drawn.
    void readVisibility(Sheet& sheet, const std::string& part) {
        const auto bytes = package_.read(part);
        pugi::xml_document document;
        // Boxes may be drawn in markup that is no XML; then they count as closed.
        if (!bytes || !document.load_buffer(bytes->data(), bytes->size())) return;
        for (const pugi::xml_node& shape : document.document_element().children()) {
            const pugi::xml_node data = child(shape, "ClientData");
            if (!child(data, "Visible")) continue;
            const auto comment = sheet.comments.find({child(data, "Row").text().as_int() + 1,
                                                      child(data, "Column").text().as_int() + 1});
            if (comment != sheet.comments.end()) comment->second.visible = true;
        }
    }

    void readDrawing(Sheet& sheet, const std::string& part) {
        const pugi::xml_document document = package_.readXml(part);
        const auto relations = readRelations(package_, part);
        for (const pugi::xml_node& anchor : document.document_element().children()) {
            const pugi::xml_node picture = child(anchor, "pic");
            if (picture) {
                readPicture(sheet, anchor, picture, relations);
            } else if (child(anchor, "graphicFrame")) {
                foreign_.add("charts");
            } else {
                foreign_.add("drawn shapes");
            }
        }
    }

    void readPicture(Sheet& sheet, const pugi::xml_node& anchor, const pugi::xml_node& node,
                     const std::vector<Relation>& relations) {
        const pugi::xml_node blip = child(child(node, "blipFill"), "blip");
        const Relation* found = findId(relations, linkAttribute(blip, "embed").value());
        const auto bytes = found == nullptr ? std::nullopt : package_.read(found->target);
        const pugi::xml_node from = child(anchor, "from");
        if (!bytes || !imageInfo(*bytes) || !from) {
            foreign_.add("pictures of other kinds");
            return;
        }
        Picture picture;
        picture.id = sheet.nextPictureId++;
        picture.bytes = *bytes;
        const pugi::xml_node properties = child(node, "nvPicPr");
        const pugi::xml_node names = child(properties, "cNvPr");
        picture.name = names.attribute("descr").as_string(names.attribute("name").value());
        picture.lockAspectRatio =
            child(child(properties, "cNvPicPr"), "picLocks").attribute("noChangeAspect").as_bool();
        picture.row = child(from, "row").text().as_int() + 1;
        picture.column = child(from, "col").text().as_int() + 1;
        picture.leftInCell = child(from, "colOff").text().as_double() / kEmuOfPoint;
        picture.topInCell = child(from, "rowOff").text().as_double() / kEmuOfPoint;
        pugi::xml_node size = child(anchor, "ext");
        if (!size) size = child(child(child(node, "spPr"), "xfrm"), "ext");
        picture.width = size.attribute("cx").as_double() / kEmuOfPoint;
        picture.height = size.attribute("cy").as_double() / kEmuOfPoint;
        sheet.pictures.push_back(std::move(picture));
    }

    // --- Names and properties ---

    void readNames(const pugi::xml_node& list) {
        for (const pugi::xml_node& node : list.children()) {
            DefinedName name;
            name.name = node.attribute("name").value();
            name.refersTo = node.text().get();
            if (const auto local = node.attribute("localSheetId")) {
                const auto index = static_cast<std::size_t>(local.as_uint());
                if (index < sheetsByIndex_.size()) name.sheet = sheetsByIndex_[index];
            }
            if (!name.name.starts_with("_xlnm.")) {
                if (node.attribute("hidden").as_bool()) {
                    foreign_.add("hidden names");
                } else {
                    book_->names.push_back(std::move(name));
                }
            } else if (name.sheet != nullptr) {
                readPrintName(*name.sheet, name);
            }
        }
    }

    void readPrintName(Sheet& sheet, const DefinedName& name) {
        std::vector<Area> areas;
        (void)changeReferences(name.refersTo, [&](Reference& reference) {
            const ReferenceCorner& first = reference.first;
            const ReferenceCorner& last = reference.last;
            areas.push_back({first.row > 0 ? first.row : 1, first.column > 0 ? first.column : 1,
                             last.row > 0 ? last.row : kRows,
                             last.column > 0 ? last.column : kColumns});
            return true;
        });
        if (name.name == "_xlnm.Print_Area") {
            if (areas.size() == 1) {
                sheet.page.printArea = areas.front();
            } else {
                foreign_.add("print areas in pieces");
            }
        } else if (name.name == "_xlnm.Print_Titles") {
            for (const Area& area : areas)
                (area.wholeRows() ? sheet.page.titleRows : sheet.page.titleColumns) = area;
        }
    }

    void readProperties(const Relation& core) {
        const pugi::xml_document document = package_.readXml(core.target);
        const pugi::xml_node root = document.document_element();
        DocumentProperties& properties = book_->properties;
        properties.title = child(root, "title").text().get();
        properties.subject = child(root, "subject").text().get();
        properties.author = child(root, "creator").text().get();
        properties.keywords = child(root, "keywords").text().get();
        properties.comments = child(root, "description").text().get();
        properties.category = child(root, "category").text().get();
    }

    struct SharedFormula {
        int row;
        int column;
        std::string text;
    };

    ZipPackage package_;
    LetterFonts letterFonts_;
    std::unique_ptr<Workbook> book_ = std::make_unique<Workbook>();
    std::vector<Relation> relations_;
    std::vector<FormatId> formats_;
    std::vector<std::string> strings_;
    std::unique_ptr<ColorReader> colors_;
    std::vector<std::shared_ptr<Sheet>> sheetsByIndex_; // As names count them; null for charts.
    std::map<int, SharedFormula> sharedFormulas_;
    bool since1904_ = false;
    Leftovers foreign_;
};

} // namespace

std::unique_ptr<Workbook> readWorkbook(const std::string& path, LetterFonts letterFonts) {
    try {
        if (const FileKind kind = kindOfContent(path); kind != FileKind::kXlsx) {
            throw WorkbookError(std::string("it is of the kind ") + endingOf(kind) + kNeedsOffice);
        }
        return Reader(path, letterFonts).read();
    } catch (const WorkbookError& error) {
        throw WorkbookError(path + " cannot be opened: " + error.what());
    }
}

} // namespace headless::excel
