// Everything that belongs to a place goes along when an entity is moved, turned and scaled: what it
// writes then are the figures worked out by hand for a quarter turn about z at twice the size.
#include <numbers>

#include "core_support.h"
#include "db/dimension.h"
#include "db/hatch.h"
#include "db/helix.h"
#include "db/layer_table.h"
#include "db/leader.h"
#include "db/mline.h"
#include "db/raster_image.h"
#include "db/viewport.h"
#include "support/written_groups.h"

namespace {

using test_support::Group;
using test_support::groups;
using test_support::WrittenGroups;

class Turned : public coretest::CoreTest {
protected:
    /// What the entity writes after the transform, from the class's own marker on.
    WrittenGroups written(const AcRxClass& kind, const WrittenGroups& before,
                          const AcGeMatrix3d& transform) {
        coretest::GroupFiler filer(db);
        const auto object = test_support::readWritten(filer, kind, before);
        AcDbEntity* const entity = AcDbEntity::cast(object.get());
        EXPECT_EQ(entity->transformBy(transform), Acad::eOk);
        headless::DxfOutFiler out(&db, headless::DrawingVersion::k2018);
        WrittenGroups all = test_support::groupsOf(out.write(*entity));
        all.erase(all.begin(), all.begin() + 2);
        return all;
    }
};

/// Half a turn about z of radius 1, which rises by 6 in a whole one.
const std::string kHelix = "100=AcDbSpline|70=0|71=3|72=8|73=4|74=0|42=1e-9|43=1e-9|40=0|40=0|40=0|"
                           "40=0|40=1|40=1|40=1|40=1|10=1,0,0|10=1,1,0|10=0,1,1|10=-1,0,3|"
                           "100=AcDbHelix|10=0,0,0|11=1,0,0|12=0,0,1|40=1|41=0.5|42=6|290=1";

TEST_F(Turned, DirectionsAndLengthsGoAlong) {
    const AcGeMatrix3d turn = AcGeMatrix3d::scaling(2.0) *
                              AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis);
    const struct {
        const AcRxClass* kind;
        WrittenGroups before, after;
    } cases[] = {
        // An arc from 0 to 90 degrees, counted either way, then a half ellipse; a pattern of lines
        // upwards one apart, and a seed.
        {AcDbHatch::desc(),
         groups("100=AcDbHatch|10=0,0,3|210=0,0,1|2=P|70=0|71=0|91=1|92=1|93=3|"
                "72=2|10=1,0|40=1|50=0|51=90|73=1|72=2|10=1,0|40=1|50=270|51=360|73=0|"
                "72=3|10=0,0|11=4,0|40=0.5|50=0|51=180|73=1|97=0|75=0|76=0|52=0|41=1|77=0|78=1|"
                "53=90|43=1|44=0|45=1|46=0|79=2|49=1|49=-0.5|98=1|10=1,2"),
         groups("100=AcDbHatch|10=0,0,6|210=0,0,1|2=P|70=0|71=0|91=1|92=1|93=3|"
                "72=2|10=0,2|40=2|50=90|51=180|73=1|72=2|10=0,2|40=2|50=180|51=270|73=0|"
                "72=3|10=0,0|11=0,8|40=0.5|50=0|51=180|73=1|97=0|75=0|76=0|52=90|41=2|77=0|78=1|"
                "53=180|43=0|44=2|45=0|46=2|79=2|49=2|49=-1|98=1|10=-4,2")},
        {AcDbHelix::desc(), groups(kHelix),
         groups("100=AcDbSpline|70=0|71=3|72=8|73=4|74=0|42=1e-9|43=1e-9|40=0|40=0|40=0|40=0|40=1|"
                "40=1|40=1|40=1|10=0,2,0|10=-2,2,0|10=-2,0,2|10=0,-2,6|100=AcDbHelix|10=0,0,0|"
                "11=0,2,0|12=0,0,1|40=2|41=0.5|42=12|290=1")},
        {AcDbMline::desc(),
         groups("100=AcDbMline|2=|340=0|40=20|70=0|71=1|72=1|73=1|10=1,2,3|210=0,0,1|11=1,2,3|"
                "12=1,0,0|13=0,1,0|74=2|41=0.5|41=1|75=1|42=0.25"),
         groups("100=AcDbMline|2=|340=0|40=40|70=0|71=1|72=1|73=1|10=-4,2,6|210=0,0,1|11=-4,2,6|"
                "12=0,1,0|13=-1,0,0|74=2|41=1|41=2|75=1|42=0.5")},
        {AcDbLeader::desc(),
         groups("100=AcDbLeader|71=1|72=0|40=2.5|41=20|76=1|10=1,2,3|340=0|210=0,0,1|211=1,0,0|"
                "212=0,1,0|213=1,1,0"),
         groups("100=AcDbLeader|71=1|72=0|40=5|41=40|76=1|10=-4,2,6|340=0|210=0,0,1|211=0,1,0|"
                "212=-2,0,0|213=-2,2,0")},
        {AcDbWipeout::desc(),
         groups("100=AcDbWipeout|90=0|10=1,2,3|11=4,0,0|12=0,5,0|13=1,1|340=0|70=7|280=0|281=50|"
                "282=50|283=0|71=1|91=0|290=0"),
         groups("100=AcDbWipeout|90=0|10=-4,2,6|11=0,8,0|12=-10,0,0|13=1,1|340=0|70=7|280=0|"
                "281=50|282=50|283=0|71=1|91=0|290=0")},
    };
    for (const auto& c : cases)
        EXPECT_THAT(written(*c.kind, c.before, turn), testing::ElementsAreArray(c.after))
            << headless::toUtf8(c.kind->name());
}

