// The parts of CZelDwg about a drawing as a whole.
#include <memory>

#include <aced.h>
#include <dbapserv.h>
#include <dbmain.h>
#include <dbobjptr.h>
#include <dbsymtb.h>

#include "OrnCore/zel_dwg.h"

namespace {

void appendEntities(const AcDbBlockTableRecord& space, AcDbObjectIdArray& ids) {
    AcDbBlockTableRecordIterator* made = nullptr;
    if (space.newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk) ids.append(id);
    }
}

void appendSpaces(const AcDbBlockTable& table, AcDbObjectIdArray& ids) {
    AcDbBlockTableIterator* made = nullptr;
    if (table.newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableIterator> blocks(made);
    for (; !blocks->done(); blocks->step()) {
        AcDbBlockTableRecord* block = nullptr;
        if (blocks->getRecord(block, AcDb::kForRead) != Acad::eOk) continue;
        if (block->isLayout()) appendEntities(*block, ids);
        block->close();
    }
}

/// Whether or not the entity's layer is locked; true also for one that is erased already.
bool eraseAnyway(AcDbObjectId id) {
    if (id.isErased()) return true;
    constexpr bool kErasedToo = false;
    constexpr bool kOnLockedLayersToo = true;
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, kErasedToo, kOnLockedLayersToo);
    return entity.openStatus() == Acad::eOk && entity->erase() == Acad::eOk;
}

} // namespace

AcDbObjectIdArray CZelDwg::GetDatabaseEntitys(AcDbDatabase* db) {
    AcDbObjectIdArray ids;
    if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTable* table = nullptr;
    if (db == nullptr || db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return ids;
    appendSpaces(*table, ids);
    table->close();
    return ids;
}

void CZelDwg::ClearEntity(AcDbObjectIdArray& ids) {
    AcDbObjectIdArray refused;
    for (int i = 0; i < ids.length(); ++i)
        if (!eraseAnyway(ids[i])) refused.append(ids[i]);
    ids = refused;
}

void CZelDwg::UpdateDisplay() { acedUpdateDisplay(); }
