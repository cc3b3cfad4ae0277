#include "measure.h"

#include <map>

#include "OrnCore/zel_math.h"
#include "board_outline.h"
#include "frame/ac_ut_sym_tbl.h"
#include "geometry/common_area.h"
#include "model_entities.h"
#include "text/string_list.h"

namespace board {
namespace {

constexpr double kSideTolerance = 1e-6; // as for the bounds of Common::GetPlineArea

bool lies(double side, const SideRange& range) {
    return !CZelMath::EqualLess(side, range.above, kSideTolerance) &&
           !CZelMath::More(side, range.atMost);
}

/// Takes a drawing's entities one by one and keeps what the filter lets pass.
class Measurer {
public:
    explicit Measurer(const MeasureFilter& filter) : filter_(filter) {}

    void take(const AcDbEntity& entity) {
        const std::optional<Outline> outline = outlineOf(entity);
        if (!outline) return;
        const CString layer = layerOf(entity);
        if (takesLayer(layer) && takesSides(entity)) add(entity, layer, *outline);
    }

    Measurement finish() {
        for (const auto& [name, total] : totals_)
            result_.layers.push_back(total);
        if (!areas_.empty()) result_.variation = Common::CalculateCoefficientOgVaration(areas_);
        return std::move(result_);
    }

private:
    // The same few layers come again and again.
    const CString& layerOf(const AcDbEntity& entity) {
        const auto [entry, isNew] = layerNames_.try_emplace(entity.layerId());
        if (isNew) AcUtSymTbl::symbolIdToName(entity.layerId(), entry->second);
        return entry->second;
    }

    bool takesLayer(const CString& layer) const {
        return filter_.layers.empty() || kelmor::IsStrInVecString(layer, filter_.layers, 0) != 0;
    }

    bool takesSides(const AcDbEntity& entity) const {
        if (!filter_.filtersSides()) return true;
        const std::optional<Sides> sides = sidesOf(entity);
        return sides && lies(sides->a, filter_.a) && lies(sides->b, filter_.b);
    }

    void add(const AcDbEntity& entity, const CString& layer, const Outline& outline) {
        Measured row{.layer = layer,
                     .closed = outline.closed,
                     .vertices = outline.vertices,
                     .areaSquareMetre = outline.areaSquareMetre,
                     .length = outline.length};
        entity.getAcDbHandle(row.handle);
        (outline.kind == Outline::Kind::kCircle ? result_.circles : result_.polylines)
            .push_back(row);

        LayerTotal& total = totals_.try_emplace(layer, LayerTotal{layer}).first->second;
        ++total.count;
        total.areaSquareMetre += outline.areaSquareMetre.value_or(0.0);
        total.length += outline.length.value_or(0.0);
        if (outline.areaSquareMetre) areas_.push_back(*outline.areaSquareMetre);
    }

    const MeasureFilter& filter_;
    std::map<AcDbObjectId, CString> layerNames_;
    std::map<CString, LayerTotal> totals_;
    std::vector<double> areas_;
    Measurement result_;
};

} // namespace

Measurement measureBoards(AcDbDatabase* db, const MeasureFilter& filter) {
    Measurer measurer(filter);
    forEachModelEntity(db, [&](const AcDbEntity& entity) { measurer.take(entity); });
    return measurer.finish();
}

} // namespace board
