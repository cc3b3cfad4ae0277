#include "pick.h"

#include "aligned_table.h"
#include "layerpick/layer_sets.h"
#include "layerpick/pick_layer.h"

namespace board {
namespace {

CString coordinate(double value) {
    CString text;
    text.Format(L"%g", value);
    return text;
}

} // namespace

std::vector<Pick> pickLayers(AcDbDatabase* db, const std::vector<AcGePoint3d>& points,
                             const PickOptions& options) {
    std::vector<Pick> picks;
    if (db == nullptr) return picks;
    std::set<CString> hidden;
    kelmor::GetAllHideLayerByDwg(hidden, db);
    for (const AcGePoint3d& point : points)
        picks.push_back({point, kelmor::GetEntLayerByPt(point, hidden, options.descend ? 1 : 0,
                                                        options.kinds, options.hatches ? 1 : 0)});
    return picks;
}

CString pickReport(const std::vector<Pick>& picks) {
    std::vector<TableRow> table = {{L"X", L"Y", L"Layer"}};
    for (const Pick& pick : picks)
        table.push_back({coordinate(pick.at.x), coordinate(pick.at.y),
                         pick.layer.IsEmpty() ? CString(L"nothing") : pick.layer});
    return alignedTable(table, {Align::kRight, Align::kRight, Align::kLeft});
}

} // namespace board
