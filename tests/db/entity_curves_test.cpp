// Lengths, areas, extents and parameters of all curves, in flat, mirrored and slanted planes.
#include <cmath>
#include <numbers>

#include "db/arc.h"
#include "db/circle.h"
#include "db/ellipse.h"
#include "db/line.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/ray.h"
#include "db/spline.h"
#include "db/xline.h"
#include "entity_support.h"

namespace {

using enttest::Box;
using enttest::points;
using std::numbers::pi;

const AcGeVector3d kSlanted(0.02, 0.32, 0.95);
const AcGeVector3d kDown(0.0, 0.0, -1.0);

std::unique_ptr<AcDbPolyline> polyline(const std::vector<std::array<double, 3>>& vertices,
                                       bool closed,
                                       const AcGeVector3d& normal = AcGeVector3d::kZAxis,
                                       double elevation = 0.0) {
    auto made = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        EXPECT_EQ(made->addVertexAt(made->numVerts(), {x, y}, bulge), Acad::eOk);
    made->setClosed(closed);
    made->setNormal(normal);
    made->setElevation(elevation);
    return made;
}

std::unique_ptr<AcDbSpline> fitSpline() {
    return std::make_unique<AcDbSpline>(points({{0, 0, 0}, {10, 5, 1}, {20, -5, 3}, {30, 0, 0}}));
}

std::unique_ptr<AcDbSpline> rationalQuarter() {
    AcGeDoubleArray knots, weights;
    for (const double knot : {0.0, 0.0, 0.0, 1.0, 1.0, 1.0})
        knots.append(knot);
    for (const double weight : {1.0, std::sqrt(0.5), 1.0})
        weights.append(weight);
    return std::make_unique<AcDbSpline>(2, true, false, false,
                                        points({{5, 0, 0}, {5, 5, 0}, {0, 5, 0}}), knots, weights);
}

std::unique_ptr<AcDb2dPolyline> oldPolyline() {
    AcGePoint3dArray vertices = points({{0, 0, 0}, {10, 0, 0}, {10, 8, 0}});
    AcGeDoubleArray bulges;
    for (const double bulge : {0.5, 0.0, -1.5})
        bulges.append(bulge);
    auto made = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, vertices, 4.0, true, 0.0, 0.0,
                                                 &bulges);
    made->setNormal(kSlanted);
    return made;
}

std::unique_ptr<AcDb3dPolyline> spacePolyline() {
    AcGePoint3dArray vertices = points({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, vertices, true);
}

struct Sample {
    const char* name;
    std::unique_ptr<AcDbCurve> curve;
};

/// One curve of each kind and plane that behaves differently.
std::vector<Sample> samples() {
    std::vector<Sample> list;
    const auto add = [&list](const char* name, auto curve) {
        list.push_back({name, std::move(curve)});
    };
    add("line", std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(-4, 8, 5)));
    add("circle", std::make_unique<AcDbCircle>(AcGePoint3d(3, 4, 5), AcGeVector3d::kZAxis, 7));
    add("slanted circle", std::make_unique<AcDbCircle>(AcGePoint3d(3, 4, 5), kSlanted, 7));
    add("arc over the start of angles", std::make_unique<AcDbArc>(AcGePoint3d(1, 1, 0), 5, 5.5, 1));
    add("arc seen from below", std::make_unique<AcDbArc>(AcGePoint3d(1, 1, 0), kDown, 5, 0.3, 2.2));
    add("slanted arc", std::make_unique<AcDbArc>(AcGePoint3d(1, 1, 0), kSlanted, 5, 0.3, 5.2));
    add("ellipse", std::make_unique<AcDbEllipse>(AcGePoint3d(2, 1, 0), AcGeVector3d::kZAxis,
                                                 AcGeVector3d(6, 3, 0), 0.4));
    add("ellipse arc", std::make_unique<AcDbEllipse>(AcGePoint3d(2, 1, 0), kDown,
                                                     AcGeVector3d(6, 3, 0), 0.4, 4.0, 7.5));
    add("spline through points", fitSpline());
    add("rational spline", rationalQuarter());
    add("open polyline", polyline({{0, 0, 0.3}, {10, 0, 0}, {12, 9, -2}}, false));
    add("closed polyline with an arc last", polyline({{0, 0, 0}, {10, 0, 0}, {9, 9, 0.7}}, true));
    add("donut", polyline({{-3, 1, 1}, {3, 1, 1}}, true));
    add("deep bulge", polyline({{0, 0, 3.7}, {2, 1, 0}}, true));
    add("shallow bulge", polyline({{0, 0, 1e-7}, {1000, 10, 0}, {500, 900, 0}}, true));
    add("slanted polyline", polyline({{0, 0, 0.8}, {9, 2, 0}, {5, 7, -0.4}}, true, kSlanted, 11));
    add("polyline seen from below", polyline({{0, 0, 0.8}, {9, 2, 0}, {5, 7, 0}}, true, kDown, 2));
    add("old polyline", oldPolyline());
    add("polyline in space", spacePolyline());
    return list;
}

