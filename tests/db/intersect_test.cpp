// Where entities meet: pairs with answers worked out by hand, and pairs at random against chords.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "db/arc.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/circle.h"
#include "db/ellipse.h"
#include "db/line.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/ray.h"
#include "db/spline.h"
#include "db/text.h"
#include "db/xline.h"
#include "entity_support.h"

namespace {

using std::numbers::pi;
using Points = std::vector<AcGePoint3d>;
using EntityPtr = std::unique_ptr<AcDbEntity>;

EntityPtr line(const AcGePoint3d& a, const AcGePoint3d& b) {
    return std::make_unique<AcDbLine>(a, b);
}
EntityPtr ray(const AcGePoint3d& base, const AcGeVector3d& along) {
    auto made = std::make_unique<AcDbRay>();
    made->setBasePoint(base);
    made->setUnitDir(along);
    return made;
}
EntityPtr xline(const AcGePoint3d& base, const AcGeVector3d& along) {
    auto made = std::make_unique<AcDbXline>();
    made->setBasePoint(base);
    made->setUnitDir(along);
    return made;
}
EntityPtr circle(const AcGePoint3d& center, double radius,
                 const AcGeVector3d& normal = AcGeVector3d::kZAxis) {
    return std::make_unique<AcDbCircle>(center, normal, radius);
}
EntityPtr arc(const AcGePoint3d& center, double radius, double from, double to) {
    return std::make_unique<AcDbArc>(center, radius, from, to);
}
EntityPtr ellipse(const AcGePoint3d& center, const AcGeVector3d& major, double ratio,
                  double from = 0.0, double to = 2.0 * pi) {
    return std::make_unique<AcDbEllipse>(center, AcGeVector3d::kZAxis, major, ratio, from, to);
}
EntityPtr polyline(const std::vector<std::array<double, 3>>& vertices, bool closed) {
    auto made = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        made->addVertexAt(made->numVerts(), {x, y}, bulge);
    made->setClosed(closed);
    return made;
}
EntityPtr polyline2d(const Points& points) {
    AcGePoint3dArray vertices = enttest::points(points);
    return std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, vertices, 0.0, false);
}
EntityPtr polyline3d(const Points& points) {
    AcGePoint3dArray vertices = enttest::points(points);
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, vertices, false);
}
/// A parabola: y = x (4 - x) / 4 from (0, 0) over (2, 1) to (4, 0).
EntityPtr parabola() {
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 1.0, 1.0, 1.0})
        knots.append(knot);
    return std::make_unique<AcDbSpline>(2, false, false, false,
                                        enttest::points({{0, 0, 0}, {2, 2, 0}, {4, 0, 0}}), knots,
                                        AcGeDoubleArray());
}

Points sorted(Points points) {
    std::sort(points.begin(), points.end(), [](const AcGePoint3d& a, const AcGePoint3d& b) {
        return std::abs(a.x - b.x) > 1e-6 ? a.x < b.x : a.y < b.y;
    });
    return points;
}

Points meet(const AcDbEntity& a, const AcDbEntity& b,
            AcDb::Intersect type = AcDb::kOnBothOperands) {
    AcGePoint3dArray found;
    EXPECT_EQ(a.intersectWith(&b, type, found), Acad::eOk);
    return {found.begin(), found.end()};
}

void expectPoints(const Points& actual, const Points& wanted, double tolerance = 1e-9) {
    const Points found = sorted(actual);
    const Points expected = sorted(wanted);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        enttest::expectNear(found[i], expected[i], tolerance);
}

