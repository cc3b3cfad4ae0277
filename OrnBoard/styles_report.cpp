#include "styles_report.h"

#include "aligned_table.h"
#include "text/conversions.h"

namespace board {
namespace {

TableRow rowOf(const ComponentInfo& style) {
    const bool outline = style.expressionStyle == 0;
    const LayerInfo& layer = outline ? style.lineLayerInfo : style.simpleLineLayerInfo;
    const CString shown =
        outline ? (style.setHatch != 0 ? L"outline, hatch" : L"outline") : L"line";
    return {style.groupName, style.typeName,
            style.styleName, shown,
            layer.layerName, IntToCString(layer.colorIndex),
            layer.lineType,  outline && style.setHatch != 0 ? style.hatchName : CString(L"-")};
}

} // namespace

CString stylesReport(const StyleList& list) {
    if (list.styles.empty()) return L"No styles.\n";
    std::vector<TableRow> table = {
        {L"Group", L"Type", L"Style", L"Shown as", L"Layer", L"Color", L"Linetype", L"Hatch"}};
    for (const auto& [key, style] : list.styles)
        table.push_back(rowOf(style));
    const CString source = list.fromDrawing ? L"Styles of the drawing:\n"
                                            : L"Styles of the product's defaults file:\n";
    return source + alignedTable(table, {Align::kLeft, Align::kLeft, Align::kLeft, Align::kLeft,
                                         Align::kLeft, Align::kRight});
}

} // namespace board
