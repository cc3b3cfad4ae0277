#include "db/residence.h"

#include "db/block_table.h"
#include "db/database.h"
#include "db/entity.h"
#include "db/object_data.h"
#include "db/subentities.h"
#include "db/undo_journal.h"

namespace headless {

AcDbStub* Residence::find(const AcDbDatabase& db, Adesk::UInt64 handle) {
    return db.handles_.find(handle);
}

AcDbStub* Residence::announce(AcDbDatabase& db, Adesk::UInt64 handle) {
    return handle == 0 ? nullptr : &db.handles_.findOrMake(handle);
}

void Residence::exchangeHandles(AcDbObjectId a, AcDbObjectId b) {
    a.database()->handles_.exchange(*static_cast<AcDbStub*>(a), *static_cast<AcDbStub*>(b));
}

Adesk::UInt64 Residence::reserveHandle(AcDbDatabase& db) { return db.handles_.make().handle; }

void Residence::raiseHandleSeed(AcDbDatabase& db, Adesk::UInt64 seed) {
    db.handles_.raiseSeed(seed);
}

AcDbStub* Residence::vacantStub(AcDbDatabase& db, Adesk::UInt64 handle) {
    AcDbStub* const wanted = announce(db, handle);
    const bool vacant =
        wanted != nullptr && wanted->object == nullptr && !wanted->permanentlyErased;
    return vacant ? wanted : &db.handles_.make();
}

void Residence::occupy(AcDbStub& stub, AcDbObject& object, AcDbObjectId owner) {
    stub.object = &object;
    object.stub_ = &stub;
    if (!owner.isNull()) object.ownerId_ = owner;
}

void Residence::vacate(AcDbStub& stub) {
    noteChange(*stub.object);
    if (stub.inFile && !stub.database->ending_)
        stub.database->deletedRecords_.push_back(stub.object->source_);
    stub.object = nullptr;
    stub.inFile = false;
    stub.permanentlyErased = true;
    stub.readers = 0;
    stub.openForWrite = false;
    stub.openForNotify = false;
}

AcDbObjectId Residence::admit(AcDbDatabase& db, std::unique_ptr<AcDbObject> object,
                              AcDbObjectId owner, Adesk::UInt64 handle) {
    AcDbStub* const stub = vacantStub(db, handle);
    AcDbObject& admitted = *object.release();
    occupy(*stub, admitted, owner);
    admitted.flags_ = 0;
    admitted.undoStep_ = 0; // Its changes before it was resident were noted nowhere.
    stub->inFile = admitted.source_.length != 0;
    return AcDbObjectId(stub);
}

AcDbObjectId Residence::admitRecord(AcDbSymbolTable& table,
                                    std::unique_ptr<AcDbSymbolTableRecord> record,
                                    Adesk::UInt64 handle) {
    AcDbSymbolTableRecord& admitted = *record;
    const AcDbObjectId id = admit(*table.database(), std::move(record), table.objectId(), handle);
    table.append(admitted);
    return id;
}

AcDbObjectId Residence::admitEntity(AcDbBlockTableRecord& block, std::unique_ptr<AcDbEntity> entity,
                                    Adesk::UInt64 handle) {
    const AcDbObjectId id = admit(*block.database(), std::move(entity), block.objectId(), handle);
    block.entities_.push_back(id);
    noteChange(block);
    return id;
}

Acad::ErrorStatus Residence::enter(AcDbDatabase& db, AcDbObject& object, AcDbObjectId owner) {
    if (object.stub_ != nullptr) return Acad::eAlreadyInDb;
    AcDbStub& stub = db.handles_.make();
    occupy(stub, object, owner);
    stub.openForWrite = true;
    object.flags_ |= AcDbObject::kNew | AcDbObject::kChanged | AcDbObject::kReshaped;
    ObjectData::dropForeignSource(object);
    UndoJournal::noteNew(object);
    if (auto* const parts = dynamic_cast<SubentityOwner*>(&object))
        parts->subentities().enterDatabase(static_cast<AcDbEntity&>(object));
    return Acad::eOk;
}

void Residence::setOwner(AcDbObject& object, AcDbObjectId owner) {
    noteForUndo(object);
    object.ownerId_ = owner;
}

bool Residence::isChanged(const AcDbObject& object) {
    return object.source_.length == 0 || (object.flags_ & AcDbObject::kChanged) != 0;
}

bool Residence::isReshaped(const AcDbObject& object) {
    return (object.flags_ & AcDbObject::kReshaped) != 0;
}

Residence::Record Residence::record(const AcDbObject& object) {
    const bool inFile = object.stub_ != nullptr && object.stub_->inFile;
    const bool changed = (object.flags_ & AcDbObject::kChanged) != 0;
    if (inFile) return changed ? Record::kChanged : Record::kAsRead;
    return changed ? Record::kNew : Record::kImplied;
}

const std::vector<SourceSpan>& Residence::deletedRecords(const AcDbDatabase& db) {
    return db.deletedRecords_;
}

std::vector<AcDbObjectId> Residence::residents(const AcDbDatabase& db) {
    std::vector<AcDbObjectId> ids;
    ids.reserve(db.handles_.size());
    db.handles_.forEach([&](AcDbStub& stub) {
        if (stub.object != nullptr) ids.emplace_back(&stub);
    });
    return ids;
}

std::vector<OpenObject> Residence::openObjects(const AcDbDatabase& db) {
    std::vector<OpenObject> open;
    db.handles_.forEach([&](AcDbStub& stub) {
        if (stub.readers == 0 && !stub.openForWrite && !stub.openForNotify) return;
        const AcDb::OpenMode mode = stub.openForWrite  ? AcDb::kForWrite
                                    : stub.readers > 0 ? AcDb::kForRead
                                                       : AcDb::kForNotify;
        open.push_back({AcDbObjectId(&stub), stub.object->isA(), mode, stub.readers});
    });
    return open;
}

std::size_t Residence::openCount(const AcDbDatabase& db) { return openObjects(db).size(); }

} // namespace headless
