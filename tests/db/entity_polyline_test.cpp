// Lightweight and old polylines: vertices, segments, storage, reading.
#include <numbers>

#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "entity_support.h"
#include "ge/circ_arc.h"
#include "ge/lines.h"

namespace {

using coretest::CoreTest;
using enttest::Groups;
using headless::Residence;
using std::numbers::pi;

class PolylineTest : public CoreTest {};

/// The vertices as text: x,y,bulge,start width,end width.
std::string described(const AcDbPolyline& polyline) {
    std::ostringstream text;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint2d point;
        double bulge = -9, start = -9, end = -9;
        EXPECT_EQ(polyline.getPointAt(i, point), Acad::eOk);
        EXPECT_EQ(polyline.getBulgeAt(i, bulge), Acad::eOk);
        EXPECT_EQ(polyline.getWidthsAt(i, start, end), Acad::eOk);
        text << point.x << ',' << point.y << ',' << bulge << ',' << start << ',' << end << ' ';
    }
    return text.str();
}

TEST_F(PolylineTest, VerticesKeepTheirShapesThroughEdits) {
    AcDbPolyline polyline;
    EXPECT_EQ(polyline.addVertexAt(1, {0, 0}), Acad::eInvalidIndex);
    polyline.addVertexAt(0, {0, 0});
    polyline.addVertexAt(1, {10, 0}, 0.5);
    EXPECT_EQ(described(polyline), "0,0,0,0,0 10,0,0.5,0,0 ");
    polyline.addVertexAt(1, {5, 5}, 0.0, 2.0, 3.0);
    EXPECT_EQ(described(polyline), "0,0,0,0,0 5,5,0,2,3 10,0,0.5,0,0 ");
    polyline.removeVertexAt(0);
    EXPECT_EQ(described(polyline), "5,5,0,2,3 10,0,0.5,0,0 ");

    double width = 0.0;
    EXPECT_EQ(polyline.getConstantWidth(width), Acad::eAmbiguousOutput);
    EXPECT_EQ(polyline.setConstantWidth(4.0), Acad::eOk);
    polyline.addVertexAt(2, {7, 7}); // A width of -1 is the constant one.
    EXPECT_EQ(described(polyline), "5,5,0,4,4 10,0,0.5,4,4 7,7,0,4,4 ");
    EXPECT_EQ(polyline.setBulgeAt(3, 1.0), Acad::eInvalidIndex);
    EXPECT_EQ(polyline.setWidthsAt(0, -1.0, 0.0), Acad::eInvalidInput);

    polyline.reset(true, 2);
    EXPECT_EQ(described(polyline), "0,0,0,4,4 0,0,0,4,4 ");
}

TEST_F(PolylineTest, SegmentsTellTheirKind) {
    AcDbPolyline polyline;
    EXPECT_EQ(polyline.segType(0), AcDbPolyline::kEmpty);
    polyline.addVertexAt(0, {0, 0});
    EXPECT_EQ(polyline.segType(0), AcDbPolyline::kPoint);
    polyline.setBulgeAt(0, 1.0);
    polyline.addVertexAt(1, {10, 0}, 1.0);
    polyline.addVertexAt(2, {10, 0}, 0.0);
    polyline.addVertexAt(3, {10, 10}, 0.3);
    const AcDbPolyline::SegType open[] = {AcDbPolyline::kArc, AcDbPolyline::kCoincident,
                                          AcDbPolyline::kLine, AcDbPolyline::kPoint,
                                          AcDbPolyline::kEmpty};
    for (unsigned i = 0; i < 5; ++i)
        EXPECT_EQ(polyline.segType(i), open[i]) << i;
    polyline.setClosed(true);
    EXPECT_EQ(polyline.segType(3), AcDbPolyline::kArc);

    AcGeLineSeg2d line;
    AcGeCircArc2d arc;
    EXPECT_EQ(polyline.getLineSegAt(0, line), Acad::eInvalidInput);
    EXPECT_EQ(polyline.getArcSegAt(2, arc), Acad::eInvalidInput);
    EXPECT_EQ(polyline.getArcSegAt(4, arc), Acad::eInvalidIndex);
    ASSERT_EQ(polyline.getArcSegAt(0, arc), Acad::eOk);
    EXPECT_NEAR(arc.radius(), 5.0, 1e-12);
    EXPECT_FALSE(arc.isClockWise());

    double along = 0.0;
    EXPECT_TRUE(polyline.onSegAt(0, {5, -5}, along));
    EXPECT_NEAR(along, 0.5, 1e-12);
    EXPECT_FALSE(polyline.onSegAt(0, {5, 5}, along));
    EXPECT_FALSE(polyline.onSegAt(9, {5, 5}, along));
}

