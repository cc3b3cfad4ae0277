#include "table/grid_to_cad_table.h"

#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include "table/table_fixture.h"

namespace {

using test_support::listOf;
using testing::ElementsAre;

constexpr const wchar_t* kNothingFound = L"\n请选择要导出的表格:找到 0 个.";

class DrawnTable : public test_support::TableTest {
protected:
    int analyse() { return table_.AnalyseTable(drawn_); }
    const TableModel& model() const { return table_.GetModel(); }

    CGridToCadTable table_;
};

TEST_F(DrawnTable, BecomesAGrid) {
    drawRuling({0, 1000, 3000}, {0, 400, 1000});
    ASSERT_EQ(analyse(), 1);
    EXPECT_TRUE(drawn_.isEmpty());
    EXPECT_EQ(model().rowLines, 3);
    EXPECT_EQ(model().columnLines, 3);
    EXPECT_THAT(listOf(model().columnWidths), ElementsAre(25.0, 25.0, 50.0));
    EXPECT_THAT(listOf(model().rowHeights), ElementsAre(25.0, 15.0, 10.0)); // from the top
    EXPECT_EQ(model().cellsFound, 4);
    EXPECT_TRUE(model().mergeRows.IsEmpty());
    EXPECT_EQ(model().texts.GetSize(), 4);
    EXPECT_EQ(model().horizontalModes[3], AcDb::kTextCenter);
    EXPECT_EQ(model().verticalModes[3], AcDb::kTextVertMid);
    EXPECT_EQ(model().textHeights[3], 350.0);
    EXPECT_EQ(model().widthFactors[3], 0.0);
}

TEST_F(DrawnTable, MergesCellsWhereALineIsMissing) {
    // The lower divider stops short of the first column.
    drawRuling({0, 1000, 2000}, {0, 1500});
    drawLine({0, 1000, 0}, {2000, 1000, 0});
    drawLine({1000, 500, 0}, {2000, 500, 0});
    drawText({.text = L"two rows high", .position = {100, 100, 0}, .height = 50});
    ASSERT_EQ(analyse(), 1);
    EXPECT_THAT(listOf(model().mergeColumns), ElementsAre(1));
    EXPECT_THAT(listOf(model().mergeRows), ElementsAre(2));
    EXPECT_THAT(listOf(model().mergeMoreColumns), ElementsAre(0));
    EXPECT_THAT(listOf(model().mergeMoreRows), ElementsAre(1));
    EXPECT_EQ(model().texts[2], L"two rows high");

    table_.FillGrid();
    EXPECT_EQ(table_.GetRowCount(), 4);
    EXPECT_EQ(table_.GetColumnCount(), 3);
    EXPECT_EQ(table_.GetCell(2, 1).text, L"two rows high");
    EXPECT_EQ(table_.GetMerges().size(), 1U);
}

TEST_F(DrawnTable, JoinsTheTextsOfACell) {
    drawRuling({0, 1000}, {0, 1000});
    drawText({.text = L" B ", .position = {100, 100, 0}, .height = 90, .color = 1});
    drawText({.text = L"outside", .position = {1100, 100, 0}, .height = 10});
    drawText(
        {.text = L"A ", .position = {100, 500, 0}, .height = 80, .widthFactor = 0.7, .color = 3});
    ASSERT_EQ(analyse(), 1);
    EXPECT_EQ(model().texts[0], L"B A") << "in the order of the selection, trimmed at the ends";
    EXPECT_EQ(model().textHeights[0], 80.0);
    EXPECT_EQ(model().widthFactors[0], 0.7);
    EXPECT_EQ(model().colors[0], 3);
    EXPECT_EQ(model().horizontalModes[0], AcDb::kTextLeft);
    EXPECT_EQ(model().verticalModes[0], AcDb::kTextBase);
}

// The middle of the base line decides, wherever the text begins.
TEST_F(DrawnTable, TakesTextsByTheMiddleOfTheirBaseLine) {
    drawRuling({0, 1000, 2000}, {0, 1000});
    const CString wide(L'W', 20);
    drawText({.text = wide, .position = {900, 500, 0}, .height = 60});
    drawText(
        {.text = wide, .position = {1100, 500, 0}, .rotation = std::numbers::pi, .height = 60});
    ASSERT_EQ(analyse(), 1);
    EXPECT_EQ(model().texts[0], wide);
    EXPECT_EQ(model().texts[1], wide);
}

TEST_F(DrawnTable, LeavesOutWhatIsNoRuling) {
    struct Case {
        const char* name;
        double degrees;
        int lines; // that pass the filter of slanted lines
    };
    const Case cases[] = {{"level", 0.0, 5},
                          {"half a degree", 0.5, 5},
                          {"a degree", 1.0, 4},
                          {"half a degree below", -0.5, 5},
                          {"leftwards", 180.4, 5}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        drawn_.removeAll();
        drawRuling({0, 1000}, {0, 1000});
        drawLine({1000, 0, 0}, {0, 0, 0}); // again
        const double angle = c.degrees * std::numbers::pi / 180.0;
        drawLine({500, 500, 0}, {500 + 400 * std::cos(angle), 500 + 400 * std::sin(angle), 0});
        AcArray<AcDbObjectId> ids = drawn_;
        AcGePoint3dArray starts, ends;
        EXPECT_TRUE(table_.RemoveBiasLineGetTxt(ids, starts, ends).isEmpty());
        EXPECT_EQ(starts.length(), c.lines);
        EXPECT_EQ(ends.length(), c.lines);
        table_.ClearTableAttribute();
        ASSERT_EQ(analyse(), 1);
        EXPECT_EQ(model().rowLines, c.degrees == 0.0 ? 3 : 2);
    }
}

TEST_F(DrawnTable, IsRefusedWithoutRowsAndColumns) {
    struct Case {
        const char* name;
        std::vector<double> x, y;
        const wchar_t* message;
    };
    const Case cases[] = {
        {"nothing", {}, {}, L""},
        {"three lines", {}, {0, 1, 2}, L""},
        {"rows only", {}, {0, 1, 2, 3}, kNothingFound},
        {"one column", {5}, {0, 1, 2, 3}, kNothingFound},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::wstring before = session().output();
        for (const double level : c.y)
            drawLine({0, level, 0}, {10, level, 0});
        for (const double level : c.x)
            drawLine({level, 0, 0}, {level, 3, 0});
        drawText({.text = L"A", .position = {1, 0.5, 0}, .height = 0.1});
        EXPECT_EQ(analyse(), 0);
        EXPECT_EQ(session().output().substr(before.size()), c.message);
        EXPECT_EQ(model().rowLines, 0);
    }
}

TEST_F(DrawnTable, IsAddedToTheLastUntilCleared) {
    const auto draw = [this] {
        drawRuling({0, 100, 200, 300}, {0, 100, 200});
        drawLine({0, 300, 0}, {300, 300, 0});
        drawLine({0, 200, 0}, {0, 300, 0});
        drawLine({300, 300, 0}, {300, 200, 0}); // the top row is one cell
    };
    for (const int merges : {1, 2}) {
        draw();
        ASSERT_EQ(analyse(), 1);
        EXPECT_EQ(model().texts.GetSize(), 9 * merges);
        EXPECT_EQ(model().mergeRows.GetSize(), merges);
    }
    table_.ClearTableAttribute();
    EXPECT_EQ(model().rowLines, 0);
    EXPECT_TRUE(model().texts.IsEmpty());
    draw();
    ASSERT_EQ(analyse(), 1);
    EXPECT_EQ(model().texts.GetSize(), 9);
    EXPECT_THAT(listOf(model().mergeMoreColumns), ElementsAre(2));
}

TEST_F(DrawnTable, JoinsAllPiecesButTheLast) {
    AcGePoint3dArray a, b;
    for (const double x : {0.0, 3.0, 1.0, 2.0, 4.0}) { // the second one runs the other way
        a.append({x == 3.0 ? 4.0 : x, 0, 0});
        b.append({x == 3.0 ? 3.0 : x + 1.0, 0, 0});
    }
    table_.UniteLine(a, b);
    ASSERT_EQ(a.length(), 3);
    EXPECT_EQ(a[0], AcGePoint3d(0, 0, 0));
    EXPECT_EQ(b[0], AcGePoint3d(3, 0, 0)); // with 1 to 2, then 2 to 3, in one sweep
    EXPECT_EQ(a[1], AcGePoint3d(4, 0, 0)) << "passed before it was a neighbour";
    EXPECT_EQ(a[2], AcGePoint3d(4, 0, 0)) << "the last is never joined";
}

TEST_F(DrawnTable, FindsCoordinatesWithinTheirTolerances) {
    CArray<double, double> list;
    for (const double value : {0.0, 5e-7, 400.0, 1.5e-6, 1000.0, 400.0})
        list.Add(value);
    table_.RemoveRepeat(list);
    EXPECT_THAT(listOf(list), ElementsAre(0.0, 400.0, 1.5e-6, 1000.0));
    EXPECT_EQ(table_.DoubleAryFind(list, 400.009), 1);
    EXPECT_EQ(table_.DoubleAryFind(list, 400.011), -1);
    EXPECT_EQ(table_.DoubleAryFind(list, 0.005), 0) << "the first of two that are near";
    list.RemoveAll();
    EXPECT_EQ(table_.DoubleAryFind(list, 0.0), -1);
}

TEST_F(DrawnTable, TakesOnlyTextsAsTexts) {
    drawLine({0, 0, 0}, {1, 0, 0});
    drawText({.text = L"out", .position = {-50, 0, 0}, .height = 1});
    drawText({.text = L" in ", .position = {2, 2, 0}, .height = 1});
    AcGePoint3dArray square;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0),
                                 AcGePoint3d(10, 10, 0), AcGePoint3d(0, 10, 0)})
        square.append(p);
    int index = 7;
    EXPECT_EQ(table_.GetText(drawn_, square, index), L" in ");
    EXPECT_EQ(index, 1);
    EXPECT_EQ(drawn_.length(), 2);
    drawn_.removeLast();
    EXPECT_EQ(table_.GetText(drawn_, square, index), L"");
    EXPECT_EQ(index, -1);
}

