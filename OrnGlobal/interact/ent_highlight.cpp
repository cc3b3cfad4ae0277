#include "interact/ent_highlight.h"

#include <dbsubeid.h>
#include <dbsymtb.h>

#include "frame/layer_lock.h"
#include "frame/object_handle.h"

namespace {

/// The empty path: highlighting always applies to the whole entity.
const AcDbFullSubentPath& wholeEntity() {
    static const AcDbFullSubentPath path;
    return path;
}

/// What opening the entity gave.
Acad::ErrorStatus show(AcDbObjectId id) {
    const WriteHandle<AcDbEntity> entity(id);
    if (entity) entity->highlight(wholeEntity(), false);
    return entity.status();
}

void hide(AcDbObjectId id) {
    const WriteHandle<AcDbEntity> entity(id);
    if (entity) entity->unhighlight(wholeEntity(), false);
}

AcDbObjectId layerIdOf(AcDbObjectId id) {
    const ReadHandle<AcDbEntity> entity(id);
    return entity ? entity->layerId() : AcDbObjectId::kNull;
}

} // namespace

CEntHighlight::~CEntHighlight() {
    ClearEnts();
    for (const AcDbObjectId& layer : unlockedLayers_)
        frame::lockLayer(layer);
}

void CEntHighlight::AddEnt(AcDbObjectId const& id) {
    if (id.isNull() || !highlighted_.insert(id).second) return;
    if (show(id) == Acad::eOnLockedLayer && unlockLayerOf(id)) show(id);
}

void CEntHighlight::AddEnt(AcDbObjectIdArray const& ids) {
    for (int i = 0; i < ids.length(); ++i)
        AddEnt(ids[i]);
}

/// False when the entity's layer cannot be told.
bool CEntHighlight::unlockLayerOf(AcDbObjectId entity) {
    const AcDbObjectId layer = layerIdOf(entity);
    if (layer.isNull()) return false;
    if (frame::unlockLayer(layer)) unlockedLayers_.insert(layer);
    return true;
}

void CEntHighlight::DelEnt(AcDbObjectId const& id) {
    if (!id.isNull() && highlighted_.erase(id) > 0) hide(id);
}

void CEntHighlight::DelEnt(AcDbObjectIdArray const& ids) {
    for (int i = 0; i < ids.length(); ++i)
        DelEnt(ids[i]);
}

void CEntHighlight::ClearEnts() {
    for (const AcDbObjectId& id : highlighted_)
        hide(id);
    highlighted_.clear();
}

int CEntHighlight::isHaveId(AcDbObjectId const& id) const { return highlighted_.contains(id); }

int CEntHighlight::IsNull() const { return highlighted_.empty(); }

AcDbObjectIdArray CEntHighlight::GetAllEnt() const {
    AcDbObjectIdArray ids;
    for (const AcDbObjectId& id : highlighted_)
        ids.append(id);
    return ids;
}
