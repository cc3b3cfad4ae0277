#include "frame/auto_open_lock_layer.h"

#include <memory>

#include <dbsymtb.h>

#include "frame/layer_lock.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

// The argument is not asked: callers pass databases of their own and count on the drawing at hand.
AcDbObjectIdArray kelmor::OpenAllLockLayer(AcDbDatabase* /*db*/) {
    AcDbObjectIdArray unlocked;
    AcDbDatabase* const working = frame::orWorking(nullptr);
    AcDbLayerTable* table = nullptr;
    if (working == nullptr || working->getLayerTable(table, AcDb::kForRead) != Acad::eOk)
        return unlocked;
    const Closing closing(table);
    AcDbLayerTableIterator* layers = nullptr;
    if (table->newIterator(layers) != Acad::eOk) return unlocked;
    const std::unique_ptr<AcDbLayerTableIterator> owner(layers);
    for (; !layers->done(); layers->step()) {
        AcDbLayerTableRecord* layer = nullptr;
        if (layers->getRecord(layer, AcDb::kForWrite) != Acad::eOk) continue;
        if (layer->isLocked()) {
            layer->setIsLocked(false);
            unlocked.append(layer->objectId());
        }
        layer->close();
    }
    return unlocked;
}

AutoOpenLockLayer::AutoOpenLockLayer() : unlocked_(kelmor::OpenAllLockLayer(nullptr)) {}

AutoOpenLockLayer::~AutoOpenLockLayer() {
    for (int i = 0; i < unlocked_.length(); ++i)
        frame::lockLayer(unlocked_[i]);
}