TEST_F(DrawnTable, MayBeDrawnWithPolylines) {
    const auto linesInDrawing = [this] {
        int lines = 0;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(acdbOpenObject(space, database()->currentSpaceId(), AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecordIterator* all = nullptr;
        space->newIterator(all);
        for (const std::unique_ptr<AcDbBlockTableRecordIterator> it(all); !it->done(); it->step()) {
            AcDbEntity* entity = nullptr;
            it->getEntity(entity, AcDb::kForRead);
            lines += entity->isKindOf(AcDbLine::desc()) ? 1 : 0;
            entity->close();
        }
        space->close();
        return lines;
    };
    const AcDbObjectId outline =
        addPolyline({{{0, 0}}, {{1000, 0}, 0.5}, {{1000, 600}}, {{0, 600}}}); // an arc on the right
    AcGePoint3dArray corners;
    corners.append({0, 300, 0});
    corners.append({1000, 300, 0});
    drawn_.append(outline);
    drawn_.append(add(std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners)));
    drawn_.append(add(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, corners)));
    ASSERT_EQ(analyse(), 1);
    EXPECT_EQ(model().rowLines, 3);
    EXPECT_EQ(model().columnLines, 2);
    EXPECT_EQ(linesInDrawing(), 5) << "none for the last entity";

    drawn_.append(outline); // it is still there
    ASSERT_EQ(analyse(), 0);
    EXPECT_EQ(linesInDrawing(), 5);
}

TEST_F(DrawnTable, StartsWithTheProductsSettings) {
    EXPECT_EQ(table_.GetHorizontalScale(), 100.0);
    EXPECT_EQ(table_.GetVerticalScale(), 100.0);
    TableParam param = table_.GetTableParam();
    EXPECT_EQ(param.textStyles[2], L"QUILL_Rein");
    EXPECT_THAT(param.settings, ElementsAre(4, 3, 7, 6, 11, 1, 1, 1));
    param.sizes[1] = 3.5;
    table_.SetTableParam(param);
    EXPECT_EQ(table_.GetTableParam().sizes[1], 3.5);
}

} // namespace
