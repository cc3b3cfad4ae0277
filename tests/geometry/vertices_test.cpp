#include "frame/ac_ut_db.h"
#include "geometry/common_polygon.h"
#include "geometry/line_tools.h"
#include "geometry_fixture.h"

namespace {

using testing::ElementsAre;

class Vertices : public GeometryTest {
protected:
    AcDbObjectId rounded_ = addPolyline({{{0, 0}}, {{10, 0}, 0.5}, {{10, 10}}, {{0, 10}, -0.25}});
    AcDbObjectId line_ = addLine({0, 0, 0}, {10, 0, 0});

    std::vector<double> bulgesOf(const AcDbObjectId& id) {
        CArray<double, double> bulges;
        LineTools::GetPlineBugel(id, bulges);
        return listed(bulges);
    }
    std::vector<double> startWidthsOf(const AcDbObjectId& id) {
        std::vector<double> widths;
        const ReadHandle<AcDbPolyline> polyline(id);
        for (unsigned i = 0; i < polyline->numVerts(); ++i) {
            double start = 0.0, end = 0.0;
            polyline->getWidthsAt(i, start, end);
            widths.push_back(start);
        }
        return widths;
    }
};

TEST_F(Vertices, AreReadInOrder) {
    expectPoints(LineTools::GetPlineVerts(rounded_),
                 {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    EXPECT_THAT(bulgesOf(rounded_), ElementsAre(0, 0.5, 0, -0.25));
    EXPECT_EQ(LineTools::GetPlineVerts(line_).length(), 0);
    EXPECT_EQ(LineTools::GetPlineVerts(AcDbObjectId::kNull).length(), 0);
    EXPECT_TRUE(bulgesOf(line_).empty());
}

TEST_F(Vertices, AreAppendedToWhatIsThere) {
    AcGePoint3dArray points = pointArray({{7, 7, 7}});
    CArray<double, double> bulges;
    bulges.Add(9.0);
    const auto polyline = loosePolyline({{{1, 2}, 0.5}, {{3, 4}}});
    polyline->setElevation(5.0);
    LineTools::GetPtsAndBulges(polyline.get(), points, bulges);
    expectPoints(points, {{7, 7, 7}, {1, 2, 5}, {3, 4, 5}});
    EXPECT_THAT(listed(bulges), ElementsAre(9.0, 0.5, 0.0));
    LineTools::GetPtsAndBulges(nullptr, points, bulges);
    EXPECT_EQ(points.length(), 3);
}

TEST_F(Vertices, TellArcs) {
    EXPECT_TRUE(LineTools::PlineHasArc(rounded_));
    EXPECT_FALSE(LineTools::PlineHasArc(addPolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}})));
    EXPECT_TRUE(LineTools::PlineHasArc(addPolyline({{{0, 0}}, {{10, 0}, 0.5}})));
    // Nothing leaves the last vertex of an open polyline.
    EXPECT_FALSE(LineTools::PlineHasArc(addPolyline({{{0, 0}}, {{10, 0}, 0.5}}, false)));
    EXPECT_FALSE(LineTools::PlineHasArc(line_));
}

