// Brackets around changes that belong together, and can be taken back together.
#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "db/object.h"

class AcDbTransactionManager;

/// A bracket that is open, and the objects that were obtained in it.
class AcTransaction : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcTransaction);

    explicit AcTransaction(AcDbTransactionManager& manager) : manager_(manager) {}

    /// As AcDbTransactionManager::getObject; eInvalidInput unless it is the innermost bracket.
    virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id,
                                        AcDb::OpenMode mode = AcDb::kForRead,
                                        bool openErasedObject = false);
    /// Appends the objects that were obtained in this bracket.
    virtual Acad::ErrorStatus getAllObjects(AcDbVoidPtrArray& objects);

private:
    friend class AcDbTransactionManager;

    AcDbTransactionManager& manager_;
    std::vector<AcDbObjectId> held_;
};

/// Opens and closes brackets, which nest.
///
/// Changes inside are made at once, whichever way their objects were opened. Aborting a bracket
/// takes back all that changed since it began in the drawings that were there then; what was added
/// is erased. Ending one leaves its changes to the bracket around it. A bracket outside any command
/// is one step for undoing. Objects that were obtained from a bracket are closed with it, or, when
/// it ends within another, with that; programs do not close them.
class AcDbTransactionManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbTransactionManager);

    AcDbTransactionManager() = default;
    AcDbTransactionManager(const AcDbTransactionManager&) = delete;
    AcDbTransactionManager& operator=(const AcDbTransactionManager&) = delete;

    /// The new bracket, which lasts until it is ended or aborted.
    virtual AcTransaction* startTransaction();
    // These are about the innermost bracket; eInvalidInput when none is open.
    virtual Acad::ErrorStatus endTransaction();
    virtual Acad::ErrorStatus abortTransaction();
    /// Opens an object, which stays open with the bracket. One that any bracket has open is the
    /// same again, upgraded where writing is asked for; else as acdbOpenAcDbObject. Null after a
    /// refusal.
    virtual Acad::ErrorStatus getObject(AcDbObject*& object, AcDbObjectId id,
                                        AcDb::OpenMode mode = AcDb::kForRead,
                                        bool openErasedObject = false);
    /// Leaves the closing of a new resident object, which is open for writing, to the bracket; or,
    /// with false, takes it back. eNullObjectPointer, eNotInDatabase, eNotOpenForWrite;
    /// eKeyNotFound for what no bracket has.
    virtual Acad::ErrorStatus addNewlyCreatedDBRObject(AcDbObject* object, bool add = true);
    /// Appends the objects of all brackets, the outermost first.
    virtual Acad::ErrorStatus getAllObjects(AcDbVoidPtrArray& objects);
    /// Asks for what changed in the bracket to be drawn; there is nothing to draw on.
    virtual void queueForGraphicsFlush() {}

    virtual int numActiveTransactions() { return static_cast<int>(open_.size()); }
    virtual int numOpenedObjects() { return static_cast<int>(held_.size()); }
    /// The innermost bracket, or null.
    virtual AcTransaction* topTransaction() { return open_.empty() ? nullptr : open_.back().get(); }

    /// The host's own: lets go of the objects of a drawing that ends.
    void forget(const AcDbDatabase& db);

private:
    void hold(AcDbObjectId id);
    void closeHeld(const AcTransaction& transaction);

    std::vector<std::unique_ptr<AcTransaction>> open_; // The outermost first.
    std::unordered_set<AcDbObjectId> held_;            // Of all of them.
};
