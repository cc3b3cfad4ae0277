#include <dbdict.h>
#include <sorttab.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame_fixture.h"

namespace {

class DrawingOrder : public FrameTest {
protected:
    AcDbObjectIdArray ordered(const AcDbObjectIdArray& ids) {
        AcDbObjectIdArray result;
        EXPECT_EQ(AcUtSymTbl::getRelativeDrawOrder(ids, result, 0), Acad::eOk);
        return result;
    }
    static AcDbObjectIdArray list(std::initializer_list<AcDbObjectId> ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId id : ids)
            array.append(id);
        return array;
    }
    void bringToTop(AcDbObjectId id) {
        AcDbSortentsTable* table = AcUtSymTbl::getSortentsTable(list({id}), AcDb::kForWrite);
        ASSERT_NE(table, nullptr);
        EXPECT_TRUE(table->isWriteEnabled());
        EXPECT_EQ(table->moveToTop(list({id})), Acad::eOk);
        table->close();
    }
};

TEST_F(DrawingOrder, TableIsMadeOnceInTheModeAskedFor) {
    const AcDbObjectId id = addLine();
    AcDbObjectId tableId;
    for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite, AcDb::kForRead}) {
        AcDbLine* line = nullptr;
        ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
        AcDbSortentsTable* table = AcUtSymTbl::getSortentsTable(line, mode);
        line->close();
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->isWriteEnabled(), mode == AcDb::kForWrite);
        EXPECT_EQ(table->blockId(), database()->modelSpaceId());
        if (!tableId.isNull()) {
            EXPECT_EQ(table->objectId(), tableId);
        }
        tableId = table->objectId();
        table->close();
    }
    const ReadHandle<AcDbBlockTableRecord> space(database()->modelSpaceId());
    const ReadHandle<AcDbDictionary> extension(space->extensionDictionary());
    EXPECT_TRUE(extension->has(L"ACAD_SORTENTS"));
}

TEST_F(DrawingOrder, TableIsNullWithoutAnEntityInABlock) {
    EXPECT_EQ(AcUtSymTbl::getSortentsTable(static_cast<AcDbEntity*>(nullptr), AcDb::kForRead),
              nullptr);
    AcDbLine loose(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(AcUtSymTbl::getSortentsTable(&loose, AcDb::kForRead), nullptr);
    EXPECT_EQ(AcUtSymTbl::getSortentsTable(AcDbObjectIdArray(), AcDb::kForRead), nullptr);
    EXPECT_EQ(AcUtSymTbl::getSortentsTable(list({AcDbObjectId::kNull}), AcDb::kForRead), nullptr);
}

TEST_F(DrawingOrder, TableIsNullWhenSomethingElseHasItsPlace) {
    const AcDbObjectId id = addLine();
    {
        const WriteHandle<AcDbBlockTableRecord> space(database()->modelSpaceId());
        ASSERT_EQ(space->createExtensionDictionary(), Acad::eOk);
        const WriteHandle<AcDbDictionary> extension(space->extensionDictionary());
        auto other = std::make_unique<AcDbDictionary>();
        AcDbObjectId otherId;
        ASSERT_EQ(extension->setAt(L"ACAD_SORTENTS", other.get(), otherId), Acad::eOk);
        other.release()->close();
    }
    EXPECT_EQ(AcUtSymTbl::getSortentsTable(list({id}), AcDb::kForWrite), nullptr);
}

TEST_F(DrawingOrder, RearrangesIds) {
    const AcDbObjectId a = addLine();
    const AcDbObjectId b = addLine();
    const AcDbObjectId c = addLine();
    const AcDbObjectId onPaper = addLine(ACDB_PAPER_SPACE);
    EXPECT_EQ(ordered(list({c, a, b})), list({a, b, c}));
    bringToTop(a);
    EXPECT_EQ(ordered(list({a, b, c})), list({b, c, a}));
    EXPECT_EQ(ordered(list({a, onPaper, b})), list({b, a}));
    EXPECT_EQ(ordered(list({onPaper, a})), list({onPaper}));
}

TEST_F(DrawingOrder, AppendsNothingWithoutAFirstEntity) {
    const AcDbObjectId a = addLine();
    EXPECT_EQ(ordered(AcDbObjectIdArray()), AcDbObjectIdArray());
    EXPECT_EQ(ordered(list({AcDbObjectId::kNull, a})), AcDbObjectIdArray());
    AcDbObjectIdArray kept = list({a});
    EXPECT_EQ(AcUtSymTbl::getRelativeDrawOrder(list({a}), kept, 0), Acad::eOk);
    EXPECT_EQ(kept, list({a, a}));
}

} // namespace
