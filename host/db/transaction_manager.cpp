#include "db/transaction_manager.h"

#include <algorithm>

#include "db/database.h"
#include "db/open.h"
#include "db/residence.h"
#include "db/state.h"
#include "db/undo_journal.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcTransaction, AcRxObject)
ACRX_CONS_DEFINE_MEMBERS(AcDbTransactionManager, AcRxObject, 0)

using headless::Residence;
using headless::UndoJournal;

namespace {

/// A journal that records while there are transactions, for each drawing that has none.
void makeJournals() {
    for (AcDbDatabase* const db : headless::DbState::current().databases) {
        if (db->undoJournal() != nullptr) continue;
        db->disableUndoRecording(false);
        db->disableUndoRecording(true);
    }
}

template <class Action>
void forEachJournal(Action action) {
    for (AcDbDatabase* const db : headless::DbState::current().databases)
        if (UndoJournal* const journal = db->undoJournal()) action(*journal);
}

} // namespace

Acad::ErrorStatus AcTransaction::getObject(AcDbObject*& object, AcDbObjectId id,
                                           AcDb::OpenMode mode, bool openErasedObject) {
    object = nullptr;
    if (manager_.topTransaction() != this) return Acad::eInvalidInput;
    return manager_.getObject(object, id, mode, openErasedObject);
}

Acad::ErrorStatus AcTransaction::getAllObjects(AcDbVoidPtrArray& objects) {
    for (const AcDbObjectId id : held_) {
        if (AcDbObject* const object = Residence::peek(id)) objects.append(object);
    }
    return Acad::eOk;
}

AcTransaction* AcDbTransactionManager::startTransaction() {
    open_.push_back(std::make_unique<AcTransaction>(*this));
    makeJournals();
    forEachJournal([&](UndoJournal& journal) { journal.beginTransaction(open_.size()); });
    return open_.back().get();
}

Acad::ErrorStatus AcDbTransactionManager::endTransaction() {
    if (open_.empty()) return Acad::eInvalidInput;
    if (open_.size() == 1) {
        closeHeld(*open_.back());
    } else {
        auto& outer = open_[open_.size() - 2]->held_;
        outer.insert(outer.end(), open_.back()->held_.begin(), open_.back()->held_.end());
    }
    forEachJournal([&](UndoJournal& journal) { journal.endTransaction(open_.size()); });
    open_.pop_back();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTransactionManager::abortTransaction() {
    if (open_.empty()) return Acad::eInvalidInput;
    closeHeld(*open_.back());
    forEachJournal([&](UndoJournal& journal) { journal.abortTransaction(open_.size()); });
    open_.pop_back();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTransactionManager::getObject(AcDbObject*& object, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErasedObject) {
    object = nullptr;
    if (open_.empty()) return Acad::eInvalidInput;
    AcDbObject* const known = held_.contains(id) ? Residence::peek(id) : nullptr;
    if (known == nullptr) {
        const auto status = acdbOpenAcDbObject(object, id, mode, openErasedObject);
        if (status == Acad::eOk) hold(id);
        return status;
    }
    if (known->isErased() && !openErasedObject) return Acad::eWasErased;
    if (mode == AcDb::kForWrite && !known->isWriteEnabled()) {
        if (const auto status = known->upgradeOpen(); status != Acad::eOk) return status;
    }
    object = known;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTransactionManager::addNewlyCreatedDBRObject(AcDbObject* object, bool add) {
    if (open_.empty()) return Acad::eInvalidInput;
    if (object == nullptr) return Acad::eNullObjectPointer;
    const AcDbObjectId id = object->objectId();
    if (id.isNull()) return Acad::eNotInDatabase;
    if (add) {
        if (!object->isWriteEnabled()) return Acad::eNotOpenForWrite;
        hold(id);
        return Acad::eOk;
    }
    for (const auto& transaction : open_)
        std::erase(transaction->held_, id);
    return held_.erase(id) != 0 ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbTransactionManager::getAllObjects(AcDbVoidPtrArray& objects) {
    if (open_.empty()) return Acad::eInvalidInput;
    for (const auto& transaction : open_)
        transaction->getAllObjects(objects);
    return Acad::eOk;
}

void AcDbTransactionManager::forget(const AcDbDatabase& db) {
    const auto isOfThat = [&](AcDbObjectId id) { return id.database() == &db; };
    std::erase_if(held_, isOfThat);
    for (const auto& transaction : open_)
        std::erase_if(transaction->held_, isOfThat);
}

void AcDbTransactionManager::hold(AcDbObjectId id) {
    if (held_.insert(id).second) open_.back()->held_.push_back(id);
}

void AcDbTransactionManager::closeHeld(const AcTransaction& transaction) {
    std::for_each(transaction.held_.rbegin(), transaction.held_.rend(), [&](AcDbObjectId id) {
        held_.erase(id);
        if (AcDbObject* const object = Residence::peek(id)) object->close();
    });
}
