#include "table/drawn_tables.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <json/json.h>

#include "frame/ac_ut_sym_tbl.h"
#include "table/grid_text.h"
#include "table/sheet_layout.h"
#include "table/table_fixture.h"

namespace {

using testing::HasSubstr;

class DrawnTables : public test_support::TableTest {
protected:
    table::DrawnTables find() const { return table::tablesAmong(drawn_); }

    void drawWord(const wchar_t* text, double x, double y) {
        drawText({.text = text, .position = {x, y, 0}, .height = 2});
    }
    /// A table of two cells side by side, 40 wide and 10 high.
    void drawPair(double x, double y, const wchar_t* left, const wchar_t* right) {
        drawRuling({x, x + 20, x + 40}, {y, y + 10});
        drawWord(left, x + 5, y + 4);
        drawWord(right, x + 25, y + 4);
    }
};

TEST_F(DrawnTables, StandEachForItself) {
    drawPair(100, 0, L"lower", L"right");
    drawPair(0, 0, L"lower", L"left");
    drawPair(50, 50, L"top", L"most");
    drawRuling({200, 220}, {0, 10}); // one cell
    drawWord(L"room", 205, 4);
    drawRuling({300, 320, 340}, {0, 10}); // no text
    drawLine({0, 200, 0}, {90, 200, 0});
    const table::DrawnTables tables = find();
    ASSERT_EQ(tables.size(), 3U);
    EXPECT_EQ(tables[0]->GetCell(1, 1).text, L"top");
    EXPECT_EQ(tables[1]->GetCell(1, 2).text, L"left");
    EXPECT_EQ(tables[2]->GetCell(1, 2).text, L"right");
    EXPECT_EQ(session().output(), L"") << "lines that are no table are no one's mistake";
}

TEST_F(DrawnTables, HoldMultilineTexts) {
    drawPair(0, 0, L"plain", L"");
    struct Case {
        AcDbMText::AttachmentPoint attachment;
        int horizontal;
        int vertical;
    };
    const Case cases[] = {{AcDbMText::kTopLeft, AcDb::kTextLeft, AcDb::kTextTop},
                          {AcDbMText::kMiddleCenter, AcDb::kTextCenter, AcDb::kTextVertMid},
                          {AcDbMText::kBottomRight, AcDb::kTextRight, AcDb::kTextBottom}};
    for (const Case& c : cases) {
        auto entity = std::make_unique<AcDbMText>();
        entity->setTextHeight(1.5);
        entity->setAttachment(c.attachment);
        entity->setLocation({30, 5, 0}); // the middle of the right cell
        entity->setColorIndex(3);
        entity->setContents(L"{\\fSimSun|b1;\\H0.7x;3420}×1540\\P\\LDBS1\\l");
        drawn_.append(add(std::move(entity)));
        const table::DrawnTables tables = find();
        ASSERT_EQ(tables.size(), 1U);
        const GridCell& cell = tables[0]->GetCell(1, 2);
        EXPECT_EQ(std::wstring(cell.text), L"3420×1540\nDBS1");
        EXPECT_EQ(cell.horizontal, c.horizontal);
        EXPECT_EQ(cell.vertical, c.vertical);
        EXPECT_EQ(cell.height, 1.5);
        EXPECT_EQ(cell.color, 3);
        drawn_.setLogicalLength(drawn_.length() - 1);
    }
}

TEST_F(DrawnTables, MayBeBlankForms) {
    drawRuling({0, 20, 40}, {0, 10, 20});
    drawRuling({100, 120}, {0, 10}); // one cell is a frame
    EXPECT_TRUE(find().empty());
    const auto forms = table::tablesAmong(drawn_, table::BlankForms::kTables);
    ASSERT_EQ(forms.size(), 1U);
    EXPECT_EQ(forms[0]->GetRowCount(), 3);
    EXPECT_EQ(forms[0]->GetColumnCount(), 3);
}

TEST_F(DrawnTables, AreDrawnByPeople) {
    struct Case {
        const char* name;
        double gap;   // where the column lines should meet the rows
        double twice; // how far beside them they are drawn again; 0 for once
        std::size_t tables;
    };
    // Nobody who reads texts of 2 sees 0.05.
    const Case cases[] = {{"as it should be", 0.0, 0.0, 1},
                          {"lines end too early", 0.05, 0.0, 1},
                          {"a gap that shows", 0.5, 0.0, 0},
                          {"drawn twice", 0.0, 0.05, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        drawn_.removeAll();
        for (const double y : {0.0, 10.0})
            drawLine({0, y, 0}, {40, y, 0});
        for (const double x : {0.0, 20.0, 40.0}) {
            drawLine({x, c.gap, 0}, {x, 10 - c.gap, 0});
            if (c.twice > 0.0) drawLine({x + c.twice, 0, 0}, {x + c.twice, 10, 0});
        }
        drawWord(L"%%c12 %%P1%%% %%u%%066%%", 5, 4);
        const table::DrawnTables tables = find();
        ASSERT_EQ(tables.size(), c.tables);
        if (tables.empty()) continue;
        EXPECT_EQ(tables[0]->GetColumnCount(), 3);
        EXPECT_EQ(std::wstring(tables[0]->GetCell(1, 1).text), L"Ø12 ±1% B%%");
    }
}

TEST_F(DrawnTables, MayStandInBlocks) {
    AcDbObjectId block;
    ASSERT_EQ(AcUtSymTbl::defineNewBlock(L"PAIR", block, database()), Acad::eOk);
    for (const double x : {0.0, 20.0, 40.0})
        add(std::make_unique<AcDbLine>(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 10, 0)), L"PAIR");
    for (const double y : {0.0, 10.0})
        add(std::make_unique<AcDbLine>(AcGePoint3d(0, y, 0), AcGePoint3d(40, y, 0)), L"PAIR");
    add(std::make_unique<AcDbText>(AcGePoint3d(5, 4, 0), L"fixed", AcDbObjectId::kNull, 2),
        L"PAIR");
    auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(100, 50, 0), block);
    auto attribute = std::make_unique<AcDbAttribute>(AcGePoint3d(125, 54, 0), L"filled in", L"TAG");
    attribute->setHeight(2);
    ASSERT_EQ(reference->appendAttribute(attribute.get()), Acad::eOk);
    (void)attribute.release();
    drawn_.append(add(std::move(reference)));
    const table::DrawnTables tables = find();
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0]->GetCell(1, 1).text, L"fixed");
    EXPECT_EQ(tables[0]->GetCell(1, 2).text, L"filled in");
}