TEST(Intersections, OfPairsAreWhereHandFiguresPutThem) {
    struct Case {
        const char* name;
        EntityPtr a, b;
        AcDb::Intersect type;
        Points points;
        double tolerance = 1e-9;
    };
    const AcDb::Intersect both = AcDb::kOnBothOperands;
    const double root2 = std::sqrt(2.0);
    std::vector<Case> cases;
    const auto add = [&](const char* name, EntityPtr a, EntityPtr b, Points points,
                         AcDb::Intersect type = AcDb::kOnBothOperands, double tolerance = 1e-9) {
        cases.push_back({name, std::move(a), std::move(b), type, std::move(points), tolerance});
    };
    const auto base = [] { return line({0, 0, 0}, {10, 0, 0}); };
    add("lines that cross", base(), line({4, -1, 0}, {6, 1, 0}), {{5, 0, 0}});
    add("line that ends on a line", base(), line({3, 0, 0}, {3, 5, 0}), {{3, 0, 0}});
    add("lines that fall short", base(), line({3, 1, 0}, {3, 5, 0}), {});
    add("the other goes on", base(), line({3, 1, 0}, {3, 5, 0}), {{3, 0, 0}}, AcDb::kExtendArg);
    add("this one goes on", base(), line({12, 1, 0}, {12, -5, 0}), {{12, 0, 0}}, AcDb::kExtendThis);
    add("only the other goes on", base(), line({12, 1, 0}, {12, 5, 0}), {}, AcDb::kExtendArg);
    add("both go on", base(), line({12, 1, 0}, {12, 5, 0}), {{12, 0, 0}}, AcDb::kExtendBoth);
    add("lines one above the other", base(), line({5, -1, 1e-6}, {5, 1, 1e-6}), {});
    add("lines in space that meet", line({0, 0, 0}, {2, 2, 2}), line({2, 0, 0}, {0, 2, 2}),
        {{1, 1, 1}});
    add("lines on each other", base(), line({4, 0, 0}, {20, 0, 0}), {});
    add("lines end to end", base(), line({10, 0, 0}, {20, 0, 0}), {{10, 0, 0}});
    add("ray ahead", ray({0, 1, 0}, {1, 0, 0}), line({5, 0, 0}, {5, 2, 0}), {{5, 1, 0}});
    add("ray behind", ray({0, 1, 0}, {1, 0, 0}), line({-5, 0, 0}, {-5, 2, 0}), {});
    add("ray made a line", ray({0, 1, 0}, {1, 0, 0}), line({-5, 0, 0}, {-5, 2, 0}), {{-5, 1, 0}},
        AcDb::kExtendThis);
    add("xline behind", xline({0, 1, 0}, {1, 0, 0}), line({-5, 0, 0}, {-5, 2, 0}), {{-5, 1, 0}});
    add("xlines at the base of one", xline({0, 0, 0}, {1, 0, 0}), xline({0, 3, 0}, {0, 1, 0}),
        {{0, 0, 0}});
    add("line through a circle", line({-9, 3, 0}, {9, 3, 0}), circle({0, 0, 0}, 5),
        {{-4, 3, 0}, {4, 3, 0}});
    add("line that touches a circle", line({-9, 5, 0}, {9, 5, 0}), circle({0, 0, 0}, 5),
        {{0, 5, 0}});
    add("line inside a circle", line({-1, 0, 0}, {1, 0, 0}), circle({0, 0, 0}, 5), {});
    add("line through the plane of a circle", line({5, 0, -1}, {5, 0, 3}), circle({0, 0, 0}, 5),
        {{5, 0, 0}});
    add("line in a plane above a circle", line({-9, 0, 1}, {9, 0, 1}), circle({0, 0, 0}, 5), {});
    add("line and the half of a circle it meets", line({-9, 3, 0}, {9, 3, 0}),
        arc({0, 0, 0}, 5, -pi / 2, pi / 2), {{4, 3, 0}});
    add("arc made a circle", line({-9, 3, 0}, {9, 3, 0}), arc({0, 0, 0}, 5, -pi / 2, pi / 2),
        {{-4, 3, 0}, {4, 3, 0}}, AcDb::kExtendArg);
    add("circles that cross", circle({0, 0, 0}, 5), circle({6, 0, 0}, 5), {{3, -4, 0}, {3, 4, 0}});
    add("circles that touch", circle({0, 0, 0}, 5), circle({7, 0, 0}, 2), {{5, 0, 0}});
    add("circle that touches from within", circle({0, 0, 0}, 5), circle({3, 0, 0}, 2), {{5, 0, 0}});
    add("circles of one centre", circle({0, 0, 0}, 5), circle({0, 0, 0}, 4), {});
    add("a circle and itself", circle({0, 0, 0}, 5), circle({0, 0, 0}, 5), {});
    add("circle seen from below", circle({0, 0, 0}, 5), circle({6, 0, 0}, 5, -AcGeVector3d::kZAxis),
        {{3, -4, 0}, {3, 4, 0}});
    add("circles in crossed planes", circle({0, 0, 0}, 5), circle({5, 0, 0}, 5, {0, 1, 0}), {});
    add("circles in crossed planes that meet", circle({0, 0, 0}, 5),
        circle({10, 0, 0}, 5, {0, 1, 0}), {{5, 0, 0}});
    add("halves of one circle", arc({0, 0, 0}, 5, 0, pi), arc({0, 0, 0}, 5, pi, 2 * pi),
        {{-5, 0, 0}, {5, 0, 0}});
    add("line through an ellipse", line({0, -9, 0}, {0, 9, 0}), ellipse({0, 0, 0}, {6, 0, 0}, 0.5),
        {{0, -3, 0}, {0, 3, 0}});
    add("line that touches an ellipse", line({-9, 3, 0}, {9, 3, 0}),
        ellipse({0, 0, 0}, {6, 0, 0}, 0.5), {{0, 3, 0}});
    add("half an ellipse", line({0, -9, 0}, {0, 9, 0}), ellipse({0, 0, 0}, {6, 0, 0}, 0.5, 0.0, pi),
        {{0, 3, 0}});
    // x^2 / 4 + y^2 = 1 and x^2 + y^2 / 4 = 1: |x| = |y| = 2 / sqrt(5).
    const double d = 2.0 / std::sqrt(5.0);
    add("crossed ellipses", ellipse({0, 0, 0}, {2, 0, 0}, 0.5), ellipse({0, 0, 0}, {0, 2, 0}, 0.5),
        {{-d, -d, 0}, {-d, d, 0}, {d, -d, 0}, {d, d, 0}});
    add("ellipse about a circle that touches", ellipse({0, 0, 0}, {2, 0, 0}, 0.5),
        circle({0, 0, 0}, 1), {{0, -1, 0}, {0, 1, 0}}, both, 1e-5);
    add("an ellipse and itself", ellipse({0, 0, 0}, {2, 0, 0}, 0.5),
        ellipse({0, 0, 0}, {2, 0, 0}, 0.5), {});
    // x (4 - x) / 4 = 3/4: x = 1, 3.
    add("line through a spline", line({-1, 0.75, 0}, {9, 0.75, 0}), parabola(),
        {{1, 0.75, 0}, {3, 0.75, 0}});
    add("line that touches a spline", line({-1, 1, 0}, {9, 1, 0}), parabola(), {{2, 1, 0}}, both,
        1e-5);
    add("xline through the end of a spline", xline({0, 0, 0}, {1, -1, 0}), parabola(), {{0, 0, 0}});
    add("circle about the top of a spline", circle({2, 0, 0}, 1), parabola(), {{2, 1, 0}}, both,
        2e-5);
    add("a spline and itself", parabola(), parabola(), {});
    add("polyline by its arc", polyline({{0, 0, 1}, {10, 0, 0}}, false),
        line({5, -9, 0}, {5, 0, 0}), {{5, -5, 0}});
    add("line through a vertex", polyline({{0, 0, 0}, {5, 5, 0}, {10, 0, 0}}, false),
        line({5, 0, 0}, {5, 9, 0}), {{5, 5, 0}});
    add("closed polyline meets by its last side",
        polyline({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, true), line({-1, 2, 0}, {1, 2, 0}),
        {{0, 2, 0}});
    add("open polyline goes on by its last segment",
        polyline({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}}, false), line({0, 9, 0}, {9, 9, 0}), {{4, 9, 0}},
        AcDb::kExtendThis);
    add("squares at a corner", polyline({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, true),
        polyline({{4, 4, 0}, {8, 4, 0}, {8, 8, 0}, {4, 8, 0}}, true), {{4, 4, 0}});
    add("shallow arc", polyline({{0, 0, 1e-7}, {1000, 0, 0}}, false),
        line({500, -1, 0}, {500, 1, 0}), {{500, -500e-7, 0}});
    add("old polyline", polyline2d({{0, 0, 0}, {5, 5, 0}, {10, 0, 0}}), base(),
        {{0, 0, 0}, {10, 0, 0}});
    add("polyline in space", polyline3d({{5, -1, -1}, {5, 1, 1}, {5, 9, 9}}), base(), {{5, 0, 0}});
    add("far from the origin", line({1e6, 1e6, 0}, {1e6 + 10, 1e6 + 10, 0}),
        circle({1e6, 1e6, 0}, root2), {{1e6 + 1, 1e6 + 1, 0}}, both, 1e-8);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        expectPoints(meet(*c.a, *c.b, c.type), c.points, c.tolerance);
        const AcDb::Intersect turned = c.type == AcDb::kExtendThis  ? AcDb::kExtendArg
                                       : c.type == AcDb::kExtendArg ? AcDb::kExtendThis
                                                                    : c.type;
        expectPoints(meet(*c.b, *c.a, turned), c.points, c.tolerance);
    }
}

