#include "OrnBoard/blocks.h"

#include <dbents.h>

#include "frame/ac_ut_db.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "support/session_fixture.h"

namespace {

class BoardBlocks : public test_support::SessionTest {
protected:
    AcDbObjectId addSquare(const ACHAR* layer) {
        return addPolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}}, true, layer);
    }

    static CString handleOf(AcDbObjectId id) {
        CString text;
        AcUtDb::objIdToHandleStr(id, text);
        return text;
    }

    AcDbObjectId find(const AcDbHandle& handle) const {
        AcDbObjectId id;
        database()->getAcDbObjectId(id, false, handle);
        return id;
    }
};

TEST_F(BoardBlocks, AreMadeOfLayersAndHandles) {
    const AcDbObjectId wall = addSquare(L"WALL");
    addSquare(L"OTHER");
    const AcDbObjectId also = addSquare(L"OTHER");
    const board::BlockMade made = board::makeBlock(
        database(),
        {.name = L"B", .layers = {L"wall"}, .handles = {handleOf(also), handleOf(wall)}});
    EXPECT_EQ(made.problem, L"");
    EXPECT_EQ(made.entities, 2);
    EXPECT_TRUE(made.reference.isNull());
    EXPECT_FALSE(wall.isErased());

    const board::BlockInserted inserted = board::insertBlock(
        database(), {.name = L"b", .position = AcGePoint3d(5, 0, 0), .layer = L"NEW"});
    EXPECT_EQ(inserted.problem, L"");
    const ReadHandle<AcDbBlockReference> reference(find(inserted.reference));
    ASSERT_TRUE(reference);
    AcDbExtents extents;
    ASSERT_EQ(reference->getGeomExtents(extents), Acad::eOk);
    EXPECT_EQ(extents.minPoint(), AcGePoint3d(5, 0, 0));
    EXPECT_EQ(AcUtSymTbl::GetStyleName(reference->layerId()), L"NEW");
}

TEST_F(BoardBlocks, MayTakeThePlaceOfTheirEntities) {
    const AcDbObjectId wall = addSquare(L"WALL");
    const board::BlockMade made = board::makeBlock(database(), {.name = L"B",
                                                                .layers = {L"WALL"},
                                                                .base = AcGePoint3d(3, 4, 0),
                                                                .replace = true,
                                                                .layer = L"REFS"});
    EXPECT_TRUE(wall.isErased());
    const ReadHandle<AcDbBlockReference> reference(find(made.reference));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->position(), AcGePoint3d(3, 4, 0));
    AcDbExtents extents;
    ASSERT_EQ(reference->getGeomExtents(extents), Acad::eOk);
    EXPECT_EQ(extents.maxPoint(), AcGePoint3d(10, 10, 0)) << "it looks as before";
}

TEST_F(BoardBlocks, TellWhyNothingWasDone) {
    const AcDbObjectId wall = addSquare(L"WALL");
    ASSERT_EQ(board::makeBlock(database(), {.name = L"TAKEN", .layers = {L"WALL"}}).problem, L"");
    const struct {
        const char* name;
        board::BlockRequest request;
    } cases[] = {
        {"taken, in any case", {.name = L"taken", .layers = {L"WALL"}, .replace = true}},
        {"no name", {.layers = {L"WALL"}, .replace = true}},
        {"a name that is not allowed", {.name = L"a/b", .layers = {L"WALL"}, .replace = true}},
        {"a name of the host's", {.name = L"*U", .layers = {L"WALL"}, .replace = true}},
        {"nothing chosen", {.name = L"B", .layers = {L"NONE"}, .replace = true}},
        {"unknown handle",
         {.name = L"B", .layers = {L"WALL"}, .handles = {L"FFFF"}, .replace = true}},
        {"no entity",
         {.name = L"B", .handles = {handleOf(database()->layerZero())}, .replace = true}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NE(board::makeBlock(database(), c.request).problem, L"");
        EXPECT_FALSE(wall.isErased());
    }
    EXPECT_NE(board::makeBlock(nullptr, cases[0].request).problem, L"");
    EXPECT_NE(board::insertBlock(database(), {.name = L"NONE"}).problem, L"");
    EXPECT_NE(board::insertBlock(database(), {.name = ACDB_MODEL_SPACE}).problem, L"");
    EXPECT_NE(board::insertBlock(nullptr, {.name = L"TAKEN"}).problem, L"");
    EXPECT_EQ(session().output(), L"");
}

} // namespace