TEST_F(Turned, HelicesChangeHandsOrBecomeSplines) {
    coretest::GroupFiler filer(db);
    const auto object = test_support::readWritten(filer, *AcDbHelix::desc(), groups(kHelix));
    auto* const helix = AcDbHelix::cast(object.get());
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis));
    ASSERT_EQ(helix->transformBy(mirror), Acad::eOk);
    EXPECT_FALSE(helix->twist());
    EXPECT_TRUE(helix->startPoint().isEqualTo({-1, 0, 0}));
    AcGeMatrix3d uneven;
    uneven.entry[0][0] = 2.0;
    EXPECT_EQ(helix->transformBy(uneven), Acad::eCannotScaleNonUniformly);
    std::unique_ptr<AcDbEntity> copy;
    ASSERT_EQ(helix->transformedCopy(uneven, copy), Acad::eOk);
    ASSERT_EQ(copy->isA(), AcDbSpline::desc());
    AcGePoint3d end;
    ASSERT_EQ(AcDbSpline::cast(copy.get())->getEndPoint(end), Acad::eOk);
    EXPECT_TRUE(end.isEqualTo({2, 0, 3}));
}

// Groups 11, 12 and 16 are in object coordinates, where x runs the other way below.
TEST_F(Turned, DimensionsGoAlongWithAllTheirPoints) {
    const AcGeMatrix3d turn = AcGeMatrix3d::scaling(2.0) *
                              AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis);
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis));
    const AcGeMatrix3d flip = AcGeMatrix3d::rotation(std::numbers::pi, AcGeVector3d::kXAxis);
    const std::string angular = "|100=AcDb2LineAngularDimension|";
    const std::string linear = "|100=AcDbAlignedDimension|13=1,2,3|14=4,5,6";
    const std::string common = "100=AcDbDimension|10=1,2,3|11=4,5,6|70=";
    const struct {
        const char* name;
        const AcRxClass* kind;
        AcGeMatrix3d transform;
        std::string before, after;
    } cases[] = {
        {"moved, seen from below", AcDb2LineAngularDimension::desc(),
         AcGeMatrix3d::translation({10, 0, 0}),
         "100=AcDbDimension|10=1,0,0|11=2,0,0|70=2|71=5|210=0,0,-1" + angular +
             "13=3,0,0|14=4,0,0|15=5,0,0|16=6,0,0",
         "100=AcDbDimension|10=11,0,0|11=-8,0,0|12=-10,0,0|70=2|71=5|210=0,0,-1" + angular +
             "13=13,0,0|14=14,0,0|15=15,0,0|16=-4,0,0"},
        {"an angle stays what it is", AcDb2LineAngularDimension::desc(), turn,
         "100=AcDbDimension|10=1,0,0|11=2,0,0|70=2|71=5|42=1.5" + angular +
             "13=3,0,0|14=4,0,0|15=5,0,0|16=6,0,0",
         "100=AcDbDimension|10=0,2,0|11=0,4,0|70=2|71=5|42=1.5|51=270" + angular +
             "13=0,6,0|14=0,8,0|15=0,10,0|16=0,12,0"},
        {"a length grows", AcDbRotatedDimension::desc(), turn,
         common + "0|71=5|42=3|53=10" + linear + "|50=30|52=15|100=AcDbRotatedDimension",
         "100=AcDbDimension|10=-4,2,6|11=-10,8,12|70=0|71=5|42=6|53=100|51=270|"
         "100=AcDbAlignedDimension|13=-4,2,6|14=-10,8,12|50=120|52=15|100=AcDbRotatedDimension"},
        {"mirrored, and read as before", AcDbRotatedDimension::desc(), mirror,
         common + "0|71=5|42=3|53=10" + linear + "|50=30|52=15|100=AcDbRotatedDimension",
         "100=AcDbDimension|10=-1,2,3|11=-4,5,6|70=0|71=5|42=3|53=350|"
         "100=AcDbAlignedDimension|13=-1,2,3|14=-4,5,6|50=150|52=345|100=AcDbRotatedDimension"},
        {"turned over", AcDbAlignedDimension::desc(), flip, common + "1|71=5" + linear + "|52=15",
         "100=AcDbDimension|10=1,-2,-3|11=-4,-5,6|70=1|71=5|51=180|210=0,0,-1|"
         "100=AcDbAlignedDimension|13=1,-2,-3|14=4,-5,-6|52=15"},
        {"a leader grows", AcDbDiametricDimension::desc(), turn,
         common + "3|71=5|100=AcDbDiametricDimension|15=7,8,9|40=2",
         "100=AcDbDimension|10=-4,2,6|11=-10,8,12|70=3|71=5|51=270|"
         "100=AcDbDiametricDimension|15=-16,14,18|40=4"},
        {"a coordinate along the axis turned", AcDbOrdinateDimension::desc(), turn,
         common + "70|71=5|51=10|100=AcDbOrdinateDimension|13=1,2,3|14=4,5,6",
         "100=AcDbDimension|10=-4,2,6|11=-10,8,12|70=70|71=5|51=280|"
         "100=AcDbOrdinateDimension|13=-4,2,6|14=-10,8,12"},
    };
    for (const auto& c : cases)
        EXPECT_THAT(written(*c.kind, groups(c.before), c.transform),
                    testing::ElementsAreArray(groups(c.after)))
            << c.name;
}