TEST(Curves, AgreeWithTheirChords) {
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        const enttest::Chords chords = enttest::chordsOf(*sample.curve);
        double end = 0.0, length = 0.0;
        ASSERT_EQ(sample.curve->getEndParam(end), Acad::eOk);
        ASSERT_EQ(sample.curve->getDistAtParam(end, length), Acad::eOk);
        EXPECT_NEAR(length, chords.length, 1e-6 * chords.length);
        double area = 0.0;
        if (sample.curve->getArea(area) == Acad::eOk) {
            EXPECT_NEAR(area, chords.area, 1e-6 * (1.0 + chords.area));
        }
        const Box box{chords.box.minPoint(), chords.box.maxPoint()};
        enttest::expectNear(enttest::boxOf(*sample.curve), box, 1e-5);
    }
}

TEST(Curves, FindTheirOwnPointsAgain) {
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        const AcDbCurve& curve = *sample.curve;
        double first = 0.0, last = 0.0;
        ASSERT_EQ(curve.getStartParam(first), Acad::eOk);
        ASSERT_EQ(curve.getEndParam(last), Acad::eOk);
        for (const double share : {0.0, 0.13, 0.5, 0.77}) {
            const double param = first + share * (last - first);
            AcGePoint3d point;
            double found = -1.0, distance = -1.0;
            AcGePoint3d again;
            ASSERT_EQ(curve.getPointAtParam(param, point), Acad::eOk);
            ASSERT_EQ(curve.getParamAtPoint(point, found), Acad::eOk) << share;
            EXPECT_NEAR(found, param, 1e-6 * (1.0 + std::abs(param)));
            ASSERT_EQ(curve.getDistAtParam(param, distance), Acad::eOk);
            ASSERT_EQ(curve.getPointAtDist(distance, again), Acad::eOk);
            enttest::expectNear(again, point, 1e-7);
        }
        double param = 0.0;
        AcGePoint3d point;
        EXPECT_EQ(curve.getPointAtParam(last + 1.0, point), Acad::eInvalidInput);
        EXPECT_EQ(curve.getParamAtPoint(AcGePoint3d(500, 500, 500), param), Acad::eInvalidInput);
        EXPECT_EQ(curve.getParamAtDist(1e6, param), Acad::eInvalidInput);
    }
}

TEST(Curves, DerivativesAreTheSlopesOfTheirPoints) {
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        double first = 0.0, last = 0.0;
        sample.curve->getStartParam(first);
        sample.curve->getEndParam(last);
        const double param = first + 0.37 * (last - first);
        const double step = 1e-4 * (last - first);
        AcGePoint3d before, here, after;
        sample.curve->getPointAtParam(param - step, before);
        sample.curve->getPointAtParam(param, here);
        sample.curve->getPointAtParam(param + step, after);
        AcGeVector3d slope, bend;
        ASSERT_EQ(sample.curve->getFirstDeriv(param, slope), Acad::eOk);
        ASSERT_EQ(sample.curve->getSecondDeriv(param, bend), Acad::eOk);
        const AcGeVector3d wanted = (after - before) / (2.0 * step);
        const AcGeVector3d wantedBend = ((after - here) - (here - before)) / (step * step);
        EXPECT_LT((slope - wanted).length(), 1e-5 * (1.0 + wanted.length()));
        EXPECT_LT((bend - wantedBend).length(), 1e-3 * (1.0 + wanted.length()));
    }
}