TEST(Intersections, SeenOnAPlaneLieOnTheCurveAsked) {
    const EntityPtr low = line({0, 0, 0}, {10, 0, 10});
    const EntityPtr high = circle({5, 0, 7}, 3);
    AcGePoint3dArray found;
    const AcGePlane ground(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
    EXPECT_EQ(low->intersectWith(high.get(), AcDb::kOnBothOperands, ground, found), Acad::eOk);
    expectPoints({found.begin(), found.end()}, {{2, 0, 2}, {8, 0, 8}});
    found.removeAll();
    // From the side the circle is the line from x = 2 to x = 8 at height 7.
    const AcGePlane side(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis);
    EXPECT_EQ(low->intersectWith(high.get(), AcDb::kOnBothOperands, side, found), Acad::eOk);
    ASSERT_FALSE(found.isEmpty());
    for (const AcGePoint3d& point : found)
        enttest::expectNear(point, {7, 0, 7}, 1e-6);
    EXPECT_EQ(low->intersectWith(nullptr, AcDb::kOnBothOperands, found), Acad::eNullEntityPointer);
}

EntityPtr randomCurve(std::mt19937& random, int kind) {
    std::uniform_real_distribution<double> place(-10.0, 10.0);
    std::uniform_real_distribution<double> angle(0.0, 2.0 * pi);
    const auto point = [&] { return AcGePoint3d(place(random), place(random), 0.0); };
    const double from = angle(random);
    switch (kind) {
    case 0:
        return line(point(), point());
    case 1:
        return circle(point(), std::abs(place(random)) + 0.1);
    case 2:
        return arc(point(), std::abs(place(random)) + 0.1, from, from + 0.2 + angle(random) * 0.9);
    case 3:
        return ellipse(point(), point().asVector(), 0.1 + angle(random) / 7.0);
    case 4:
        return ellipse(point(), point().asVector(), 0.1 + angle(random) / 7.0, from,
                       from + 0.2 + angle(random) * 0.9);
    case 5:
        return std::make_unique<AcDbSpline>(
            enttest::points({point(), point(), point(), point(), point()}));
    default:
        return polyline({{place(random), place(random), place(random) / 5},
                         {place(random), place(random), place(random) / 5},
                         {place(random), place(random), 0.0},
                         {place(random), place(random), place(random) * 1e-4}},
                        kind == 6);
    }
}

Points chordPoints(const AcDbCurve& curve, int count) {
    double first = 0.0, last = 0.0;
    curve.getStartParam(first);
    curve.getEndParam(last);
    Points points;
    for (int i = 0; i <= count; ++i) {
        points.emplace_back();
        curve.getPointAtParam(first + (last - first) * i / count, points.back());
    }
    return points;
}

/// Where two chords cross well within both and at a good angle.
std::optional<AcGePoint3d> plainCrossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                         const AcGePoint3d& c, const AcGePoint3d& d) {
    const double turn = (b - a).crossProduct(d - c).z;
    if (std::abs(turn) < 0.1 * a.distanceTo(b) * c.distanceTo(d)) return std::nullopt;
    const double s = (c - a).crossProduct(d - c).z / turn;
    const double t = (c - a).crossProduct(b - a).z / turn;
    const auto within = [](double share) { return share > 0.02 && share < 0.98; };
    if (!within(s) || !within(t)) return std::nullopt;
    return a + (b - a) * s;
}

