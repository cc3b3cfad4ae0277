#include "blocks.h"

#include <memory>

#include <dbents.h>
#include <dbsymtb.h>

#include "frame/ac_ut_db.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "layerpick/named_styles.h"
#include "text/string_list.h"

namespace board {
namespace {

bool isOnLayer(AcDbObjectId id, const std::vector<CString>& layers) {
    const ReadHandle<AcDbEntity> entity(id);
    return entity &&
           kelmor::IsStrInVecString(AcUtSymTbl::GetStyleName(entity->layerId()), layers, 0) != 0;
}

bool isInModelSpace(AcDbObjectId id) {
    const ReadHandle<AcDbEntity> entity(id);
    return entity && entity->ownerId() == id.database()->modelSpaceId();
}

void chooseByLayer(AcDbDatabase& db, const std::vector<CString>& layers,
                   AcDbObjectIdArray& chosen) {
    const ReadHandle<AcDbBlockTableRecord> space(db.modelSpaceId());
    AcDbBlockTableRecordIterator* all = nullptr;
    if (!space || space->newIterator(all) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(all);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        entities->getEntityId(id);
        if (isOnLayer(id, layers)) chosen.append(id);
    }
}

/// @return  what is wrong with the handles; empty when nothing is.
CString chooseByHandle(AcDbDatabase& db, const std::vector<CString>& handles,
                       AcDbObjectIdArray& chosen) {
    for (const CString& handle : handles) {
        AcDbObjectId id;
        if (AcUtDb::handleStrToObjId(&db, handle, id, false) != Acad::eOk || !isInModelSpace(id))
            return L"no entity of model space has the handle " + handle;
        if (!chosen.contains(id)) chosen.append(id);
    }
    return {};
}

CString problemOfName(const CString& name, AcDbDatabase& db) {
    if (name.FindOneOf(L"<>/\\\":;?*|,=`") >= 0 || name.IsEmpty())
        return L"\"" + name + L"\" is no name for a block";
    const bool taken = AcUtSymTbl::symbolExists(AcDbBlockTableRecord::desc(), name, &db);
    return taken ? L"there is a block " + name + L" already" : CString();
}

AcDbObjectId layerNamed(const CString& name, AcDbDatabase& db) {
    AcUtSymTbl::addNewLayer(name, &db);
    return kelmor::GetLayerId(name, &db);
}

AcDbHandle handleOf(AcDbObjectId id) { return id.isNull() ? AcDbHandle() : id.handle(); }

} // namespace

BlockMade makeBlock(AcDbDatabase* db, const BlockRequest& request) {
    if (db == nullptr) return {.problem = L"there is no drawing"};
    if (const CString problem = problemOfName(request.name, *db); !problem.IsEmpty())
        return {.problem = problem};
    AcDbObjectIdArray chosen;
    chooseByLayer(*db, request.layers, chosen);
    if (const CString problem = chooseByHandle(*db, request.handles, chosen); !problem.IsEmpty())
        return {.problem = problem};
    if (chosen.isEmpty()) return {.problem = L"there is nothing to make a block of"};

    BlockMade made{.entities = chosen.length()};
    AcDbObjectId id;
    if (request.replace) {
        AcUtSymTbl::InsertBolckReference(id, chosen, request.name, L"", request.base, false,
                                         layerNamed(request.layer, *db), db);
        made.reference = handleOf(id);
    } else {
        const AcDbObjectIdArray none;
        AcUtSymTbl::DefineBlock(id, chosen, none, none, request.name, L"", request.base, true,
                                AcDbObjectId::kNull, db);
    }
    return made;
}

BlockInserted insertBlock(AcDbDatabase* db, const InsertRequest& request) {
    if (db == nullptr) return {.problem = L"there is no drawing"};
    AcDbObjectId block;
    AcUtSymTbl::nameToSymbolId(AcDbBlockTableRecord::desc(), request.name, block, db);
    const ReadHandle<AcDbBlockTableRecord> definition(block);
    if (!definition || definition->isLayout())
        return {.problem = L"there is no block " + request.name};

    AcDbObjectId id;
    AcUtSymTbl::AddBolckReference(id, block, request.position, layerNamed(request.layer, *db), db);
    if (id.isNull()) return {.problem = L"the drawing cannot be changed"};
    return {.reference = id.handle()};
}

} // namespace board
