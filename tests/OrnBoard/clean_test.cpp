#include "OrnBoard/clean.h"

#include <gmock/gmock.h>

#include <dbents.h>

#include "frame/ac_ut_sym_tbl.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BoardClean : public test_support::SessionTest {
protected:
    AcDbObjectId block(const wchar_t* name) {
        AcDbObjectId id;
        AcUtSymTbl::defineNewBlock(name, id, database());
        return id;
    }
};

TEST_F(BoardClean, ClearsWhatTheWorkAddedAndDoesNotUse) {
    block(L"OLD");
    const board::BlockCleaning cleaning = board::clearBlocksOf(database(), [this] {
        const AcDbObjectId inner = block(L"INNER"); // before the block that holds it
        block(L"UNUSED");
        add(std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, inner), L"UNUSED");
        add(std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, block(L"USED")));
    });
    EXPECT_THAT(cleaning.cleared, ElementsAre(L"INNER", L"UNUSED"));
    EXPECT_THAT(cleaning.kept, ElementsAre(L"USED"));
    EXPECT_TRUE(AcUtSymTbl::symbolExists(AcDbBlockTableRecord::desc(), L"OLD", database()));
    EXPECT_EQ(board::cleaningReport(cleaning),
              L"Blocks cleared: INNER, UNUSED\nStill in use: USED\n");
}

TEST_F(BoardClean, NeedsAMarkForEachTime) {
    block(L"BEFORE");
    EXPECT_FALSE(board::clearAddedBlocks(database()).marked);
    board::markBlocks(database());
    block(L"A");
    board::markBlocks(database()); // the later mark counts
    block(L"B");
    EXPECT_THAT(board::clearAddedBlocks(database()).cleared, ElementsAre(L"B"));
    EXPECT_FALSE(board::clearAddedBlocks(database()).marked);
    EXPECT_THAT(board::clearBlocksOf(database(), [] {}).cleared, IsEmpty());
}

} // namespace