TEST(Intersections, OfCurvesAtRandomAreThoseOfTheirChords) {
    std::mt19937 random(7);
    constexpr int kChords = 800;
    int crossings = 0;
    for (int round = 0; round < 140; ++round) {
        const EntityPtr a = randomCurve(random, round % 8);
        const EntityPtr b = randomCurve(random, (round / 8) % 8);
        SCOPED_TRACE(round);
        const auto* const curveA = AcDbCurve::cast(a.get());
        const auto* const curveB = AcDbCurve::cast(b.get());
        const Points found = meet(*a, *b);
        for (const AcGePoint3d& point : found) {
            for (const AcDbCurve* const curve : {curveA, curveB}) {
                AcGePoint3d onCurve;
                ASSERT_EQ(curve->getClosestPointTo(point, onCurve), Acad::eOk);
                EXPECT_LT(onCurve.distanceTo(point), 1e-7);
            }
        }
        const Points chordsA = chordPoints(*curveA, kChords);
        const Points chordsB = chordPoints(*curveB, kChords);
        for (std::size_t i = 0; i + 1 < chordsA.size(); ++i) {
            for (std::size_t j = 0; j + 1 < chordsB.size(); ++j) {
                const auto crossing =
                    plainCrossing(chordsA[i], chordsA[i + 1], chordsB[j], chordsB[j + 1]);
                if (!crossing) continue;
                ++crossings;
                const bool known =
                    std::any_of(found.begin(), found.end(), [&](const AcGePoint3d& point) {
                        return point.distanceTo(*crossing) < 1e-2;
                    });
                EXPECT_TRUE(known) << crossing->x << "," << crossing->y;
            }
        }
    }
    EXPECT_GT(crossings, 100);
}

class IntersectionsInDrawings : public coretest::CoreTest {};

TEST_F(IntersectionsInDrawings, GoIntoReferencesAndTexts) {
    const AcDbObjectId id = coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"ring");
    {
        AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
        auto* const ring = new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 1.0);
        ASSERT_EQ(block->appendAcDbEntity(ring), Acad::eOk);
        ring->close();
    }
    AcDbBlockReference oval({10, 0, 0}, id);
    oval.setScaleFactors({4, 2, 1});
    oval.setRotation(pi / 2);
    const EntityPtr across = line({0, 0, 0}, {20, 0, 0});
    expectPoints(meet(oval, *across), {{8, 0, 0}, {12, 0, 0}});
    expectPoints(meet(*across, oval), {{8, 0, 0}, {12, 0, 0}});

    const AcDbText text({5, -1, 0}, L"H", AcDbObjectId::kNull, 2.0);
    AcDbExtents box;
    ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
    expectPoints(meet(text, *across), {{box.minPoint().x, 0, 0}, {box.maxPoint().x, 0, 0}});
}

} // namespace
