#include <cmath>
#include <numbers>

#include "OrnCore/zel_dwg.h"
#include "geometry/common_area.h"
#include "geometry/line_tools.h"
#include "geometry_fixture.h"

namespace {

using std::numbers::pi;

constexpr double kMost = 2147483647.0;

std::vector<BulgeVertex> rectangle(double width, double height) {
    return {{{0, 0}}, {{width, 0}}, {{width, height}}, {{0, height}}};
}

AcDbObjectIdArray list(std::initializer_list<AcDbObjectId> ids) {
    AcDbObjectIdArray array;
    for (const AcDbObjectId id : ids)
        array.append(id);
    return array;
}

class Areas : public GeometryTest {
protected:
    double plain(const AcDbObjectId& id) { return Common::GetPlineArea(id, 0, kMost, 0, kMost); }
};

TEST_F(Areas, AreInSquareMetres) {
    const struct {
        const char* name;
        std::vector<BulgeVertex> vertices;
        bool closed;
        double area;
    } cases[] = {
        {"board", rectangle(3000, 2000), true, 6.0},
        {"drawn clockwise", {{{0, 0}}, {{0, 2000}}, {{3000, 2000}}, {{3000, 0}}}, true, 6.0},
        {"disc", {{{0, 0}, 1}, {{2000, 0}, 1}}, true, pi},
        {"open", rectangle(3000, 2000), false, 0.0},
        {"open but back at the start",
         {{{0, 0}}, {{3000, 0}}, {{3000, 2000}}, {{0, 2000}}, {{0, 4e-4}}},
         false,
         6.0},
        {"open by the third decimal",
         {{{0, 0}}, {{3000, 0}}, {{3000, 2000}}, {{0, 2000}}, {{0, 6e-4}}},
         false,
         0.0},
        {"smaller than the tolerance", rectangle(0.5, 0.5), true, 0.25e-6},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcDbObjectId id = addPolyline(c.vertices, c.closed);
        EXPECT_NEAR(plain(id) / std::max(c.area, 1e-6), c.area / std::max(c.area, 1e-6), 1e-9);
    }
    EXPECT_EQ(plain(addCircle({0, 0, 0}, 1000)), 0.0);
    EXPECT_EQ(plain(AcDbObjectId::kNull), 0.0);
}

TEST_F(Areas, PassBoundsThatExcludeTheLowerAndIncludeTheUpper) {
    const AcDbObjectId board = addPolyline(rectangle(3000, 2000)); // A = 3000, B = 2000
    const struct {
        const char* name;
        double minB, maxB, minA, maxA;
        bool passes;
    } cases[] = {
        {"no bounds", 0, kMost, 0, kMost, true},
        {"B too long", 0, 1000, 0, kMost, false},
        {"B at its upper bound", 0, 2000, 0, kMost, true},
        {"B at its lower bound", 2000, kMost, 0, kMost, false},
        {"B just above its lower bound", 1999.99, kMost, 0, kMost, true},
        {"B above its lower bound by less than the tolerance", 2000 - 5e-7, kMost, 0, kMost, false},
        {"B above its upper bound by less than the tolerance", 0, 2000 - 5e-7, 0, kMost, true},
        {"A too long", 0, kMost, 0, 2999, false},
        {"A at its upper bound", 0, kMost, 0, 3000, true},
        {"A at its lower bound", 0, kMost, 3000, kMost, false},
        {"A just above its lower bound", 0, kMost, 2999.99, kMost, true},
        {"both", 1500, 2500, 2500, 3500, true},
        {"bounds the other way round", 2500, 3500, 1500, 2500, false},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(Common::GetPlineArea(board, c.minB, c.maxB, c.minA, c.maxA),
                    c.passes ? 6.0 : 0.0, 1e-9)
            << c.name;
}

TEST_F(Areas, WithBoundsNeedFourCornersAndSidesOfOne) {
    const AcDbObjectId triangle = addPolyline({{{0, 0}}, {{3000, 0}}, {{0, 2000}}});
    EXPECT_NEAR(plain(triangle), 3.0, 1e-9);
    EXPECT_EQ(Common::GetPlineArea(triangle, 0, kMost, 1, kMost), 0.0);
    for (const auto& [width, height] : {std::pair{0.9, 3000.0}, {3000.0, 0.9}}) {
        const AcDbObjectId strip = addPolyline(rectangle(width, height));
        EXPECT_EQ(Common::GetPlineArea(strip, 0, kMost, 0, 5000), 0.0);
        EXPECT_GT(plain(strip), 0.0);
    }
    const AcDbObjectId thin = addPolyline(rectangle(1.0, 3000));
    EXPECT_NEAR(Common::GetPlineArea(thin, 0, kMost, 0, 5000), 0.003, 1e-9);
}

TEST_F(Areas, MeasureARoundedBoardByTheRectangleAroundIt) {
    const double quarter = std::tan(pi / 8);
    const AcDbObjectId board = addPolyline({{{100, 0}},
                                            {{2900, 0}, quarter},
                                            {{3000, 100}},
                                            {{3000, 1900}, quarter},
                                            {{2900, 2000}},
                                            {{100, 2000}, quarter},
                                            {{0, 1900}},
                                            {{0, 100}, quarter}});
    const double area = 6.0 - (4.0 - pi) * 0.01;
    EXPECT_NEAR(Common::GetPlineArea(board, 1999.9, 2000.1, 2999.9, 3000.1), area, 1e-9);
}

TEST_F(Areas, OnLayersMixPolylinesAndCircles) {
    const AcDbObjectId board = addPolyline(rectangle(3000, 2000), true, L"Board");
    const AcDbObjectId other = addPolyline(rectangle(1000, 1000), true, L"OTHER");
    const AcDbObjectId circle = addCircle({0, 0, 0}, 10, L"HOLES");
    const AcDbObjectId line = addLine({0, 0, 0}, {1, 1, 0}); // on layer 0
    const AcDbObjectIdArray all = list({board, other, circle, line, AcDbObjectId::kNull});
    const struct {
        const char* name;
        const wchar_t* layers;
        double squareMetres, circles;
    } cases[] = {
        {"name of any case in the drawing", L"BOARD", 6.0, 0.0},
        {"list in lower case matches nothing", L"board,other", 0.0, 0.0},
        {"several", L"BOARD,OTHER", 7.0, 0.0},
        {"circles too", L"OTHER,HOLES", 1.0, 100 * pi},
        {"blanks are part of a name", L"BOARD, OTHER", 6.0, 0.0},
        {"part of a name", L"OTHERS,BOAR", 0.0, 0.0},
        {"no layers", L"", 0.0, 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(Common::GetAllPlineArea(all, c.layers, 0, kMost), c.squareMetres + c.circles,
                    1e-9);
        EXPECT_NEAR(Common::GetAllPlineArea(all, c.layers, L"毫米（mm）", 0, kMost, 0, kMost),
                    c.squareMetres * 1e6 + c.circles, 1e-6);
        EXPECT_NEAR(Common::GetAllPlineArea(all, c.layers, L"米（m）", 0, kMost, 0, kMost),
                    c.squareMetres + c.circles / 1e6, 1e-9);
    }
    EXPECT_EQ(Common::GetAllPlineArea(AcDbObjectIdArray(), L"BOARD", 0, kMost), 0.0);
}

TEST_F(Areas, OnLayersPassTheirBounds) {
    const AcDbObjectIdArray boards =
        list({addPolyline(rectangle(3000, 2000), true, L"B"),
              addPolyline(rectangle(1000, 4000), true, L"B"), addCircle({0, 0, 0}, 10, L"B")});
    EXPECT_NEAR(Common::GetAllPlineArea(boards, L"B", 0, 2000), 6.0 + 100 * pi, 1e-9);
    EXPECT_NEAR(Common::GetAllPlineArea(boards, L"B", 2000, kMost), 4.0 + 100 * pi, 1e-9);
    EXPECT_NEAR(Common::GetAllPlineArea(boards, L"B", L"m", 0, kMost, 1000, 3000),
                6.0 + 100 * pi / 1e6, 1e-9);
    EXPECT_NEAR(Common::GetAllPlineArea(boards, L"B", L"m", 0, 4000, 0, 1000), 4.0 + 100 * pi / 1e6,
                1e-9);
}

TEST_F(Areas, OfLayersThatCannotBeReadStayOut) {
    const AcDbObjectId id = addPolyline(rectangle(3000, 2000), true, L"B");
    const WriteHandle<AcDbPolyline> busy(id);
    EXPECT_EQ(Common::GetAllPlineArea(list({id}), L"B", 0, kMost), 0.0);
    EXPECT_EQ(session().output(), L"");
}

TEST_F(Areas, LengthsFollowArcsAndTheClosingSegment) {
    const std::vector<BulgeVertex> circle = {{{0, 0}, 1}, {{10, 0}, 1}};
    for (const bool closed : {true, false}) {
        const double length = closed ? 10 * pi : 5 * pi;
        EXPECT_NEAR(LineTools::GetPlineLength(addPolyline(circle, closed)), length, 1e-9);
        EXPECT_NEAR(LineTools::GetPlineLength(loosePolyline(circle, closed).get()), length, 1e-9);
    }
    EXPECT_EQ(LineTools::GetPlineLength(addLine({0, 0, 0}, {1, 1, 0})), 0.0);
}

TEST_F(Areas, ColourOfTheCurrentLayer) {
    EXPECT_EQ(Common::GetCurLayerColorIndex(), 7);
    const AcDbObjectId layerId = addLayer(L"RED");
    ASSERT_EQ(database()->setClayer(layerId), Acad::eOk);
    const WriteHandle<AcDbLayerTableRecord> layer(layerId);
    AcCmColor red;
    red.setColorIndex(1);
    layer->setColor(red);
    EXPECT_EQ(Common::GetCurLayerColorIndex(), 256); // while someone writes to it
    layer->downgradeOpen();
    EXPECT_EQ(Common::GetCurLayerColorIndex(), 1);
}

TEST(DecimalText, ConvertsRoundsAndFormats) {
    const struct {
        const char* name;
        double value;
        const wchar_t *precision, *unit, *text;
    } cases[] = {
        {"half upwards", 1234.5, L"0", L"毫米", L"1235"},
        {"below half", 1234.49, L"0", L"毫米", L"1234"},
        {"negative half is cut towards zero", -1234.5, L"0", L"毫米", L"-1234"},
        {"negative beyond half", -1.6, L"0", L"毫米", L"-1"},
        {"metres when no unit is named", 1234.5, L"0.00", L"平方", L"1.23"},
        {"metres", 1234.5, L"0.000", L"米（m）", L"1.234"},
        {"millimetres within a longer text", 1234.5, L"0.0", L"毫米（mm）", L"1234.5"},
        {"centimetres", 1234.0, L"0.0", L"厘米", L"123.4"},
        {"decimetres", 1234.0, L"0.00", L"分米", L"12.34"},
        {"first unit named decides", 1234.0, L"0", L"厘米毫米", L"1234"},
        {"length of the pattern counts, not its look", 1.5, L"#####", L"毫米", L"1.500"},
        {"pattern too short for decimals", 1.6, L"x", L"毫米", L"2"},
        {"beyond whole numbers", 1e300, L"0", L"毫米", L"2147483647"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(Common::GetDecimalText(c.value, c.precision, c.unit), c.text) << c.name;
}

TEST(CoefficientOfVariation, IsThePopulationsInPercent) {
    EXPECT_EQ(Common::CalculateCoefficientOgVaration({2, 2, 2}), 0.0);
    EXPECT_DOUBLE_EQ(Common::CalculateCoefficientOgVaration({1, 3}), 50.0);
    EXPECT_DOUBLE_EQ(Common::CalculateCoefficientOgVaration({-1, -3}), -50.0);
    EXPECT_EQ(Common::CalculateCoefficientOgVaration({-1, 1}), 0.0);
    EXPECT_TRUE(std::isnan(Common::CalculateCoefficientOgVaration({})));
}

} // namespace