TEST_F(Vertices, AreRewrittenWhateverTheirNumber) {
    const struct {
        const char* name;
        AcGePoint3dArray points;
        std::vector<double> bulges, expectedBulges;
    } cases[] = {
        {"as many",
         pointArray({{1, 1, 0}, {2, 2, 0}, {3, 3, 0}, {4, 4, 0}}),
         {1, 2, 3, 4},
         {1, 2, 3, 4}},
        {"more",
         pointArray({{1, 1, 0}, {2, 2, 0}, {3, 3, 0}, {4, 4, 0}, {5, 5, 0}, {6, 6, 0}}),
         {1, 2},
         {1, 2, 0, 0, 0, 0}},
        {"fewer", pointArray({{1, 1, 0}, {2, 2, 0}, {3, 3, 0}}), {}, {0, 0, 0}},
        {"one left", pointArray({{8, 9, 0}}), {1, 2, 3, 4}, {1}},
        {"from one to five",
         pointArray({{1, 1, 0}, {2, 2, 0}, {3, 3, 0}, {4, 4, 0}, {5, 5, 0}}),
         {0, 0, 0, 0, 7, 9},
         {0, 0, 0, 0, 7}},
        {"none", AcGePoint3dArray(), {1}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CArray<double, double> bulges;
        for (const double bulge : c.bulges)
            bulges.Add(bulge);
        LineTools::SetPlineBugelAndVerts(rounded_, bulges, c.points);
        EXPECT_EQ(LineTools::GetPlineVerts(rounded_), c.points);
        EXPECT_EQ(bulgesOf(rounded_), c.expectedBulges);
    }
}

TEST_F(Vertices, ThatStayKeepTheirWidths) {
    const auto widen = [&] {
        const WriteHandle<AcDbPolyline> polyline(rounded_);
        for (unsigned i = 0; i < polyline->numVerts(); ++i)
            polyline->setWidthsAt(i, i + 1.0, 0.0);
    };
    const CArray<double, double> none;
    widen();
    LineTools::SetPlineBugelAndVerts(rounded_, none, pointArray({{1, 1, 0}, {2, 2, 0}}));
    EXPECT_THAT(startWidthsOf(rounded_), ElementsAre(2, 4));
    LineTools::SetPlineBugelAndVerts(rounded_, none, pointArray({{1, 1, 0}, {2, 2, 0}, {3, 3, 0}}));
    EXPECT_THAT(startWidthsOf(rounded_), ElementsAre(testing::Le(0.0), 2, 4));
}

TEST_F(Vertices, FormAChainOfPointsWithoutRepeats) {
    const AcDbObjectId id =
        addPolyline({{{0, 0}}, {{10, 0}}, {{10, 0}}, {{10, 10}}, {{0, 0}}, {{0, 0}}}, false);
    resbuf* chain = LineTools::ptArrayToResbuf(id);
    AcGePoint3dArray points;
    for (const resbuf* item = chain; item != nullptr; item = item->rbnext) {
        EXPECT_EQ(item->restype, RTPOINT);
        points.append(
            AcGePoint3d(item->resval.rpoint[0], item->resval.rpoint[1], item->resval.rpoint[2]));
    }
    acutRelRb(chain);
    expectPoints(points, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}});
    EXPECT_EQ(LineTools::ptArrayToResbuf(line_), nullptr);
}

TEST_F(Vertices, OfOldPolylinesAndMeshesAreCollected) {
    AcGePoint3dArray corners = pointArray({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}});
    AcGeDoubleArray bulgesIn;
    for (const double bulge : {0.5, 0.0, -1.0})
        bulgesIn.append(bulge);
    const auto check = [&](const AcDb2dPolyline& flat) {
        AcGePoint3dArray points;
        AcArray<AcDb::Vertex2dType> types;
        AcGeDoubleArray bulges, startWidths, endWidths;
        AcUtDb::collectVertices(&flat, points, types, bulges, startWidths, endWidths);
        expectPoints(points, {{0, 0, 4}, {10, 0, 4}, {10, 10, 4}});
        EXPECT_EQ(bulges, bulgesIn);
        EXPECT_EQ(types.length(), 3);
        EXPECT_EQ(startWidths[0], 2.0);
        EXPECT_EQ(endWidths[0], 3.0);
        EXPECT_TRUE(AcUtDb::plineHasWidth(&flat));
        AcUtDb::collectVertices(&flat, points, bulges);
        EXPECT_EQ(points.length(), 6);
        EXPECT_EQ(bulges.length(), 6);
    };
    auto flat = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 4.0, Adesk::kTrue,
                                                 2.0, 3.0, &bulgesIn);
    check(*flat); // Its vertices have no ids yet.
    check(*ReadHandle<AcDb2dPolyline>(add(std::move(flat))));

    AcGePoint3dArray points;
    const ReadHandle<AcDb3dPolyline> space(
        add(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, corners)));
    AcUtDb::collectVertices(space.get(), points);
    EXPECT_EQ(points, corners);

    corners.append(AcGePoint3d(0, 10, 3));
    const ReadHandle<AcDbPolygonMesh> grid(add(std::make_unique<AcDbPolygonMesh>(
        AcDb::kSimpleMesh, Adesk::Int16{2}, Adesk::Int16{2}, corners)));
    int m = 0, n = 0;
    points.removeAll();
    AcUtDb::collectVertices(grid.get(), points, m, n);
    EXPECT_EQ(points, corners);
    EXPECT_EQ(m, 2);
    EXPECT_EQ(n, 2);
}

