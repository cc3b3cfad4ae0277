#include "frame/ac_ut_sym_tbl.h"
#include "frame/current_space.h"
#include "frame_fixture.h"

namespace {

class BlockDefinitions : public FrameTest {
protected:
    std::wstring nameOf(AcDbObjectId id) {
        CString name;
        EXPECT_EQ(AcUtSymTbl::symbolIdToName(id, name), Acad::eOk);
        return std::wstring(name);
    }
    bool isEmpty(AcDbObjectId id) {
        AcDbBlockTableRecord* block = nullptr;
        EXPECT_EQ(acdbOpenObject(block, id, AcDb::kForRead), Acad::eOk);
        const Closing closing(block);
        return AcUtSymTbl::BlockIsEmpty(block);
    }
};

TEST_F(BlockDefinitions, AreMadeNew) {
    AcDbBlockTableRecord* block = nullptr;
    AcDbObjectId id;
    ASSERT_EQ(AcUtSymTbl::defineNewBlock(L"DOOR", block, id, database()), Acad::eOk);
    EXPECT_TRUE(block->isWriteEnabled());
    EXPECT_EQ(block->objectId(), id);
    const ACHAR* path = nullptr;
    block->pathName(path);
    EXPECT_STREQ(path, L"");
    block->close();
    EXPECT_EQ(nameOf(id), L"DOOR");
    EXPECT_EQ(printed(), L"");
}

TEST_F(BlockDefinitions, OfAKnownNameAreEmptiedAndKept) {
    AcDbObjectId id;
    ASSERT_EQ(AcUtSymTbl::defineNewBlock(L"DOOR", id, database()), Acad::eOk);
    const AcDbObjectId first = addLine(L"DOOR");
    const AcDbObjectId second = addLine(L"DOOR");
    EXPECT_FALSE(isEmpty(id));

    AcDbBlockTableRecord* block = nullptr;
    AcDbObjectId again;
    ASSERT_EQ(AcUtSymTbl::defineNewBlock(L"door", block, again, nullptr), Acad::eOk);
    EXPECT_EQ(again, id);
    EXPECT_TRUE(block->isWriteEnabled());
    EXPECT_TRUE(AcUtSymTbl::BlockIsEmpty(block));
    block->close();
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(second.isErased());

    ASSERT_EQ(AcUtSymTbl::defineNewBlock(L"DOOR", block, database()), Acad::eOk);
    EXPECT_EQ(block->objectId(), id);
    block->close();
}

TEST_F(BlockDefinitions, AreRefusedWithAMessage) {
    AcDbBlockTableRecord* block = nullptr;
    AcDbObjectId id;
    EXPECT_NE(AcUtSymTbl::defineNewBlock(L"a|b*c", block, id, database()), Acad::eOk);
    EXPECT_EQ(block, nullptr);
    EXPECT_THAT(printed(), testing::StartsWith(L"\nARX ERROR: e"));

    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(database()->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(AcUtSymTbl::defineNewAnonymousBlock(block, id, database()), Acad::eWasOpenForRead);
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(printed(), L"\nARX ERROR: eWasOpenForRead");
    table->close();
}

TEST_F(BlockDefinitions, WithoutANameGetOneOfTheHosts) {
    AcDbBlockTableRecord* block = nullptr;
    AcDbObjectId first, second;
    ASSERT_EQ(AcUtSymTbl::defineNewAnonymousBlock(block, first, database()), Acad::eOk);
    EXPECT_TRUE(block->isWriteEnabled());
    block->close();
    ASSERT_EQ(AcUtSymTbl::defineNewAnonymousBlock(second, database()), Acad::eOk);
    EXPECT_NE(first, second);
    EXPECT_THAT(nameOf(first), testing::StartsWith(L"*U"));
    EXPECT_NE(nameOf(first), nameOf(second));
    ASSERT_EQ(AcUtSymTbl::defineNewAnonymousBlock(block, database()), Acad::eOk);
    block->close();
}

TEST_F(BlockDefinitions, OpenByName) {
    AcDbBlockTableRecord* block = nullptr;
    EXPECT_EQ(AcUtSymTbl::openBlockDef(L"DOOR", block, AcDb::kForRead, database()),
              Acad::eKeyNotFound);
    EXPECT_EQ(printed(), L"");

    ASSERT_EQ(AcUtSymTbl::openBlockDef(ACDB_MODEL_SPACE, block, AcDb::kForWrite, database()),
              Acad::eOk);
    EXPECT_TRUE(block->isWriteEnabled());
    AcDbBlockTableRecord* other = nullptr;
    EXPECT_EQ(AcUtSymTbl::openBlockDef(ACDB_MODEL_SPACE, other, AcDb::kForRead, nullptr),
              Acad::eWasOpenForWrite);
    EXPECT_EQ(printed(), L"\nARX ERROR: eWasOpenForWrite");
    EXPECT_EQ(AcUtSymTbl::openCurrentSpaceBlock(AcDb::kForRead, database()), nullptr);
    block->close();

    block = AcUtSymTbl::openCurrentSpaceBlock(AcDb::kForRead, nullptr);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->objectId(), database()->modelSpaceId());
    block->close();
}

TEST_F(BlockDefinitions, CountAsEmptyWhenAllEntitiesAreErased) {
    const AcDbObjectId id = addLine();
    EXPECT_FALSE(isEmpty(database()->modelSpaceId()));
    {
        const WriteHandle<AcDbLine> line(id);
        line->erase();
    }
    EXPECT_TRUE(isEmpty(database()->modelSpaceId()));
}

TEST_F(BlockDefinitions, CurrentSpaceFollowsTheDatabase) {
    EXPECT_EQ(Common::CurrentSpaceId(nullptr), database()->modelSpaceId());
    ASSERT_EQ(database()->setCurrentSpaceId(database()->paperSpaceId()), Acad::eOk);
    EXPECT_EQ(Common::CurrentSpaceId(database()), database()->paperSpaceId());
    EXPECT_EQ(Common::CurrentSpaceId(nullptr), database()->paperSpaceId());
}

TEST_F(BlockDefinitions, CurrentSpaceOfADatabaseWithoutBlocksIsNull) {
    AcDbDatabase empty(false, true);
    EXPECT_TRUE(Common::CurrentSpaceId(&empty).isNull());
    EXPECT_EQ(printed(), L"\n块表打开错误！");
}

} // namespace
