#include "frame/ac_ut_sym_tbl.h"
#include "frame_fixture.h"

namespace {

class PlacingEntities : public FrameTest {
protected:
    std::unique_ptr<AcDbLine> newLine() {
        return std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 5, 0));
    }
    int countIn(AcDbObjectId spaceId) {
        const ReadHandle<AcDbBlockTableRecord> space(spaceId);
        AcDbBlockTableRecordIterator* iterator = nullptr;
        EXPECT_EQ(space->newIterator(iterator), Acad::eOk);
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(iterator);
        int count = 0;
        for (; !entities->done(); entities->step())
            ++count;
        return count;
    }
};

TEST_F(PlacingEntities, AnswersOppositely) {
    AcDbLine* line = newLine().release();
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpace(line), Acad::eInvalidInput);
    EXPECT_TRUE(line->objectId().isValid());
    EXPECT_EQ(line->ownerId(), database()->modelSpaceId());
    EXPECT_TRUE(line->isWriteEnabled());
    EXPECT_EQ(line->close(), Acad::eOk);
    EXPECT_EQ(countIn(database()->modelSpaceId()), 1);
    EXPECT_EQ(printed(), L"");

    EXPECT_EQ(AcUtSymTbl::addToCurrentSpace(nullptr), Acad::eOk);
    EXPECT_EQ(printed(), L"\nARX ERROR: eNullEntityPointer");
}

TEST_F(PlacingEntities, GoesToTheSpaceOfTheDatabaseGiven) {
    ASSERT_EQ(database()->setCurrentSpaceId(database()->paperSpaceId()), Acad::eOk);
    AcDbLine* line = newLine().release();
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpace(line, database()), Acad::eInvalidInput);
    EXPECT_EQ(line->ownerId(), database()->paperSpaceId());
    line->close();

    AcDbDatabase other(true, true);
    line = newLine().release();
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpace(line, &other), Acad::eInvalidInput);
    EXPECT_EQ(line->database(), &other);
    line->close();
}

TEST_F(PlacingEntities, LeavesARefusedEntityToTheCaller) {
    const ReadHandle<AcDbBlockTableRecord> space(database()->modelSpaceId());
    const std::unique_ptr<AcDbLine> line = newLine();
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpace(line.get()), Acad::eOk);
    EXPECT_EQ(printed(), L"\nARX ERROR: eWasOpenForRead");
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpaceAndClose(line.get()), Acad::eOk);
    EXPECT_TRUE(line->objectId().isNull());
}

TEST_F(PlacingEntities, AndClosingDeletesWhatWasAppended) {
    const AcDbObjectId before = addLine();
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpaceAndClose(newLine().release()), Acad::eInvalidInput);
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpaceAndClose(newLine().release(), database()),
              Acad::eInvalidInput);
    EXPECT_EQ(AcUtSymTbl::addToCurrentSpaceAndClose(nullptr), Acad::eOk);
    // The drawing goes on: the deleted ones are passed over, others come and stay.
    const AcDbObjectId after = addLine();
    EXPECT_EQ(countIn(database()->modelSpaceId()), 2);
    EXPECT_TRUE(ReadHandle<AcDbLine>(before));
    EXPECT_TRUE(ReadHandle<AcDbLine>(after));
}

TEST_F(PlacingEntities, TellsLockedAndOffLayers) {
    changeLayer(L"LOCKED", [](AcDbLayerTableRecord& layer) { layer.setIsLocked(true); });
    changeLayer(L"OFF", [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
    constexpr const wchar_t* kMessage = L"\nSelected entity is on a locked layer.";
    struct Case {
        const wchar_t* layer;
        bool locked, off;
    };
    for (const Case& c :
         {Case{L"0", false, false}, {L"LOCKED", true, false}, {L"OFF", false, true}}) {
        const std::unique_ptr<AcDbLine> line = newLine();
        line->setDatabaseDefaults(database());
        line->setLayer(c.layer);
        EXPECT_EQ(AcUtSymTbl::isOnLockedLayer(line.get(), false), c.locked);
        EXPECT_EQ(AcUtSymTbl::isOffLayer(line.get(), false), c.off);
        EXPECT_EQ(printed(), L"");
        AcUtSymTbl::isOnLockedLayer(line.get(), true);
        EXPECT_EQ(printed(), c.locked ? kMessage : L"");
        AcUtSymTbl::isOffLayer(line.get(), true);
        EXPECT_EQ(printed(), c.off ? kMessage : L"");
    }
}

TEST_F(PlacingEntities, CountsAnEntityThatCannotBeOpenedAsLocked) {
    AcDbObjectId id = addLine();
    EXPECT_FALSE(AcUtSymTbl::isOnLockedLayer(id, true));
    {
        const WriteHandle<AcDbLine> line(id);
        EXPECT_TRUE(AcUtSymTbl::isOnLockedLayer(id, true));
    }
    AcDbObjectId none;
    EXPECT_TRUE(AcUtSymTbl::isOnLockedLayer(none, true));
    EXPECT_EQ(printed(), L"");
}

TEST_F(PlacingEntities, ReportsALayerThatCannotBeOpened) {
    const AcDbObjectId layerId = addLayer(L"BUSY");
    const std::unique_ptr<AcDbLine> line = newLine();
    line->setDatabaseDefaults(database());
    line->setLayer(layerId);
    const WriteHandle<AcDbLayerTableRecord> layer(layerId);
    layer->setIsLocked(true);
    EXPECT_FALSE(AcUtSymTbl::isOnLockedLayer(line.get(), true));
    EXPECT_EQ(printed(), L"\nARX ERROR: eWasOpenForWrite");
}

} // namespace
