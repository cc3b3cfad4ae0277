#include "OrnCore/outline.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "flattened.h"

namespace {

using orncore::OutlineVertex;
using std::numbers::pi;
using Vertices = std::vector<OutlineVertex>;

const Vertices kSquare = {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}};
const Vertices kDisc = {{{0, 0}, 1}, {{10, 0}, 1}};
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Vertices reversed(const Vertices& outline) {
    Vertices other;
    for (std::size_t i = outline.size(); i-- > 0;) {
        const double bulge = outline[(i + outline.size() - 1) % outline.size()].bulge;
        other.push_back({outline[i].point, -bulge});
    }
    return other;
}

TEST(SignedArea, FollowsDirectionAndArcs) {
    const struct {
        const char* name;
        Vertices outline;
        double area;
        double tolerance = 1e-9;
    } cases[] = {
        {"counter-clockwise square", kSquare, 100.0},
        {"clockwise square", reversed(kSquare), -100.0},
        {"disc of two half circles", kDisc, 25.0 * pi},
        {"disc with unequal arcs",
         {{{0, 0}, std::tan(pi / 8)}, {{10, 0}, std::tan(3 * pi / 8)}},
         50.0 * pi},
        {"closing segment is the arc", {{{0, 0}}, {{10, 0}, 1}}, 12.5 * pi},
        {"inward arc", {{{0, 0}}, {{2, 0}}, {{2, 2}, -1}, {{0, 2}}}, 4 - pi / 2},
        {"shallow arc", {{{0, 0}, 1e-6}, {{1000, 0}}}, 1.0 / 3.0},
        {"arc at the series' limit", {{{0, 0}, 0.125}, {{100, 0}}}, 417.9658585950597},
        {"far from the origin",
         {{{1e8, 1e8}}, {{1e8 + 10, 1e8}}, {{1e8 + 10, 1e8 + 10}}, {{1e8, 1e8 + 10}}},
         100.0},
        {"repeated vertices", {{{0, 0}}, {{10, 0}}, {{10, 0}, 0.5}, {{10, 0}}, {{0, 10}}}, 50.0},
        {"one vertex", {{{3, 4}, 1}}, 0.0},
        {"no vertices", {}, 0.0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(orncore::signedArea(c.outline), c.area, c.tolerance) << c.name;
}

TEST(LengthOf, CountsArcsAndTheClosingSegmentOnlyWhenClosed) {
    const struct {
        const char* name;
        Vertices outline;
        bool closed;
        double length;
    } cases[] = {
        {"closed square", kSquare, true, 40.0},
        {"open square", kSquare, false, 30.0},
        {"circle", kDisc, true, 10.0 * pi},
        {"half circle", kDisc, false, 5.0 * pi},
        {"clockwise quarter", {{{0, 0}, -std::tan(pi / 8)}, {{1, 1}}}, false, pi / 2},
        {"three quarters", {{{0, 0}, std::tan(3 * pi / 8)}, {{1, 1}}}, false, 3 * pi / 2},
        {"nearly straight arc", {{{0, 0}, 1e-9}, {{1000, 0}}}, false, 1000.0},
        {"repeated vertices", {{{0, 0}}, {{0, 0}, 1}, {{0, 0}}, {{3, 4}}}, false, 5.0},
        {"one vertex", {{{3, 4}, 1}}, false, 0.0},
        {"no vertices", {}, true, 0.0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(orncore::lengthOf(c.outline, c.closed), c.length, 1e-9) << c.name;
}

TEST(AreaAndLength, AgreeWithChordsOfRandomOutlines) {
    std::mt19937 random(20260711);
    for (int round = 0; round < 60; ++round) {
        const double greatestBulge = round % 3 == 0 ? 0.1 : (round % 3 == 1 ? 0.6 : 3.0);
        const Vertices outline = test_support::randomStar(random, 3 + round % 7, greatestBulge);
        double twice = 0.0, length = 0.0;
        const std::vector<AcGePoint2d> chords = test_support::flattened(outline);
        for (std::size_t i = 0; i < chords.size(); ++i) {
            const AcGePoint2d& a = chords[i];
            const AcGePoint2d& b = chords[(i + 1) % chords.size()];
            twice += a.x * b.y - b.x * a.y;
            length += std::hypot(b.x - a.x, b.y - a.y);
        }
        SCOPED_TRACE(round);
        EXPECT_NEAR(orncore::signedArea(outline), twice / 2.0, 0.5);
        EXPECT_NEAR(orncore::lengthOf(outline, true) / length, 1.0, 1e-5);
    }
}

TEST(TurningNumber, CountsWholeTurnsOfTheDirection) {
    const struct {
        const char* name;
        Vertices outline;
        int turns;
        bool closed = true;
    } cases[] = {
        {"counter-clockwise square", kSquare, 1},
        {"clockwise square", reversed(kSquare), -1},
        {"meets its start", {{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}, {{0, 0}, 0.7}}, 1, false},
        {"counter-clockwise circle", kDisc, 1},
        {"clockwise circle", reversed(kDisc), -1},
        {"circle of one great and one small arc", {{{0, 0}, 40.0}, {{10, 0}, 1.0 / 40.0}}, 1},
        {"arcs bulging inward",
         {{{0, 0}, -0.3}, {{10, 0}, -0.3}, {{10, 10}, -0.3}, {{0, 10}, -0.3}},
         1},
        // The corners at the arc's ends turn by 90 + 143 degrees, so backwards by 127.
        {"arc that loops backward", {{{0, 0}, -3.0}, {{10, 0}}, {{10, 10}}, {{0, 10}}}, -1},
        {"figure of eight", {{{0, 0}}, {{10, 10}}, {{10, 0}}, {{0, 10}}}, 0},
        {"twice round",
         {{{0, 0}},
          {{10, 0}},
          {{10, 10}},
          {{-1, 10}},
          {{-1, -1}},
          {{11, -1}},
          {{11, 11}},
          {{0, 11}}},
         2},
        {"there and back", {{{0, 0}}, {{10, 0}}}, -1},
        {"repeated vertex is no direction",
         {{{0, 0}}, {{10, 0}}, {{10, 0}, 2.0}, {{10, 0}}, {{5, 5}}},
         1},
        {"one vertex", {{{1, 1}, 0.5}}, 0},
        {"no vertices", {}, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(orncore::turningNumber(c.outline, c.closed), c.turns) << c.name;
}

TEST(TurningNumber, IsTheSameTurnedToAnyAngle) {
    // Half circles whose ends point along the axis that turns are counted by.
    const Vertices slot = {{{0, 0}}, {{10, 0}, 1}, {{10, 4}}, {{0, 4}, 1}};
    for (int degree = 0; degree < 360; degree += 15) {
        const double angle = degree * pi / 180.0;
        Vertices turned = slot;
        for (OutlineVertex& v : turned)
            v.point = {v.point.x * std::cos(angle) - v.point.y * std::sin(angle),
                       v.point.x * std::sin(angle) + v.point.y * std::cos(angle)};
        SCOPED_TRACE(degree);
        EXPECT_EQ(orncore::turningNumber(turned, true), 1);
        EXPECT_EQ(orncore::turningNumber(reversed(turned), true), -1);
    }
}

TEST(TurningNumber, HasNoAnswerForCoordinatesThatAreNoNumbers) {
    EXPECT_FALSE(orncore::turningNumber(Vertices{{{0, 0}}, {{kInfinity, 0}}, {{1, 1}}}, true));
    EXPECT_FALSE(orncore::turningNumber(Vertices{{{0, 0}, std::nan("")}, {{1, 0}}}, true));
}

TEST(TurningNumber, AgreesWithChordsOfRandomOutlines) {
    std::mt19937 random(4711);
    int compared = 0;
    for (int round = 0; round < 200; ++round) {
        const Vertices outline = test_support::randomStar(random, 3 + round % 9, 4.0);
        double total = 0.0;
        bool doubtful = false;
        const std::vector<AcGePoint2d> chords = test_support::flattened(outline, 200);
        const std::size_t n = chords.size();
        for (std::size_t i = 0; i < n; ++i) {
            const AcGeVector2d in = chords[(i + 1) % n] - chords[i];
            const AcGeVector2d out = chords[(i + 2) % n] - chords[(i + 1) % n];
            const double turn =
                std::atan2(in.x * out.y - in.y * out.x, in.x * out.x + in.y * out.y);
            // Chords are off their arcs' directions by a degree: a turn back may go either way.
            doubtful = doubtful || std::abs(turn) > 3.1;
            total += turn;
        }
        if (doubtful) continue;
        ++compared;
        SCOPED_TRACE(round);
        EXPECT_EQ(orncore::turningNumber(outline, true),
                  static_cast<int>(std::lround(total / (2.0 * pi))));
    }
    EXPECT_GT(compared, 100);
}

} // namespace
