// Opening, closing, erasing: who may have an object when.
#include "core_support.h"

#include "db/layer_table.h"
#include "db/line.h"

using namespace coretest;

namespace {

class Opening : public CoreTest {
protected:
    Acad::ErrorStatus tryOpen(AcDb::OpenMode mode, bool erased = false, bool locked = false) {
        AcDbObject* object = nullptr;
        const auto status = acdbOpenAcDbObject(object, id, mode, erased, locked);
        EXPECT_EQ(object != nullptr, status == Acad::eOk);
        if (object != nullptr) object->close();
        return status;
    }

    AcDbObjectId id = addPoint(db);
};

TEST_F(Opening, RefusesWhatOpenersExclude) {
    const auto notified = Acad::eWasOpenForNotify;
    const struct {
        const char* name;
        std::vector<AcDb::OpenMode> before;
        Acad::ErrorStatus read, write, notify;
    } cases[] = {
        {"closed", {}, Acad::eOk, Acad::eOk, Acad::eOk},
        {"a reader", {AcDb::kForRead}, Acad::eOk, Acad::eWasOpenForRead, Acad::eOk},
        {"a writer", {AcDb::kForWrite}, Acad::eWasOpenForWrite, Acad::eWasOpenForWrite, Acad::eOk},
        {"notified", {AcDb::kForNotify}, notified, notified, notified},
        {"a writer and notified",
         {AcDb::kForWrite, AcDb::kForNotify},
         notified,
         notified,
         notified},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbObject* object = nullptr;
        for (const AcDb::OpenMode mode : c.before)
            ASSERT_EQ(acdbOpenAcDbObject(object, id, mode), Acad::eOk);
        AcDbObject* const holder = object;
        EXPECT_EQ(tryOpen(AcDb::kForRead), c.read);
        EXPECT_EQ(tryOpen(AcDb::kForWrite), c.write);
        EXPECT_EQ(tryOpen(AcDb::kForNotify), c.notify);
        for (std::size_t i = 0; i < c.before.size(); ++i)
            EXPECT_EQ(holder->close(), Acad::eOk);
        EXPECT_EQ(Residence::openCount(db), 0U);
    }
}

TEST_F(Opening, EndsAt256Readers) {
    AcDbObject* object = nullptr;
    for (int reader = 0; reader < 256; ++reader)
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk);
    AcDbObject* const holder = object;
    EXPECT_EQ(tryOpen(AcDb::kForRead), Acad::eAtMaxReaders);
    EXPECT_EQ(holder->upgradeOpen(), Acad::eHadMultipleReaders);
    for (int reader = 0; reader < 256; ++reader)
        ASSERT_EQ(holder->close(), Acad::eOk);
    EXPECT_EQ(holder->close(), Acad::eInvalidOpenState);
}

TEST_F(Opening, KnowsWhatBecameOfTheObject) {
    const AcDbObjectId announced(Residence::announce(db, 0xABCDEF));
    const AcDbObjectId deleted = addPoint(db);
    destroy(deleted);
    erase(id);

    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(acdbOpenAcDbObject(object, announced, AcDb::kForRead), Acad::eNullObjectPointer);
    EXPECT_EQ(acdbOpenAcDbObject(object, deleted, AcDb::kForRead, true), Acad::ePermanentlyErased);
    EXPECT_EQ(tryOpen(AcDb::kForRead), Acad::eWasErased);
    EXPECT_EQ(tryOpen(AcDb::kForRead, true), Acad::eOk);
    EXPECT_EQ(tryOpen(AcDb::kForWrite, true), Acad::eOk);
}

TEST_F(Opening, WrongKindIsLeftClosed) {
    AcDbLine* line = reinterpret_cast<AcDbLine*>(1);
    EXPECT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eNotThatKindOfClass);
    EXPECT_EQ(line, nullptr);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(entity, db.layerZero(), AcDb::kForRead),
              Acad::eNotThatKindOfClass);
    EXPECT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(entity->close(), Acad::eOk);
}

