#include "geometry/line_tools.h"
#include "geometry_fixture.h"

namespace {

class Properties : public GeometryTest {
protected:
    AcDbObjectId square_ = addPolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}});
};

TEST_F(Properties, AreCopiedFromPolylineToPolyline) {
    {
        const WriteHandle<AcDbPolyline> source(square_);
        source->setColorIndex(3);
        source->setLayer(addLayer(L"WALL"));
        source->setLinetype(database()->byBlockLinetype());
        source->setLinetypeScale(2.5);
        source->setLineWeight(AcDb::kLnWt050);
        source->setThickness(7.0);
        source->setTransparency(AcCmTransparency(Adesk::UInt8{128}));
    }
    const AcDbObjectId copy = addPolyline({{{5, 5}}, {{6, 6}}}, false);
    LineTools::CpoyPLineProperties(square_, copy);
    const ReadHandle<AcDbPolyline> source(square_);
    const ReadHandle<AcDbPolyline> target(copy);
    EXPECT_EQ(target->colorIndex(), 3);
    EXPECT_EQ(target->layerId(), addLayer(L"WALL"));
    EXPECT_EQ(target->linetypeId(), database()->byBlockLinetype());
    EXPECT_EQ(target->linetypeScale(), 2.5);
    EXPECT_EQ(target->lineWeight(), AcDb::kLnWt050);
    EXPECT_EQ(target->materialId(), source->materialId());
    EXPECT_EQ(target->thickness(), 7.0);
    EXPECT_EQ(target->transparency().alphaPercent(), source->transparency().alphaPercent());
    EXPECT_EQ(target->numVerts(), 2U);

    const AcDbObjectId line = addLine({0, 0, 0}, {1, 0, 0});
    LineTools::CpoyPLineProperties(square_, line);
    LineTools::CpoyPLineProperties(line, copy);
    EXPECT_EQ(ReadHandle<AcDbLine>(line)->linetypeScale(), 1.0);
}

TEST_F(Properties, LinetypeScaleIsForPolylinesOnly) {
    const AcDbObjectId line = addLine({0, 0, 0}, {1, 0, 0});
    LineTools::SetLineScale(square_, 3.0);
    LineTools::SetLineScale(line, 3.0);
    EXPECT_EQ(ReadHandle<AcDbPolyline>(square_)->linetypeScale(), 3.0);
    EXPECT_EQ(ReadHandle<AcDbLine>(line)->linetypeScale(), 1.0);
}

TEST_F(Properties, VisibilityIsForAllEntities) {
    const AcDbObjectId line = addLine({0, 0, 0}, {1, 0, 0});
    AcDbObjectIdArray ids;
    ids.append(square_);
    ids.append(AcDbObjectId::kNull);
    ids.append(line);
    LineTools::setVisibility(ids, false);
    EXPECT_EQ(ReadHandle<AcDbEntity>(square_)->visibility(), AcDb::kInvisible);
    EXPECT_EQ(ReadHandle<AcDbEntity>(line)->visibility(), AcDb::kInvisible);
    LineTools::setVisibility(line, true);
    EXPECT_EQ(ReadHandle<AcDbEntity>(line)->visibility(), AcDb::kVisible);
    EXPECT_EQ(ReadHandle<AcDbEntity>(square_)->visibility(), AcDb::kInvisible);
}

TEST_F(Properties, CornersOfTheBoxRunCounterClockwise) {
    expectPoints(LineTools::GetEntExtPtAry(addLine({1, 8, 3}, {5, 2, 4})),
                 {{1, 2, 3}, {5, 2, 3}, {5, 8, 3}, {1, 8, 3}});
    EXPECT_EQ(LineTools::GetEntExtPtAry(AcDbObjectId::kNull).length(), 0);
}

} // namespace
