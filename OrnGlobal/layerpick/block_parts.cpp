#include "layerpick/block_parts.h"

#include <memory>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include <dbents.h>
#include <dbsymtb.h>

#include "blocks/block_ref_exploder.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"
#include "layerpick/layer_entities.h"

namespace {

std::set<CString> inCapitals(const std::vector<CString>& layers) {
    std::set<CString> names;
    for (CString layer : layers)
        names.insert(layer.MakeUpper());
    return names;
}

/// Which blocks hold entities on some layers. A block is walked once, however often and from
/// wherever it is referred to.
class LayerUse {
public:
    explicit LayerUse(const std::vector<CString>& layers) : names_(inCapitals(layers)) {}

    bool isWanted(AcDbObjectId layer) {
        const auto [known, fresh] = layers_.emplace(layer, false);
        if (fresh) known->second = names_.contains(AcUtSymTbl::GetStyleName(layer).MakeUpper());
        return known->second;
    }

    /// True when an entity of the block, or of one that it refers to at any depth, is wanted.
    bool isInside(AcDbObjectId block) {
        std::unordered_set<AcDbObjectId> seen; // A damaged drawing may hold a block in itself.
        std::vector<AcDbObjectId> open{block};
        bool used = false;
        while (!used && !open.empty()) {
            const AcDbObjectId next = open.back();
            open.pop_back();
            if (const auto known = blocks_.find(next); known != blocks_.end())
                used = known->second;
            else if (seen.insert(next).second)
                used = holds(next, open);
        }
        if (used)
            blocks_[block] = true;
        else
            for (const AcDbObjectId& other : seen)
                blocks_[other] = false;
        return used;
    }

private:
    /// True when an entity of the block itself is wanted.
    /// @param referred  receives the blocks that it refers to.
    bool holds(AcDbObjectId id, std::vector<AcDbObjectId>& referred) {
        const ReadHandle<AcDbBlockTableRecord> block(id);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (!block || block->newIterator(made) != Acad::eOk) return false;
        const std::unique_ptr<AcDbBlockTableRecordIterator> all(made);
        for (; !all->done(); all->step()) {
            AcDbObjectId entityId;
            all->getEntityId(entityId);
            const ReadHandle<AcDbEntity> entity(entityId);
            if (!entity) continue;
            if (isWanted(entity->layerId())) return true;
            if (const auto* const nested = AcDbBlockReference::cast(entity.get()))
                referred.push_back(nested->blockTableRecord());
        }
        return false;
    }

    std::set<CString> names_;
    std::unordered_map<AcDbObjectId, bool> layers_;
    std::unordered_map<AcDbObjectId, bool> blocks_; // as far as it is known
};

/// The space that a reference stands in; null, for the current one, when it stands in a block.
AcDbObjectId spaceOf(const AcDbBlockReference& reference) {
    const ReadHandle<AcDbBlockTableRecord> owner(reference.ownerId());
    return owner && owner->isLayout() ? reference.ownerId() : AcDbObjectId::kNull;
}

AcDbObjectIdArray copiesOf(AcDbObjectId id, const std::set<CString>& layers) {
    AcDbObjectIdArray made;
    AcUtBlockRefExploderParam param;
    param.layers = layers;
    {
        const ReadHandle<AcDbBlockReference> reference(id);
        if (!reference) return made;
        param.space = spaceOf(*reference);
    }
    AcUtBlockReferenceExploder(param).explode(id, made);
    return made;
}

/// Whether a reference may show something on the layers: in its block, or because it is on one
/// itself, which what is on layer 0 there shows.
bool mayShow(AcDbObjectId id, LayerUse& use) {
    const ReadHandle<AcDbBlockReference> reference(id);
    return reference &&
           (use.isWanted(reference->layerId()) || use.isInside(reference->blockTableRecord()));
}

} // namespace

int kelmor::IsBlockInsideUseLayer(const AcDbObjectId& reference, const std::vector<CString>& layers,
                                  int /*unused*/) {
    const ReadHandle<AcDbBlockReference> opened(reference);
    return opened && LayerUse(layers).isInside(opened->blockTableRecord()) ? 1 : 0;
}

AcDbObjectIdArray kelmor::CreateBlockSubEntByLayer(const AcDbObjectId& reference,
                                                   const CString& layer, int /*unused*/,
                                                   AcDbDatabase* db) {
    if (reference.isNull() || reference.database() != frame::orWorking(db))
        return AcDbObjectIdArray();
    return copiesOf(reference, {layer});
}

void kelmor::CreateBlockEntByLayer(const std::vector<CString>& layers,
                                   const AcDbObjectIdArray& references,
                                   std::map<CString, AcDbObjectIdArray>& byLayer,
                                   AcDbObjectIdArray& temporary, int /*unused*/) {
    const std::set<CString> wanted(layers.begin(), layers.end());
    if (wanted.empty()) return;
    LayerUse use(layers);
    AcDbObjectIdArray made;
    for (int i = 0; i < references.length(); ++i)
        if (mayShow(references[i], use)) made.append(copiesOf(references[i], wanted));
    temporary.append(made);
    AcDbObjectIdArray ignored;
    GetLayerEntAndBlock(made, byLayer, ignored, 0);
}