TEST_F(Opening, LockedLayerStopsWritersOfItsEntities) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(db.layerZero(), AcDb::kForWrite);
    layer->setIsLocked(true);

    EXPECT_EQ(tryOpen(AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(tryOpen(AcDb::kForWrite), Acad::eOnLockedLayer);
    EXPECT_EQ(tryOpen(AcDb::kForWrite, false, true), Acad::eOk);
    AcDbObjectPointer<AcDbEntity> reader(id);
    EXPECT_EQ(reader->upgradeOpen(), Acad::eOnLockedLayer);
    reader.close();

    layer->setIsLocked(false);
    EXPECT_EQ(tryOpen(AcDb::kForWrite), Acad::eOk);
}

TEST_F(Opening, UpgradesAndDowngrades) {
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(object->downgradeOpen(), Acad::eWasNotOpenForWrite);
    EXPECT_EQ(object->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(object->upgradeOpen(), Acad::eWasOpenForWrite);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(object->downgradeOpen(), Acad::eOk);
    EXPECT_FALSE(object->isWriteEnabled());
    EXPECT_TRUE(object->isReadEnabled());
    EXPECT_EQ(object->close(), Acad::eOk);
    EXPECT_EQ(object->upgradeOpen(), Acad::eNotOpenForRead);

    bool wasWritable = true;
    ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForNotify), Acad::eOk);
    EXPECT_EQ(object->upgradeFromNotify(wasWritable), Acad::eOk);
    EXPECT_FALSE(wasWritable);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(object->downgradeToNotify(wasWritable), Acad::eOk);
    EXPECT_FALSE(object->isWriteEnabled());
    EXPECT_EQ(object->close(), Acad::eOk);

    AcDbPoint fresh;
    EXPECT_EQ(fresh.close(), Acad::eNullObjectId);
    EXPECT_EQ(fresh.upgradeOpen(), Acad::eNotInDatabase);
}

TEST_F(Opening, ErasesAndBringsBack) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    EXPECT_EQ(object->erase(false), Acad::eWasNotErased);
    EXPECT_EQ(object->erase(), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eWasErased);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(object->erase(false), Acad::eOk);
    EXPECT_FALSE(id.isErased());
}

TEST_F(Opening, CountsChangesByTheWriter) {
    const struct {
        const char* name;
        void (*act)(AcDbPoint&);
        bool modified;
    } cases[] = {
        {"looking", [](AcDbPoint& point) { (void)point.position(); }, false},
        {"moving", [](AcDbPoint& point) { point.setPosition(AcGePoint3d(1, 2, 3)); }, true},
        {"declared", [](AcDbPoint& point) { point.assertWriteEnabled(true, false); }, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForWrite);
        EXPECT_FALSE(point->isModified());
        c.act(*point);
        EXPECT_EQ(point->isModified(), c.modified);
    }
}

TEST_F(Opening, ReportsMembersCalledOnClosedObjects) {
    std::vector<std::string> violations;
    state.openViolation = [&](const AcDbObject& object, const char* needed) {
        EXPECT_EQ(object.objectId(), id);
        violations.emplace_back(needed);
    };
    AcDbPoint* point = nullptr;
    ASSERT_EQ(acdbOpenObject(point, id), Acad::eOk);
    (void)point->position();
    EXPECT_THAT(violations, testing::IsEmpty());
    point->setPosition({1, 1, 1});
    EXPECT_THAT(violations, testing::ElementsAre("writing"));
    point->close();
    (void)point->position();
    EXPECT_THAT(violations, testing::ElementsAre("writing", "reading"));
}

using OpeningDeathTest = Opening;

TEST_F(OpeningDeathTest, AbortsWhenNobodyHandlesAViolation) {
    const auto* const point = Residence::peek<AcDbPoint>(id);
    EXPECT_DEATH((void)point->position(), "AcDbPoint .* is used but not open for reading");
}

TEST_F(Opening, SmartPointerSharesWhatIsOpen) {
    {
        AcDbObjectPointer<AcDbPoint> reader(id);
        const AcDbSmartObjectPointer<AcDbPoint> writer(id, AcDb::kForWrite);
        ASSERT_EQ(writer.openStatus(), Acad::eOk);
        EXPECT_EQ(writer->setPosition({5, 0, 0}), Acad::eOk);
        const AcDbSmartObjectPointer<AcDbPoint> second(id, AcDb::kForWrite);
        EXPECT_EQ(second->position().x, 5.0);
    }
    AcDbObjectPointer<AcDbPoint> reader(id);
    AcDbObjectPointer<AcDbPoint> other(id);
    EXPECT_EQ(AcDbSmartObjectPointer<AcDbPoint>(id, AcDb::kForWrite).openStatus(),
              Acad::eHadMultipleReaders);
    EXPECT_EQ(AcDbSmartObjectPointer<AcDbLine>(id, AcDb::kForWrite).openStatus(),
              Acad::eNotThatKindOfClass);
}

TEST_F(Opening, PointerDeletesWhatNeverReachedADatabase) {
    AcDbObjectPointer<AcDbPoint> point;
    EXPECT_EQ(point.openStatus(), Acad::eNullObjectPointer);
    EXPECT_EQ(point.create(), Acad::eOk);
    EXPECT_EQ(point->setPosition({1, 0, 0}), Acad::eOk);
    AcDbPoint* released = nullptr;
    EXPECT_EQ(point.release(released), Acad::eOk);
    EXPECT_EQ(point.acquire(released), Acad::eOk);
    EXPECT_EQ(released, nullptr);
}

} // namespace
