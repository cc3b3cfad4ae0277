#include "excel/cell_reader.h"

#include <charconv>
#include <map>

#include "excel/file_texts.h"
#include "excel/formula_references.h"
#include "excel/number_formats.h"
#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

constexpr double kDaysSince1904 = 1462.0;

class CellReader {
public:
    CellReader(FileContents& contents, Sheet& sheet) : contents_(contents), sheet_(sheet) {}

    void read(const pugi::xml_node& data) {
        int number = 0;
        for (const pugi::xml_node& node : data.children()) {
            number = node.attribute("r").as_int(number + 1);
            if (number < 1 || number > kRows) throw WorkbookError("a row lies off the sheet");
            readRowProperties(number, node);
            int column = 0;
            for (const pugi::xml_node& cell : node.children()) {
                if (localName(cell.name()) != "c") continue;
                column = columnOf(cell, column + 1);
                readCell(number, column, cell);
            }
        }
    }

private:
    static int columnOf(const pugi::xml_node& cell, int next) {
        const std::string_view name = cell.attribute("r").value();
        const std::size_t letters = name.find_first_of("0123456789");
        const int column = name.empty() ? next : columnNumber(name.substr(0, letters));
        if (column < 1 || column > kColumns) throw WorkbookError("a cell lies off the sheet");
        return column;
    }

    void readRowProperties(int number, const pugi::xml_node& node) const {
        const bool ownHeight = node.attribute("customHeight").as_bool();
        const bool ownFormat = node.attribute("customFormat").as_bool();
        const bool hidden = node.attribute("hidden").as_bool();
        const OutlinePlace outline = outlinePlace(node);
        if (!ownHeight && !ownFormat && !hidden && outline == OutlinePlace()) return;
        sheet_.rows.change(number, number, [&](RowProperties& row) {
            row.outline = outline;
            if (ownHeight) row.height = node.attribute("ht").as_double(kUsualHeight);
            row.hidden = hidden;
            if (ownFormat) row.format = contents_.formatOf(node.attribute("s"));
        });
    }

    void readCell(int row, int column, const pugi::xml_node& node) {
        Cell& cell = sheet_.at(row, column);
        cell.format = contents_.formatOf(node.attribute("s"));
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
        } else if (contents_.since1904 &&
                   showsDays(contents_.book->formats.at(cell.format).numberFormat)) {
            if (auto* days = std::get_if<double>(&cell.value)) *days += kDaysSince1904;
        }
    }

    CellValue readValue(std::string_view type, const pugi::xml_node& node,
                        const pugi::xml_node& value) {
        if (type == "inlineStr") return contents_.plainText(child(node, "is"));
        if (!value) return {};
        if (type == "s") {
            const auto index = static_cast<std::size_t>(value.text().as_ullong());
            if (index >= contents_.strings.size())
                throw WorkbookError("a cell names a text that is not there");
            return contents_.strings[index];
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
        if (type == "array" || type == "dataTable")
            contents_.foreign.add("formulas for whole areas");
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

    struct SharedFormula {
        int row;
        int column;
        std::string text;
    };

    FileContents& contents_;
    Sheet& sheet_;
    std::map<int, SharedFormula> sharedFormulas_;
};

} // namespace

void readCells(FileContents& contents, Sheet& sheet, const pugi::xml_node& data) {
    CellReader(contents, sheet).read(data);
}

} // namespace headless::excel