TEST_F(Turned, ImagesReachAsFarAsTheirBoundary) {
    // A picture of 100 by 50 pixels of 0.1, at the origin.
    const struct {
        const char *name, *boundary;
        AcGePoint3d least, greatest;
    } cases[] = {
        {"whole", "280=0|71=1|91=2|14=9.5,9.5|14=19.5,19.5", {0, 0, 0}, {10, 5, 0}},
        {"rectangle", "280=1|71=1|91=2|14=9.5,9.5|14=19.5,29.5", {1, 2, 0}, {2, 4, 0}},
        {"triangle", "280=1|71=2|91=3|14=-0.5,-0.5|14=9.5,-0.5|14=-0.5,49.5", {0, 0, 0}, {1, 5, 0}},
        {"hole", "280=1|71=1|91=2|14=9.5,9.5|14=19.5,29.5|290=1", {0, 0, 0}, {10, 5, 0}},
    };
    for (const auto& c : cases) {
        coretest::GroupFiler filer(db);
        const auto object = test_support::readWritten(
            filer, *AcDbRasterImage::desc(),
            groups("10=0,0,0|11=0.1,0,0|12=0,0.1,0|13=100,50|" + std::string(c.boundary)));
        AcDbExtents box;
        EXPECT_EQ(AcDbEntity::cast(object.get())->getGeomExtents(box), Acad::eOk);
        EXPECT_TRUE(box.minPoint().isEqualTo(c.least)) << c.name;
        EXPECT_TRUE(box.maxPoint().isEqualTo(c.greatest)) << c.name;
    }
}

TEST_F(Turned, LayersFreezeInOneViewport) {
    const AcDbObjectId wall = coretest::addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"WALL");
    AcDbObjectIdArray layers;
    layers.append(wall);
    AcDbViewport viewport;
    EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eOk);
    EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eOk) << "frozen already";
    EXPECT_TRUE(viewport.isLayerFrozenInViewport(wall));
    EXPECT_FALSE(viewport.isLayerFrozenInViewport(db.layerZero()));
    AcDbObjectIdArray frozen;
    EXPECT_EQ(viewport.getFrozenLayerList(frozen), Acad::eOk);
    EXPECT_EQ(frozen.length(), 1);

    AcDbObjectIdArray others;
    others.append(db.layerZero());
    others.append(coretest::addPoint(db));
    EXPECT_EQ(viewport.freezeLayersInViewport(others), Acad::eInvalidInput);
    EXPECT_FALSE(viewport.isLayerFrozenInViewport(db.layerZero())) << "nothing was changed";
    EXPECT_EQ(viewport.thawLayersInViewport(layers), Acad::eOk);
    EXPECT_FALSE(viewport.isLayerFrozenInViewport(wall));
}

} // namespace
