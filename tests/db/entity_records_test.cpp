// What records of drawing files become: classes, hatches, curves, properties.
#include <numbers>

#include "db/arc.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/ellipse.h"
#include "db/face.h"
#include "db/hatch.h"
#include "db/layer_table.h"
#include "db/leader.h"
#include "db/line.h"
#include "db/mline.h"
#include "db/record_class.h"
#include "db/solid.h"
#include "db/spline.h"
#include "entity_support.h"
#include "rx/ac_string.h"

namespace {

using coretest::CoreTest;
using enttest::Box;
using enttest::Groups;
using std::numbers::pi;

class RecordTest : public CoreTest {};

TEST_F(RecordTest, SharedNamesAreToldApart) {
    const struct {
        const char* name;
        Groups groups;
        const wchar_t* wanted; // null: no class
    } cases[] = {
        {"LINE", {}, L"AcDbLine"},
        {"LWPOLYLINE", {}, L"AcDbPolyline"},
        {"NOSUCH", {}, nullptr},
        {"POLYLINE", {}, L"AcDb2dPolyline"},
        {"POLYLINE", {{70, "9"}}, L"AcDb3dPolyline"},
        {"POLYLINE", {{70, "16"}}, L"AcDbPolygonMesh"},
        {"POLYLINE", {{70, "64"}}, L"AcDbPolyFaceMesh"},
        {"VERTEX", {{70, "1"}}, L"AcDb2dVertex"},
        {"VERTEX", {{70, "32"}}, L"AcDb3dPolylineVertex"},
        {"VERTEX", {{70, "64"}}, L"AcDbPolygonMeshVertex"},
        {"VERTEX", {{70, "192"}}, L"AcDbPolyFaceMeshVertex"},
        {"VERTEX", {{70, "128"}}, L"AcDbFaceRecord"},
        {"INSERT", {{2, "x"}}, L"AcDbBlockReference"},
        {"INSERT", {{70, "1"}, {71, "1"}}, L"AcDbBlockReference"},
        {"INSERT", {{71, "2"}}, L"AcDbMInsertBlock"},
        {"INSERT", {{100, "AcDbMInsertBlock"}}, L"AcDbMInsertBlock"},
        {"DIMENSION", {{70, "33"}}, L"AcDbAlignedDimension"},
        {"DIMENSION", {{70, "33"}, {100, "AcDbRotatedDimension"}}, L"AcDbRotatedDimension"},
        {"DIMENSION", {{70, "38"}}, L"AcDbOrdinateDimension"},
        {"DIMENSION", {{70, "164"}}, L"AcDbRadialDimension"},
        {"ARC_DIMENSION", {{70, "5"}}, L"AcDbArcDimension"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        coretest::GroupFiler filer(db);
        filer.give(c.groups);
        const AcRxClass* const found = headless::classOfRecord(c.name, filer.record());
        EXPECT_STREQ(found == nullptr ? nullptr : found->name(), c.wanted);
    }
}

TEST_F(RecordTest, FlatEntitiesStandInObjectCoordinates) {
    const Groups below = "210=0,0,-1";
    const auto with = [&below](Groups groups) {
        groups.insert(groups.end(), below.begin(), below.end());
        return groups;
    };
    const auto circle = enttest::read<AcDbCircle>(db, with("100=AcDbCircle|10=3,4,5|40=2"));
    enttest::expectNear(enttest::boxOf(*circle), {{-5, 2, -5}, {-1, 6, -5}});
    // From 0 to 90 degrees in the mirrored plane is the upper left quarter of the world's.
    const auto arc =
        enttest::read<AcDbArc>(db, with("100=AcDbCircle|10=0,0|40=2|100=AcDbArc|50=0|51=90"));
    enttest::expectNear(enttest::boxOf(*arc), {{-2, 0, 0}, {0, 2, 0}});
    const auto solid = enttest::read<AcDbSolid>(db, with("10=0,0|11=4,0|12=0,3"));
    enttest::expectNear(enttest::boxOf(*solid), {{-4, 0, 0}, {0, 3, 0}});
    // Lines and ellipses are in the world's coordinates whatever their normal.
    const auto line = enttest::read<AcDbLine>(db, with("100=AcDbLine|10=1,2,3|11=4,5"));
    enttest::expectNear(enttest::boxOf(*line), {{1, 2, 0}, {4, 5, 3}});
    const auto ellipse = enttest::read<AcDbEllipse>(
        db, with("100=AcDbEllipse|10=1,0|11=4,0|40=0.5|41=0|42=1.5707963267948966"));
    enttest::expectNear(enttest::boxOf(*ellipse), {{1, -2, 0}, {5, 0, 0}});
}

TEST_F(RecordTest, DegenerateRecordsAreSurvived) {
    AcDbExtents box;
    // A normal without length is the world's; a negative radius has its size.
    const auto circle = enttest::read<AcDbCircle>(db, "100=AcDbCircle|40=-2|210=0,0,0");
    enttest::expectNear(enttest::boxOf(*circle), {{-2, -2, 0}, {2, 2, 0}});
    const auto spline = enttest::read<AcDbSpline>(db, "100=AcDbSpline|71=3|40=0|10=1,2");
    EXPECT_EQ(spline->getGeomExtents(box), Acad::eNullExtents);
    double param = 0.0;
    EXPECT_EQ(spline->getStartParam(param), Acad::eDegenerateGeometry);
    const auto ellipse = enttest::read<AcDbEllipse>(db, "100=AcDbEllipse|11=0,0|40=0");
    EXPECT_TRUE(ellipse->isNull());
    EXPECT_EQ(ellipse->getGeomExtents(box), Acad::eOk);
    const auto hatch = enttest::read<AcDbHatch>(db, "100=AcDbHatch|91=3|92=1|93=99|72=7|10=1");
    EXPECT_EQ(hatch->numLoops(), 1);
    EXPECT_EQ(hatch->getGeomExtents(box), Acad::eNullExtents);
}

TEST_F(RecordTest, SplinesReadKnotsPointsAndFitPoints) {
    // Without clamped ends the curve is the middle of the polygon only: here a straight part.
    const auto unclamped = enttest::read<AcDbSpline>(
        db, "100=AcDbSpline|70=8|71=2|40=0|40=1|40=2|40=3|40=4|40=5|10=0,0|10=2,0|"
            "10=4,0");
    enttest::expectNear(enttest::boxOf(*unclamped), {{1, 0, 0}, {3, 0, 0}});
    const auto fitted =
        enttest::read<AcDbSpline>(db, "100=AcDbSpline|70=1|71=3|11=0,0|11=4,0|11=4,4");
    EXPECT_EQ(fitted->numFitPoints(), 3);
    EXPECT_TRUE(fitted->isClosed());
}

const Groups kHatchHead = "100=AcDbHatch|10=0,0,6|210=0,0,1|2=SOLID|70=1|71=0|91=1";
const Groups kHatchTail = "97=0|75=1|76=1|98=1|10=900,900";

TEST_F(RecordTest, HatchLoopsReachAsFarAsTheirEdges) {
    const struct {
        const char* name;
        Groups loop;
        Box box;
    } cases[] = {
        {"polyline with an arc",
         "92=3|72=1|73=1|93=2|10=0,0|42=1|10=4,0|42=0",
         {{0, -2, 6}, {4, 0, 6}}},
        {"polyline without arcs",
         "92=3|72=0|73=1|93=3|10=0,0|10=4,0|10=4,3",
         {{0, 0, 6}, {4, 3, 6}}},
        {"lines", "92=1|93=2|72=1|10=0,0|11=4,1|72=1|10=4,1|11=2,9", {{0, 0, 6}, {4, 9, 6}}},
        {"arc counter-clockwise",
         "92=1|93=1|72=2|10=1,1|40=2|50=0|51=90|73=1",
         {{1, 1, 6}, {3, 3, 6}}},
        {"arc clockwise", "92=1|93=1|72=2|10=1,1|40=2|50=0|51=90|73=0", {{1, -1, 6}, {3, 1, 6}}},
        {"whole circle", "92=1|93=1|72=2|10=1,1|40=2|50=0|51=360|73=0", {{-1, -1, 6}, {3, 3, 6}}},
        {"half an ellipse",
         "92=1|93=1|72=3|10=0,0|11=4,0|40=0.25|50=0|51=180|73=1",
         {{-4, 0, 6}, {4, 1, 6}}},
        {"spline",
         "92=1|93=1|72=4|94=2|73=0|74=0|95=6|96=3|40=0|40=0|40=0|40=1|40=1|40=1|"
         "10=0,0|10=2,4|10=4,0",
         {{0, 0, 6}, {4, 2, 6}}},
        {"spline with fit points, then a line",
         "92=1|93=2|72=4|94=1|73=0|74=0|95=4|96=2|40=0|40=0|40=1|40=1|10=0,0|10=2,4|"
         "97=2|11=0,0|11=2,4|12=1,2|13=1,2|72=1|10=2,4|11=-5,0",
         {{-5, 0, 6}, {2, 4, 6}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Groups groups = kHatchHead;
        groups.insert(groups.end(), c.loop.begin(), c.loop.end());
        groups.insert(groups.end(), kHatchTail.begin(), kHatchTail.end());
        const auto hatch = enttest::read<AcDbHatch>(db, groups);
        EXPECT_EQ(hatch->numLoops(), 1);
        EXPECT_EQ(hatch->hatchStyle(), AcDbHatch::kOuter);
        enttest::expectNear(enttest::boxOf(*hatch), c.box);
    }
}

TEST_F(RecordTest, HatchLoopsGiveTheirVertices) {
    Groups groups = kHatchHead;
    for (const auto& group :
         Groups("92=7|72=1|73=1|93=2|10=0,1|42=0.5|10=4,2|97=1|330=AB|92=1|93=0|97=0|75=0"))
        groups.push_back(group);
    const auto hatch = enttest::read<AcDbHatch>(db, groups);
    EXPECT_EQ(hatch->numLoops(), 2);
    EXPECT_EQ(hatch->loopTypeAt(0), 7);
    EXPECT_STREQ(hatch->patternName(), L"SOLID");
    EXPECT_TRUE(hatch->isSolidFill());
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    ASSERT_EQ(hatch->getLoopAt(0, type, vertices, bulges), Acad::eOk);
    ASSERT_EQ(vertices.length(), 2);
    EXPECT_EQ(vertices[1].x, 4.0);
    EXPECT_EQ(bulges[0], 0.5);
    EXPECT_EQ(bulges[1], 0.0);
    EXPECT_EQ(hatch->getLoopAt(1, type, vertices, bulges), Acad::eNotApplicable);
    EXPECT_EQ(hatch->getLoopAt(2, type, vertices, bulges), Acad::eInvalidIndex);
}

TEST_F(RecordTest, ChainsOfPointsBeginAtEachTen) {
    const auto leader =
        enttest::read<AcDbLeader>(db, "100=AcDbLeader|71=0|76=2|10=1,2,3|10=4,5,6|210=0,0,1|211=1");
    EXPECT_EQ(leader->numVertices(), 2);
    EXPECT_FALSE(leader->hasArrowHead());
    enttest::expectNear(enttest::boxOf(*leader), {{1, 2, 3}, {4, 5, 6}});
    const auto mline =
        enttest::read<AcDbMline>(db, "100=AcDbMline|10=9,9|71=2|11=0,0|12=1,0|13=0|11=5,5|41=3");
    EXPECT_EQ(mline->numVertices(), 2);
    EXPECT_TRUE(mline->closedMline());
    enttest::expectNear(enttest::boxOf(*mline), {{0, 0, 0}, {5, 5, 0}});
}

TEST_F(RecordTest, CommonPropertiesOrTheirDefaults) {
    const AcDbObjectId walls =
        coretest::addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"Walls");
    const auto line = enttest::read<AcDbLine>(
        db, "100=AcDbEntity|8=walls|62=3|420=660510|440=33554559|370=25|48=2.5|60=1|"
            "100=AcDbLine");
    EXPECT_EQ(line->layerId(), walls);
    EXPECT_TRUE(line->entityColor().isByColor());
    EXPECT_EQ(line->entityColor().red(), 10);
    EXPECT_EQ(line->entityColor().green(), 20);
    EXPECT_EQ(line->entityColor().blue(), 30);
    EXPECT_EQ(line->transparency().alpha(), 127);
    EXPECT_EQ(line->lineWeight(), AcDb::kLnWt025);
    EXPECT_EQ(line->linetypeScale(), 2.5);
    EXPECT_EQ(line->visibility(), AcDb::kInvisible);

    coretest::GroupFiler filer(db);
    AcDbLine plain;
    filer.give("100=AcDbEntity|62=999|370=26");
    ASSERT_EQ(plain.dxfInFields(&filer), Acad::eOk);
    EXPECT_EQ(filer.reports.size(), 2U);
    EXPECT_EQ(plain.layerId(), db.layerZero());
    EXPECT_EQ(plain.colorIndex(), 256);
    EXPECT_EQ(plain.lineWeight(), AcDb::kLnWtByLayer);
}

TEST_F(RecordTest, PropertiesRefuseWhatIsNotThere) {
    coretest::addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"Walls");
    auto* const line = new AcDbLine;
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    ASSERT_EQ(space->appendAcDbEntity(line), Acad::eOk);
    EXPECT_EQ(line->setLayer(L"wALLS"), Acad::eOk);
    EXPECT_EQ(line->setLayer(L"Doors"), Acad::eKeyNotFound);
    EXPECT_EQ(line->setLayer(db.modelSpaceId()), Acad::eWrongObjectType);
    EXPECT_EQ(line->setLayer(AcDbObjectId()), Acad::eNullObjectId);
    AcString name;
    ASSERT_EQ(line->layer(name), Acad::eOk);
    EXPECT_TRUE(name == L"Walls");
    EXPECT_EQ(line->setColorIndex(256), Acad::eOk);
    EXPECT_EQ(line->setColorIndex(257), Acad::eBadColorIndex);
    EXPECT_EQ(line->setLineWeight(static_cast<AcDb::LineWeight>(26)), Acad::eInvalidInput);
    EXPECT_EQ(line->setLinetypeScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(line->blockId(), db.modelSpaceId());
    line->close();
}

} // namespace
