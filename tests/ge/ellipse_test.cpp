#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "ge/ellipse.h"
#include "ge_matchers.h"
#include "gearc3d.h"
#include "geell3d.h"

namespace {

using headless::EllipseArc;
using headless::Extents3d;
using std::numbers::pi;

TEST(Ellipse, ExtentsReachTheExtremesOnTheArcOnly) {
    const AcGeVector3d x(3, 0, 0);
    const AcGeVector3d y(0, 2, 0);
    const double s = 1 / std::sqrt(2.0);
    const struct {
        const char* name;
        EllipseArc arc;
        AcGePoint3d min, max;
    } cases[] = {
        {"whole", {{1, 1, 4}, x, y, 0, 2 * pi}, {-2, -1, 4}, {4, 3, 4}},
        {"whole from anywhere", {{1, 1, 4}, x, y, 1.234, 2 * pi}, {-2, -1, 4}, {4, 3, 4}},
        {"first quarter", {{0, 0, 0}, x, y, 0, pi / 2}, {0, 0, 0}, {3, 2, 0}},
        {"over the top", {{0, 0, 0}, x, y, pi / 4, pi / 2}, {-3 * s, 2 * s, 0}, {3 * s, 2, 0}},
        {"backwards", {{0, 0, 0}, x, y, 3 * pi / 4, -pi / 2}, {-3 * s, 2 * s, 0}, {3 * s, 2, 0}},
        {"across angle 0", {{0, 0, 0}, x, y, -pi / 4, pi / 2}, {3 * s, -2 * s, 0}, {3, 2 * s, 0}},
        {"past one turn", {{0, 0, 0}, x, y, 7 * pi / 4, pi / 2}, {3 * s, -2 * s, 0}, {3, 2 * s, 0}},
        {"upright", headless::circleArc({0, 0, 5}, {0, 1, 0}, 2, 0, 2 * pi), {-2, 0, 3}, {2, 0, 7}},
        {"circle slanted",
         headless::circleArc({0, 0, 0}, {0, 1, 1}, 1, 0, 2 * pi),
         {-1, -s, -s},
         {1, s, s}},
        {"circle of a mirrored entity runs the other way",
         headless::circleArc({0, 0, 0}, {0, 0, -1}, 1, 0, pi / 2),
         {-1, 0, 0},
         {0, 1, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Extents3d extents = headless::ellipseExtents(c.arc);
        EXPECT_THAT(extents.min, IsNear(c.min, 1e-14));
        EXPECT_THAT(extents.max, IsNear(c.max, 1e-14));
    }
}

TEST(Ellipse, LengthsMatchKnownFigures) {
    const struct {
        const char* name;
        double a, b;
        double length; // of the whole, from tables of the complete elliptic integral E
    } cases[] = {
        {"circle", 5, 5, 10 * pi},
        {"2 : 1", 2, 1, 9.688448220547675},
        {"10 : 1", 10, 1, 40.63974180100895},
        {"flat as a needle", 1, 1e-9, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const EllipseArc arc{{7, 8, 9}, {0, c.a, 0}, {0, 0, c.b}, 0.3, 2 * pi};
        EXPECT_NEAR(headless::ellipseLength(arc) / c.length, 1, 1e-12);
        EXPECT_NEAR(headless::ellipseLength(arc, 0, pi / 2) / (c.length / 4), 1, 1e-12);
        EXPECT_NEAR(headless::ellipseSegmentArea(arc), pi * c.a * c.b, 1e-13);
    }
    const EllipseArc quarter{{}, {2, 0, 0}, {0, 1, 0}, 0, pi / 2};
    EXPECT_NEAR(headless::ellipseSegmentArea(quarter), pi / 2 - 1, 1e-14);
}

TEST(Ellipse, NearestPointIsNoFartherThanAnySample) {
    std::mt19937 random(99);
    std::uniform_real_distribution<double> number(-1, 1);
    for (int i = 0; i < 200; ++i) {
        const double ratio = std::pow(10, -3 * std::abs(number(random)));
        const EllipseArc arc{{}, {1, 0, 0}, {0, ratio, 0}, 3 * number(random), 6 * number(random)};
        const AcGePoint3d point(1.2 * number(random), number(random) * (i % 2 ? 1 : ratio), 0);
        double sampled = 1e9;
        for (int k = 0; k <= 5000; ++k)
            sampled = std::min(sampled,
                               arc.pointAt(arc.start + arc.sweep * k / 5000.0).distanceTo(point));
        const double t = headless::ellipseClosestParam(arc, point);
        EXPECT_LE(arc.pointAt(t).distanceTo(point), sampled + 1e-12);
    }
}

TEST(EllipArc3d, KeepsItsPointsUnderAnyMap) {
    std::mt19937 random(4);
    std::uniform_real_distribution<double> number(-3, 3);
    const auto vector = [&] {
        return AcGeVector3d(number(random), number(random), number(random));
    };
    for (int i = 0; i < 100; ++i) {
        const AcGeEllipArc3d arc({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, 4, 2, number(random),
                                 number(random));
        AcGeMatrix3d map;
        map.setCoordSystem(AcGePoint3d() + vector(), vector(), vector(), vector());
        AcGeEllipArc3d moved = arc;
        moved.transformBy(map);
        EXPECT_GE(moved.majorRadius(), moved.minorRadius());
        EXPECT_NEAR(moved.majorAxis().dotProduct(moved.minorAxis()), 0, 1e-9);
        EXPECT_THAT(moved.startPoint(), IsNear(map * arc.startPoint(), 1e-11));
        EXPECT_THAT(moved.endPoint(), IsNear(map * arc.endPoint(), 1e-11));
        const double middle = (arc.startAng() + arc.endAng()) / 2;
        EXPECT_TRUE(moved.distanceTo(map * arc.evalPoint(middle)) < 1e-9);
        moved.reverseParam();
        EXPECT_THAT(moved.startPoint(), IsNear(map * arc.endPoint(), 1e-11));
    }
}

TEST(EllipArc3d, AnswersAsACurve) {
    const AcGeEllipArc3d whole({0, 0, 0}, {0, 2, 0}, {-1, 0, 0}, 5, 3);
    EXPECT_THAT(whole.startPoint(), IsNear(AcGePoint3d(0, 5, 0)));
    EXPECT_THAT(whole.normal(), IsNear(AcGeVector3d(0, 0, 1)));
    EXPECT_TRUE(whole.isClosed());
    EXPECT_TRUE(whole.isInside({2.9, 0, 0}));
    EXPECT_FALSE(whole.isInside({3.1, 0, 0}));
    EXPECT_FALSE(whole.isInside({0, 0, 1}));
    EXPECT_FALSE(whole.isCircular());
    const AcGeEllipArc3d circle(AcGeCircArc3d({0, 0, 2}, {0, 0, -1}, 5));
    EXPECT_TRUE(circle.isCircular());
    EXPECT_NEAR(circle.length(0, pi), 5 * pi, 1e-12);
    EXPECT_NEAR(circle.paramAtLength(0, 5 * pi), pi, 1e-10);
    AcGeEllipArc3d turned = circle;
    turned.rotateBy(0.7, {0, 0, 1});
    EXPECT_THAT(turned.startPoint(),
                IsNear(AcGePoint3d(circle.startPoint()).rotateBy(0.7, AcGeVector3d(0, 0, 1))))
        << "a circle keeps its start";
    EXPECT_EQ(turned.startAng(), 0);
}

} // namespace
