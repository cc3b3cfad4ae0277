#include <gtest/gtest.h>

#include <array>
#include <numbers>
#include <random>
#include <type_traits>

#include "ge/ocs.h"
#include "ge_matchers.h"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gescl3d.h"

namespace {

using std::numbers::pi;

static_assert(std::is_trivially_copyable_v<AcGePoint2d> && sizeof(AcGePoint2d) == 16);
static_assert(std::is_trivially_copyable_v<AcGePoint3d> && sizeof(AcGePoint3d) == 24);
static_assert(std::is_trivially_copyable_v<AcGeVector3d> && sizeof(AcGeVector3d) == 24);
static_assert(std::is_trivially_copyable_v<AcGeMatrix3d>);

TEST(Vector2d, MeasuresAngles) {
    const struct {
        const char* name;
        AcGeVector2d from, to;
        double fromAngle; // of `from` from the x axis
        double smallest;  // between the two
        double ccw;       // from `from` to `to`
    } cases[] = {
        {"quarter", {1, 0}, {0, 2}, 0, pi / 2, pi / 2},
        {"quarter back", {0, 2}, {1, 0}, pi / 2, pi / 2, 3 * pi / 2},
        {"third quadrant", {-1, -1}, {1, 1}, 5 * pi / 4, pi, pi},
        {"fourth quadrant", {1, -1}, {1, 0}, 7 * pi / 4, pi / 4, pi / 4},
        {"a hair below the axis is not a full turn", {1, -1e-20}, {1, 0}, 0, 0, 0},
        {"tiny angles keep their digits", {1, 0}, {1, 1e-9}, 0, 1e-9, 1e-9},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(c.from.angle(), c.fromAngle, 1e-15);
        EXPECT_NEAR(c.from.angleTo(c.to), c.smallest, 1e-15);
        EXPECT_NEAR(c.from.angleToCCW(c.to), c.ccw, 1e-15);
    }
}

TEST(Vector3d, MeasuresAngles) {
    const AcGeVector3d x = AcGeVector3d::kXAxis;
    const AcGeVector3d y = AcGeVector3d::kYAxis;
    const AcGeVector3d z = AcGeVector3d::kZAxis;
    EXPECT_DOUBLE_EQ(x.angleTo(-y), pi / 2);
    EXPECT_DOUBLE_EQ(x.angleTo(-y, z), 3 * pi / 2);
    EXPECT_DOUBLE_EQ(x.angleTo(-y, -z), pi / 2);
    EXPECT_DOUBLE_EQ(x.angleTo(AcGeVector3d(1, 1e-12, 0)), 1e-12);
    EXPECT_LT(x.angleTo(AcGeVector3d(1, -1e-20, 0), z), 2 * pi);
    EXPECT_DOUBLE_EQ(AcGeVector3d(1, 1, 5).angleOnPlane(AcGePlane::kXYPlane), pi / 4);
    EXPECT_DOUBLE_EQ(AcGeVector3d(0, 0, -1).angleOnPlane(AcGePlane(AcGePoint3d(), y, z)),
                     3 * pi / 2);
}

TEST(Vector3d, ComparesDirectionsWhateverTheLengths) {
    const AcGeVector3d v(1e-3, 2e-3, 3e-3);
    EXPECT_TRUE(v.isCodirectionalTo(v * 1e9));
    EXPECT_FALSE(v.isCodirectionalTo(v * -1e9));
    EXPECT_TRUE(v.isParallelTo(v * -1e9));
    EXPECT_TRUE(v.isPerpendicularTo(AcGeVector3d(3e6, 0, -1e6)));
    EXPECT_FALSE(v.isParallelTo(AcGeVector3d(1, 2, 3.00001)));
    AcGeTol loose;
    loose.setEqualVector(1e-4);
    EXPECT_TRUE(v.isParallelTo(AcGeVector3d(1, 2, 3.00001), loose));

    AcGeError flag = AcGe::kOk;
    EXPECT_FALSE(v.isParallelTo(AcGeVector3d(), AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0Arg1);
    EXPECT_FALSE(AcGeVector3d().isPerpendicularTo(v, AcGeContext::gTol, flag));
    EXPECT_EQ(flag, AcGe::k0This);
    AcGeVector3d nothing;
    nothing.normalize(AcGeContext::gTol, flag);
    EXPECT_EQ(flag, AcGe::k0This);
    EXPECT_THAT(nothing, IsNear(AcGeVector3d()));
}

TEST(Point3d, EqualityFollowsTheTolerance) {
    const AcGePoint3d p(1, 2, 3);
    EXPECT_TRUE(p == AcGePoint3d(1, 2, 3 + 0.9e-10));
    EXPECT_TRUE(p != AcGePoint3d(1, 2, 3 + 2e-10));
    {
        const headless::GeState state;
        AcGeContext::gTol.setEqualPoint(0.1);
        EXPECT_TRUE(p == AcGePoint3d(1, 2, 3.09));
        {
            const headless::GeState inner;
            EXPECT_FALSE(p == AcGePoint3d(1, 2, 3.09)) << "a session starts with the defaults";
        }
        EXPECT_TRUE(p == AcGePoint3d(1, 2, 3.09)) << "and gives its predecessor's back";
    }
    EXPECT_FALSE(p == AcGePoint3d(1, 2, 3.09));
}

TEST(Ocs, AxesFollowTheNormal) {
    const double s = 1 / std::sqrt(2.0);
    const struct {
        const char* name;
        AcGeVector3d normal, x, y;
    } cases[] = {
        {"up", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {"down: a mirrored entity", {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
        {"any length", {0, 0, -1e-9}, {-1, 0, 0}, {0, 1, 0}},
        {"along x", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"along y", {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
        {"slanted", {s, 0, s}, {0, 1, 0}, {-s, 0, s}},
        {"none counts as up", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcGeMatrix3d m = headless::ocsMatrix(c.normal);
        EXPECT_THAT(m * AcGeVector3d::kXAxis, IsNear(c.x));
        EXPECT_THAT(m * AcGeVector3d::kYAxis, IsNear(c.y));
        EXPECT_NEAR(m.det(), 1.0, 1e-15);
    }
}

TEST(Ocs, SwitchesAtOneSixtyFourth) {
    // Below the limit the x axis is world y x normal, so it lies in the world xz plane; from the
    // limit on it is world z x normal, in the xy plane.
    const auto normal = [](double x) { return AcGeVector3d(x, 0, std::sqrt(1 - x * x)); };
    EXPECT_NEAR(headless::ocsXAxis(normal(1.0 / 64 - 1e-9)).y, 0.0, 1e-12);
    EXPECT_NEAR(headless::ocsXAxis(normal(1.0 / 64 + 1e-9)).y, 1.0, 1e-12);
    EXPECT_NEAR(headless::ocsXAxis(AcGeVector3d(0, 0.0157, 1)).x, -1.0, 1e-12);
}

TEST(Matrix3d, MapsAsNamed) {
    const AcGePlane slope(AcGePoint3d(0, 0, 1), AcGeVector3d(0, 1, 1));
    const struct {
        const char* name;
        AcGeMatrix3d matrix;
        AcGePoint3d image; // of (1, 2, 3)
    } cases[] = {
        {"translation", AcGeMatrix3d::translation({10, 20, 30}), {11, 22, 33}},
        {"rotation about z", AcGeMatrix3d::rotation(pi / 2, {0, 0, 2}), {-2, 1, 3}},
        {"rotation about x through a point",
         AcGeMatrix3d::rotation(pi / 2, {1, 0, 0}, {0, 2, 0}),
         {1, -1, 0}},
        {"rotation about the diagonal permutes",
         AcGeMatrix3d::rotation(2 * pi / 3, {1, 1, 1}),
         {3, 1, 2}},
        {"scaling about a point", AcGeMatrix3d::scaling(2, {1, 1, 1}), {1, 3, 5}},
        {"mirror in a point", AcGeMatrix3d::mirroring(AcGePoint3d(1, 0, 0)), {1, -2, -3}},
        {"mirror in a plane", AcGeMatrix3d::mirroring(slope), {1, -2, -1}},
        {"mirror in a line",
         AcGeMatrix3d::mirroring(AcGeLine3d(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis)),
         {1, -2, 3}},
        {"projection", AcGeMatrix3d::projection(AcGePlane::kXYPlane, {1, 0, 1}), {-2, 2, 0}},
        {"projection along the plane is nothing",
         AcGeMatrix3d::projection(AcGePlane::kXYPlane, {1, 0, 0}),
         {1, 2, 3}},
        {"aligned systems",
         AcGeMatrix3d::alignCoordSys({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {5, 5, 5},
                                     {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}),
         {5, 5, 5}},
        {"world to plane", AcGeMatrix3d::worldToPlane(AcGeVector3d(0, 0, -1)), {-1, 2, -3}},
        {"plane with an origin to world",
         AcGeMatrix3d::planeToWorld(AcGePlane(AcGePoint3d(7, 0, 0), AcGeVector3d(1, 0, 0))),
         {10, 1, 2}},
    };
    for (const auto& c : cases)
        EXPECT_THAT(c.matrix * AcGePoint3d(1, 2, 3), IsNear(c.image)) << c.name;
}

TEST(Matrix3d, InvertsAndMultiplies) {
    std::mt19937 random(20240601);
    std::uniform_real_distribution<double> number(-10, 10);
    const auto vector = [&] {
        return AcGeVector3d(number(random), number(random), number(random));
    };
    for (int i = 0; i < 200; ++i) {
        AcGeMatrix3d a;
        a.setCoordSystem(AcGePoint3d() + vector(), vector(), vector(), vector());
        if (std::abs(a.det()) < 1.0) continue;
        const AcGeMatrix3d b =
            AcGeMatrix3d::rotation(number(random), vector()) * AcGeMatrix3d::translation(vector());
        const AcGePoint3d p = AcGePoint3d() + vector();
        EXPECT_THAT(a.inverse() * (a * p), IsNear(p, 1e-9));
        EXPECT_THAT(AcGeMatrix3d(a).preMultBy(b) * p, IsNear(b * (a * p), 1e-9));
        EXPECT_THAT(AcGeMatrix3d(a).postMultBy(b) * p, IsNear(a * (b * p), 1e-9));
        EXPECT_NEAR((a * b).det(), a.det(), 1e-9 * std::abs(a.det()));
        EXPECT_NEAR(a.transpose().det(), a.det(), 1e-9 * std::abs(a.det()));
    }
}

TEST(Matrix3d, KnowsItsKind) {
    const auto axes = [](AcGeVector3d x, AcGeVector3d y, AcGeVector3d z) {
        AcGeMatrix3d m;
        return m.setCoordSystem(AcGePoint3d(), x, y, z);
    };
    const struct {
        const char* name;
        AcGeMatrix3d matrix;
        bool singular, ortho, uniform;
        double scale;
    } cases[] = {
        {"identity", AcGeMatrix3d(), false, true, true, 1},
        {"tiny uniform scale is regular", AcGeMatrix3d::scaling(1e-6), false, true, true, 1e-6},
        {"mirrored", axes({-2, 0, 0}, {0, 2, 0}, {0, 0, 2}), false, true, true, 2},
        {"uneven", axes({1, 0, 0}, {0, 2, 0}, {0, 0, 3}), false, true, false, 3},
        {"sheared", axes({1, 0, 0}, {1, 1, 0}, {0, 0, 1}), false, false, false, std::sqrt(2.0)},
        {"flattened", axes({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), true, false, false, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.matrix.isSingular(), c.singular);
        EXPECT_EQ(c.matrix.isScaledOrtho(), c.ortho);
        EXPECT_EQ(c.matrix.isUniScaledOrtho(), c.uniform);
        EXPECT_DOUBLE_EQ(c.matrix.scale(), c.scale);
        AcGeMatrix3d inverse;
        EXPECT_EQ(c.matrix.inverse(inverse), !c.singular);
    }
}

TEST(Matrix3d, ConvertToLocalFollowsAFlatObject) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-5, 5);
    const auto vector = [&] {
        return AcGeVector3d(number(random), number(random), number(random));
    };
    for (int i = 0; i < 100; ++i) {
        const AcGeMatrix3d map = AcGeMatrix3d::rotation(number(random), vector()) *
                                 AcGeMatrix3d::scaling(2.5) *
                                 AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), vector())) *
                                 AcGeMatrix3d::translation(vector());
        AcGeVector3d normal = vector().normal();
        double elevation = number(random);
        const AcGePoint2d local(number(random), number(random));
        const AcGePoint3d world =
            map * (headless::ocsMatrix(normal) * AcGePoint3d(local.x, local.y, elevation));

        const AcGePoint2d moved = map.convertToLocal(normal, elevation) * local;
        EXPECT_THAT(headless::ocsMatrix(normal) * AcGePoint3d(moved.x, moved.y, elevation),
                    IsNear(world, 1e-9));
    }
}

TEST(Matrix2d, MapsAsNamed) {
    const struct {
        const char* name;
        AcGeMatrix2d matrix;
        AcGePoint2d image; // of (1, 2)
    } cases[] = {
        {"translation", AcGeMatrix2d::translation({10, 20}), {11, 22}},
        {"rotation about a point", AcGeMatrix2d::rotation(pi / 2, {1, 0}), {-1, 0}},
        {"scaling about a point", AcGeMatrix2d::scaling(3, {1, 1}), {1, 4}},
        {"mirror in a point", AcGeMatrix2d::mirroring(AcGePoint2d(3, 0)), {5, -2}},
        {"mirror in a line",
         AcGeMatrix2d::mirroring(AcGeLine2d(AcGePoint2d(0, 1), AcGeVector2d(1, 1))),
         {1, 2}},
        {"mirror in the other line",
         AcGeMatrix2d::mirroring(AcGeLine2d(AcGePoint2d(0, 0), AcGeVector2d(1, 1))),
         {2, 1}},
        {"inverse",
         AcGeMatrix2d::rotation(0.3, {4, 5}).inverse() * AcGeMatrix2d::rotation(0.3, {4, 5}),
         {1, 2}},
        {"aligned systems",
         AcGeMatrix2d::alignCoordSys({1, 1}, {1, 0}, {0, 1}, {0, 0}, {0, 1}, {-1, 0}),
         {-1, 0}},
    };
    for (const auto& c : cases)
        EXPECT_THAT(c.matrix * AcGePoint2d(1, 2), IsNear(c.image)) << c.name;
}

TEST(Plane, ConvertsPointsAndMeetsPlanes) {
    const AcGePlane wall(AcGePoint3d(5, 0, 0), AcGeVector3d(1, 0, 0));
    EXPECT_THAT(AcGePoint3d(9, 2, 3).convert2d(wall), IsNear(AcGePoint2d(2, 3)));
    EXPECT_THAT(AcGePoint3d(wall, AcGePoint2d(2, 3)), IsNear(AcGePoint3d(5, 2, 3)));
    EXPECT_THAT(AcGePoint3d(9, 2, 3).orthoProject(wall), IsNear(AcGePoint3d(5, 2, 3)));
    EXPECT_THAT(AcGePoint3d(9, 2, 3).project(wall, {2, 1, 0}), IsNear(AcGePoint3d(5, 0, 3)));
    EXPECT_THAT(AcGePoint3d(9, 2, 3).mirror(wall), IsNear(AcGePoint3d(1, 2, 3)));
    EXPECT_DOUBLE_EQ(wall.signedDistanceTo({3, 1, 1}), -2.0);

    double a = 0, b = 0, c = 0, d = 0;
    AcGePlane(0, 0, 2, -8).getCoefficients(a, b, c, d);
    EXPECT_THAT((std::array{a, b, c, d}), testing::ElementsAre(0, 0, 1, -4));

    AcGeLine3d shared;
    ASSERT_TRUE(wall.intersectWith(AcGePlane(0, 0, 1, -4), shared));
    EXPECT_TRUE(shared.isOn(AcGePoint3d(5, -77, 4)));
    EXPECT_FALSE(wall.intersectWith(AcGePlane(AcGePoint3d(), AcGeVector3d(-1, 0, 0)), shared));
}

TEST(Scale3d, ReadsTheAxesLengths) {
    AcGeMatrix3d matrix;
    AcGeScale3d(2, -3, 4).getMatrix(matrix);
    EXPECT_THAT(matrix * AcGePoint3d(1, 1, 1), IsNear(AcGePoint3d(2, -3, 4)));
    AcGeScale3d read;
    read.extractScale(AcGeMatrix3d::rotation(1, {1, 2, 3}) * matrix);
    EXPECT_TRUE(read.isEqualTo(AcGeScale3d(2, 3, 4)));
    EXPECT_FALSE(read.isProportional());
    EXPECT_TRUE((AcGeScale3d(2, -3, 4) * AcGeScale3d(2, -3, 4).inverse()).isProportional());
}

} // namespace