TEST_F(DrawnTables, HaveCellsSideBySide) {
    // Rooms whose walls cross: closed cells lie over one another.
    for (const double step : {0.0, 10.0, 20.0, 30.0}) {
        drawRuling({step, step + 50}, {step, step + 50});
        drawWord(L"room", step + 1, step + 1);
    }
    EXPECT_TRUE(find().empty());
    // Two rooms with posts along a wall.
    drawn_.removeAll();
    drawRuling({0, 50, 100}, {0, 10});
    for (double post = 4; post < 100; post += 4)
        drawLine({post, 10, 0}, {post, 8, 0});
    drawWord(L"room", 2, 2);
    EXPECT_TRUE(find().empty());
    // A list without its lower right quarter is a list.
    drawn_.removeAll();
    drawRuling({0, 20, 40}, {0, 10});
    drawRuling({0, 20}, {-10, 0});
    drawWord(L"list", 2, 2);
    EXPECT_EQ(find().size(), 1U);
}

TEST_F(DrawnTables, AreReadFromPiecesInAnyOrder) {
    std::vector<plain::Line> pieces;
    for (const double level : {0.0, 10.0, 20.0, 30.0}) {
        for (double from = 0; from < 30; from += 2) { // ends between the crossings, too
            const double rounded = level + std::fmod(from, 4.0) * 1e-8;
            pieces.push_back({{from, rounded, 0}, {from + 2, rounded, 0}});
            pieces.push_back({{level, from + 2, 0}, {level, from, 0}});
        }
    }
    pieces.push_back({{1, 10, 0}, {15, 10, 0}}); // drawn over others
    std::shuffle(pieces.begin(), pieces.end(), std::mt19937(5));
    for (const plain::Line& piece : pieces)
        drawLine(piece.start, piece.end);
    drawWord(L"5", 14, 14);
    const table::DrawnTables tables = find();
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0]->GetRowCount(), 4);
    EXPECT_EQ(tables[0]->GetColumnCount(), 4);
    EXPECT_TRUE(tables[0]->GetMerges().empty());
    EXPECT_EQ(tables[0]->GetModel().cellsFound, 9);
    EXPECT_EQ(tables[0]->GetCell(2, 2).text, L"5");
}

TEST_F(DrawnTables, MayBeDrawnWithPolylines) {
    drawn_.append(addPolyline({{{0, 0}}, {{40, 0}}, {{40, 10}}, {{0, 10}}}));
    drawLine({20, 0, 0}, {20, 10, 0});
    drawWord(L"left", 5, 4);
    drawn_.append(addPolyline({{{500, 0}}, {{540, 0}}, {{540, 10}}, {{500, 10}}}));
    const table::DrawnTables tables = find();
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0]->GetCell(1, 1).text, L"left");
    EXPECT_EQ(tables[0]->GetColumnCount(), 3);
}