TEST_F(PolylineTest, ArcsOfSpaceFollowTheBulge) {
    for (const double bulge : {0.4, -0.4, 3.5, -3.5}) {
        SCOPED_TRACE(bulge);
        AcDbPolyline polyline;
        polyline.addVertexAt(0, {1, 2}, bulge);
        polyline.addVertexAt(1, {6, 3});
        polyline.setNormal({0.3, -0.2, -0.9});
        polyline.setElevation(4.0);
        AcGeCircArc3d arc;
        ASSERT_EQ(polyline.getArcSegAt(0, arc), Acad::eOk);
        AcGePoint3d middle, end;
        ASSERT_EQ(polyline.getPointAtParam(0.5, middle), Acad::eOk);
        ASSERT_EQ(polyline.getPointAt(1, end), Acad::eOk);
        enttest::expectNear(arc.evalPoint((arc.startAng() + arc.endAng()) / 2.0), middle, 1e-9);
        enttest::expectNear(arc.endPoint(), end, 1e-9);
    }
}

TEST_F(PolylineTest, ReversingKeepsTheShape) {
    for (const bool closed : {false, true}) {
        SCOPED_TRACE(closed);
        AcDbPolyline polyline;
        polyline.addVertexAt(0, {0, 0}, 0.5, 1, 2);
        polyline.addVertexAt(1, {10, 0}, 0.0, 3, 4);
        polyline.addVertexAt(2, {10, 9}, -0.3, 5, 6);
        polyline.setClosed(closed);
        const enttest::Chords before = enttest::chordsOf(polyline, 3000);
        ASSERT_EQ(polyline.reverseCurve(), Acad::eOk);
        EXPECT_EQ(described(polyline), "10,9,0,4,3 10,0,-0.5,2,1 0,0,0.3,6,5 ");
        const enttest::Chords after = enttest::chordsOf(polyline, 3000);
        EXPECT_NEAR(after.length, before.length, 1e-9);
        EXPECT_NEAR(after.area, before.area, 1e-9);
    }
}

TEST_F(PolylineTest, ClosesWhereItsEndsMeet) {
    AcDbPolyline polyline;
    for (const AcGePoint2d& point :
         {AcGePoint2d(0, 0), AcGePoint2d(3, 0), AcGePoint2d(3, 4), AcGePoint2d(0.001, 0)})
        polyline.addVertexAt(polyline.numVerts(), point);
    polyline.makeClosedIfStartAndEndVertexCoincide(1e-6);
    EXPECT_FALSE(polyline.isClosed());
    polyline.makeClosedIfStartAndEndVertexCoincide(0.01);
    EXPECT_TRUE(polyline.isClosed());
    EXPECT_EQ(polyline.numVerts(), 3U);
}

