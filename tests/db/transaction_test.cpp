// Transactions: what they hold open, and what they take back.
#include "undo_support.h"

#include "db/transaction_manager.h"

using namespace undotest;

namespace {

class Transactions : public CoreTest {
protected:
    Transactions() { db.disableUndoRecording(false); }

    AcDbTransactionManager& manager() { return *db.transactionManager(); }
    Telling told() { return Teller(db).tell(); }
    AcDbObject* get(AcDbObjectId id, AcDb::OpenMode mode, Acad::ErrorStatus wanted = Acad::eOk) {
        AcDbObject* object = nullptr;
        EXPECT_EQ(manager().getObject(object, id, mode), wanted);
        EXPECT_EQ(object == nullptr, wanted != Acad::eOk);
        return object;
    }
    static void move(AcDbObject* point) { AcDbPoint::cast(point)->setPosition({7, 8, 9}); }
};

TEST_F(Transactions, HoldWhatWasObtainedUntilTheOutermostEnds) {
    const AcDbObjectId outer = addPoint(db);
    const AcDbObjectId inner = addPoint(db);
    AcTransaction* const first = manager().startTransaction();
    AcDbObject* const point = get(outer, AcDb::kForRead);
    manager().startTransaction();
    EXPECT_EQ(get(outer, AcDb::kForWrite), point) << "the same, upgraded";
    EXPECT_TRUE(point->isWriteEnabled());
    get(inner, AcDb::kForRead);
    AcDbObject* refused = point;
    EXPECT_EQ(first->getObject(refused, inner), Acad::eInvalidInput) << "not the innermost";
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(manager().numOpenedObjects(), 2);
    manager().endTransaction();
    EXPECT_EQ(Residence::openCount(db), 2U);
    AcDbVoidPtrArray objects;
    EXPECT_EQ(manager().topTransaction()->getAllObjects(objects), Acad::eOk);
    EXPECT_EQ(objects.length(), 2) << "the inner one's are the outer one's now";
    manager().endTransaction();
    EXPECT_EQ(Residence::openCount(db), 0U);
    EXPECT_EQ(manager().numOpenedObjects(), 0);
}

TEST_F(Transactions, AbortingClosesTakesBackAndErases) {
    const AcDbObjectId kept = addPoint(db);
    AcDbDatabase aside; // It records nothing by itself.
    const AcDbObjectId there = addPoint(aside);
    const Telling before = told();
    const Telling beforeThere = Teller(aside).tell();
    manager().startTransaction();
    move(get(kept, AcDb::kForWrite));
    manager().startTransaction();
    move(get(there, AcDb::kForWrite));
    auto* const fresh = new AcDbPoint;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(fresh);
    }
    const AcDbObjectId added = fresh->objectId();
    EXPECT_EQ(manager().addNewlyCreatedDBRObject(fresh), Acad::eOk);
    get(kept, AcDb::kForWrite)->erase();
    get(kept, AcDb::kForRead, Acad::eWasErased);
    EXPECT_EQ(manager().abortTransaction(), Acad::eOk);
    EXPECT_TRUE(added.isErased());
    expectAsTold(aside, beforeThere);
    EXPECT_EQ(Residence::openCount(aside), 0U);
    EXPECT_EQ(Residence::openCount(db), 1U) << "what the outer one obtained";
    EXPECT_EQ(AcDbPoint::cast(get(kept, AcDb::kForWrite))->position(), AcGePoint3d(7, 8, 9));
    EXPECT_EQ(manager().numActiveTransactions(), 1);
    EXPECT_EQ(manager().abortTransaction(), Acad::eOk);
    expectAsTold(db, before);
    EXPECT_FALSE(db.undoJournal()->redo()) << "it never was";
}

TEST_F(Transactions, AreOneStepOutsideCommands) {
    const Telling empty = told();
    addPoint(db);
    const Telling one = told();
    manager().startTransaction();
    addPoint(db);
    manager().startTransaction();
    addPoint(db);
    EXPECT_EQ(db.undoJournal()->undo(9).size(), 2U) << "nothing from before the innermost";
    addPoint(db);
    manager().endTransaction();
    addPoint(db);
    manager().endTransaction();
    addPoint(db);
    db.undoJournal()->undo(2);
    expectAsTold(db, one);
    db.undoJournal()->undo(1);
    expectAsTold(db, empty);
}

TEST_F(Transactions, RefuseWhatTheyCannotDo) {
    const AcDbObjectId point = addPoint(db);
    AcDbPoint loose;
    EXPECT_EQ(manager().endTransaction(), Acad::eInvalidInput);
    EXPECT_EQ(manager().abortTransaction(), Acad::eInvalidInput);
    EXPECT_EQ(manager().addNewlyCreatedDBRObject(&loose), Acad::eInvalidInput);
    get(point, AcDb::kForRead, Acad::eInvalidInput);
    manager().startTransaction();
    AcDbObjectPointer<AcDbPoint> reader(point);
    get(point, AcDb::kForWrite, Acad::eWasOpenForRead);
    const struct {
        const char* name;
        AcDbObject* object;
        bool add;
        Acad::ErrorStatus status;
    } cases[] = {
        {"no object", nullptr, true, Acad::eNullObjectPointer},
        {"in no drawing", &loose, true, Acad::eNotInDatabase},
        {"open for reading", reader.object(), true, Acad::eNotOpenForWrite},
        {"none of its objects", reader.object(), false, Acad::eKeyNotFound},
    };
    for (const auto& c : cases)
        EXPECT_EQ(manager().addNewlyCreatedDBRObject(c.object, c.add), c.status) << c.name;
    {
        AcDbDatabase gone;
        get(addPoint(gone), AcDb::kForRead);
    }
    EXPECT_EQ(manager().numOpenedObjects(), 0) << "its drawing ended";
    manager().endTransaction();
}

} // namespace
