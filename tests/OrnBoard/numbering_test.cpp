// Numbering boards and clearing the numbers.
#include <map>
#include <memory>

#include "OrnBoard/numbering.h"
#include "OrnCore/rw_xdata.h"
#include "frame/object_handle.h"
#include "geometry/board_numbers.h"
#include "geometry/extent_order.h"
#include "support/session_fixture.h"

namespace {

class NumberingTest : public test_support::SessionTest {
protected:
    void addBoard(double x, double y, double size = 1000) {
        addPolyline({{{x, y}}, {{x + size, y}}, {{x + size, y + size}}, {{x, y + size}}});
    }

    /// Numbers by where their texts stand.
    std::map<std::pair<double, double>, std::wstring> numbers() {
        std::map<std::pair<double, double>, std::wstring> found;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(acdbOpenObject(space, database()->currentSpaceId(), AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(space->newIterator(made), Acad::eOk);
        space->close();
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            entities->getEntityId(id);
            const ReadHandle<AcDbText> text(id);
            if (!text) continue;
            const AcGePoint3d kept = rwXData::ReadXdataPnt(id, Common::kBoardNumberPoint);
            found[{kept.x, kept.y}] = text->textStringConst();
        }
        return found;
    }
};

TEST_F(NumberingTest, GoesInReadingOrderAndComesOffAgain) {
    addBoard(0, 0);
    addBoard(2000, 0);
    addBoard(0, 2000);
    addPolyline({{{5000, 0}}, {{6000, 0}}, {{6000, 900}}}, false); // open: no board
    const auto rows = board::numberBoards(database(), {.method = 3});
    ASSERT_EQ(rows.size(), 3U);
    const std::map<std::pair<double, double>, std::wstring> byRows = {
        {{500, 2500}, L"1"}, {{500, 500}, L"2"}, {{2500, 500}, L"3"}};
    EXPECT_EQ(numbers(), byRows);
    EXPECT_EQ(rows[0].number, 1);
    EXPECT_FALSE(rows[0].text.isNull());
    EXPECT_EQ(SortPline::nSortMethod, 0) << "the callers' method is kept";

    EXPECT_EQ(board::clearBoardNumbers(database(), {}, L"no such layer"), 0);
    EXPECT_EQ(board::clearBoardNumbers(database(), {}, L""), 3);
    EXPECT_TRUE(numbers().empty());

    board::numberBoards(database(), {.method = 0});
    const std::map<std::pair<double, double>, std::wstring> byColumns = {
        {{500, 500}, L"1"}, {{500, 2500}, L"2"}, {{2500, 500}, L"3"}};
    EXPECT_EQ(numbers(), byColumns);
}

TEST_F(NumberingTest, SmallBoardsHaveSmallNumbers) {
    addBoard(0, 0, 100);
    const auto boards = board::numberBoards(database(), {});
    ASSERT_EQ(boards.size(), 1U);
    AcDbObjectId id;
    ASSERT_EQ(database()->getAcDbObjectId(id, false, boards[0].text), Acad::eOk);
    const ReadHandle<AcDbText> text(id);
    EXPECT_DOUBLE_EQ(text->height(), 30.0);
}

TEST_F(NumberingTest, WithoutADrawingThereIsNothing) {
    EXPECT_TRUE(board::numberBoards(nullptr, {}).empty());
    EXPECT_EQ(board::clearBoardNumbers(nullptr, {}, L""), 0);
}

} // namespace
