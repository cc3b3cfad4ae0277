#include "OrnCore/arc_line.h"

#include <numbers>

#include "support/session_fixture.h"

namespace {

using std::numbers::pi;

const double kQuarter = std::tan(pi / 8);

void expectPoint(const AcGePoint3d& actual, const AcGePoint3d& expected) {
    EXPECT_LE(actual.distanceTo(expected), 1e-9)
        << actual.x << ", " << actual.y << ", " << actual.z;
}

void expectPoints(const AcGePoint3dArray& actual, const std::vector<AcGePoint3d>& expected) {
    ASSERT_EQ(actual.length(), static_cast<int>(expected.size()));
    for (int i = 0; i < actual.length(); ++i)
        expectPoint(actual[i], expected[static_cast<std::size_t>(i)]);
}

TEST(ArcLine, TellsItsMeasures) {
    const CArcLine line({1, 1, 5}, {4, 5, 5});
    EXPECT_FALSE(line.IsArc());
    EXPECT_DOUBLE_EQ(line.GetLength(), 5.0);
    EXPECT_DOUBLE_EQ(line.GetAngle(), std::atan2(4.0, 3.0));
    EXPECT_EQ(line.GetSweep(), 0.0);
    expectPoint(line.GetMidPoint(), {2.5, 3, 5});
    expectPoint(line.GetPointAt(0.2), {1.6, 1.8, 5});
    AcGePoint3d center(9, 9, 9);
    EXPECT_FALSE(line.GetCenter(center));
    expectPoint(center, {9, 9, 9});

    const CArcLine arc({10, 0, 5}, {0, 10, 5}, kQuarter); // a quarter about (0, 0)
    EXPECT_TRUE(arc.IsArc());
    EXPECT_NEAR(arc.GetLength(), 5 * pi, 1e-9);
    EXPECT_NEAR(arc.GetAngle(), 3 * pi / 4, 1e-12);
    EXPECT_NEAR(arc.GetSweep(), pi / 2, 1e-12);
    EXPECT_NEAR(arc.GetRadius(), 10.0, 1e-9);
    EXPECT_TRUE(arc.GetCenter(center));
    expectPoint(center, {0, 0, 5});
    expectPoint(arc.GetMidPoint(), {10 * std::cos(pi / 4), 10 * std::sin(pi / 4), 5});
    expectPoint(arc.GetPointAt(1.0 / 3.0), {10 * std::cos(pi / 6), 10 * std::sin(pi / 6), 5});
    EXPECT_LE((arc.GetStartTangent() - AcGeVector3d(0, 1, 0)).length(), 1e-12);
    EXPECT_LE((arc.GetEndTangent() - AcGeVector3d(-1, 0, 0)).length(), 1e-12);

    EXPECT_DOUBLE_EQ(CArcLine({0, 0, 0}, {0, -2, 0}).GetAngle(), 3 * pi / 2);
    EXPECT_EQ(CArcLine({0, 0, 0}, {1, -1e-20, 0}).GetAngle(), 0.0);
    EXPECT_EQ(CArcLine({3, 3, 0}, {3, 3, 0}, 0.5).GetStartTangent().length(), 0.0);
}

TEST(ArcLine, TellsTheSideOfAPoint) {
    const ZelArcLine line({0, 0, 0}, {10, 0, 0});
    const ZelArcLine arc({10, 0, 0}, {0, 10, 0}, kQuarter);
    const ZelArcLine clockwise = arc.GetReverse();
    const struct {
        const char* name;
        const ZelArcLine& piece;
        AcGePoint3d point;
        int side;
    } cases[] = {
        {"left", line, {5, 2, 0}, 2},
        {"right", line, {5, -2, 0}, -2},
        {"right beyond the end", line, {50, -2, 0}, -2},
        {"on it", line, {5, 0.9, 0}, 1},
        {"at the tolerance", line, {5, 1, 0}, 1},
        {"at the start", line, {-0.5, 0.5, 0}, 0},
        {"at the end", line, {10.5, 0, 0}, 0},
        {"in line with it", line, {20, 0.5, 0}, -1},
        {"height takes no part", line, {5, 0, 99}, 1},
        {"inside the circle", arc, {1, 1, 0}, 2},
        {"outside the circle", arc, {20, 20, 0}, -2},
        {"outside where the circle goes on", arc, {-20, -20, 0}, -2},
        {"on the arc", arc, {7, 7, 0}, 1},
        {"on the circle off the arc", arc, {-7, -7, 0}, -1},
        {"inside a clockwise circle", clockwise, {1, 1, 0}, -2},
        {"outside a clockwise circle", clockwise, {20, 20, 0}, 2},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.piece.PtInLine(c.point, 1.0), c.side) << c.name;
}

TEST(ArcLine, FindsTangents) {
    const ZelArcLine half({5, 0, 0}, {-5, 0, 0}, 1); // upper half about (0, 0)
    const double x = 5 * 0.5;
    const double y = 5 * std::sqrt(0.75);
    expectPoints(half.GetTangentPoints({0, 10, 0}), {{y, x, 0}, {-y, x, 0}});
    expectPoints(half.GetTangentPoints({10, 0, 0}), {{x, y, 0}}); // the other is on the lower half
    expectPoints(half.GetTangentPoints({0, 5, 0}), {{0, 5, 0}});
    expectPoints(half.GetTangentPoints({1, 1, 0}), {});
    expectPoints(ZelArcLine({0, 0, 0}, {1, 0, 0}).GetTangentPoints({5, 5, 0}), {});

    AcGePoint3d corner;
    EXPECT_TRUE(ZelArcLine({10, 0, 0}, {0, 10, 0}, kQuarter).GetTangentCorner(corner));
    expectPoint(corner, {10, 10, 0});
    EXPECT_FALSE(half.GetTangentCorner(corner));
    EXPECT_FALSE(ZelArcLine({0, 0, 0}, {1, 0, 0}).GetTangentCorner(corner));
}

TEST(ArcLine, MakesParallelsPartsAndReverses) {
    ZelArcLine other;
    ASSERT_TRUE(ZelArcLine({0, 0, 0}, {10, 0, 0}).GetOffset(2, other));
    expectPoint(other.GetStart(), {0, 2, 0});
    expectPoint(other.GetEnd(), {10, 2, 0});
    const ZelArcLine arc({10, 0, 0}, {0, 10, 0}, kQuarter);
    ASSERT_TRUE(arc.GetOffset(4, other)); // to the left is towards the centre
    EXPECT_NEAR(other.GetRadius(), 6, 1e-9);
    expectPoint(other.GetStart(), {6, 0, 0});
    ASSERT_TRUE(arc.GetOffset(-4, other));
    EXPECT_NEAR(other.GetRadius(), 14, 1e-9);
    ASSERT_TRUE(arc.GetReverse().GetOffset(20, other));
    EXPECT_NEAR(other.GetRadius(), 30, 1e-9);
    EXPECT_FALSE(arc.GetOffset(10, other));
    EXPECT_FALSE(arc.GetReverse().GetOffset(-10, other));

    const ZelArcLine part = arc.GetPart({20, 20, 0}, {-5, 5, 0});
    expectPoint(part.GetStart(), arc.GetMidPoint());
    expectPoint(part.GetEnd(), {0, 10, 0});
    EXPECT_NEAR(part.GetSweep(), pi / 4, 1e-9);
    EXPECT_NEAR(arc.GetPart({-5, 5, 0}, {20, 20, 0}).GetSweep(), -pi / 4, 1e-9);
    EXPECT_EQ(arc.GetReverse().GetBulge(), -kQuarter);

    expectPoint(arc.GetClosestPoint({3, 4, 0}), {6, 8, 0});
    EXPECT_NEAR(arc.GetDistance({3, 4, 0}), 5.0, 1e-9);
}

TEST(ArcLine, MeetsOthersAndTheirCarriers) {
    const ZelArcLine line({0, 0, 5}, {4, 4, 5});
    expectPoints(line.GetInterSect(ZelArcLine({0, 4, 0}, {4, 0, 0}), 1e-6), {{2, 2, 5}});
    expectPoints(line.GetInterSect(ZelArcLine({0, 20, 0}, {20, 0, 0}), 1e-6), {});
    expectPoints(line.GetCarrierInterSect(ZelArcLine({0, 20, 0}, {1, 19, 0})), {{10, 10, 5}});
    expectPoints(line.GetCarrierInterSect(ZelArcLine({0, 1, 0}, {1, 2, 0})), {});
    const ZelArcLine level({1, 0, 0}, {2, 0, 0});
    expectPoints(level.GetCarrierInterSect(ZelArcLine({10, 0, 0}, {0, 10, 0}, kQuarter)),
                 {{-10, 0, 0}, {10, 0, 0}});
}

TEST(ArcLine, TellsParallels) {
    const ZelArcLine level({0, 0, 0}, {10, 0, 0});
    EXPECT_TRUE(level.IsParallel(ZelArcLine({5, 5, 0}, {-5, 5, 0}), 1e-9));
    EXPECT_TRUE(level.IsParallel(ZelArcLine({0, 0, 0}, {10, -0.005, 0}), 0.001));
    EXPECT_FALSE(level.IsParallel(ZelArcLine({0, 0, 0}, {10, -0.02, 0}), 0.001));
    EXPECT_FALSE(level.IsParallel(ZelArcLine({0, 0, 0}, {10, 0, 0}, 0.1), 1.0));
    const std::vector<ZelArcLine> pieces = {level, ZelArcLine({0, 0, 0}, {0, 3, 0}),
                                            ZelArcLine({9, 1, 0}, {2, 1, 0}),
                                            ZelArcLine({0, 0, 0}, {5, 0, 0}, 1)};
    EXPECT_EQ(ZelArcLine::GetParallelLines(pieces, 0.0, 1e-6).size(), 2U);
    EXPECT_EQ(ZelArcLine::GetParallelLines(pieces, pi / 2, 1e-6).size(), 1U);
    EXPECT_EQ(ZelArcLine::GetParallelLines(pieces, pi, 1e-6).size(), 2U);
}

class ArcLineOfPolyline : public test_support::SessionTest {};

TEST_F(ArcLineOfPolyline, TakesItApart) {
    AcDbPolyline polyline;
    EXPECT_TRUE(ZelArcLine::CreateLine(&polyline).empty());
    EXPECT_TRUE(ZelArcLine::CreateLine(nullptr).empty());
    polyline.addVertexAt(0, {0, 0});
    polyline.addVertexAt(1, {10, 0}, 1.0);
    polyline.addVertexAt(2, {10, 10});
    polyline.addVertexAt(3, {10, 10}, 0.5); // of no length
    polyline.addVertexAt(4, {0, 10}, 0.25);
    polyline.setElevation(3);

    const std::vector<ZelArcLine> open = ZelArcLine::CreateLine(&polyline);
    ASSERT_EQ(open.size(), 3U);
    EXPECT_EQ(open[1].GetBulge(), 1.0);
    EXPECT_EQ(open[2].GetBulge(), 0.5);
    expectPoint(open[2].GetEnd(), {0, 10, 3});

    polyline.setClosed(true);
    const std::vector<ZelArcLine> closed = ZelArcLine::CreateLine(&polyline);
    ASSERT_EQ(closed.size(), 4U);
    EXPECT_EQ(closed[3].GetBulge(), 0.25);
    expectPoint(closed[3].GetEnd(), {0, 0, 3});

    polyline.setNormal(-AcGeVector3d::kZAxis);
    const std::vector<ZelArcLine> mirrored = ZelArcLine::CreateLine(&polyline);
    ASSERT_EQ(mirrored.size(), 4U);
    EXPECT_EQ(mirrored[1].GetBulge(), -1.0);
    expectPoint(mirrored[1].GetStart(), {-10, 0, -3});
}

} // namespace
