#include "model_entities.h"

#include <memory>

#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"

namespace board {

void forEachModelEntity(AcDbDatabase* db, const std::function<void(const AcDbEntity&)>& visit) {
    AcDbBlockTableRecord* modelSpace = nullptr;
    if (db == nullptr ||
        AcUtSymTbl::openBlockDef(ACDB_MODEL_SPACE, modelSpace, AcDb::kForRead, db) != Acad::eOk)
        return;
    AcDbBlockTableRecordIterator* all = nullptr;
    if (modelSpace->newIterator(all) == Acad::eOk) {
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(all);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            entities->getEntityId(id);
            if (const ReadHandle<AcDbEntity> entity(id); entity) visit(*entity);
        }
    }
    modelSpace->close();
}

} // namespace board