TEST_F(Vertices, OfFaceMeshesAreCollectedWithoutTheFaces) {
    auto mesh = std::make_unique<AcDbPolyFaceMesh>();
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0)})
        mesh->appendVertex(new AcDbPolyFaceMeshVertex(p));
    mesh->appendFaceRecord(new AcDbFaceRecord(1, 2, 3, 0));
    const ReadHandle<AcDbPolyFaceMesh> resident(add(std::move(mesh)));
    AcDbObjectIdArray ids;
    AcGePoint3dArray points;
    AcUtDb::collectVertices(resident.get(), ids, points);
    expectPoints(points, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(ids.length(), 3);
    EXPECT_TRUE(ids[2].isValid());
}

TEST_F(Vertices, TellWidthsAndSegments) {
    const auto polyline = loosePolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}}, false);
    EXPECT_EQ(AcUtDb::numSegments(polyline.get()), 2);
    EXPECT_FALSE(AcUtDb::plineHasZeroLengthSegments(polyline.get()));
    polyline->setClosed(true);
    EXPECT_EQ(AcUtDb::numSegments(polyline.get()), 3);
    polyline->addVertexAt(3, {0, 0});
    EXPECT_TRUE(AcUtDb::plineHasZeroLengthSegments(polyline.get())); // the closing one
    polyline->setClosed(false);
    EXPECT_FALSE(AcUtDb::plineHasZeroLengthSegments(polyline.get()));
    EXPECT_EQ(AcUtDb::numSegments(loosePolyline({}, false).get()), 0);

    EXPECT_FALSE(AcUtDb::plineHasWidth(polyline.get()));
    polyline->setWidthsAt(2, 0.0, 0.5);
    EXPECT_TRUE(AcUtDb::plineHasWidth(polyline.get()));
}

TEST_F(Vertices, TellClosedPolylines) {
    const struct {
        const char* name;
        AcGePoint2d last;
        bool closed;
        int answer;
    } cases[] = {
        {"marked closed", {0, 10}, true, 1},
        {"open", {0, 10}, false, 0},
        {"ending at the start", {0, 0}, false, 1},
        {"ending near the start", {0.04, 0}, false, 1},
        {"off in the first decimal", {0.06, 0}, false, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcDbObjectId id = addPolyline({{{0, 0}}, {{10, 0}}, {c.last}}, c.closed);
        EXPECT_EQ(Common::PolyLineIsClose(id) != 0, c.answer != 0);
    }
    EXPECT_EQ(Common::PolyLineIsClose(line_), 0);
}

TEST(EqualBulges, ComparePairwiseWithinAThousandth) {
    const auto list = [](CArray<double, double>& array, std::initializer_list<double> values) {
        array.RemoveAll();
        for (const double value : values)
            array.Add(value);
    };
    CArray<double, double> a;
    CArray<double, double> b;
    EXPECT_TRUE(Common::Equal(a, b));
    list(a, {1.0, 2.0});
    EXPECT_FALSE(Common::Equal(a, b));
    list(b, {1.0009, 1.9991});
    EXPECT_TRUE(Common::Equal(a, b));
    list(b, {1.0, 2.0011});
    EXPECT_FALSE(Common::Equal(a, b));
}

TEST(CommonPtInClosePolygon, CountsVerticesAsOnTheOutline) {
    const AcGePoint3dArray square = pointArray({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    const auto arched = loosePolyline({{{0, 0}}, {{10, 0}, 1}, {{10, 10}}, {{0, 10}}});
    const struct {
        const char* name;
        AcGePoint3d point;
        double tol;
        int place;
    } cases[] = {
        {"vertex", {10, 10, 0}, 1e-6, 0},
        {"within rounding to whole units of a vertex", {9.6, 9.6, 0}, 1e-6, 0},
        {"at the next whole unit", {9.4, 9.6, 0}, 1e-6, 1},
        {"vertex of another height", {10, 10, 500}, 1e-6, 0},
        {"inside", {5, 5, 0}, 1e-6, 1},
        {"on an edge", {5, 0, 0}, 1e-6, 0},
        {"outside", {12, 5, 0}, 1e-6, -1},
        {"outside, not even by rounding to tens", {16, 5, 0}, -1.0, -1},
        {"vertex by rounding to tens", {6, 6, 0}, -1.0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Common::PtInClosePolygon(square, c.point, c.tol), c.place);
        // Arcs are their chords here.
        EXPECT_EQ(Common::PtInClosePolygon(*arched, c.point, c.tol), c.place);
    }
    EXPECT_EQ(Common::PtInClosePolygon(AcGePoint3dArray(), {0, 0, 0}, 1.0), -1);
    EXPECT_EQ(Common::PtInClosePolygon(square, {5, 5, 0}, std::nan("")), 1);
}

} // namespace
