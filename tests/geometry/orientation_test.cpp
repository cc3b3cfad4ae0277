#include <cmath>
#include <numbers>

#include "geometry/line_tools.h"
#include "geometry_fixture.h"

namespace {

using std::numbers::pi;

TEST(AngleVertical, TellsQuarterTurnsWithoutTheirBounds) {
    const double quarter = pi / 2;
    const struct {
        const char* name;
        double a1, a2, tol;
        int vertical;
    } cases[] = {
        {"quarter turn", 0, quarter, 0.1, 1},
        {"quarter turn the other way", quarter, 0, 0.1, 1},
        {"three quarters", 0, 3 * quarter, 0.1, 1},
        {"exact, with the least tolerance", 0, quarter, 1e-12, 1},
        {"bounds excluded", 0, quarter, 0.0, 0},
        {"upper bound excluded", 0, quarter + 0.5, 0.5, 0},
        {"within the upper bound", 0, quarter + 0.09, 0.1, 1},
        {"within the lower bound", 0, quarter - 0.09, 0.1, 1},
        {"beyond the tolerance", 0, quarter + 0.11, 0.1, 0},
        {"within three quarters' bounds", 0, 3 * quarter + 0.09, 0.1, 1},
        {"beyond three quarters' bounds", 0, 3 * quarter - 0.11, 0.1, 0},
        {"parallel", 0, pi, 0.1, 0},
        {"a quarter and a full turn, not brought into one turn", 0, 5 * quarter, 0.1, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(LineTools::AngleVertical(c.a1, c.a2, c.tol), c.vertical) << c.name;
}

TEST(FindPoint, LooksForANearerPointInThePlane) {
    const AcGePoint3dArray points = pointArray({{0, 0, 0}, {10, 0, 50}});
    EXPECT_TRUE(LineTools::FindPoint({10, 0.5, 0}, points, 0.6));
    EXPECT_FALSE(LineTools::FindPoint({10, 0.5, 0}, points, 0.5)); // not at the tolerance itself
    EXPECT_FALSE(LineTools::FindPoint({5, 0, 0}, points, 1.0));
    EXPECT_FALSE(LineTools::FindPoint({0, 0, 0}, AcGePoint3dArray(), 1.0));
}

TEST(IsClockWise, IsTrueForCounterClockwiseOrderInWholeUnits) {
    const struct {
        const char* name;
        AcGePoint3dArray points;
        bool answer;
    } cases[] = {
        {"counter-clockwise square", pointArray({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}),
         true},
        {"clockwise square", pointArray({{0, 10, 0}, {10, 10, 0}, {10, 0, 0}, {0, 0, 0}}), false},
        {"square of one unit", pointArray({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), true},
        {"square within one unit", pointArray({{0, 0, 0}, {0.9, 0, 0}, {0.9, 0.9, 0}, {0, 0.9, 0}}),
         false},
        {"fractions are cut towards zero, not down or to the nearest",
         pointArray({{0, 0, 0}, {5.5, -0.9, 0}, {5.5, 0.05, 0}}), false},
        {"concave outline",
         pointArray({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {50, 20, 0}, {0, 100, 0}}), true},
        {"larger than 32 bits squared",
         pointArray({{0, 0, 0}, {90000, 0, 0}, {90000, 90000, 0}, {0, 90000, 0}}), true},
        {"coordinates beyond 32 bits", pointArray({{0, 0, 0}, {1e300, 0, 0}, {0, std::nan(""), 0}}),
         false},
        {"two points", pointArray({{0, 0, 0}, {10, 0, 0}}), false},
        {"none", AcGePoint3dArray(), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(LineTools::IsClockWise(c.points), c.answer) << c.name;
}

TEST(GetClockWisePtary, KeepsOnlyPointsThatTurnRight) {
    const std::vector<AcGePoint3d> clockwise = {{0, 0, 0}, {0, 10, 0}, {10, 10, 0}, {10, 0, 0}};
    const std::vector<AcGePoint3d> counter(clockwise.rbegin(), clockwise.rend());
    AcGePoint3dArray points = pointArray({{0, 0, 0}, {0, 10, 0}, {10, 10, 0}, {10, 0, 0}});
    LineTools::GetClockWisePtary(points);
    expectPoints(points, clockwise);

    points.reverse();
    LineTools::GetClockWisePtary(points);
    expectPoints(points, clockwise);

    // Less than a unit off the first side is no side.
    points = pointArray({{0, 0, 0}, {0, 10, 0}, {1.9, 10, 0}, {1.9, 0, 0}});
    LineTools::GetClockWisePtary(points);
    expectPoints(points, {{1.9, 0, 0}, {1.9, 10, 0}, {0, 10, 0}, {0, 0, 0}});

    points = pointArray({{0, 0, 0}, {0, 10, 0}, {2.1, 10, 0}, {2.1, 0, 0}, {1, -3, 0}});
    LineTools::GetClockWisePtary(points);
    expectPoints(points, {{0, 0, 0}, {0, 10, 0}, {2.1, 10, 0}, {2.1, 0, 0}, {1, -3, 0}});
}

TEST(GetBulgeFromTwoPointAndCenter, MeasuresTheSmallerArc) {
    const struct {
        const char* name;
        AcGePoint3d p1, p2, center;
        double bulge;
    } cases[] = {
        {"quarter circle", {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, std::tan(pi / 8)},
        {"points the other way round", {0, 1, 0}, {1, 0, 0}, {0, 0, 0}, std::tan(pi / 8)},
        {"half circle", {-5, 0, 0}, {5, 0, 0}, {0, 0, 0}, 1.0},
        {"third of a circle",
         {2, 0, 0},
         {2 * std::cos(2 * pi / 3), 2 * std::sin(2 * pi / 3), 0},
         {0, 0, 0},
         std::tan(pi / 6)},
        {"heights take no part", {1, 0, 7}, {0, 1, -2}, {0, 0, 30}, std::tan(pi / 8)},
        {"one point", {1, 0, 0}, {1, 0, 0}, {0, 0, 0}, 0.0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(LineTools::GetBulgeFromTwoPointAndCenter(c.p1, c.p2, c.center), c.bulge, 1e-12)
            << c.name;
}

class Direction : public GeometryTest {};

TEST_F(Direction, WindingCountsTurnsOfClosedPolylines) {
    const struct {
        const char* name;
        std::vector<BulgeVertex> vertices;
        bool closed;
        int answered, winding;
    } cases[] = {
        {"counter-clockwise", {{{0, 0}}, {{10, 0}}, {{10, 10}}}, true, 1, 1},
        {"clockwise", {{{0, 0}}, {{10, 10}}, {{10, 0}}}, true, 1, -1},
        {"clockwise circle", {{{0, 0}, -1}, {{10, 0}, -1}}, true, 1, -1},
        {"open", {{{0, 0}}, {{10, 0}}, {{10, 10}}}, false, 0, 99},
        {"back at the start", {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 0}}}, false, 1, 1},
        {"back within rounding", {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 4e-4}}}, false, 1, 1},
        {"off in the third decimal", {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 6e-4}}}, false, 0, 99},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        int winding = 99;
        const auto polyline = loosePolyline(c.vertices, c.closed);
        EXPECT_EQ(LineTools::polyWindingNumber(polyline.get(), winding), c.answered);
        EXPECT_EQ(winding, c.winding);
    }
    int winding = 99;
    EXPECT_EQ(LineTools::polyWindingNumber(nullptr, winding), 0);
}

TEST_F(Direction, InnerPointIsTheFirstMiddleWithin) {
    const struct {
        const char* name;
        std::vector<BulgeVertex> vertices;
        AcGePoint3d inner;
    } cases[] = {
        {"triangle", {{{0, 0}}, {{8, 0}}, {{4, 8}}}, {4, 4, 0}},
        {"square", {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}}, {5, 5, 0}},
        {"first middle outside, second inside",
         {{{0, 0}}, {{5, 5}}, {{10, 0}}, {{10, 10}}, {{0, 10}}},
         {7.5, 7.5, 0}},
        {"middles on the outline do not count",
         {{{0, 0}}, {{5, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}},
         {7.5, 5, 0}},
        {"all middles taken out by an arc",
         {{{0, 0}, -0.6}, {{10, 0}}, {{10, 4}}, {{0, 4}}},
         {0, 0, 0}},
        {"two vertices", {{{1, 1}}, {{5, 5}, 1}}, {0, 0, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto polyline = loosePolyline(c.vertices);
        const AcGePoint3d inner = LineTools::GetPtInPolyLine(polyline.get());
        EXPECT_LE(inner.distanceTo(c.inner), 1e-9) << inner.x << ", " << inner.y;
    }
    EXPECT_EQ(LineTools::GetPtInPolyLine(nullptr), AcGePoint3d::kOrigin);
}

} // namespace
