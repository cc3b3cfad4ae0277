#include "layerpick/layer_sets.h"

#include <memory>

#include <dbsymtb.h>

#include "frame/object_handle.h"
#include "frame/working_database.h"

void kelmor::GetAllHideLayerByDwg(std::set<CString>& names, AcDbDatabase* db) {
    db = frame::orWorking(db);
    if (db == nullptr) return;
    const ReadHandle<AcDbLayerTable> table(db->layerTableId());
    AcDbLayerTableIterator* all = nullptr;
    if (!table || table->newIterator(all) != Acad::eOk) return;
    const std::unique_ptr<AcDbLayerTableIterator> layers(all);
    for (; !layers->done(); layers->step()) {
        AcDbObjectId id;
        layers->getRecordId(id);
        const ReadHandle<AcDbLayerTableRecord> layer(id);
        const ACHAR* name = nullptr;
        if (layer && (layer->isOff() || layer->isFrozen()) && layer->getName(name) == Acad::eOk)
            names.insert(name);
    }
}
