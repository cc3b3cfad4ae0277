#include <cmath>
#include <numbers>

#include <dbents.h>

#include "geometry/ac_utils.h"
#include "geometry/line_tools.h"
#include "geometry_fixture.h"

namespace {

using std::numbers::pi;
using testing::DoubleNear;
using testing::ElementsAre;

const double kQuarter = std::tan(pi / 8);

TEST(GetPlineOutTangant, SharpensCorners) {
    const std::vector<AcGePoint3d> board = {{0, 0, 0}, {30, 0, 0}, {30, 20, 0}, {0, 20, 0}};
    const struct {
        const char* name;
        std::vector<BulgeVertex> vertices;
        std::vector<AcGePoint3d> corners;
        bool closed = true;
    } cases[] = {
        {"plain board", {{{0, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}}, board},
        {"clockwise board keeps its direction",
         {{{0, 0}}, {{0, 20}}, {{30, 20}}, {{30, 0}}},
         {{0, 0, 0}, {0, 20, 0}, {30, 20, 0}, {30, 0, 0}}},
        {"vertices within straight runs",
         {{{0, 0}}, {{10, 0}}, {{20, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}, {{0, 10}}},
         board},
        {"starting within a straight run",
         {{{10, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}, {{0, 0}}},
         board},
        {"repeated vertices before an arc",
         {{{0, 0}}, {{0, 0}, 1}, {{30, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}, {{0, 0}}},
         {{0, -15, 0}, {30, -15, 0}, {30, 20, 0}, {0, 20, 0}}},
        {"rounded corners, starting with a side",
         {{{2, 0}},
          {{28, 0}, kQuarter},
          {{30, 2}},
          {{30, 18}, kQuarter},
          {{28, 20}},
          {{2, 20}, kQuarter},
          {{0, 18}},
          {{0, 2}, kQuarter}},
         board},
        {"rounded corners, starting with an arc",
         {{{0, 2}, kQuarter},
          {{2, 0}},
          {{28, 0}, kQuarter},
          {{30, 2}},
          {{30, 18}, kQuarter},
          {{28, 20}},
          {{2, 20}, kQuarter},
          {{0, 18}}},
         board},
        {"rounded clockwise",
         {{{0, 0}}, {{0, 18}, -kQuarter}, {{2, 20}}, {{30, 20}}, {{30, 0}}},
         {{0, 0, 0}, {0, 20, 0}, {30, 20, 0}, {30, 0, 0}}},
        {"rounded corner drawn as two arcs",
         {{{0, 0}},
          {{20, 0}, std::tan(pi / 16)},
          {{20 + 10 * std::sin(pi / 4), 10 - 10 * std::cos(pi / 4)}, std::tan(pi / 16)},
          {{30, 10}},
          {{30, 20}},
          {{0, 20}}},
         {{0, 0, 0},
          {20 + 10 * std::tan(pi / 8), 0, 0},
          {30, 10 - 10 * std::tan(pi / 8), 0},
          {30, 20, 0},
          {0, 20, 0}}},
        {"half circles at the ends", {{{10, 0}}, {{20, 0}, 1}, {{20, 20}}, {{10, 20}, 1}}, board},
        {"circle of two arcs",
         {{{0, 10}, 1}, {{20, 10}, 1}},
         {{0, 0, 0}, {20, 0, 0}, {20, 20, 0}, {0, 20, 0}}},
        {"three quarters of a circle",
         {{{10, 0}, std::tan(3 * pi / 8)}, {{0, 10}}},
         {{10, 0, 0}, {20, 0, 0}, {20, 20, 0}, {0, 20, 0}, {0, 10, 0}}},
        {"arc inward is its chord",
         {{{0, 0}}, {{30, 0}}, {{30, 15}, -kQuarter}, {{25, 20}}, {{0, 20}}},
         {{0, 0, 0}, {30, 0, 0}, {30, 15, 0}, {25, 20, 0}, {0, 20, 0}}},
        {"arc inward within a straight run",
         {{{0, 0}}, {{10, 0}, -1}, {{20, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}},
         board},
        {"triangle with a rounded corner",
         {{{0, 0}},
          {{20, 0}, std::tan(pi / 6)},
          {{20 + std::sqrt(3.0), 3}},
          {{15 + std::sqrt(3.0), 3 + 5 * std::sqrt(3.0)}}},
         {{0, 0, 0},
          {20 + 2 * std::sqrt(3.0), 0, 0},
          {15 + std::sqrt(3.0), 3 + 5 * std::sqrt(3.0), 0}}},
        {"open board", {{{0, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}}, board, false},
        {"back at its start", {{{0, 0}}, {{30, 0}}, {{30, 20}}, {{0, 20}}, {{0, 0}}}, board, false},
        {"one vertex", {{{3, 3}}}, {}},
        {"none", {}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        expectPoints(LineTools::GetPlineOutTangant(loosePolyline(c.vertices, c.closed).get()),
                     c.corners, 1e-6);
    }
    EXPECT_EQ(LineTools::GetPlineOutTangant(nullptr).length(), 0);
}

TEST(FindLinesAngle, IsThatOfMostOfTheLength) {
    const ZelArcLine level({0, 0, 0}, {10, 0, 0});
    const ZelArcLine back({10, 5, 0}, {3, 5, 0});
    const ZelArcLine up({0, 0, 0}, {0, 15, 0});
    const ZelArcLine arc({0, 0, 0}, {100, 100, 0}, 0.5);
    EXPECT_NEAR(LineTools::FindLinesAngle({up, level, back, arc}, 0.01), 0.0, 1e-12);
    EXPECT_NEAR(LineTools::FindLinesAngle({level, up}, 0.01), pi / 2, 1e-12);
    EXPECT_NEAR(LineTools::FindLinesAngle({ZelArcLine({0, 0, 0}, {-1, -1, 0})}, 0.01), pi / 4,
                1e-12);
    const ZelArcLine nearlyLevel({0, 0, 0}, {8, 0.04, 0});
    EXPECT_NEAR(LineTools::FindLinesAngle({level, nearlyLevel, up}, 0.01), 0.0, 1e-12);
    EXPECT_NEAR(LineTools::FindLinesAngle({level, nearlyLevel, up}, 0.001), pi / 2, 1e-12);
    EXPECT_EQ(LineTools::FindLinesAngle({arc}, 0.01), 0.0);
}

class Intersections : public GeometryTest {
protected:
    std::vector<double> stretch(const AcDbObjectId& id, const AcGePoint3d& from,
                                const AcGePoint3d& to) {
        CArray<double, double> bulges;
        LineTools::GetSectBulgeFromPline(id, from, to, bulges);
        return listed(bulges);
    }
};

TEST_F(Intersections, StretchOfAPolylineCutsItsArcs) {
    // Straight to (10, 0), half a circle up to (10, 10), straight back to (0, 10).
    const std::vector<BulgeVertex> vertices = {{{0, 0}}, {{10, 0}, 1}, {{10, 10}}, {{0, 10}}};
    const AcDbObjectId closed = addPolyline(vertices);
    const AcDbObjectId open = addPolyline(vertices, false);
    const auto near = [](double value) { return DoubleNear(value, 1e-9); };

    EXPECT_THAT(stretch(closed, {5, 0, 0}, {5, 10, 0}), ElementsAre(0.0, near(1), 0.0));
    EXPECT_THAT(stretch(closed, {5, -3, 0}, {15, 5, 0}), ElementsAre(0.0, near(kQuarter)));
    EXPECT_THAT(stretch(closed, {15, 5, 0}, {10, 10, 0}), ElementsAre(near(kQuarter)));
    EXPECT_THAT(stretch(closed, {2, 0, 0}, {7, 0, 0}), ElementsAre(0.0));
    EXPECT_THAT(stretch(closed, {7, 0, 0}, {2, 0, 0}),
                ElementsAre(0.0, near(1), 0.0, 0.0, 0.0)); // all the way round
    EXPECT_THAT(stretch(closed, {5, 10, 0}, {5, 0, 0}), ElementsAre(0.0, 0.0, 0.0));

    EXPECT_THAT(stretch(open, {5, 0, 0}, {15, 5, 0}), ElementsAre(0.0, near(kQuarter)));
    EXPECT_THAT(stretch(open, {5, 10, 0}, {15, 5, 0}), ElementsAre(0.0, near(-kQuarter)));
    EXPECT_TRUE(stretch(addLine({0, 0, 0}, {9, 0, 0}), {1, 0, 0}, {2, 0, 0}).empty());
}

TEST_F(Intersections, ComeByDistanceFromTheStart) {
    const AcGePoint3dArray square = pointArray({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    expectPoints(LineTools::GetInterSectPt({-5, 5, 0}, {20, 5, 0}, square),
                 {{0, 5, 0}, {10, 5, 0}});
    expectPoints(LineTools::GetInterSectPt({20, 5, 0}, {-5, 5, 0}, square),
                 {{10, 5, 0}, {0, 5, 0}});
    // A corner belongs to two sides and counts once; the last side closes the outline.
    expectPoints(LineTools::GetInterSectPt({-5, -5, 0}, {5, 5, 0}, square), {{0, 0, 0}});
    expectPoints(LineTools::GetInterSectPt({2, 5, 0}, {-2, 5, 0}, square), {{0, 5, 0}});
    expectPoints(LineTools::GetInterSectPt({2, 5, 0}, {8, 5, 0}, square), {});
    expectPoints(LineTools::GetInterSectPt({2, 5, 0}, {8, 5, 0}, AcGePoint3dArray()), {});
}

TEST_F(Intersections, MeetAllKindsOfCurves) {
    AcDbObjectIdArray ids;
    ids.append(addCircle({30, 0, 0}, 5));
    ids.append(addLine({10, -5, 0}, {10, 5, 0}));
    ids.append(addPolyline({{{50, -10}, 1}, {{50, 10}}})); // half disc to x = 60
    auto arc = std::make_unique<AcDbArc>(AcGePoint3d(70, 0, 0), 5.0, 3 * pi / 2, pi / 2);
    arc->setDatabaseDefaults(database());
    ids.append(add(std::move(arc)));
    auto point = std::make_unique<AcDbPoint>(AcGePoint3d(5, 0, 0));
    point->setDatabaseDefaults(database());
    ids.append(add(std::move(point)));
    ids.append(AcDbObjectId::kNull);

    const ZelArcLine line({0, 0, 0}, {100, 0, 0});
    expectPoints(LineTools::GetInterSectPt(line, ids),
                 {{10, 0, 0}, {25, 0, 0}, {35, 0, 0}, {50, 0, 0}, {60, 0, 0}, {75, 0, 0}}, 1e-6);
    const ZelArcLine halfCircle({8, 0, 0}, {12, 0, 0}, 1);
    expectPoints(LineTools::GetInterSectPt(halfCircle, ids), {{10, -2, 0}}, 1e-6);
}

TEST_F(Intersections, SeeMirroredPolylinesFromAbove) {
    // Seen from below the half disc bulges the other way.
    auto polyline = loosePolyline({{{-50, -10}, -1}, {{-50, 10}}});
    polyline->setNormal(-AcGeVector3d::kZAxis);
    polyline->setDatabaseDefaults(database());
    AcDbObjectIdArray ids;
    ids.append(add(std::move(polyline)));
    expectPoints(LineTools::GetInterSectPt(ZelArcLine({0, 0, 0}, {100, 0, 0}), ids),
                 {{50, 0, 0}, {60, 0, 0}}, 1e-6);
}

TEST(GetArcBulge, RoundsACorner) {
    double bulge = 99;
    AcGePoint2d center;
    ASSERT_TRUE(AcUtils::getArcBulge(bulge, center, {10, 0}, {0, 10}, {10, 10}));
    EXPECT_NEAR(bulge, kQuarter, 1e-12);
    EXPECT_LE(center.distanceTo({0, 0}), 1e-9);
    ASSERT_TRUE(AcUtils::getArcBulge(bulge, center, {0, 10}, {10, 0}, {10, 10}));
    EXPECT_NEAR(bulge, -kQuarter, 1e-12);
    // Across the x axis the directions differ by nearly a full circle, as they stand.
    ASSERT_TRUE(AcUtils::getArcBulge(bulge, center, {10, -10}, {10, 10}, {20, 0}));
    EXPECT_NEAR(bulge, std::tan((pi / 4 - 7 * pi / 4) / 4), 1e-12);

    bulge = 99;
    EXPECT_FALSE(AcUtils::getArcBulge(bulge, center, {1, 1}, {1, 1 + 5e-7}, {2, 2}));
    EXPECT_FALSE(AcUtils::getArcBulge(bulge, center, {0, 0}, {10, 0}, {5, 0}));
    EXPECT_EQ(bulge, 99);
}

TEST(SortPoints, PutsPointsOffTheDirectionFirst) {
    AcGePoint3dArray points = pointArray(
        {{0, 0, 0}, {9, 0, 0}, {0, 4, 0}, {3, 0, 0}, {0, -8, 0}, {6, 0.1, 0}, {-4, 0, 0}});
    AcUtils::sortPoints(points, 0.0, 0.05);
    expectPoints(points,
                 {{0, -8, 0}, {0, 4, 0}, {-4, 0, 0}, {0, 0, 0}, {3, 0, 0}, {6, 0.1, 0}, {9, 0, 0}});
    // The tolerance itself is off the direction.
    points = pointArray({{0, 0, 0}, {0, 5, 0}, {5, 0, 0}});
    AcUtils::sortPoints(points, 0.0, pi / 2);
    expectPoints(points, {{0, 5, 0}, {0, 0, 0}, {5, 0, 0}});
    AcGePoint3dArray none;
    AcUtils::sortPoints(none, 0.0, 1.0);
    EXPECT_EQ(none.length(), 0);
}

} // namespace