TEST_F(PolylineTest, ReadsRecordsHoweverTheirGroupsStand) {
    const struct {
        const char* name;
        Groups groups;
        std::string vertices;
        bool closed;
    } cases[] = {
        {"in order",
         "100=AcDbEntity|8=0|100=AcDbPolyline|90=2|70=129|43=1.5|10=1,2|10=3,4|"
         "42=0.5",
         "1,2,0,1.5,1.5 3,4,0.5,1.5,1.5 ", true},
        {"a count that lies", "100=AcDbPolyline|90=2000000000|10=1,2|10=3,4",
         "1,2,0,0,0 3,4,0,0,0 ", false},
        {"a count below zero", "100=AcDbPolyline|90=-5|10=1,2", "1,2,0,0,0 ", false},
        {"head behind the vertices and y missing", "100=AcDbPolyline|10=1|42=2|10=3,4|70=1",
         "1,0,2,0,0 3,4,0,0,0 ", true},
        {"values of no vertex", "100=AcDbPolyline|42=2|20=4|10=1", "1,0,0,0,0 ", false},
        {"own widths", "100=AcDbPolyline|10=1,2|40=0|41=0|10=3,4|40=7|41=8", "1,2,0,0,0 3,4,0,7,8 ",
         false},
        {"widths that are all the same are constant",
         "100=AcDbPolyline|10=1,2|40=7|41=7|10=3,4|40=7|41=7", "1,2,0,7,7 3,4,0,7,7 ", false},
        {"no vertices", {{100, "AcDbPolyline"}, {90, "0"}}, "", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto polyline = enttest::read<AcDbPolyline>(db, c.groups);
        EXPECT_EQ(described(*polyline), c.vertices);
        EXPECT_EQ(polyline->isClosed(), c.closed);
    }
}

TEST_F(PolylineTest, ConstantWidthStaysWhileVerticesAreAdded) {
    const auto polyline = enttest::read<AcDbPolyline>(db, "100=AcDbPolyline|43=2|10=1,2");
    double width = 0.0;
    ASSERT_EQ(polyline->getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 2.0);
    EXPECT_TRUE(polyline->hasWidth());
}

/// Positions that a polyline's iterator gives, opened one by one when resident.
std::string walked(AcDbObjectIterator* made) {
    const std::unique_ptr<AcDbObjectIterator> iterator(made);
    std::ostringstream text;
    for (; !iterator->done(); iterator->step()) {
        AcDbEntity* entity = iterator->entity();
        const bool resident = entity == nullptr;
        if (resident) acdbOpenObject(entity, iterator->objectId());
        const auto* const vertex = AcDb2dVertex::cast(entity);
        if (vertex != nullptr) text << vertex->position().x << ' ';
        if (resident && entity != nullptr) entity->close();
    }
    return text.str();
}

TEST_F(PolylineTest, OldVerticesFollowTheirPolylineIntoTheDatabase) {
    auto* const polyline = new AcDb2dPolyline;
    auto* const second = new AcDb2dVertex({2, 0, 0});
    AcDbObjectId id;
    EXPECT_EQ(polyline->appendVertex(id, second), Acad::eNotInDatabase);
    EXPECT_EQ(polyline->appendVertex(second), Acad::eOk);
    EXPECT_EQ(polyline->insertVertexAt(nullptr, new AcDb2dVertex({1, 0, 0})), Acad::eOk);
    EXPECT_EQ(polyline->insertVertexAt(second, new AcDb2dVertex({3, 0, 0})), Acad::eOk);
    EXPECT_EQ(walked(polyline->vertexIterator()), "1 2 3 ");

    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    ASSERT_EQ(space->appendAcDbEntity(polyline), Acad::eOk);
    EXPECT_EQ(walked(polyline->vertexIterator()), "1 2 3 ");
    EXPECT_EQ(second->ownerId(), polyline->objectId());

    auto* const last = new AcDb2dVertex({4, 0, 0});
    ASSERT_EQ(polyline->appendVertex(id, last), Acad::eOk);
    EXPECT_EQ(last->close(), Acad::eOk);
    AcDb2dVertex* opened = nullptr;
    EXPECT_EQ(polyline->openVertex(opened, db.modelSpaceId(), AcDb::kForRead), Acad::eInvalidInput);
    ASSERT_EQ(polyline->openVertex(opened, id, AcDb::kForWrite), Acad::eOk);
    // A vertex moved on its own moves the polyline's extents at once.
    enttest::expectNear(enttest::boxOf(*polyline), {{1, 0, 0}, {4, 0, 0}});
    opened->setPosition({9, 0, 0});
    opened->close();
    enttest::expectNear(enttest::boxOf(*polyline), {{1, 0, 0}, {9, 0, 0}});

    ASSERT_EQ(polyline->erase(), Acad::eOk);
    EXPECT_TRUE(id.isErased());
    ASSERT_EQ(polyline->erase(false), Acad::eOk);
    EXPECT_FALSE(id.isErased());
    coretest::erase(id);
    EXPECT_EQ(walked(polyline->vertexIterator()), "1 2 3 ");
    enttest::expectNear(enttest::boxOf(*polyline), {{1, 0, 0}, {3, 0, 0}});
    polyline->close();
}

/// A polyline read with its vertices.
template <class Owner, class Vertex>
AcDbObjectId readWithVertices(AcDbDatabase& db, const Groups& head,
                              const std::vector<Groups>& vertices) {
    auto* const space = Residence::peek<AcDbBlockTableRecord>(db.modelSpaceId());
    const AcDbObjectId id = Residence::admitEntity(*space, enttest::read<Owner>(db, head));
    auto* const owner = Residence::peek<Owner>(id);
    for (const Groups& groups : vertices) {
        auto vertex = enttest::read<Vertex>(db, groups);
        EXPECT_TRUE(owner->takesSubentity(*vertex));
        owner->subentities().admit(*owner, std::move(vertex), 0);
    }
    EXPECT_FALSE(owner->takesSubentity(AcDbPoint()));
    return id;
}

TEST_F(PolylineTest, ControlPointsOfSmoothedPolylinesAreNotDrawn) {
    const AcDbObjectId id = readWithVertices<AcDb2dPolyline, AcDb2dVertex>(
        db, "66=1|30=5|70=5|75=6",
        {"70=16|10=100,100", "70=8|10=0,0", "70=8|10=4,0", "70=8|10=4,3", "70=16|10=-100,0"});
    AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForRead);
    EXPECT_EQ(polyline->polyType(), AcDb::k2dCubicSplinePoly);
    enttest::expectNear(enttest::boxOf(*polyline), {{0, 0, 5}, {4, 3, 5}});
    double length = 0.0, area = 0.0;
    ASSERT_EQ(polyline->length(length), Acad::eOk);
    ASSERT_EQ(polyline->getArea(area), Acad::eOk);
    EXPECT_NEAR(length, 12.0, 1e-12);
    EXPECT_NEAR(area, 6.0, 1e-12);
}

TEST_F(PolylineTest, MeshesReachAsFarAsTheirVertices) {
    const AcDbObjectId mesh = readWithVertices<AcDbPolygonMesh, AcDbPolygonMeshVertex>(
        db, "70=16|71=2|72=2",
        {"70=64|10=0,0", "70=64|10=4,0", "70=64|10=0,3", "70=64|10=4,3", "70=80|10=99,99"});
    const AcDbObjectId faceless = readWithVertices<AcDbPolyFaceMesh, AcDbPolyFaceMeshVertex>(
        db, {{70, "64"}}, {"70=192|10=-1,0", "70=192|10=4,7"});
    AcDbObjectPointer<AcDbEntity> a(mesh, AcDb::kForRead);
    AcDbObjectPointer<AcDbPolyFaceMesh> b(faceless, AcDb::kForRead);
    enttest::expectNear(enttest::boxOf(*a), {{0, 0, 0}, {4, 3, 0}});
    enttest::expectNear(enttest::boxOf(*b), {{-1, 0, 0}, {4, 7, 0}});
    EXPECT_EQ(b->numVertices(), 2);
    EXPECT_EQ(b->numFaces(), 0);
}

} // namespace
