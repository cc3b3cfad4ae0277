#include "table/grid_text.h"

#include <charconv>
#include <iterator>

#include <json/json.h>

#include "OrnCore/utf8_text.h"
#include "frame/ac_ut_sym_tbl.h"
#include "table/sheet_layout.h"

namespace table {
namespace {

std::string csvOf(const CDrawGrid& grid) {
    std::string csv;
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        for (int column = 1; column < grid.GetColumnCount(); ++column) {
            if (column > 1) csv += ',';
            csv += csvField(grid.GetCell(row, column).text);
        }
        csv += '\n';
    }
    return csv;
}

std::string styleName(const AcDbObjectId& style) {
    CString name;
    if (style.isNull() || AcUtSymTbl::symbolIdToName(style, name) != Acad::eOk) return {};
    return orncore::toUtf8(name);
}

Json::Value jsonOf(const GridMerge& merge) {
    Json::Value numbers(Json::arrayValue);
    for (const int number : {merge.column, merge.row, merge.moreColumns, merge.moreRows})
        numbers.append(number);
    return numbers;
}

Json::Value cellsOf(const CDrawGrid& grid) {
    Json::Value cells(Json::arrayValue);
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        for (int column = 1; column < grid.GetColumnCount(); ++column) {
            const GridCell& cell = grid.GetCell(row, column);
            Json::Value value;
            value["row"] = row;
            value["column"] = column;
            value["text"] = orncore::toUtf8(cell.text);
            value["height"] = cell.height;
            value["color"] = cell.color;
            value["style"] = styleName(cell.style);
            cells.append(std::move(value));
        }
    }
    return cells;
}

Json::Value jsonOf(const CDrawGrid& grid) {
    Json::Value value;
    value["rows"] = grid.GetRowCount() - 1;
    value["columns"] = grid.GetColumnCount() - 1;
    value["widths"] = value["heights"] = value["merges"] = Json::Value(Json::arrayValue);
    for (int column = 0; column < grid.GetColumnCount(); ++column)
        value["widths"].append(grid.GetColumnWidth(column));
    for (int row = 0; row < grid.GetRowCount(); ++row)
        value["heights"].append(grid.GetRowHeight(row));
    for (const GridMerge& merge : grid.GetMerges())
        value["merges"].append(jsonOf(merge));
    value["cells"] = cellsOf(grid);
    return value;
}

std::string htmlText(const CString& text) {
    std::string escaped;
    for (const char c : orncore::toUtf8(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string points(double size) {
    char digits[32];
    const auto end = std::to_chars(digits, std::end(digits), size, std::chars_format::fixed, 2).ptr;
    return std::string(digits, end) + "pt";
}

std::string hexColor(unsigned color) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += kDigits[color >> static_cast<unsigned>(shift) & 0xFU];
    return text;
}

const char* horizontalPlace(int mode) {
    switch (mode) {
    case AcDb::kTextCenter:
    case AcDb::kTextMid:
        return "center";
    case AcDb::kTextRight:
        return "right";
    default:
        return "left";
    }
}

const char* verticalPlace(int mode) {
    switch (mode) {
    case AcDb::kTextTop:
        return "top";
    case AcDb::kTextVertMid:
        return "middle";
    default:
        return "bottom";
    }
}

std::string htmlCell(const GridCell& cell, const CellSpan& span, const SheetLayout& layout) {
    std::string html = "<td";
    if (span.moreColumns > 0) html += " colspan=\"" + std::to_string(span.moreColumns + 1) + "\"";
    if (span.moreRows > 0) html += " rowspan=\"" + std::to_string(span.moreRows + 1) + "\"";
    if (!cell.text.IsEmpty()) {
        html += std::string(" style=\"text-align:") + horizontalPlace(cell.horizontal) +
                ";vertical-align:" + verticalPlace(cell.vertical) +
                ";font-size:" + points(layout.fontSize(cell)) +
                ";color:" + hexColor(paperColor(cell.color)) + "\"";
    }
    return html + ">" + htmlText(cell.text) + "</td>";
}

std::string htmlOf(const CDrawGrid& grid) {
    const SheetLayout layout(grid);
    std::string html = "<table>\n<colgroup>";
    for (int column = 1; column < grid.GetColumnCount(); ++column)
        html += "<col style=\"width:" + points(layout.width(column)) + "\">";
    html += "</colgroup>\n";
    for (int row = 1; row < grid.GetRowCount(); ++row) {
        html += "<tr style=\"height:" + points(layout.height(row)) + "\">";
        for (int column = 1; column < grid.GetColumnCount(); ++column) {
            const CellSpan& span = layout.span(row, column);
            if (!span.isCovered) html += htmlCell(grid.GetCell(row, column), span, layout);
        }
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

} // namespace

std::string csvField(const CString& text) {
    const std::string bytes = orncore::toUtf8(text);
    if (bytes.find_first_of(",\"\r\n") == std::string::npos) return bytes;
    std::string quoted = "\"";
    for (const char c : bytes) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

std::string toCsv(std::span<const CDrawGrid* const> grids) {
    std::string csv;
    for (const CDrawGrid* grid : grids) {
        if (!csv.empty()) csv += '\n';
        csv += csvOf(*grid);
    }
    return csv;
}

std::string toJson(std::span<const CDrawGrid* const> grids) {
    Json::Value value;
    if (grids.size() == 1) {
        value = jsonOf(*grids.front());
    } else {
        value["tables"] = Json::Value(Json::arrayValue);
        for (const CDrawGrid* grid : grids)
            value["tables"].append(jsonOf(*grid));
    }
    Json::StreamWriterBuilder settings;
    settings["indentation"] = " ";
    settings["emitUTF8"] = true;
    settings["precision"] = 17;
    return Json::writeString(settings, value) + "\n";
}

std::string toHtml(std::span<const CDrawGrid* const> grids) {
    std::string html = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
                       "<title>Tables</title>\n<style>\n"
                       "table { border-collapse: collapse; table-layout: fixed; margin: 10pt; }\n"
                       "td { border: 0.5pt solid black; padding: 0 2pt; white-space: pre-line; }\n"
                       "</style>\n</head>\n<body>\n";
    for (const CDrawGrid* grid : grids)
        html += htmlOf(*grid);
    return html + "</body>\n</html>\n";
}

} // namespace table
