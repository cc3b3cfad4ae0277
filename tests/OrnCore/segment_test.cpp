#include <numbers>

#include <gmock/gmock.h>

#include "OrnCore/bulge_segment.h"
#include "OrnCore/segment_intersection.h"
#include "flattened.h"

namespace {

using orncore::Segment;
using std::numbers::pi;

const double kQuarterTurn = std::tan(pi / 8);

void expectPoint(const AcGePoint2d& actual, const AcGePoint2d& expected, double tolerance = 1e-9) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

TEST(Segment, ClosestPointAndDistance) {
    const double diagonal = std::numbers::sqrt2 / 2;
    const Segment line = {{0, 0}, {10, 0}};
    const Segment quarter = {{1, 0}, {0, 1}, kQuarterTurn};       // about (0, 0), radius 1
    const Segment clockwise = {{0, 1}, {1, 0}, -kQuarterTurn};    // the same places
    const Segment great = {{0, 1}, {1, 0}, std::tan(3 * pi / 8)}; // the rest of that circle
    const Segment shallow = {{0, 0}, {1000, 0}, 1e-10};
    const struct {
        const char* name;
        Segment segment;
        AcGePoint2d point, closest;
    } cases[] = {
        {"beside a line", line, {3, 4}, {3, 0}},
        {"before a line", line, {-3, 4}, {0, 0}},
        {"behind a line", line, {13, -4}, {10, 0}},
        {"on a line", line, {3, 0}, {3, 0}},
        {"outside an arc", quarter, {3, 3}, {diagonal, diagonal}},
        {"inside an arc", quarter, {0.1, 0.1}, {diagonal, diagonal}},
        {"beyond the centre, nearer the start", quarter, {-1, -2}, {1, 0}},
        {"before an arc's start", quarter, {2, -1}, {1, 0}},
        {"outside a clockwise arc", clockwise, {3, 3}, {diagonal, diagonal}},
        {"inside a clockwise arc", clockwise, {0.1, 0.1}, {diagonal, diagonal}},
        {"in the gap of a great arc", great, {3, 2.9}, {1, 0}},
        {"beside a great arc", great, {-2, -2}, {-diagonal, -diagonal}},
        {"past a great arc", great, {1.5, -0.5}, {1.5 / std::sqrt(2.5), -0.5 / std::sqrt(2.5)}},
        {"beside a shallow arc", shallow, {500, 7}, {500, -5e-8}},
        {"without length", {{2, 2}, {2, 2}, 0.5}, {5, 6}, {2, 2}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        expectPoint(orncore::closestPoint(c.segment, c.point), c.closest);
        EXPECT_NEAR(orncore::distanceTo(c.segment, c.point),
                    std::hypot(c.point.x - c.closest.x, c.point.y - c.closest.y), 1e-9);
    }
}

TEST(Segment, PositionsGoThereAndBack) {
    for (const double bulge : {0.0, 1e-7, 0.3, -0.9, 1.0, -2.5, 8.0}) {
        const Segment segment = {{3, 1}, {7, -2}, bulge};
        SCOPED_TRACE(bulge);
        expectPoint(orncore::pointAt(segment, -1.0), segment.start);
        expectPoint(orncore::pointAt(segment, 1.0), segment.end);
        for (const double s : {-1.0, -0.6, 0.0, 0.25, 1.0}) {
            const AcGePoint2d point = orncore::pointAt(segment, s);
            EXPECT_NEAR(orncore::positionOf(segment, point), s, 1e-9);
            EXPECT_NEAR(orncore::distanceTo(segment, point), 0.0, 1e-9);
        }
    }
}

TEST(Segment, PartsAddUpToTheWhole) {
    for (const double bulge : {0.0, 1e-7, 0.3, -0.9, -2.5, 8.0}) {
        const Segment segment = {{3, 1}, {7, -2}, bulge};
        const Segment first = orncore::partOf(segment, -1.0, 0.3);
        const Segment second = orncore::partOf(segment, 0.3, 1.0);
        SCOPED_TRACE(bulge);
        EXPECT_NEAR(orncore::lengthOf(first) + orncore::lengthOf(second),
                    orncore::lengthOf(segment), 1e-9);
        EXPECT_NEAR(orncore::sweepOf(first.bulge) + orncore::sweepOf(second.bulge),
                    orncore::sweepOf(bulge), 1e-9);
        EXPECT_NEAR(orncore::partOf(segment, 1.0, -1.0).bulge, -bulge, 1e-9);
    }
}

TEST(Intersect, FindsEveryMeetingOnce) {
    const Segment upper = {{10, 0}, {-10, 0}, 1}; // half circle about (0, 0)
    const double root = std::sqrt(75.0);
    const struct {
        const char* name;
        Segment first, second;
        std::vector<AcGePoint2d> points;
        double tolerance = 1e-6;
    } cases[] = {
        {"crossing lines", {{0, 0}, {10, 10}}, {{0, 10}, {10, 0}}, {{5, 5}}},
        {"lines that would cross farther on", {{0, 0}, {4, 4}}, {{0, 10}, {10, 0}}, {}},
        {"lines meeting at an end", {{0, 0}, {5, 5}}, {{0, 10}, {10, 0}}, {{5, 5}}},
        {"parallel lines", {{0, 0}, {10, 0}}, {{0, 1}, {10, 1}}, {}},
        {"lines one behind the other", {{0, 0}, {4, 0}}, {{6, 0}, {9, 0}}, {}},
        {"overlapping lines", {{0, 0}, {10, 0}}, {{14, 0}, {6, 0}}, {{6, 0}, {10, 0}}},
        {"line within a line", {{0, 0}, {10, 0}}, {{7, 0}, {3, 0}}, {{3, 0}, {7, 0}}},
        {"gap within the tolerance", {{0, 0}, {10, 0}}, {{5, 0.5}, {5, 9}}, {{5, 0}}, 0.6},
        {"gap beyond the tolerance", {{0, 0}, {10, 0}}, {{5, 0.7}, {5, 9}}, {}, 0.6},
        {"line across a half circle", {{-20, 5}, {20, 5}}, upper, {{-root, 5}, {root, 5}}},
        {"in the order of the first", upper, {{-20, 5}, {20, 5}}, {{root, 5}, {-root, 5}}},
        {"line across the missing half", {{-20, -5}, {20, -5}}, upper, {}},
        {"line through one side", {{0, 0}, {20, 0.0}}, upper, {{10, 0}}},
        {"line touching an arc", {{-20, 10}, {20, 10}}, upper, {{0, 10}}},
        {"line passing near an arc", {{-20, 10.01}, {20, 10.01}}, upper, {}},
        {"two arcs", upper, {{0, 0}, {20, 0}, -1}, {{5, root}}},
        {"arcs touching", upper, {{-5, 15}, {5, 15}, 1}, {{0, 10}}},
        {"parts of one circle", upper, {{0, 10}, {0, -10}, 1}, {{0, 10}, {-10, 0}}},
        {"arcs about one centre", upper, {{5, 0}, {-5, 0}, 1}, {}},
        {"shallow arc", {{0, 0}, {1000, 0}, 1e-9}, {{500, -1}, {500, 1}}, {{500, -5e-7}}, 1e-9},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<AcGePoint2d> points = orncore::intersect(c.first, c.second, c.tolerance);
        ASSERT_EQ(points.size(), c.points.size());
        for (std::size_t i = 0; i < points.size(); ++i)
            expectPoint(points[i], c.points[i], std::max(c.tolerance, 1e-9));
    }
}

TEST(Intersect, FindsTheCrossingsOfRandomArcsWithTheirChords) {
    constexpr int kFewChords = 400;
    std::mt19937 random(135);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    std::uniform_real_distribution<double> bulge(-2.0, 2.0);
    const auto any = [&] {
        return Segment{{coordinate(random), coordinate(random)},
                       {coordinate(random), coordinate(random)},
                       bulge(random)};
    };
    int crossings = 0;
    for (int round = 0; round < 120; ++round) {
        const Segment first = any();
        const Segment second = any();
        std::vector<AcGePoint2d> a = test_support::flattened(first, kFewChords);
        std::vector<AcGePoint2d> b = test_support::flattened(second, kFewChords);
        a.push_back(first.end);
        b.push_back(second.end);
        const auto side = [](const AcGePoint2d& p, const AcGePoint2d& q, const AcGePoint2d& r) {
            return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x) > 0.0;
        };
        int expected = 0;
        for (std::size_t i = 0; i + 1 < a.size(); ++i) {
            for (std::size_t k = 0; k + 1 < b.size(); ++k)
                expected += side(a[i], a[i + 1], b[k]) != side(a[i], a[i + 1], b[k + 1]) &&
                            side(b[k], b[k + 1], a[i]) != side(b[k], b[k + 1], a[i + 1]);
        }
        crossings += expected;
        const std::vector<AcGePoint2d> points = orncore::intersect(first, second, 1e-7);
        EXPECT_EQ(static_cast<int>(points.size()), expected) << round;
        for (const AcGePoint2d& p : points) {
            EXPECT_LT(orncore::distanceTo(first, p), 1e-7);
            EXPECT_LT(orncore::distanceTo(second, p), 1e-7);
        }
    }
    EXPECT_GT(crossings, 20);
}

} // namespace
