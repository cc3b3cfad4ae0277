#include "blocks/piece_count.h"

#include <limits>
#include <memory>

#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"

namespace blocks {

AcDbObjectId effectiveLayer(const AcDbEntity& entity, AcDbObjectId referenceLayer) {
    const bool follows = entity.layerId() == entity.database()->layerZero();
    return follows ? referenceLayer : entity.layerId();
}

bool PieceCount::isChosen(AcDbObjectId layer) {
    if (param_.layers.empty()) return true;
    const auto [known, fresh] = layers_.emplace(layer, false);
    if (fresh) known->second = param_.layers.contains(AcUtSymTbl::GetStyleName(layer).MakeUpper());
    return known->second;
}

double PieceCount::in(const AcDbBlockReference& reference, AcDbObjectId layer) {
    const auto* const array = AcDbMInsertBlock::cast(&reference);
    const double cells =
        array == nullptr ? 1.0 : static_cast<double>(array->rows()) * array->columns();
    return cells * inBlock(reference.blockTableRecord(), layer) + ofAttributes(reference, layer);
}

double PieceCount::inBlock(AcDbObjectId id, AcDbObjectId layer) {
    // A block that holds itself may show something on the way from elsewhere.
    constexpr double kRecurring = 1.0;
    constexpr int kDeepest = 500;
    const auto [known, fresh] = blocks_.emplace(std::pair(id, layer), kRecurring);
    if (!fresh) return known->second;
    if (depth_ == kDeepest) return known->second = std::numeric_limits<double>::infinity();
    double pieces = 0.0;
    const ReadHandle<AcDbBlockTableRecord> block(id);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (!block || block->newIterator(made) != Acad::eOk) return known->second = pieces;
    ++depth_;
    const std::unique_ptr<AcDbBlockTableRecordIterator> all(made);
    for (; !all->done(); all->step()) {
        AcDbObjectId entity;
        all->getEntityId(entity);
        if (const ReadHandle<AcDbEntity> open(entity); open) pieces += ofEntity(*open, layer);
    }
    --depth_;
    return known->second = pieces;
}

double PieceCount::ofEntity(const AcDbEntity& entity, AcDbObjectId referenceLayer) {
    const AcDbObjectId layer = effectiveLayer(entity, referenceLayer);
    const auto* const inner = AcDbBlockReference::cast(&entity);
    if (inner != nullptr && param_.nested) return in(*inner, layer);
    const auto* const definition = AcDbAttributeDefinition::cast(&entity);
    const bool shows = definition == nullptr || definition->isConstant();
    return shows && isChosen(layer) ? 1.0 : 0.0;
}

double PieceCount::ofAttributes(const AcDbBlockReference& reference, AcDbObjectId layer) {
    double pieces = 0.0;
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (; !attributes->done(); attributes->step()) {
        const ReadHandle<AcDbAttribute> attribute(attributes->objectId());
        const bool shows = attribute && !attribute->isInvisible();
        if (shows && isChosen(effectiveLayer(*attribute, layer))) pieces += 1.0;
    }
    return pieces;
}

} // namespace blocks
