#include "excel/file_contents.h"
#include "excel/file_kind.h"
#include "excel/formula_references.h"
#include "excel/sheet_reader.h"
#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

Visibility visibilityOf(std::string_view state) {
    if (state == "hidden") return Visibility::kHidden;
    return state == "veryHidden" ? Visibility::kVeryHidden : Visibility::kVisible;
}

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
        if (const Relation* more = findKind(root, "extended-properties")) readCompany(*more);
        noteForeign(book.document_element());
        contents_.book->leftOut = contents_.foreign.phrases();
        return std::move(contents_.book);
    }

private:
    void readShared() {
        pugi::xml_document theme;
        if (const Relation* found = findKind(relations_, "theme")) {
            contents_.book->theme = contents_.package.read(found->target).value_or("");
            theme = contents_.package.readXml(found->target);
        }
        pugi::xml_document styles;
        if (const Relation* found = findKind(relations_, "styles"))
            styles = contents_.package.readXml(found->target);
        contents_.colors = std::make_unique<ColorReader>(theme, styles);
        contents_.formats = readStyles(styles, *contents_.colors, *contents_.book);
        noteForeignStyles(styles.document_element());
        if (const Relation* found = findKind(relations_, "sharedStrings")) {
            const pugi::xml_document strings = contents_.package.readXml(found->target);
            for (const pugi::xml_node& node : strings.document_element().children())
                contents_.strings.push_back(contents_.plainText(node));
        }
    }

    void noteForeignStyles(const pugi::xml_node& root) {
        for (const pugi::xml_node& fill : child(root, "fills").children())
            if (child(fill, "gradientFill")) contents_.foreign.add("colour gradients");
        for (const pugi::xml_node& font : child(root, "fonts").children()) {
            if (child(font, "outline") || child(font, "shadow"))
                contents_.foreign.add("outlined letters and letters with shadows");
        }
        for (const pugi::xml_node& format : child(root, "cellXfs").children()) {
            const pugi::xml_node alignment = child(format, "alignment");
            if (alignment.attribute("readingOrder").as_int() != 0)
                contents_.foreign.add("directions of reading");
            if (format.attribute("quotePrefix").as_bool())
                contents_.foreign.add("apostrophes before texts");
        }
        if (child(root, "tableStyles").first_child()) contents_.foreign.add("styles of tables");
    }

    void noteForeign(const pugi::xml_node& root) {
        contents_.foreign.noteElements(root);
        contents_.foreign.noteWorkbook(root);
        contents_.foreign.noteParts(contents_.package.unreadParts());
        // Some programs always write the list, mostly empty.
        if (contents_.package.readXml("docProps/custom.xml").document_element().first_child())
            contents_.foreign.add("properties of its own");
    }

    void readSheets(const pugi::xml_node& root) {
        contents_.since1904 = child(root, "workbookPr").attribute("date1904").as_bool();
        for (const pugi::xml_node& node : child(root, "sheets").children()) {
            const Relation* relation = findId(relations_, linkAttribute(node, "id").value());
            if (relation == nullptr || relation->kind != "worksheet") {
                contents_.foreign.add("sheets without cells");
                sheetsByIndex_.push_back(nullptr);
                continue;
            }
            auto sheet = std::make_shared<Sheet>();
            sheet->name = node.attribute("name").value();
            sheet->visibility = visibilityOf(node.attribute("state").value());
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
                name.hidden = node.attribute("hidden").as_bool();
                if (node.attribute("function").as_bool() || node.attribute("xlm").as_bool())
                    contents_.foreign.add("macros");
                else
                    contents_.book->names.push_back(std::move(name));
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
        } else if (name.name != "_xlnm._FilterDatabase") {
            contents_.foreign.add("areas of advanced filters");
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

    void readCompany(const Relation& part) {
        const auto bytes = contents_.package.read(part.target);
        pugi::xml_document document;
        // Nobody misses a workbook for the name of a company.
        if (!bytes || !document.load_buffer(bytes->data(), bytes->size())) return;
        const pugi::xml_node root = document.document_element();
        contents_.book->properties.company = child(root, "Company").text().get();
        contents_.book->properties.manager = child(root, "Manager").text().get();
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
