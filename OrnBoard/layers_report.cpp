#include "layers_report.h"

#include "aligned_table.h"
#include "text/conversions.h"

namespace board {
namespace {

CString weightText(int hundredths) {
    CString text = L"default";
    if (hundredths >= 0) text.Format(L"%.2f", hundredths / 100.0);
    return text;
}

} // namespace

CString layersReport(const std::vector<NumberedLayer>& layers) {
    if (layers.empty()) return L"No numbered layers.\n";
    std::vector<TableRow> table = {
        {L"Code", L"Layer", L"Color", L"Linetype", L"Weight mm", L"Plotted", L"In drawing"}};
    for (const NumberedLayer& layer : layers) {
        table.push_back({IntToCString(static_cast<int>(layer.code)), layer.settings.name,
                         IntToCString(layer.settings.color), layer.settings.linetype,
                         weightText(layer.settings.lineWeight),
                         layer.settings.plots ? L"yes" : L"no", layer.inDrawing ? L"yes" : L"no"});
    }
    return alignedTable(table,
                        {Align::kRight, Align::kLeft, Align::kRight, Align::kLeft, Align::kRight});
}

CString layersMadeReport(const LayersMade& result) {
    CString text;
    text.Format(L"%d layers made.\n", static_cast<int>(result.made.size()));
    if (!result.made.empty()) text += layersReport(result.made);
    for (const unsigned int code : result.refused)
        text.AppendFormat(L"No layer with the number %u.\n", code);
    return text;
}

} // namespace board
