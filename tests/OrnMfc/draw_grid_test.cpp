#include "OrnMfc/draw_grid.h"

#include <gtest/gtest.h>

namespace {

TEST(DrawGrid, KeepsWhatIsInsideOnly) {
    CDrawGrid grid;
    EXPECT_EQ(grid.GetRowCount(), 1);
    grid.SetGridSize(3, 4);
    EXPECT_TRUE(grid.SetCell(2, 3, {.text = L"last", .color = 3}));
    EXPECT_FALSE(grid.SetCell(3, 0, {.text = L"below"}));
    EXPECT_FALSE(grid.SetCell(0, -1, {.text = L"left"}));
    EXPECT_EQ(grid.GetCell(2, 3).text, L"last");
    EXPECT_EQ(grid.GetCell(1, 3).text, L"");
    EXPECT_EQ(grid.GetCell(9, 9).text, L"");
    grid.SetColumnWidth(3, 40.0);
    grid.SetRowHeight(7, 40.0);
    EXPECT_EQ(grid.GetColumnWidth(0), 25.0);
    EXPECT_EQ(grid.GetColumnWidth(3), 40.0);
    EXPECT_EQ(grid.GetRowHeight(7), 0.0);
    grid.SetGridSize(3, 4);
    EXPECT_EQ(grid.GetCell(2, 3).text, L"");
    EXPECT_EQ(grid.GetColumnWidth(3), 25.0);
}

TEST(DrawGrid, MergesRangesThatFit) {
    const struct {
        const char* name;
        GridMerge merge;
        bool fits;
    } cases[] = {
        {"inside", {1, 1, 1, 0}, true},
        {"to the last cell", {2, 1, 1, 1}, true},
        {"one cell", {1, 1, 0, 0}, false},
        {"beyond the last row", {1, 1, 0, 2}, false},
        {"beyond the last column", {3, 1, 1, 0}, false},
        {"outside", {4, 1, 0, 1}, false},
        {"backwards", {2, 2, -1, 1}, false},
        {"wide beyond numbers", {1, 1, 2147483647, 0}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CDrawGrid grid;
        grid.SetGridSize(3, 4);
        EXPECT_EQ(grid.MergeCells(c.merge), c.fits);
        EXPECT_EQ(grid.GetMerges().size(), c.fits ? 1U : 0U);
    }
}

} // namespace
