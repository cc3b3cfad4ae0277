#include "measure_report.h"

#include "text/conversions.h"

namespace board {
namespace {

CString formatted(const wchar_t* format, const std::optional<double>& number) {
    CString text = L"-";
    if (number) text.Format(format, *number);
    return text;
}

CString areaText(const std::optional<double>& squareMetres) {
    return formatted(L"%.4f", squareMetres);
}

CString lengthText(const std::optional<double>& millimetres) {
    return formatted(L"%.1f", millimetres);
}

CString handleText(const AcDbHandle& handle) {
    ACHAR digits[17];
    handle.getIntoAsciiBuffer(digits);
    return digits;
}

void appendRows(std::vector<TableRow>& table, const wchar_t* kind,
                const std::vector<Measured>& outlines) {
    for (const Measured& outline : outlines) {
        table.push_back({handleText(outline.handle), kind, outline.layer,
                         outline.closed ? L"yes" : L"no", IntToCString(outline.vertices),
                         areaText(outline.areaSquareMetre), lengthText(outline.length)});
    }
}

} // namespace

std::vector<TableRow> outlineRows(const Measurement& measurement) {
    std::vector<TableRow> table = {
        {L"Handle", L"Kind", L"Layer", L"Closed", L"Vertices", L"Area m2", L"Length mm"}};
    appendRows(table, L"polyline", measurement.polylines);
    appendRows(table, L"circle", measurement.circles);
    return table;
}

std::vector<TableRow> layerRows(const Measurement& measurement) {
    std::vector<TableRow> table = {{L"Layer", L"Count", L"Area m2", L"Length mm"}};
    LayerTotal all{L"Total"};
    for (const LayerTotal& total : measurement.layers) {
        table.push_back({total.layer, IntToCString(total.count), areaText(total.areaSquareMetre),
                         lengthText(total.length)});
        all.count += total.count;
        all.areaSquareMetre += total.areaSquareMetre;
        all.length += total.length;
    }
    table.push_back({all.layer, IntToCString(all.count), areaText(all.areaSquareMetre),
                     lengthText(all.length)});
    return table;
}

CString measureReport(const Measurement& measurement) {
    if (measurement.layers.empty()) return L"Nothing to measure.\n";
    const CString outlines = alignedTable(outlineRows(measurement),
                                          {Align::kRight, Align::kLeft, Align::kLeft, Align::kLeft,
                                           Align::kRight, Align::kRight, Align::kRight});
    const CString layers = alignedTable(
        layerRows(measurement), {Align::kLeft, Align::kRight, Align::kRight, Align::kRight});
    return outlines + L"\n" + layers + L"\nCoefficient of variation of the areas: " +
           formatted(L"%.2f%%\n", measurement.variation);
}

} // namespace board
