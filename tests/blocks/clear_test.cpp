// Keeping a drawing free of what an operation added for itself.
#include <gmock/gmock.h>

#include <dbents.h>

#include "blocks/create_ent_in_block_temp.h"
#include "blocks/symbol_clear_tool.h"
#include "blocks_fixture.h"

namespace {

using testing::ElementsAre;

class Clearing : public BlocksTest {
protected:
    AcDbObjectId refer(AcDbObjectId id, const ACHAR* owner = ACDB_MODEL_SPACE) {
        return add(std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, id), owner);
    }
    bool has(const wchar_t* name) {
        return AcUtSymTbl::symbolExists(AcDbBlockTableRecord::desc(), name, database());
    }
    std::size_t inModel() { return entitiesOf(database()->modelSpaceId()).size(); }
};

TEST_F(Clearing, ErasesTheBlocksAddedThatNothingRefersTo) {
    addBlock(L"OLD");
    SymbolClearTool::SetOldBlockName(nullptr);
    const AcDbObjectId inner = addBlock(L"INNER"); // comes before what refers to it
    addBlock(L"OUTER");
    refer(inner, L"OUTER");
    refer(addBlock(L"HELD"), L"OUTER");
    refer(addBlock(L"USED"));
    SymbolClearTool::SetNewBlockName(database());
    addBlock(L"LATER");
    SymbolClearTool::SetOldBlockName(nullptr); // nested: does not count
    SymbolClearTool::ClearBlockName(nullptr);
    EXPECT_TRUE(has(L"OLD"));
    EXPECT_TRUE(has(L"USED"));
    EXPECT_TRUE(has(L"LATER"));
    EXPECT_FALSE(has(L"OUTER"));
    EXPECT_FALSE(has(L"HELD")) << "free by its turn";
    EXPECT_TRUE(has(L"INNER")) << "in use at its turn";

    addBlock(L"AGAIN");
    SymbolClearTool::ClearBlockName(nullptr);
    EXPECT_TRUE(has(L"AGAIN")) << "both snapshots are used up";
}

TEST_F(Clearing, ABlockInUseCannotBeErased) {
    const AcDbObjectId used = addBlock(L"USED");
    const AcDbObjectId reference = refer(used);
    const WriteHandle<AcDbBlockTableRecord> definition(used);
    EXPECT_EQ(definition->erase(), Acad::eCannotBeErasedByCaller);
    {
        const WriteHandle<AcDbEntity> opened(reference);
        opened->erase();
    }
    EXPECT_EQ(definition->erase(), Acad::eOk);
}

TEST_F(Clearing, CopiesOfBlockPartsLastAsLongAsTheirMaker) {
    const AcDbObjectId id = addBlock(L"B");
    addLine({0, 0, 0}, {5, 0, 0}, L"WALL", L"B");
    addLine({0, 0, 0}, {7, 0, 0}, L"DOOR", L"B");
    refer(id);
    refer(id);
    struct Case {
        const wchar_t* layers;
        std::size_t copies;
    };
    for (const Case& c : {Case{L",wall,,", 2}, Case{L"WALL,DOOR", 4}, Case{L"", 0}}) {
        {
            const CCreateEntInBlockTemp copies(c.layers);
            EXPECT_EQ(inModel(), 2 + c.copies) << c.copies;
        }
        EXPECT_EQ(inModel(), 2U);
    }
}

// Last: what it leaves remembered outlives its drawing.
TEST_F(Clearing, NeedsBothSnapshotsAndKeepsTheOneThereIs) {
    SymbolClearTool::SetNewBlockName(nullptr);
    addBlock(L"A");
    SymbolClearTool::ClearBlockName(nullptr); // no earlier snapshot
    SymbolClearTool::SetOldBlockName(nullptr);
    SymbolClearTool::SetNewBlockName(nullptr);
    SymbolClearTool::ClearBlockName(nullptr);
    EXPECT_TRUE(has(L"A")) << "the later snapshot was still there, so the earlier was refused";

    AcDbDatabase other;
    SymbolClearTool::SetOldBlockName(&other);
    SymbolClearTool::SetOldBlockName(&other);
    SymbolClearTool::ClearBlockName(&other);
    SymbolClearTool::SetNewBlockName(&other);
    SymbolClearTool::ClearBlockName(&other);
    EXPECT_TRUE(AcUtSymTbl::symbolExists(AcDbBlockTableRecord::desc(), ACDB_MODEL_SPACE, &other));
}

} // namespace
