#include "layerpick/layer_entities.h"

#include <unordered_map>

#include <dbents.h>

#include "frame/object_handle.h"
#include "layerpick/layer_of.h"

void kelmor::GetLayerEntAndBlock(const AcDbObjectIdArray& entities,
                                 std::map<CString, AcDbObjectIdArray>& byLayer,
                                 AcDbObjectIdArray& references, int /*unused*/) {
    // A drawing has many entities and few layers: each layer is looked up by its name once.
    std::unordered_map<AcDbObjectId, AcDbObjectIdArray*> lists;
    for (int i = 0; i < entities.length(); ++i) {
        const ReadHandle<AcDbEntity> entity(entities[i]);
        if (!entity) continue;
        AcDbObjectIdArray*& list = lists[entity->layerId()];
        if (list == nullptr) list = &byLayer[layerpick::layerOf(*entity)];
        list->append(entities[i]);
        if (AcDbBlockReference::cast(entity.get()) != nullptr) references.append(entities[i]);
    }
}

namespace {

bool eraseWhenOn(AcDbObjectId id, const CString& layer) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
    const Closing closing(entity);
    return layerpick::layerOf(*entity) == layer && entity->upgradeOpen() == Acad::eOk &&
           entity->erase() == Acad::eOk;
}

} // namespace

void kelmor::ClearLayerEnt(AcDbObjectIdArray& entities, const CString& layer) {
    for (int i = entities.length() - 1; i >= 0; --i)
        if (eraseWhenOn(entities[i], layer)) entities.removeAt(i);
}
