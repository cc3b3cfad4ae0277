#include <gmock/gmock.h>

#include "blocks_fixture.h"
#include "frame/ac_ut_db.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DefineBlock : public BlocksTest {
protected:
    Acad::ErrorStatus define(const wchar_t* prefix, const AcDbObjectIdArray& entities,
                             bool keep = true, const AcDbObjectIdArray& top = AcDbObjectIdArray(),
                             const AcDbObjectIdArray& bottom = AcDbObjectIdArray()) {
        return AcUtSymTbl::DefineBlock(block_, entities, top, bottom, prefix, L"-1",
                                       AcGePoint3d(5, 6, 7), keep, AcDbObjectId::kNull, database());
    }

    /// The ends of the new block's lines as they are drawn.
    std::vector<double> drawn() {
        AcDbObjectIdArray order;
        AcUtSymTbl::getRelativeDrawOrder(listOf(entitiesOf(block_)), order, 0);
        std::vector<double> ends;
        for (int i = 0; i < order.length(); ++i)
            ends.push_back(endOf(order[i]));
        return ends;
    }

    static AcDbObjectIdArray listOf(const std::vector<AcDbObjectId>& ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId& id : ids)
            array.append(id);
        return array;
    }

    AcDbObjectId block_;
};

TEST_F(DefineBlock, CopiesTheEntitiesInTheirOrder) {
    const AcDbObjectId a = addMark(1, L"WALL");
    const AcDbObjectId b = addMark(2);
    ASSERT_EQ(define(L"DOOR", list({b, a})), Acad::eOk);
    EXPECT_EQ(AcUtSymTbl::GetStyleName(block_), L"DOOR-1");
    EXPECT_THAT(endsOf(block_), ElementsAre(2, 1));
    EXPECT_FALSE(a.isErased());
    const ReadHandle<AcDbBlockTableRecord> block(block_);
    EXPECT_EQ(block->origin(), AcGePoint3d(5, 6, 7));
    const ReadHandle<AcDbEntity> copy(entitiesOf(block_)[1]);
    EXPECT_EQ(AcUtSymTbl::GetStyleName(copy->layerId()), L"WALL");
}

TEST_F(DefineBlock, OfNothingIsAnEmptyBlock) {
    ASSERT_EQ(define(L"EMPTY", AcDbObjectIdArray()), Acad::eOk);
    EXPECT_EQ(AcUtSymTbl::GetStyleName(block_), L"EMPTY-1");
    EXPECT_THAT(endsOf(block_), IsEmpty());
}

TEST_F(DefineBlock, ErasesTheEntitiesUnlessTheyAreKept) {
    const AcDbObjectId a = addMark(1);
    const AcDbObjectId locked = addMark(2, L"LOCKED");
    {
        const WriteHandle<AcDbLayerTableRecord> layer(addLayer(L"LOCKED"));
        layer->setIsLocked(true);
    }
    ASSERT_EQ(define(L"DOOR", list({AcDbObjectId::kNull, a, locked}), false), Acad::eOk);
    EXPECT_TRUE(a.isErased());
    EXPECT_FALSE(locked.isErased());
    EXPECT_THAT(endsOf(block_), ElementsAre(1)) << "what cannot be opened is passed over";
}

TEST_F(DefineBlock, OfAKnownNameCostsTheEntitiesAllTheSame) {
    ASSERT_EQ(define(L"DOOR", AcDbObjectIdArray()), Acad::eOk);
    const AcDbObjectId first = block_;
    const AcDbObjectId a = addMark(1);
    EXPECT_NE(define(L"DOOR", list({a}), false, list({a})), Acad::eOk);
    EXPECT_EQ(block_, first);
    EXPECT_TRUE(a.isErased());
    EXPECT_THAT(endsOf(first), IsEmpty());
}

TEST_F(DefineBlock, ArrangesTopAndBottom) {
    const AcDbObjectId a = addMark(1);
    const AcDbObjectId b = addMark(2);
    const AcDbObjectId c = addMark(3);
    const AcDbObjectId d = addMark(4);
    ASSERT_EQ(define(L"X", list({a, b, c, d}), true, list({a, b}), list({d, b})), Acad::eOk);
    EXPECT_THAT(drawn(), ElementsAre(4, 3, 1, 2)) << "what is in both lists goes to the top";
    EXPECT_THAT(endsOf(block_), ElementsAre(1, 2, 3, 4));
}

TEST_F(DefineBlock, NeedsADatabaseThatIsFree) {
    AcDbObjectId id;
    const AcDbObjectIdArray none;
    EXPECT_EQ(AcUtSymTbl::DefineBlock(id, none, none, none, L"a", L"", AcGePoint3d(), true,
                                      AcDbObjectId::kNull, nullptr),
              Acad::eInvalidInput);
    const AcDbObjectId a = addMark(1);
    const ReadHandle<AcDbBlockTable> busy(database()->blockTableId());
    EXPECT_EQ(define(L"X", list({a}), false), Acad::eWasOpenForRead);
    EXPECT_FALSE(a.isErased());
}

