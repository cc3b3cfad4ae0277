// The parts of CZelDwg about selected entities and the order in which they are drawn.
#include <map>
#include <vector>

#include <aced.h>
#include <adslib.h>
#include <dbents.h>
#include <dbgroup.h>
#include <dbmain.h>
#include <dbsymtb.h>
#include <sorttab.h>

#include "OrnCore/zel_dwg.h"

namespace {

/// The block that an entity stands in; null when the entity cannot be opened.
AcDbObjectId blockOf(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return AcDbObjectId::kNull;
    const AcDbObjectId block = entity->ownerId();
    entity->close();
    return block;
}

/// Groups are among the reactors of their members.
std::vector<AcDbObjectId> reactorsOf(AcDbObjectId id) {
    std::vector<AcDbObjectId> ids;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return ids;
    if (const AcDbVoidPtrArray* const reactors = entity->reactors()) {
        for (int i = 0; i < reactors->length(); ++i) {
            if (acdbIsPersistentReactor((*reactors)[i]))
                ids.push_back(acdbPersistentReactorObjectId((*reactors)[i]));
        }
    }
    entity->close();
    return ids;
}

Acad::ErrorStatus sendToTop(AcDbObjectId blockId, const AcDbObjectIdArray& ids) {
    AcDbBlockTableRecord* block = nullptr;
    Acad::ErrorStatus status = acdbOpenObject(block, blockId, AcDb::kForWrite);
    if (status != Acad::eOk) return status;
    AcDbSortentsTable* table = nullptr;
    status = block->getSortentsTable(table, AcDb::kForWrite, true);
    block->close();
    if (status != Acad::eOk) return status;
    status = table->moveToTop(ids);
    table->close();
    return status;
}

} // namespace

AcDbObjectIdArray CZelDwg::GetObjectids(ads_name set) {
    AcDbObjectIdArray ids;
    Adesk::Int32 length = 0;
    if (acedSSLength(set, &length) != RTNORM) return ids;
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name entity;
        AcDbObjectId id;
        if (acedSSName(set, i, entity) == RTNORM && acdbGetObjectId(id, entity) == Acad::eOk)
            ids.append(id);
    }
    return ids;
}

AcDbObjectIdArray CZelDwg::GetGroupEntIdsFromOneEntity(const AcDbObjectId& id) {
    AcDbObjectIdArray members;
    for (const AcDbObjectId& reactor : reactorsOf(id)) {
        AcDbGroup* group = nullptr;
        if (acdbOpenObject(group, reactor, AcDb::kForRead) != Acad::eOk) continue;
        AcDbObjectIdArray ids;
        group->allEntityIds(ids);
        group->close();
        for (int i = 0; i < ids.length(); ++i) {
            if (!members.contains(ids[i])) members.append(ids[i]);
        }
    }
    return members;
}

Acad::ErrorStatus CZelDwg::SendEntsToTop(AcDbObjectIdArray& ids) {
    std::map<AcDbObjectId, AcDbObjectIdArray> byBlock;
    for (int i = 0; i < ids.length(); ++i) {
        const AcDbObjectId block = blockOf(ids[i]);
        if (!block.isNull()) byBlock[block].append(ids[i]);
    }
    Acad::ErrorStatus first = Acad::eOk;
    for (const auto& [block, entities] : byBlock) {
        const Acad::ErrorStatus status = sendToTop(block, entities);
        if (first == Acad::eOk) first = status;
    }
    return first;
}
