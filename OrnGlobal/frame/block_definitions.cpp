// The parts of AcUtSymTbl about block definitions.
#include <memory>

#include <dbents.h>
#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/ac_ut_ui.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

namespace {

// The host replaces the asterisk name by one of its own with a number.
constexpr const wchar_t* kAnonymous = L"*U";

std::unique_ptr<AcDbBlockTableRecordIterator> iterate(const AcDbBlockTableRecord& block) {
    AcDbBlockTableRecordIterator* iterator = nullptr;
    block.newIterator(iterator);
    return std::unique_ptr<AcDbBlockTableRecordIterator>(iterator);
}

Acad::ErrorStatus openBlockTable(AcDbDatabase* db, AcDb::OpenMode mode, AcDbBlockTable*& table) {
    table = nullptr;
    db = frame::orWorking(db);
    return db == nullptr ? Acad::eNoDatabase : db->getBlockTable(table, mode);
}

/// Adds a definition to a table and leaves it open for writing; `block` is null on failure.
Acad::ErrorStatus addBlock(AcDbBlockTable& table, const wchar_t* name, AcDbBlockTableRecord*& block,
                           AcDbObjectId& id) {
    block = nullptr;
    auto made = std::make_unique<AcDbBlockTableRecord>();
    made->setPathName(L"");
    Acad::ErrorStatus status = made->setName(name);
    if (status == Acad::eOk) status = table.add(id, made.get());
    if (status == Acad::eOk) block = made.release();
    return status;
}

void eraseEntities(const AcDbBlockTableRecord& block) {
    const auto entities = iterate(block);
    if (entities == nullptr) return;
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) != Acad::eOk) continue;
        if (const WriteHandle<AcDbEntity> entity(id); entity) entity->erase();
    }
}

Acad::ErrorStatus closeDefined(Acad::ErrorStatus status, AcDbBlockTableRecord* block) {
    if (status == Acad::eOk) block->close();
    return status;
}

} // namespace

Acad::ErrorStatus AcUtSymTbl::defineNewBlock(const wchar_t* name, AcDbBlockTableRecord*& block,
                                             AcDbObjectId& id, AcDbDatabase* db) {
    block = nullptr;
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus status = openBlockTable(db, AcDb::kForWrite, table);
    const Closing closing(table);
    if (status == Acad::eOk && table->getAt(name, block, AcDb::kForWrite) == Acad::eOk) {
        id = block->objectId();
        eraseEntities(*block);
        return Acad::eOk;
    }
    if (status == Acad::eOk) status = addBlock(*table, name, block, id);
    AcUtUi::rxErrorMsg(status);
    return status;
}

Acad::ErrorStatus AcUtSymTbl::defineNewBlock(const wchar_t* name, AcDbBlockTableRecord*& block,
                                             AcDbDatabase* db) {
    AcDbObjectId id;
    return defineNewBlock(name, block, id, db);
}

Acad::ErrorStatus AcUtSymTbl::defineNewBlock(const wchar_t* name, AcDbObjectId& id,
                                             AcDbDatabase* db) {
    AcDbBlockTableRecord* block = nullptr;
    const Acad::ErrorStatus status = defineNewBlock(name, block, id, db);
    return closeDefined(status, block);
}

Acad::ErrorStatus AcUtSymTbl::defineNewAnonymousBlock(AcDbBlockTableRecord*& block,
                                                      AcDbObjectId& id, AcDbDatabase* db) {
    block = nullptr;
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus status = openBlockTable(db, AcDb::kForWrite, table);
    const Closing closing(table);
    if (status == Acad::eOk) status = addBlock(*table, kAnonymous, block, id);
    AcUtUi::rxErrorMsg(status);
    return status;
}

Acad::ErrorStatus AcUtSymTbl::defineNewAnonymousBlock(AcDbBlockTableRecord*& block,
                                                      AcDbDatabase* db) {
    AcDbObjectId id;
    return defineNewAnonymousBlock(block, id, db);
}

Acad::ErrorStatus AcUtSymTbl::defineNewAnonymousBlock(AcDbObjectId& id, AcDbDatabase* db) {
    AcDbBlockTableRecord* block = nullptr;
    const Acad::ErrorStatus status = defineNewAnonymousBlock(block, id, db);
    return closeDefined(status, block);
}

Acad::ErrorStatus AcUtSymTbl::openBlockDef(const wchar_t* name, AcDbBlockTableRecord*& block,
                                           AcDb::OpenMode mode, AcDbDatabase* db) {
    block = nullptr;
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus status = openBlockTable(db, AcDb::kForRead, table);
    const Closing closing(table);
    if (status == Acad::eOk) status = table->getAt(name, block, mode);
    if (status != Acad::eKeyNotFound) AcUtUi::rxErrorMsg(status);
    return status;
}

AcDbBlockTableRecord* AcUtSymTbl::openCurrentSpaceBlock(AcDb::OpenMode mode, AcDbDatabase* db) {
    db = frame::orWorking(db);
    AcDbBlockTableRecord* block = nullptr;
    if (db == nullptr || acdbOpenObject(block, db->currentSpaceId(), mode) != Acad::eOk)
        return nullptr;
    return block;
}

bool AcUtSymTbl::BlockIsEmpty(AcDbBlockTableRecord* block) {
    if (block == nullptr) return true;
    const auto entities = iterate(*block);
    return entities == nullptr || entities->done();
}