class BlockReferences : public DefineBlock {};

TEST_F(BlockReferences, StandInTheCurrentSpace) {
    ASSERT_EQ(define(L"DOOR", AcDbObjectIdArray()), Acad::eOk);
    AcDbObjectId id;
    ASSERT_EQ(AcUtSymTbl::AddBolckReference(id, block_, AcGePoint3d(1, 2, 3), addLayer(L"WALL"),
                                            database()),
              Acad::eOk);
    const ReadHandle<AcDbBlockReference> reference(id);
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->ownerId(), database()->currentSpaceId());
    EXPECT_EQ(reference->blockTableRecord(), block_);
    EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(AcUtSymTbl::GetStyleName(reference->layerId()), L"WALL");
}

TEST_F(BlockReferences, AreRefused) {
    ASSERT_EQ(define(L"DOOR", AcDbObjectIdArray()), Acad::eOk);
    AcDbObjectId id;
    const AcGePoint3d origin;
    const AcDbObjectId layer = database()->layerZero();
    EXPECT_EQ(AcUtSymTbl::AddBolckReference(id, block_, origin, layer, nullptr),
              Acad::eInvalidInput);
    EXPECT_EQ(AcUtSymTbl::AddBolckReference(id, AcDbObjectId::kNull, origin, layer, database()),
              Acad::eInvalidInput);

    const ReadHandle<AcDbBlockTableRecord> busy(database()->currentSpaceId());
    id = block_;
    EXPECT_EQ(AcUtSymTbl::AddBolckReference(id, block_, origin, layer, database()), Acad::eOk);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(session().output(), L"\n块记录打开错误。");
}

TEST_F(BlockReferences, TakeThePlaceOfTheirEntities) {
    const AcDbObjectId a = addMark(1);
    AcDbObjectId id;
    const auto insert = [&](const wchar_t* prefix) {
        return AcUtSymTbl::InsertBolckReference(id, list({a}), prefix, L"-2", AcGePoint3d(4, 0, 0),
                                                false, addLayer(L"WALL"), database());
    };
    EXPECT_EQ(insert(L""), Acad::eInvalidInput);
    EXPECT_FALSE(a.isErased());
    ASSERT_EQ(insert(L"WIN"), Acad::eOk);
    EXPECT_TRUE(a.isErased());
    const ReadHandle<AcDbBlockReference> reference(id);
    ASSERT_TRUE(reference);
    AcDbExtents extents;
    ASSERT_EQ(reference->getGeomExtents(extents), Acad::eOk);
    EXPECT_EQ(extents.maxPoint(), AcGePoint3d(1, 0, 0)) << "the line looks as before";
    EXPECT_EQ(AcUtSymTbl::GetStyleName(reference->blockTableRecord()), L"WIN-2");
}

TEST_F(BlockReferences, AreNotMadeOfANameThatIsTaken) {
    ASSERT_EQ(define(L"WIN", AcDbObjectIdArray()), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(AcUtSymTbl::InsertBolckReference(id, AcDbObjectIdArray(), L"WIN", L"-1",
                                               AcGePoint3d(), true, AcDbObjectId::kNull,
                                               database()),
              Acad::eInvalidInput);
}

using StyleNames = BlocksTest;

TEST_F(StyleNames, AreListedByTable) {
    addMark(1, L"梁");
    EXPECT_THAT(AcUtSymTbl::RecordStyleNames(AcDbLayerTableRecord::desc(), nullptr),
                ElementsAre(L"0", L"梁"));
    AcDbObjectId id;
    AcUtSymTbl::defineNewBlock(L"DOOR", id, database());
    EXPECT_THAT(AcUtSymTbl::GetAllBlockName(database()),
                ElementsAre(L"*Model_Space", L"*Paper_Space", L"DOOR"));
}

using Clones = BlocksTest;

TEST_F(Clones, AreMovedAndInOrder) {
    AcDbObjectId block;
    AcUtSymTbl::defineNewBlock(L"DOOR", block, database());
    const AcDbObjectId a = addMark(1);
    const AcDbObjectId b = addMark(2);
    AcDbObjectIdArray clones;
    AcGeMatrix3d move;
    move.setToTranslation(AcGeVector3d(10, 0, 0));
    EXPECT_EQ(AcUtDb::cloneObjects(list({b, a}), block, clones), Acad::eOk);
    EXPECT_EQ(AcUtDb::cloneAndXformObjects(list({AcDbObjectId::kNull, a}), block, move, clones),
              Acad::eNullObjectId);
    EXPECT_THAT(endsOf(block), ElementsAre(2, 1, 11));
    EXPECT_EQ(clones.length(), 3);
    EXPECT_EQ(AcUtDb::cloneObjects(list({a}), AcDbObjectId::kNull, clones), Acad::eNullObjectId);
}

} // namespace