class GridText : public testing::Test {
protected:
    GridText() {
        grid_.SetGridSize(3, 3);
        grid_.SetColumnWidth(1, 2);
        grid_.SetColumnWidth(2, 4);
        grid_.SetRowHeight(1, 0.5);
        grid_.SetRowHeight(2, 1);
        set(1, 1, L"a,\"b\"");
        set(2, 1, L"墙 <1> & 2");
        set(2, 2, L"12.5");
        grid_.MergeCells({1, 1, 1, 0});
    }
    void set(int row, int column, const wchar_t* text) {
        grid_.SetCell(row, column, {.text = text, .color = 1, .height = 20});
    }

    CDrawGrid grid_;
};

TEST_F(GridText, IsQuotedInCsv) {
    const CDrawGrid* const twice[] = {&grid_, &grid_};
    const std::string once = "\"a,\"\"b\"\"\",\n墙 <1> & 2,12.5\n";
    EXPECT_EQ(table::toCsv(std::span(twice, 1)), once);
    EXPECT_EQ(table::toCsv(twice), once + "\n" + once);
}

TEST_F(GridText, HasItsNumbersInJson) {
    const CDrawGrid* const twice[] = {&grid_, &grid_};
    const auto parsed = [](const std::string& text) {
        Json::Value value;
        std::istringstream(text) >> value;
        return value;
    };
    const Json::Value one = parsed(table::toJson(std::span(twice, 1)));
    EXPECT_EQ(one["rows"], 2);
    EXPECT_EQ(one["columns"], 2);
    EXPECT_EQ(one["widths"][2], 4.0);
    EXPECT_EQ(one["heights"][1], 0.5);
    EXPECT_EQ(one["merges"][0], parsed("[1, 1, 1, 0]"));
    const Json::Value& cell = one["cells"][3];
    EXPECT_EQ(cell["row"], 2);
    EXPECT_EQ(cell["column"], 2);
    EXPECT_EQ(cell["text"], "12.5");
    EXPECT_EQ(cell["height"], 20.0);
    EXPECT_EQ(cell["color"], 1);
    EXPECT_EQ(cell["style"], "");
    EXPECT_EQ(parsed(table::toJson(twice))["tables"][1], one);
    EXPECT_EQ(parsed(table::toJson({}))["tables"], Json::Value(Json::arrayValue));
}

TEST_F(GridText, LooksInHtmlAsInTheDrawing) {
    const CDrawGrid* const grid[] = {&grid_};
    const std::string html = table::toHtml(grid);
    // Texts of 20 units are 10 points high: half a point for each unit, 40 units for each size.
    EXPECT_THAT(html, HasSubstr("<col style=\"width:40.00pt\"><col style=\"width:80.00pt\">"));
    EXPECT_THAT(html, HasSubstr("<tr style=\"height:10.00pt\"><td colspan=\"2\""));
    EXPECT_THAT(html, HasSubstr("font-size:10.00pt;color:#ff0000\">墙 &lt;1&gt; &amp; 2</td>"));
    EXPECT_EQ(html.find("a,\"b\"</td><td"), std::string::npos) << "the covered cell is not there";
}

TEST(SheetLayout, TakesTheFirstOfOverlappingRanges) {
    CDrawGrid grid;
    grid.SetGridSize(4, 4);
    grid.MergeCells({1, 1, 1, 1});
    grid.MergeCells({2, 2, 1, 1});
    grid.MergeCells({1, 1, 1, 1});
    const table::SheetLayout layout(grid);
    EXPECT_EQ(layout.span(1, 1).moreRows, 1);
    EXPECT_TRUE(layout.span(2, 2).isCovered);
    EXPECT_FALSE(layout.span(3, 3).isCovered);
}

TEST(Numbers, AreTextsThatANumberShowsAgain) {
    struct Case {
        const wchar_t* text;
        std::optional<double> number;
    };
    const Case cases[] = {
        {L"12", 12.0},
        {L"-3.25", -3.25},
        {L"+7", 7.0},
        {L"0", 0.0},
        {L"0.5", 0.5},
        {L"", {}},
        {L"007", {}},
        {L"1.", {}},
        {L".5", {}},
        {L"1.2.3", {}},
        {L"1e5", {}},
        {L"12 mm", {}},
        {L"-", {}},
        {L"1,000", {}},
        {L"--1", {}},
        {L"nan", {}},
        {L"0x10", {}},
        {L"１２", {}},
        {L"1234567890123456", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(table::numberIn(c.text), c.number) << CStringA(c.text).GetString();
}

TEST(PaperColors, AreReadableOnWhite) {
    EXPECT_EQ(table::paperColor(1), 0xFF0000U);
    EXPECT_EQ(table::paperColor(5), 0x0000FFU);
    for (const int none : {0, 7, 256, -3, 70000})
        EXPECT_EQ(table::paperColor(none), 0U);
}

} // namespace