TEST(Curves, MoveAsTheirExtentsSay) {
    AcGeMatrix3d mirrored;
    mirrored.entry[0][0] = -1.0;
    const struct {
        const char* name;
        AcGeMatrix3d transform;
    } cases[] = {
        {"moved", AcGeMatrix3d::translation({10, -4, 2})},
        {"turned in the plane", AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis)},
        {"turned out of the plane", AcGeMatrix3d::rotation(1.1, AcGeVector3d(1, 2, 0.5))},
        {"scaled about a point", AcGeMatrix3d::scaling(2.5, AcGePoint3d(3, 3, 3))},
        {"mirrored", mirrored},
    };
    for (const auto& c : cases) {
        for (const Sample& sample : samples()) {
            SCOPED_TRACE(std::string(c.name) + ": " + sample.name);
            const Box wanted = enttest::boxUnder(*sample.curve, c.transform);
            ASSERT_EQ(sample.curve->transformBy(c.transform), Acad::eOk);
            enttest::expectNear(enttest::boxOf(*sample.curve), wanted, 1e-8);
        }
    }
}

TEST(Curves, SurviveUnevenScalesOnlyWhereTheyCan) {
    AcGeMatrix3d uneven;
    uneven.entry[0][0] = 3.0;
    const struct {
        std::unique_ptr<AcDbCurve> curve;
        Acad::ErrorStatus status;
    } cases[] = {
        {std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, 1),
         Acad::eCannotScaleNonUniformly},
        {std::make_unique<AcDbArc>(AcGePoint3d(), 1, 0, 1), Acad::eCannotScaleNonUniformly},
        {polyline({{0, 0, 0.5}, {1, 0, 0}}, false), Acad::eCannotScaleNonUniformly},
        {polyline({{0, 0, 0}, {1, 0, 0}}, false), Acad::eOk},
        {std::make_unique<AcDbEllipse>(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis,
                                       AcGeVector3d(2, 2, 0), 0.5, 0.4, 3.0),
         Acad::eOk},
    };
    for (const auto& c : cases) {
        const Box before = enttest::boxOf(*c.curve);
        const Box wanted = c.status == Acad::eOk ? enttest::boxUnder(*c.curve, uneven) : before;
        EXPECT_EQ(c.curve->transformBy(uneven), c.status);
        enttest::expectNear(enttest::boxOf(*c.curve), wanted);
    }
}

TEST(Curves, ArcsThatDoNotTurnKeepTheirAnglesToTheLastDigit) {
    const AcGeMatrix3d transforms[] = {AcGeMatrix3d::translation({1234.5, 99.25, 0}),
                                       AcGeMatrix3d::scaling(1.7, {3, 4, 0})};
    for (const AcGeMatrix3d& transform : transforms) {
        for (double start = 0.1; start < 2 * pi; start += 0.37) {
            for (const double end : {0.0, 0.3, 5.9}) {
                AcDbArc arc({1, 1, 0}, 5, start, end);
                ASSERT_EQ(arc.transformBy(transform), Acad::eOk);
                EXPECT_EQ(arc.startAngle(), start);
                EXPECT_EQ(arc.endAngle(), end);
            }
        }
    }
}

