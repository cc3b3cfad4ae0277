#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "ge/bulge.h"
#include "ge_matchers.h"

namespace {

using headless::BulgeSegment;
using headless::Extents3d;
using std::numbers::pi;

struct Outline {
    std::vector<AcGePoint2d> points;
    std::vector<double> bulges;
};

TEST(Bulge, GivesTheArc) {
    const double quarter = std::tan(pi / 8);
    const struct {
        const char* name;
        BulgeSegment segment;
        AcGePoint2d center;
        double radius, start, sweep;
    } cases[] = {
        {"half circle", {{0, 0}, {10, 0}, 1}, {5, 0}, 5, pi, pi},
        {"half circle clockwise", {{0, 0}, {10, 0}, -1}, {5, 0}, 5, pi, -pi},
        {"quarter", {{5, 0}, {0, 5}, quarter}, {0, 0}, 5, 0, pi / 2},
        {"quarter clockwise", {{0, 5}, {5, 0}, -quarter}, {0, 0}, 5, pi / 2, -pi / 2},
        {"three quarters", {{5, 0}, {0, -5}, std::tan(3 * pi / 8)}, {0, 0}, 5, 0, 1.5 * pi},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const headless::Arc2d arc =
            headless::arcFromBulge(c.segment.start, c.segment.end, c.segment.bulge);
        EXPECT_THAT(arc.center, IsNear(c.center));
        EXPECT_NEAR(arc.radius, c.radius, 1e-12);
        EXPECT_NEAR(arc.startAngle, c.start, 1e-12);
        EXPECT_NEAR(arc.sweep, c.sweep, 1e-12);
        EXPECT_NEAR(headless::bulgeOfSweep(arc.sweep), c.segment.bulge, 1e-12);
    }
}

// The expected figures come from a computation with 60 digits.
TEST(Bulge, SegmentAreaAndLengthKeepTheirDigits) {
    const struct {
        double bulge;
        double area;   // over a unit chord
        double length; // over a unit chord
    } cases[] = {
        {1e-12, 3.3333333333333334e-13, 1},
        {1e-06, 3.333333333334e-07, 1.0000000000006666},
        {0.001, 0.00033333339999999049, 1.0000006666665333},
        {0.1, 0.033399905077929802, 1.0066533901607364},
        {0.2499, 0.08433132307116023, 1.0411267924820891},
        {0.25, 0.084365887841122977, 1.0411593182891727},
        {0.2501, 0.084400453582565579, 1.0411918564924745},
        {0.5, 0.17472469453187978, 1.1591190225020154},
        {1.0, 0.39269908169872414, 1.5707963267948966},
        {2.5, 1.5137923096037615, 3.4518408540793422},
        {30.0, 177.09639043242595, 46.175509105196703},
        {100000.0, 1963495408.8863165, 157078.63269519756},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bulge);
        EXPECT_NEAR(headless::circularSegmentArea(1, c.bulge) / c.area, 1.0, 1e-14);
        EXPECT_NEAR(headless::circularSegmentArea(1, -c.bulge) / c.area, -1.0, 1e-14);
        EXPECT_NEAR(headless::arcLength(1, c.bulge) / c.length, 1.0, 1e-14);
        EXPECT_NEAR(headless::arcLength(1, -c.bulge) / c.length, 1.0, 1e-14);
    }
    EXPECT_EQ(headless::circularSegmentArea(1, 0), 0.0);
    EXPECT_EQ(headless::arcLength(7, 0), 7.0);
}

TEST(Bulge, PointsAndTangentsAlongTheSegment) {
    const BulgeSegment half{{0, 0}, {10, 0}, 1};
    EXPECT_THAT(headless::pointOnSegment(half, 0.5), IsNear(AcGePoint2d(5, -5)));
    EXPECT_THAT(headless::tangentOfSegment(half, 0), IsNear(AcGeVector2d(0, -1)));
    EXPECT_THAT(headless::tangentOfSegment(half, 1), IsNear(AcGeVector2d(0, 1)));
    const BulgeSegment deep{{5, 0}, {0, -5}, std::tan(3 * pi / 8)};
    EXPECT_THAT(headless::pointOnSegment(deep, 1.0 / 3), IsNear(AcGePoint2d(0, 5)));
    EXPECT_THAT(headless::pointOnSegment(deep, 2.0 / 3), IsNear(AcGePoint2d(-5, 0)));
    const BulgeSegment shallow{{0, 0}, {1000, 0}, -1e-12};
    EXPECT_THAT(headless::pointOnSegment(shallow, 0.5), IsNear(AcGePoint2d(500, 5e-10), 1e-13));
    const BulgeSegment straight{{0, 0}, {4, 3}, 0};
    EXPECT_THAT(headless::pointOnSegment(straight, 0.25), IsNear(AcGePoint2d(1, 0.75)));
    EXPECT_THAT(headless::tangentOfSegment(straight, 0.7), IsNear(AcGeVector2d(0.8, 0.6)));
}

