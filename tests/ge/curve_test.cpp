#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <random>

#include "ge_matchers.h"
#include "gearc2d.h"
#include "gearc3d.h"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "geplane.h"
#include "geray2d.h"

namespace {

using std::numbers::pi;

TEST(Linear2d, Intersections) {
    const auto line = [](AcGePoint2d a, AcGePoint2d b) {
        return std::make_shared<AcGeLine2d>(a, b);
    };
    const auto segment = [](AcGePoint2d a, AcGePoint2d b) {
        return std::make_shared<AcGeLineSeg2d>(a, b);
    };
    const auto ray = [](AcGePoint2d a, AcGePoint2d b) { return std::make_shared<AcGeRay2d>(a, b); };
    const struct {
        const char* name;
        std::shared_ptr<AcGeLinearEnt2d> one, two;
        bool meet;
        AcGePoint2d at;
    } cases[] = {
        {"lines cross", line({0, 0}, {1, 1}), line({0, 4}, {1, 3}), true, {2, 2}},
        {"parallel lines", line({0, 0}, {1, 1}), line({0, 1}, {1, 2}), false, {}},
        {"one line twice", line({0, 0}, {1, 1}), line({2, 2}, {5, 5}), false, {}},
        {"segment stops short", segment({0, 0}, {1, 1}), line({0, 4}, {1, 3}), false, {}},
        {"segment reaches", segment({0, 0}, {2, 2}), line({0, 4}, {1, 3}), true, {2, 2}},
        {"segments share an end", segment({0, 0}, {5, 5}), segment({5, 5}, {9, 0}), true, {5, 5}},
        {"just reaches", segment({0, 0}, {5 - 5e-11, 0}), segment({5, -1}, {5, 1}), true, {5, 0}},
        {"just falls short", segment({0, 0}, {5 - 5e-10, 0}), segment({5, -1}, {5, 1}), false, {}},
        {"ray ahead", ray({0, 0}, {1, 0}), line({5, 0}, {5, 1}), true, {5, 0}},
        {"ray behind", ray({0, 0}, {-1, 0}), line({5, 0}, {5, 1}), false, {}},
        {"no length", segment({1, 1}, {1, 1}), line({0, 0}, {1, 1}), false, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcGePoint2d untouched(-77, -77);
        AcGePoint2d at = untouched;
        EXPECT_EQ(c.one->intersectWith(*c.two, at), c.meet);
        EXPECT_THAT(at, IsNear(c.meet ? c.at : untouched, 1e-10));
        EXPECT_EQ(c.two->intersectWith(*c.one, at), c.meet);
    }
}

TEST(Linear2d, OverlapOfColinearCurves) {
    const AcGeLineSeg2d base(AcGePoint2d(0, 0), AcGePoint2d(10, 0));
    const struct {
        const char* name;
        AcGeLineSeg2d other;
        bool overlaps;
        AcGePoint2d start, end;
    } cases[] = {
        {"ahead", {AcGePoint2d(6, 0), AcGePoint2d(16, 0)}, true, {6, 0}, {10, 0}},
        {"runs back", {AcGePoint2d(16, 0), AcGePoint2d(6, 0)}, true, {6, 0}, {10, 0}},
        {"inside", {AcGePoint2d(2, 0), AcGePoint2d(3, 0)}, true, {2, 0}, {3, 0}},
        {"touches", {AcGePoint2d(10, 0), AcGePoint2d(11, 0)}, false, {}, {}},
        {"beside", {AcGePoint2d(2, 1), AcGePoint2d(3, 1)}, false, {}, {}},
        {"leaves", {AcGePoint2d(2, 0), AcGePoint2d(3, 1)}, false, {}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcGeLinearEnt2d* raw = nullptr;
        ASSERT_EQ(base.overlap(c.other, raw), c.overlaps);
        const std::unique_ptr<AcGeLinearEnt2d> shared(raw);
        if (!c.overlaps) continue;
        ASSERT_TRUE(shared->isKindOf(AcGe::kLineSeg2d));
        const auto& segment = static_cast<const AcGeLineSeg2d&>(*shared);
        EXPECT_THAT(segment.startPoint(), IsNear(c.start));
        EXPECT_THAT(segment.endPoint(), IsNear(c.end));
    }
    AcGeLinearEnt2d* raw = nullptr;
    ASSERT_TRUE(AcGeRay2d({3, 0}, AcGeVector2d(-1, 0)).overlap(AcGeLine2d::kXAxis, raw));
    const std::unique_ptr<AcGeLinearEnt2d> shared(raw);
    EXPECT_TRUE(shared->isKindOf(AcGe::kRay2d));
    EXPECT_TRUE(shared->isOn(AcGePoint2d(-1000, 0)));
    EXPECT_FALSE(shared->isOn(AcGePoint2d(4, 0)));

    const AcGeRay2d right({0, 0}, AcGeVector2d(1, 0));
    ASSERT_TRUE(right.overlap(AcGeRay2d({5, 0}, AcGeVector2d(-1, 0)), raw));
    const std::unique_ptr<AcGeLinearEnt2d> between(raw);
    EXPECT_TRUE(between->isKindOf(AcGe::kLineSeg2d)) << "rays facing each other share a segment";
    EXPECT_FALSE(right.overlap(AcGeRay2d({-5, 0}, AcGeVector2d(-1, 0)), raw));
}

TEST(LineSeg3d, AnswersAsACurve) {
    const AcGeLineSeg3d segment(AcGePoint3d(1, 0, 0), AcGePoint3d(1, 0, 10));
    EXPECT_DOUBLE_EQ(segment.length(), 10);
    EXPECT_DOUBLE_EQ(segment.length(0.2, 0.7), 5);
    EXPECT_THAT(segment.midPoint(), IsNear(AcGePoint3d(1, 0, 5)));
    EXPECT_THAT(segment.direction(), IsNear(AcGeVector3d(0, 0, 1)));
    EXPECT_THAT(segment.closestPointTo(AcGePoint3d(4, 4, 3)), IsNear(AcGePoint3d(1, 0, 3)));
    EXPECT_THAT(segment.closestPointTo(AcGePoint3d(4, 4, 33)), IsNear(AcGePoint3d(1, 0, 10)));
    EXPECT_DOUBLE_EQ(segment.distanceTo(AcGePoint3d(4, 4, 3)), 5);
    EXPECT_DOUBLE_EQ(segment.paramOf(AcGePoint3d(4, 4, 3)), 0.3);
    EXPECT_DOUBLE_EQ(segment.paramAtLength(0.1, 4), 0.5);
    EXPECT_DOUBLE_EQ(segment.paramAtLength(0.9, 4, Adesk::kFalse), 0.5);
    double param = -1;
    EXPECT_FALSE(segment.isOn(AcGePoint3d(1, 0, 11), param));
    EXPECT_EQ(param, -1);
    EXPECT_TRUE(segment.isOn(AcGePoint3d(1, 0, 9), param));
    EXPECT_DOUBLE_EQ(param, 0.9);

    AcGeLineSeg3d moved = segment;
    moved.translateBy({0, 5, 0}).rotateBy(pi / 2, AcGeVector3d::kXAxis);
    EXPECT_THAT(moved.startPoint(), IsNear(AcGePoint3d(1, 0, 5)));
    EXPECT_THAT(moved.endPoint(), IsNear(AcGePoint3d(1, -10, 5)));
    moved.reverseParam();
    EXPECT_THAT(moved.startPoint(), IsNear(AcGePoint3d(1, -10, 5)));
    EXPECT_TRUE(moved != segment);
    const std::unique_ptr<AcGeEntity3d> copy(segment.copy());
    EXPECT_TRUE(*copy == segment);

    AcGePoint3d through;
    EXPECT_TRUE(segment.intersectWith(AcGePlane(AcGePoint3d(9, 9, 4), {0, 1, 1}), through) ==
                false);
    EXPECT_TRUE(segment.intersectWith(AcGePlane(AcGePoint3d(9, 3, 4), {0, 1, 1}), through));
    EXPECT_THAT(through, IsNear(AcGePoint3d(1, 0, 7)));
}

TEST(Linear3d, NearestPointsOfTwo) {
    const AcGeLine3d alongX = AcGeLine3d::kXAxis;
    const AcGeLine3d over(AcGePoint3d(3, 0, 5), AcGeVector3d::kYAxis);
    AcGePoint3d there;
    EXPECT_THAT(alongX.closestPointTo(over, there), IsNear(AcGePoint3d(3, 0, 0)));
    EXPECT_THAT(there, IsNear(AcGePoint3d(3, 0, 5)));
    EXPECT_DOUBLE_EQ(alongX.distanceTo(AcGeLine3d(AcGePoint3d(7, 3, 4), AcGeVector3d::kXAxis)), 5);
    const AcGeLineSeg3d aside(AcGePoint3d(3, 2, 5), AcGePoint3d(3, 9, 5));
    EXPECT_DOUBLE_EQ(alongX.distanceTo(aside), std::sqrt(29.0));

    AcGePoint3d here;
    EXPECT_FALSE(alongX.intersectWith(over, here)) << "skew lines do not meet";
    EXPECT_TRUE(alongX.projIntersectWith(over, AcGeVector3d::kZAxis, here, there));
    EXPECT_THAT(here, IsNear(AcGePoint3d(3, 0, 0)));
    EXPECT_THAT(there, IsNear(AcGePoint3d(3, 0, 5)));
}

TEST(CircArc2d, ComesFromPointsAndBulges) {
    const AcGePoint2d right(5, 0);
    const AcGePoint2d top(0, 5);
    const AcGePoint2d left(-5, 0);
    const double quarter = std::tan(pi / 8);
    const struct {
        const char* name;
        AcGeCircArc2d arc;
        AcGePoint2d center;
        double radius, start, end;
        bool clockwise;
        AcGePoint2d startPoint, endPoint;
    } cases[] = {
        {"angles", {{1, 1}, 2, 0, pi / 2}, {1, 1}, 2, 0, pi / 2, false, {3, 1}, {1, 3}},
        {"end before start wraps",
         {{0, 0}, 5, 1.5 * pi, pi / 2},
         {0, 0},
         5,
         1.5 * pi,
         2.5 * pi,
         false,
         {0, -5},
         {0, 5}},
        {"reference", {{0, 0}, 5, 0, pi / 2, {0, 2}}, {0, 0}, 5, 0, pi / 2, false, {0, 5}, {-5, 0}},
        {"clockwise angles run clockwise",
         {{0, 0}, 5, 0, pi / 2, {1, 0}, true},
         {0, 0},
         5,
         0,
         pi / 2,
         true,
         {5, 0},
         {0, -5}},
        {"three points", {right, top, left}, {0, 0}, 5, 0, pi, false, right, left},
        {"three points clockwise", {left, top, right}, {0, 0}, 5, pi, 2 * pi, true, left, right},
        {"bulge", {right, top, quarter, Adesk::kFalse}, {0, 0}, 5, 0, pi / 2, false, right, top},
        {"clockwise", {top, right, -quarter, false}, {0, 0}, 5, 1.5 * pi, 2 * pi, true, top, right},
        {"height over the chord", {right, left, 5.0}, {0, 0}, 5, 0, pi, false, right, left},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_THAT(c.arc.center(), IsNear(c.center));
        EXPECT_NEAR(c.arc.radius(), c.radius, 1e-12);
        EXPECT_NEAR(c.arc.startAng(), c.start, 1e-12);
        EXPECT_NEAR(c.arc.endAng(), c.end, 1e-12);
        EXPECT_EQ(c.arc.isClockWise(), c.clockwise);
        EXPECT_THAT(c.arc.startPoint(), IsNear(c.startPoint));
        EXPECT_THAT(c.arc.endPoint(), IsNear(c.endPoint));
    }

    AcGeError error = AcGe::kOk;
    AcGeCircArc2d kept({1, 1}, 2);
    kept.set({0, 0}, {1, 1}, {2, 2}, error);
    EXPECT_EQ(error, AcGe::kLinearlyDependentArg1Arg2Arg3);
    kept.set({0, 0}, {1, 1}, {0, 0}, error);
    EXPECT_EQ(error, AcGe::kEqualArg1Arg3);
    EXPECT_TRUE(kept == AcGeCircArc2d({1, 1}, 2));
}

TEST(CircArc2d, DerivativesFollowTheDirectionOfTravel) {
    AcGeVector2dArray derivatives;
    const AcGeCircArc2d clockwise({0, 0}, 5, pi, 1.5 * pi, {1, 0}, true);
    EXPECT_THAT(clockwise.evalPoint(pi, 2, derivatives), IsNear(AcGePoint2d(-5, 0)));
    ASSERT_EQ(derivatives.length(), 2);
    EXPECT_THAT(derivatives[0], IsNear(AcGeVector2d(0, 5)));
    EXPECT_THAT(derivatives[1], IsNear(AcGeVector2d(5, 0)));
    AcGeCircArc2d back = clockwise;
    back.reverseParam();
    EXPECT_FALSE(back.isClockWise());
    EXPECT_THAT(back.startPoint(), IsNear(clockwise.endPoint()));
    EXPECT_THAT(back.endPoint(), IsNear(clockwise.startPoint()));
    AcGeCircArc2d mirrored = clockwise;
    mirrored.mirror(AcGeLine2d::kYAxis);
    EXPECT_FALSE(mirrored.isClockWise());
    EXPECT_THAT(mirrored.startPoint(), IsNear(AcGePoint2d(5, 0)));
    EXPECT_THAT(mirrored.endPoint(), IsNear(AcGePoint2d(0, 5)));
    EXPECT_THAT(back.setToComplement().evalPoint((back.startAng() + back.endAng()) / 2),
                IsNear(AcGePoint2d(5, -5) / std::sqrt(2.0)));
}

TEST(CircArc2d, AnswersAsACurve) {
    const AcGeCircArc2d quarter({0, 0}, 5, 0, pi / 2);
    EXPECT_NEAR(quarter.length(0, pi / 2), 2.5 * pi, 1e-14);
    EXPECT_NEAR(quarter.paramAtLength(0, 2.5), 0.5, 1e-14);
    EXPECT_THAT(quarter.closestPointTo({9, 9}), IsNear(AcGePoint2d(5, 5) / std::sqrt(2.0)));
    EXPECT_THAT(quarter.closestPointTo({-1, 9}), IsNear(AcGePoint2d(0, 5)));
    EXPECT_THAT(quarter.closestPointTo({9, -1}), IsNear(AcGePoint2d(5, 0)));
    EXPECT_FALSE(quarter.isClosed());
    EXPECT_TRUE(quarter.isInside({-2, -2})) << "the whole circle counts";
    EXPECT_FALSE(quarter.isInside({3, 4})) << "the edge is not inside";
    double period = 0;
    EXPECT_TRUE(AcGeCircArc2d({0, 0}, 5).isPeriodic(period));
    EXPECT_DOUBLE_EQ(period, 2 * pi);

    AcGePoint2dArray points;
    AcGeDoubleArray params;
    quarter.getSamplePoints(0, pi / 2, 0.01, points, params);
    for (int i = 0; i + 1 < points.length(); ++i)
        EXPECT_GE((points[i] + (points[i + 1] - points[i]) / 2).asVector().length(), 5 - 0.01);
    EXPECT_LT(points.length(), 20) << "no more points than needed";
    quarter.getSamplePoints(3, points);
    ASSERT_EQ(points.length(), 3);
    EXPECT_THAT(points[1], IsNear(quarter.evalPoint(pi / 4)));

    AcGePoint2d there;
    const AcGeCircArc2d aside({20, 0}, 5);
    EXPECT_THAT(quarter.closestPointTo(aside, there), IsNear(AcGePoint2d(5, 0), 1e-6));
    EXPECT_NEAR(aside.distanceTo(AcGeLine2d::kYAxis), 15, 1e-12);
    EXPECT_NEAR(AcGeLine2d::kYAxis.distanceTo(aside), 15, 1e-12);
}

TEST(CircArc2d, Intersections) {
    const struct {
        const char* name;
        AcGeCircArc2d arc;
        std::vector<AcGePoint2d> withLine; // the line y = 3
        std::vector<AcGePoint2d> withArc;  // the circle of radius 5 about (6, 0)
    } cases[] = {
        {"circle", {{0, 0}, 5}, {{-4, 3}, {4, 3}}, {{3, -4}, {3, 4}}},
        {"first quadrant", {{0, 0}, 5, 0, pi / 2}, {{4, 3}}, {{3, 4}}},
        {"second quadrant", {{0, 0}, 5, pi / 2, pi}, {{-4, 3}}, {}},
        {"touching line", {{0, 0}, 3}, {{0, 3}}, {{1.6666667, 2.4944383}, {1.6666667, -2.4944383}}},
        {"touching circle from outside", {{-1, 0}, 2}, {}, {{1, 0}}},
        {"touching circle from inside", {{8, 0}, 3}, {{8, 3}}, {{11, 0}}},
        {"around the circle", {{6, 0.5}, 50}, {{6 - 49.93746, 3}, {6 + 49.93746, 3}}, {}},
        {"the circle itself", {{6, 0}, 5}, {{2, 3}, {10, 3}}, {}},
        {"one centre", {{6, 0}, 2}, {}, {}},
    };
    const AcGeLine2d line(AcGePoint2d(0, 3), AcGeVector2d::kXAxis);
    const AcGeCircArc2d circle({6, 0}, 5);
    const auto check = [](const std::vector<AcGePoint2d>& expected, bool found, int count,
                          const AcGePoint2d(&points)[2]) {
        ASSERT_EQ(static_cast<std::size_t>(count), expected.size());
        EXPECT_EQ(found, count > 0);
        for (const AcGePoint2d& point : expected)
            EXPECT_TRUE(point.distanceTo(points[0]) < 1e-5 ||
                        (count > 1 && point.distanceTo(points[1]) < 1e-5))
                << testing::PrintToString(point);
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        int count = -1;
        AcGePoint2d points[2];
        bool found = c.arc.intersectWith(line, count, points[0], points[1]);
        check(c.withLine, found, count, points);
        found = c.arc.intersectWith(circle, count, points[0], points[1]);
        check(c.withArc, found, count, points);
        found = circle.intersectWith(c.arc, count, points[0], points[1]);
        check(c.withArc, found, count, points);
    }
}

TEST(CircArc2d, Tangents) {
    const AcGeCircArc2d circle({0, 0}, 5);
    AcGeLine2d line;
    AcGeError error = AcGe::kOk;
    ASSERT_TRUE(circle.tangent({3, 4}, line, AcGeContext::gTol, error));
    EXPECT_EQ(error, AcGe::kArg1OnThis);
    EXPECT_THAT(line.direction(), IsNear(AcGeVector2d(-0.8, 0.6)));
    ASSERT_TRUE(circle.tangent({13, 0}, line, AcGeContext::gTol, error));
    EXPECT_EQ(error, AcGe::kOk);
    EXPECT_NEAR(line.distanceTo(AcGePoint2d(0, 0)), 5, 1e-12);
    EXPECT_TRUE(line.isOn(AcGePoint2d(13, 0)));
    EXPECT_FALSE(circle.tangent({1, 1}, line, AcGeContext::gTol, error));
    EXPECT_EQ(error, AcGe::kArg1InsideThis);
    for (const bool upper : {true, false}) {
        const AcGeCircArc2d half({0, 0}, 5, upper ? 0 : pi, upper ? pi : 2 * pi);
        ASSERT_TRUE(half.tangent({13, 0}, line));
        EXPECT_EQ(line.direction().y > 0, upper) << "touches the arc, not the rest of its circle";
    }
}

TEST(CircArc2d, FilletsTwoCurves) {
    const auto xAxis = std::make_shared<AcGeLine2d>(AcGeLine2d::kXAxis);
    const auto yAxis = std::make_shared<AcGeLine2d>(AcGeLine2d::kYAxis);
    const auto circle = std::make_shared<AcGeCircArc2d>(AcGePoint2d(0, 0), 10);
    const auto other = std::make_shared<AcGeCircArc2d>(AcGePoint2d(24, 0), 10);
    const struct {
        const char* name;
        std::shared_ptr<AcGeCurve2d> one, two;
        AcGePoint2d nearOne, nearTwo, center;
    } cases[] = {
        {"corner", xAxis, yAxis, {3, 0}, {0, 3}, {2, 2}},
        {"opposite corner", xAxis, yAxis, {-3, 0}, {0, -3}, {-2, -2}},
        {"outside the circle", xAxis, circle, {12, 0}, {10, 1}, {std::sqrt(140.0), 2}},
        {"inside the circle", xAxis, circle, {7, 0}, {9.6, 2.5}, {std::sqrt(60.0), 2}},
        {"between circles", circle, other, {10, 1}, {14, 1}, {12, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        double param1 = c.one->paramOf(c.nearOne);
        double param2 = c.two->paramOf(c.nearTwo);
        Adesk::Boolean success = false;
        AcGeCircArc2d fillet;
        fillet.set(*c.one, *c.two, 2, param1, param2, success);
        ASSERT_TRUE(success);
        EXPECT_THAT(fillet.center(), IsNear(c.center, 1e-9));
        EXPECT_THAT(fillet.startPoint(), IsNear(c.one->evalPoint(param1), 1e-9));
        EXPECT_THAT(fillet.endPoint(), IsNear(c.two->evalPoint(param2), 1e-9));
        EXPECT_LE(fillet.endAng() - fillet.startAng(), pi + 1e-9);
    }
    double param1 = 0, param2 = 0;
    Adesk::Boolean success = true;
    AcGeCircArc2d kept({1, 1}, 3);
    kept.set(*circle, AcGeCircArc2d({40, 0}, 10), 2, param1, param2, success);
    EXPECT_FALSE(success) << "too far apart";
    EXPECT_EQ(kept.radius(), 3);
}

TEST(CircArc3d, ComesFromThreePoints) {
    const AcGeCircArc3d arc({5, 0, 1}, {0, 0, 6}, {-5, 0, 1});
    EXPECT_THAT(arc.center(), IsNear(AcGePoint3d(0, 0, 1)));
    EXPECT_NEAR(arc.radius(), 5, 1e-12);
    EXPECT_THAT(arc.normal(), IsNear(AcGeVector3d(0, -1, 0)));
    EXPECT_THAT(arc.refVec(), IsNear(AcGeVector3d(1, 0, 0)));
    EXPECT_NEAR(arc.endAng() - arc.startAng(), pi, 1e-12);
    EXPECT_THAT(arc.evalPoint(pi / 2), IsNear(AcGePoint3d(0, 0, 6)));
    AcGeError error = AcGe::kOk;
    AcGeCircArc3d().set({0, 0, 0}, {1, 1, 1}, {3, 3, 3}, error);
    EXPECT_EQ(error, AcGe::kLinearlyDependentArg1Arg2Arg3);
}

TEST(CircArc3d, MovesInSpace) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> number(-4, 4);
    const auto vector = [&] {
        return AcGeVector3d(number(random), number(random), number(random));
    };
    for (int i = 0; i < 100; ++i) {
        const AcGeVector3d normal = vector().normal();
        const AcGeCircArc3d arc(AcGePoint3d() + vector(), normal, normal.perpVector(), 3,
                                number(random), number(random));
        const AcGeMatrix3d map = AcGeMatrix3d::rotation(number(random), vector()) *
                                 AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), vector())) *
                                 AcGeMatrix3d::scaling(2);
        AcGeCircArc3d moved = arc;
        moved.transformBy(map);
        EXPECT_NEAR(moved.radius(), 6, 1e-12);
        const double middle = (arc.startAng() + arc.endAng()) / 2;
        EXPECT_THAT(moved.evalPoint(middle), IsNear(map * arc.evalPoint(middle), 1e-11));
        EXPECT_THAT(moved.startPoint(), IsNear(map * arc.startPoint(), 1e-11));
        moved.reverseParam();
        EXPECT_THAT(moved.endPoint(), IsNear(map * arc.startPoint(), 1e-11));
        EXPECT_TRUE(moved.isOn(map * arc.evalPoint(middle)));
    }
}

TEST(CircArc3d, Intersections) {
    const AcGeCircArc3d circle({0, 0, 2}, {0, 0, 1}, 5);
    int count = -1;
    AcGePoint3d p1, p2;
    EXPECT_TRUE(circle.intersectWith(AcGeLine3d(AcGePoint3d(0, 3, 2), AcGeVector3d::kXAxis), count,
                                     p1, p2));
    EXPECT_EQ(count, 2);
    EXPECT_NEAR(std::abs(p1.x), 4, 1e-12);
    EXPECT_FALSE(circle.intersectWith(AcGeLine3d(AcGePoint3d(0, 3, 3), AcGeVector3d::kXAxis), count,
                                      p1, p2));
    EXPECT_EQ(count, 0) << "parallel above the plane";
    EXPECT_TRUE(circle.intersectWith(AcGeLineSeg3d(AcGePoint3d(5, 0, 0), AcGePoint3d(5, 0, 9)),
                                     count, p1, p2));
    EXPECT_EQ(count, 1);
    EXPECT_THAT(p1, IsNear(AcGePoint3d(5, 0, 2)));

    const AcGeCircArc3d upright({5, 0, 2}, {0, 1, 0}, 3);
    EXPECT_TRUE(circle.intersectWith(upright, count, p1, p2) == false) << "x = 2 and 8 are off it";
    EXPECT_TRUE(circle.intersectWith(AcGeCircArc3d({3, 0, 2}, {0, 1, 0}, 2), count, p1, p2));
    EXPECT_EQ(count, 1);
    EXPECT_THAT(p1, IsNear(AcGePoint3d(5, 0, 2)));
    EXPECT_TRUE(circle.intersectWith(AcGeCircArc3d({6, 0, 2}, {0, 0, -1}, 5), count, p1, p2));
    EXPECT_EQ(count, 2);
    EXPECT_NEAR(p1.x, 3, 1e-12);
    EXPECT_TRUE(circle.intersectWith(AcGePlane(AcGePoint3d(0, 4, 0), {0, 1, 0}), count, p1, p2));
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(circle.isInside({1, 1, 2}));
    EXPECT_FALSE(circle.isInside({1, 1, 2.1}));
}

} // namespace