TEST(Curves, NearestPointsMayGoOnBeyondTheEnds) {
    const AcDbLine line({0, 0, 0}, {10, 0, 0});
    const AcDbArc quarter({0, 0, 0}, 5, 0, pi / 2);
    const auto open = polyline({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false);
    const auto closed = polyline({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true);
    const struct {
        const char* name;
        const AcDbCurve& curve;
        AcGePoint3d from;
        bool extend;
        AcGePoint3d wanted;
    } cases[] = {
        {"line ends", line, {15, 3, 0}, false, {10, 0, 0}},
        {"line goes on", line, {15, 3, 0}, true, {15, 0, 0}},
        {"line goes on backwards", line, {-4, 3, 1}, true, {-4, 0, 0}},
        {"arc ends", quarter, {0, -9, 0}, false, {5, 0, 0}},
        {"arc goes around", quarter, {0, -9, 0}, true, {0, -5, 0}},
        {"only the outer ends are free", *open, {12, -1, 0}, true, {10, 0, 0}},
        {"a closed curve has no ends", *closed, {12, -1, 0}, true, {10, 0, 0}},
        {"inside the corner", *open, {9, 4, 0}, false, {10, 4, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcGePoint3d found;
        ASSERT_EQ(c.curve.getClosestPointTo(c.from, found, c.extend), Acad::eOk);
        enttest::expectNear(found, c.wanted, 1e-12);
    }
}

TEST(Curves, EndlessOnesHaveNoExtents) {
    AcDbRay ray;
    AcDbXline line;
    for (headless::EndlessLine* const endless :
         {static_cast<headless::EndlessLine*>(&ray), static_cast<headless::EndlessLine*>(&line)}) {
        ASSERT_EQ(endless->setBasePoint({1, 2, 0}), Acad::eOk);
        ASSERT_EQ(endless->setUnitDir({0, 5, 0}), Acad::eOk);
        AcDbExtents box;
        AcGePoint3d point;
        EXPECT_EQ(endless->getGeomExtents(box), Acad::eInvalidExtents);
        ASSERT_EQ(endless->getPointAtParam(7.0, point), Acad::eOk);
        enttest::expectNear(point, {1, 9, 0}, 0.0);
    }
    AcGePoint3d behind;
    EXPECT_EQ(ray.getPointAtParam(-1.0, behind), Acad::eInvalidInput);
    EXPECT_EQ(line.getPointAtParam(-1.0, behind), Acad::eOk);
    ASSERT_EQ(ray.getClosestPointTo({9, -9, 0}, behind), Acad::eOk);
    enttest::expectNear(behind, {1, 2, 0}, 0.0);
}

TEST(Ellipse, ParametersAreNotAngles) {
    const AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {4, 0, 0}, 0.5, 0.0, 5.0 * pi / 4.0);
    // At the angle 45 degrees x = y: 4 cos p = 2 sin p.
    EXPECT_NEAR(ellipse.paramAtAngle(pi / 4.0), std::atan(2.0), 1e-12);
    EXPECT_NEAR(ellipse.angleAtParam(std::atan(2.0)), pi / 4.0, 1e-12);
    EXPECT_NEAR(ellipse.endAngle(), 5.0 * pi / 4.0, 1e-12);
    AcGePoint3d end;
    ASSERT_EQ(ellipse.getEndPoint(end), Acad::eOk);
    EXPECT_NEAR(end.x, end.y, 1e-12);
    EXPECT_LT(end.x, 0.0);
    EXPECT_FALSE(ellipse.isClosed());
}

TEST(Spline, RefusesDataThatDoesNotFit) {
    AcDbSpline spline;
    AcGeDoubleArray falling;
    for (const double knot : {0.0, 0.0, 1.0, 0.5})
        falling.append(knot);
    EXPECT_EQ(spline.setNurbsData(1, false, false, false, points({{0, 0, 0}, {1, 0, 0}}), falling,
                                  AcGeDoubleArray()),
              Acad::eInvalidInput);
    EXPECT_TRUE(spline.isNull());
    AcDbExtents box;
    EXPECT_EQ(spline.getGeomExtents(box), Acad::eNullExtents);
    // A quarter of a circle as a rational parabola is exact.
    const auto quarter = rationalQuarter();
    double length = 0.0;
    ASSERT_EQ(quarter->getDistAtParam(1.0, length), Acad::eOk);
    EXPECT_NEAR(length, 2.5 * pi, 1e-11);
}

} // namespace
