#include "table/grid_workbook.h"

#include <dbents.h>
#include <gmock/gmock.h>

#include "support/session_fixture.h"
#include "support/temporary_folder.h"
#include "support/workbook_dump.h"

namespace {

using testing::Contains;
using testing::HasSubstr;

class GridWorkbook : public test_support::SessionTest {
protected:
    GridWorkbook() {
        grid_.SetGridSize(3, 4);
        for (int column = 1; column < 4; ++column)
            grid_.SetColumnWidth(column, 52.5 * column); // 2100 units
        for (const int row : {1, 2})
            grid_.SetRowHeight(row, 17.5); // 700 units
        grid_.MergeCells({1, 1, 2, 0});
        grid_.SetCell(1, 1, {.text = L"编号", .color = 1});
        grid_.SetCell(2, 1, {.text = L"007", .horizontal = AcDb::kTextLeft, .height = 700});
        grid_.SetCell(2, 2, {.text = L"5.580", .horizontal = AcDb::kTextRight});
        grid_.SetCell(2, 3, {.text = L"=A1", .vertical = AcDb::kTextTop});
    }
    bool write(int sheets, const std::string& path) const {
        const std::vector<const CDrawGrid*> grids(static_cast<std::size_t>(sheets), &grid_);
        return table::writeWorkbook(grids, CString(path.c_str()));
    }

    CDrawGrid grid_;
    test_support::TemporaryFolder folder_;
};

TEST_F(GridWorkbook, LooksAsInTheDrawing) {
    const std::string path = (folder_.path() / "t.xlsx").string();
    ASSERT_TRUE(write(4, path));
    const auto lines = test_support::dumpWorkbook(path);
    if (!lines) GTEST_SKIP() << "the library that reads it is not installed";
    // Texts of 350 units are 10 points high: 2100 units are 60 points or 80 pixels, which files
    // count in digits of 7.
    for (const char* line :
         {"sheets Table 1 Table 2 Table 3 Table 4 active Table 1", "Table 4 merged A1:C1",
          "Table 1 row 1 20.0", "Table 1!A1 value '编号'",
          "Table 1!A1 font Calibri 10.0 None None FFFF0000", "Table 1!A1 left thin FF000000",
          "Table 1!A2 value '007'", "Table 1!A2 font Calibri 20.0 None None theme",
          "Table 1!B2 value 5.58", "Table 1!B2 format 0.000",
          "Table 1!B2 align right center 0 0 False False", "Table 1!C2 value '=A1'",
          "Table 1!C2 format @", "Table 1!C2 align center top 0 0 False False"})
        EXPECT_THAT(*lines, Contains(line));
    EXPECT_THAT(*lines, Contains(HasSubstr("Table 1 column A 11.4")));
}

TEST_F(GridWorkbook, HasNoSheetsBesidesItsTables) {
    const std::string path = (folder_.path() / "t.xlsx").string();
    grid_.SetCell(1, 1, {.text = L"two\nlines", .color = 1});
    grid_.SetCell(2, 2, {.text = L"212", .isName = true});
    ASSERT_TRUE(write(1, path));
    const auto lines = test_support::dumpWorkbook(path);
    if (!lines) GTEST_SKIP() << "the library that reads it is not installed";
    EXPECT_THAT(*lines, Contains("Table 1!B2 value '212'"));
    EXPECT_THAT(*lines, Contains("sheets Table 1 active Table 1"));
    EXPECT_THAT(*lines, Contains("Table 1 merged A1:C1"));
    EXPECT_THAT(*lines, Contains("Table 1!A1 align center center 0 0 True False"));
}

TEST_F(GridWorkbook, IsRefusedWhereNothingCanBeWritten) {
    EXPECT_FALSE(write(1, (folder_.path() / "none" / "t.xlsx").string()));
    EXPECT_EQ(session().messageBoxes().size(), 1U) << "the user is told";
}

} // namespace
