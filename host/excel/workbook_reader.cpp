#include "excel/file_contents.h"
#include "excel/file_kind.h"
#include "excel/formula_references.h"
#include "excel/sheet_reader.h"
#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

class Reader {
public:
    Reader(const std::string& path, LetterFonts letterFonts) : contents_(path, letterFonts) {}

    std::unique_ptr<Workbook> read() {
        const auto root = readRelations(contents_.package, "");
        const Relation* document = findKind(root, "officeDocument");
        const std::string part = document == nullptr ? "xl/workbook.xml" : document->target;
        const pugi::xml_document book = contents_.package.readXml(part);
        if (localName(book.document_element().name()) != "workbook") {
            throw WorkbookError("it is not a workbook");
        }
        relations_ = readRelations(contents_.package, part);
        readShared();
        readSheets(book.document_element());
        readNames(child(book.document_element(), "definedNames"));
        if (const Relation* core = findKind(root, "core-properties")) readProperties(*core);
        noteForeign(book.document_element());
        contents_.book->leftOut = contents_.foreign.phrases();
        return std::move(contents_.book);
    }

private:
    void readShared() {
        pugi::xml_document theme;
        if (const Relation* found = findKind(relations_, "theme")) {
            theme = contents_.package.readXml(found->target);
        }
        if (const Relation* found = findKind(relations_, "styles")) {
            const pugi::xml_document styles = contents_.package.readXml(found->target);
            contents_.formats = readStyles(styles, theme, contents_.book->formats);
            for (const pugi::xml_node& fill : child(styles.document_element(), "fills").children())
                if (child(fill, "gradientFill")) contents_.foreign.add("colour gradients");
        }
        contents_.colors = std::make_unique<ColorReader>(theme);
        if (const Relation* found = findKind(relations_, "sharedStrings")) {
            const pugi::xml_document strings = contents_.package.readXml(found->target);
            for (const pugi::xml_node& node : strings.document_element().children())
                contents_.strings.push_back(contents_.plainText(node));
        }
    }

    void noteForeign(const pugi::xml_node& root) {
        contents_.foreign.noteElements(root);
        contents_.foreign.noteParts(contents_.package.partNames());
        // Some programs always write the list, mostly empty.
        if (contents_.package.readXml("docProps/custom.xml").document_element().first_child())
            contents_.foreign.add("properties of its own");
    }

    void readSheets(const pugi::xml_node& root) {
        contents_.since1904 = child(root, "workbookPr").attribute("date1904").as_bool();
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
            contents_.book->sheets.push_back(sheet);
            readSheet(contents_, *sheet, relation->target);
        }
        if (contents_.book->sheets.empty()) throw WorkbookError("the file has no sheet with cells");
        const auto active = static_cast<std::size_t>(
            child(child(root, "bookViews"), "workbookView").attribute("activeTab").as_uint());
        if (active < sheetsByIndex_.size() && sheetsByIndex_[active] != nullptr) {
            contents_.book->activeSheet = contents_.book->positionOf(*sheetsByIndex_[active]);
        }
    }

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
                    contents_.foreign.add("hidden names");
                } else {
                    contents_.book->names.push_back(std::move(name));
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
                contents_.foreign.add("print areas in pieces");
            }
        } else if (name.name == "_xlnm.Print_Titles") {
            for (const Area& area : areas)
                (area.wholeRows() ? sheet.page.titleRows : sheet.page.titleColumns) = area;
        }
    }

    void readProperties(const Relation& core) {
        const pugi::xml_document document = contents_.package.readXml(core.target);
        const pugi::xml_node root = document.document_element();
        DocumentProperties& properties = contents_.book->properties;
        properties.title = child(root, "title").text().get();
        properties.subject = child(root, "subject").text().get();
        properties.author = child(root, "creator").text().get();
        properties.keywords = child(root, "keywords").text().get();
        properties.comments = child(root, "description").text().get();
        properties.category = child(root, "category").text().get();
    }

    FileContents contents_;
    std::vector<Relation> relations_;
    std::vector<std::shared_ptr<Sheet>> sheetsByIndex_; // As names count them; null for charts.
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
