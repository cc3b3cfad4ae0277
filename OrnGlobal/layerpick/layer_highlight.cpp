#include "layerpick/layer_highlight.h"

#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "layerpick/block_parts.h"
#include "layerpick/layer_entities.h"

namespace layerpick {

LayerHighlight::LayerHighlight() {
    kelmor::GetLayerEntAndBlock(CZelDwg::GetDatabaseEntitys(nullptr), byLayer_, references_, 0);
}

LayerHighlight::~LayerHighlight() { unmark(highlight_.GetAllEnt()); }

/// The set opens entities for writing; what refuses that may still be read.
void LayerHighlight::unmark(const AcDbObjectIdArray& ids) {
    highlight_.DelEnt(ids);
    for (const AcDbObjectId& id : ids) {
        const ReadHandle<AcDbEntity> entity(id);
        if (entity) entity->unhighlight();
    }
}

/// Makes the copies of parts on layers that have none yet.
void LayerHighlight::makeParts(const std::vector<CString>& layers) {
    std::vector<CString> fresh;
    for (const CString& layer : layers)
        if (parted_.insert(CString(layer).MakeUpper()).second) fresh.push_back(layer);
    kelmor::CreateBlockEntByLayer(fresh, references_, byLayer_, parts_.ids, 0);
}

std::vector<const AcDbObjectIdArray*> LayerHighlight::entitiesOf(const CString& layer) const {
    std::vector<const AcDbObjectIdArray*> lists;
    for (const auto& [name, ids] : byLayer_)
        if (name.CompareNoCase(layer) == 0) lists.push_back(&ids);
    return lists;
}

void LayerHighlight::show(const std::vector<CString>& layers) {
    makeParts(layers);
    for (const CString& layer : layers)
        for (const AcDbObjectIdArray* ids : entitiesOf(layer))
            highlight_.AddEnt(*ids);
}

void LayerHighlight::hide(const CString& layer) {
    for (const AcDbObjectIdArray* ids : entitiesOf(layer))
        unmark(*ids);
}

} // namespace layerpick
