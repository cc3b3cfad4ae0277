#include "measurement_output.h"

#include <charconv>
#include <string>

#include "OrnBoard/measure_report.h"
#include "dxf/read_report.h"
#include "json_output.h"
#include "table/grid_text.h"
#include "win/code_page.h"

namespace orn {
namespace {

std::string utf8(const CString& text) { return headless::toUtf8(text.GetString()); }

Json::Value jsonOf(const board::Measured& outline) {
    Json::Value value;
    value["handle"] = headless::handleText(outline.handle);
    value["layer"] = utf8(outline.layer);
    value["closed"] = outline.closed;
    value["vertices"] = outline.vertices;
    value["area_m2"] = numberOrNull(outline.areaSquareMetre);
    value["length"] = numberOrNull(outline.length);
    return value;
}

Json::Value jsonOf(const board::LayerTotal& total) {
    Json::Value value;
    value["layer"] = utf8(total.layer);
    value["count"] = total.count;
    value["area_m2"] = total.areaSquareMetre;
    value["length"] = total.length;
    return value;
}

template <class Row>
Json::Value toJsonArray(const std::vector<Row>& rows) {
    Json::Value array(Json::arrayValue);
    for (const Row& row : rows)
        array.append(jsonOf(row));
    return array;
}

// The shortest text that reads back as the same number.
std::string csvNumber(const std::optional<double>& number) {
    if (!number) return {};
    char digits[32];
    return {digits, std::to_chars(digits, std::end(digits), *number).ptr};
}

void printCsvRows(std::ostream& out, const char* kind, const std::vector<board::Measured>& rows) {
    for (const board::Measured& row : rows) {
        out << kind << ',' << headless::handleText(row.handle) << ',' << table::csvField(row.layer)
            << ',' << (row.closed ? "true" : "false") << ',' << row.vertices << ','
            << csvNumber(row.areaSquareMetre) << ',' << csvNumber(row.length) << '\n';
    }
}

} // namespace

void printTable(std::ostream& out, const board::Measurement& measurement) {
    out << utf8(board::measureReport(measurement));
}

void printJson(std::ostream& out, const board::Measurement& measurement) {
    Json::Value value;
    value["polylines"] = toJsonArray(measurement.polylines);
    value["circles"] = toJsonArray(measurement.circles);
    value["layers"] = toJsonArray(measurement.layers);
    value["coefficient_of_variation"] = numberOrNull(measurement.variation);
    printJson(out, value);
}

void printCsv(std::ostream& out, const board::Measurement& measurement) {
    out << "kind,handle,layer,closed,vertices,area_m2,length\n";
    printCsvRows(out, "polyline", measurement.polylines);
    printCsvRows(out, "circle", measurement.circles);
}

} // namespace orn