TEST(Bulge, ExtentsReachTheExtremesOnTheArcOnly) {
    const double quarter = std::tan(pi / 8);
    const double r = 5 / std::sqrt(2.0);
    const struct {
        const char* name;
        BulgeSegment segment;
        AcGePoint2d min, max;
    } cases[] = {
        {"straight", {{3, 1}, {0, 2}, 0}, {0, 1}, {3, 2}},
        {"half circle below", {{0, 0}, {10, 0}, 1}, {0, -5}, {10, 0}},
        {"half circle above", {{0, 0}, {10, 0}, -1}, {0, 0}, {10, 5}},
        {"quarter between the axes", {{5, 0}, {0, 5}, quarter}, {0, 0}, {5, 5}},
        {"quarter over an axis", {{r, -r}, {r, r}, quarter}, {r, -r}, {5, r}},
        {"three quarters", {{5, 0}, {0, -5}, std::tan(3 * pi / 8)}, {-5, -5}, {5, 5}},
        {"nearly full circle", {{5, 1e-6}, {5, -1e-6}, std::tan(pi / 2 - 1e-7)}, {-5, -5}, {5, 5}},
        {"shallow: height bulge * chord / 2", {{0, 0}, {1000, 0}, -1e-13}, {0, 0}, {1000, 5e-11}},
        {"no length", {{1, 2}, {1, 2}, 0.5}, {1, 2}, {1, 2}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const headless::Extents2d extents = headless::segmentExtents(c.segment);
        EXPECT_THAT(extents.min, IsNear(c.min, c.segment.bulge > 1e5 ? 1e-6 : 1e-14));
        EXPECT_THAT(extents.max, IsNear(c.max, c.segment.bulge > 1e5 ? 1e-6 : 1e-14));
    }
}

/// The extents of many points along a mapped segment: never larger than the exact ones.
Extents3d sampledExtents(const BulgeSegment& segment, double elevation, const AcGeMatrix3d& map) {
    Extents3d extents;
    for (int i = 0; i <= 4000; ++i) {
        const AcGePoint2d p = headless::pointOnSegment(segment, i / 4000.0);
        extents.add(map * AcGePoint3d(p.x, p.y, elevation));
    }
    return extents;
}

TEST(Bulge, ExtentsInSpaceUnderAnyMap) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> number(-3, 3);
    const auto vector = [&] {
        return AcGeVector3d(number(random), number(random), number(random));
    };
    for (int i = 0; i < 300; ++i) {
        const BulgeSegment segment{{number(random), number(random)},
                                   {number(random), number(random)},
                                   std::tan(pi / 2 * number(random) / 3.1)};
        AcGeMatrix3d map; // Uneven scales, shear and mirroring.
        map.setCoordSystem(AcGePoint3d() + vector(), vector(), vector(), vector());
        const double elevation = number(random);
        const Extents3d exact = headless::segmentExtents(segment, elevation, map);
        const Extents3d sampled = sampledExtents(segment, elevation, map);
        const double size = exact.min.distanceTo(exact.max);
        for (unsigned int axis = 0; axis < 3; ++axis) {
            EXPECT_LE(exact.min[axis], sampled.min[axis] + 1e-12 * size);
            EXPECT_GE(exact.max[axis], sampled.max[axis] - 1e-12 * size);
            EXPECT_NEAR(exact.min[axis], sampled.min[axis], 1e-5 * size);
            EXPECT_NEAR(exact.max[axis], sampled.max[axis], 1e-5 * size);
        }
    }
}

TEST(Polyline, AreaFollowsDirectionAndArcs) {
    const double far = 4e6;
    const struct {
        const char* name;
        Outline outline;
        bool closed;
        double area, length;
    } cases[] = {
        {"square", {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}, true, 100, 40},
        {"clockwise", {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}, {}}, true, -100, 40},
        {"open: closed straight", {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}, false, 100, 30},
        {"disc", {{{0, 0}, {10, 0}}, {1, 1}}, true, 25 * pi, 10 * pi},
        {"closing segment is the arc", {{{0, 0}, {10, 0}}, {0, 1}}, true, 12.5 * pi, 10 + 5 * pi},
        {"open: the last bulge shapes nothing", {{{0, 0}, {10, 0}}, {0, 1}}, false, 0, 10},
        {"missing bulges", {{{0, 0}, {2, 0}, {2, 2}, {0, 2}}, {0, -1}}, true, 4 - pi / 2, 6 + pi},
        {"far from the origin",
         {{{far, far}, {far + 1, far}, {far + 1, far + 1}, {far, far + 1}}, {0, 1}},
         true,
         1 + pi / 8,
         3 + pi / 2},
        {"one vertex", {{{3, 4}}, {1}}, true, 0, 0},
        {"none", {}, true, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(headless::polylineArea(c.outline.points, c.outline.bulges, c.closed), c.area,
                    1e-12 * std::max(1.0, std::abs(c.area)));
        EXPECT_NEAR(headless::polylineLength(c.outline.points, c.outline.bulges, c.closed),
                    c.length, 1e-12 * std::max(1.0, c.length));
    }
}

} // namespace
