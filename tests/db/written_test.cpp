// What objects write of themselves: the groups of a record that states everything, in the order and
// under the markers that drawing files have.
#include <numbers>

#include "core_support.h"
#include "db/arc.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/dimension.h"
#include "db/ellipse.h"
#include "db/face.h"
#include "db/group.h"
#include "db/hatch.h"
#include "db/layout.h"
#include "db/leader.h"
#include "db/line.h"
#include "db/material.h"
#include "db/mline.h"
#include "db/mline_style.h"
#include "db/mtext.h"
#include "db/opaque.h"
#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/raster_image.h"
#include "db/raster_image_def.h"
#include "db/ray.h"
#include "db/resbuf.h"
#include "db/sequence_end.h"
#include "db/solid.h"
#include "db/sortents_table.h"
#include "db/spline.h"
#include "db/trace.h"
#include "db/viewport.h"
#include "db/xline.h"
#include "db/xrecord.h"
#include "support/written_groups.h"

namespace {

using headless::DrawingVersion;
using headless::DxfOutFiler;
using headless::DxfOutput;
using headless::DxfOutTag;
using headless::Residence;
using test_support::Group;
using test_support::groupOf;
using test_support::groups;
using test_support::groupsOf;
using test_support::WrittenGroups;

/// A database with records to refer to.
class Written : public coretest::CoreTest {
protected:
    Written() {
        coretest::addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"WALL");
        coretest::addRecord<AcDbLinetypeTableRecord>(db.linetypeTableId(), L"DASHED");
        coretest::addRecord<AcDbTextStyleTableRecord>(db.textStyleTableId(), L"NOTES");
        coretest::addRecord<AcDbDimStyleTableRecord>(db.dimStyleTableId(), L"PLAN");
        coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"DOOR");
    }

    WrittenGroups written(const AcDbObject& object,
                          DrawingVersion version = DrawingVersion::k2018) {
        DxfOutFiler out(&db, version);
        return groupsOf(out.write(object));
    }
    template <class T>
    std::unique_ptr<AcDbObject> read(const WrittenGroups& groups) {
        return test_support::readWritten(filer, *T::desc(), groups);
    }

    coretest::GroupFiler filer{db};
};

WrittenGroups joined(WrittenGroups first, const WrittenGroups& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const WrittenGroups kEntity = groups("100=AcDbEntity|8=0");

TEST_F(Written, EntitiesAsTheirRecordsHaveThem) {
    // Groups behind those of every entity. Numbers are none that a class begins with.
    const struct {
        const AcRxClass* kind;
        WrittenGroups groups;
    } cases[] = {
        {AcDbLine::desc(), groups("100=AcDbLine|39=0.5|10=1,2,3|11=4,5,6|210=0,1,0")},
        {AcDbPoint::desc(), groups("100=AcDbPoint|10=1,2,3|39=0.5|210=0,0,-1|50=30")},
        // The centre is in object coordinates, whatever they are in memory.
        {AcDbCircle::desc(), groups("100=AcDbCircle|39=0.5|10=1,2,3|40=4|210=0.6,0,-0.8")},
        {AcDbArc::desc(),
         groups("100=AcDbCircle|39=0.5|10=1,2,3|40=4|210=0,0,-1|100=AcDbArc|50=350|51=33.3")},
        {AcDbEllipse::desc(),
         groups("100=AcDbEllipse|10=1,2,3|11=4,0,0|210=0,1,0|40=0.5|41=0.25|42=6")},
        {AcDbRay::desc(), groups("100=AcDbRay|10=1,2,3|11=0.6,0.8,0")},
        {AcDbXline::desc(), groups("100=AcDbXline|10=1,2,3|11=0,0,-1")},
        {AcDbSpline::desc(),
         groups("100=AcDbSpline|210=0,0,1|70=15|71=1|72=5|73=3|74=1|42=1e-7|43=1e-8|44=1e-9|"
                "12=1,0,0|13=0,1,0|40=0|40=0|40=1|40=2|40=2|41=1|41=2|41=3|10=0,0,0|10=1,1,0|"
                "10=2,0,0|11=7,8,9")},
        {AcDbSpline::desc(), // by fit points alone
         groups("100=AcDbSpline|210=0,0,1|70=8|71=3|72=0|73=0|74=3|42=1e-7|43=1e-8|44=1e-9|"
                "11=0,0,0|11=1,1,0|11=2,0,0")},
        {AcDbPolyline::desc(),
         groups("100=AcDbPolyline|90=2|70=129|43=0.5|38=7|39=8|10=1,2|91=0|42=1|10=3,4|91=6|"
                "210=0,1,0")},
        {AcDbPolyline::desc(),
         groups("100=AcDbPolyline|90=2|70=0|10=1,2|40=0.1|41=0.2|10=3,4|40=0|41=0")},
        {AcDb2dPolyline::desc(),
         groups("100=AcDb2dPolyline|66=1|10=0,0,5|39=0.5|70=133|40=0.1|41=0.2|75=5|210=0,1,0")},
        {AcDb3dPolyline::desc(), groups("100=AcDb3dPolyline|66=1|10=0,0,0|70=13|75=6")},
        {AcDbPolygonMesh::desc(),
         groups("100=AcDbPolygonMesh|66=1|10=0,0,0|70=53|71=2|72=3|73=4|74=5|75=8")},
        {AcDbPolyFaceMesh::desc(), groups("100=AcDbPolyFaceMesh|66=1|10=0,0,0|70=64|71=0|72=0")},
        {AcDb2dVertex::desc(),
         groups("100=AcDbVertex|100=AcDb2dVertex|10=1,2,3|40=0.1|41=0|42=-1|70=18|50=45|91=7")},
        {AcDb3dPolylineVertex::desc(),
         groups("100=AcDbVertex|100=AcDb3dPolylineVertex|10=1,2,3|70=40")},
        {AcDbPolygonMeshVertex::desc(),
         groups("100=AcDbVertex|100=AcDbPolygonMeshVertex|10=1,2,3|70=80")},
        {AcDbPolyFaceMeshVertex::desc(),
         groups("100=AcDbVertex|100=AcDbPolyFaceMeshVertex|10=1,2,3|70=192")},
        {AcDbFaceRecord::desc(), groups("100=AcDbFaceRecord|10=0,0,0|70=128|71=1|72=-2|73=3")},
        {AcDbSequenceEnd::desc(), {}},
        {AcDbSolid::desc(),
         groups("100=AcDbTrace|10=1,2,9|11=3,4,9|12=5,6,9|13=7,8,9|39=0.5|210=0,1,0")},
        {AcDbTrace::desc(), groups("100=AcDbTrace|10=1,2,0|11=3,4,0|12=5,6,0|13=7,8,0")},
        {AcDbFace::desc(), groups("100=AcDbFace|10=1,2,9|11=3,4,9|12=5,6,9|13=7,8,9|70=5")},
        {AcDbText::desc(),
         groups("100=AcDbText|39=0.5|10=1,2,3|40=2.5|1= a %%d text |50=90|41=0.8|51=15|7=NOTES|"
                "71=6|72=4|11=4,5,3|210=0,0,-1|100=AcDbText|73=2")},
        {AcDbAttribute::desc(),
         groups("100=AcDbText|10=1,2,3|40=2.5|1=W1|11=4,5,6|100=AcDbAttribute|2=NUMBER|70=9|"
                "73=12|74=3")},
        {AcDbAttributeDefinition::desc(),
         groups("100=AcDbText|10=1,2,3|40=2.5|1=W?|7=NOTES|100=AcDbAttributeDefinition|3=Which?|"
                "2=NUMBER|70=2")},
        {AcDbMText::desc(), // The contents in chunks of 250 characters.
         groups("100=AcDbMText|10=1,2,3|40=2.5|41=60|71=5|72=1|3=" + std::string(249, 'a') +
                "\\|1=Pb{\\H2x; c}|7=NOTES|210=0,0,-1|11=0.6,0.8,0|44=1.5")},
        {AcDbBlockReference::desc(),
         groups("100=AcDbBlockReference|2=DOOR|10=1,2,3|41=-1|42=2|43=3|50=359.9|210=0,0,-1")},
        {AcDbMInsertBlock::desc(),
         groups("100=AcDbMInsertBlock|2=DOOR|10=1,2,3|70=4|71=5|44=10|45=-20")},
        {AcDbViewport::desc(),
         groups("100=AcDbViewport|10=1,2,3|40=40|41=30|68=1|69=2|12=5,6|16=0,1,1|17=7,8,9|"
                "42=35|43=1.5|44=-2|45=300|51=20|90=15|331=2D|331=2E|340=2F")},
        {AcDbRasterImage::desc(),
         groups("100=AcDbRasterImage|90=0|10=1,2,3|11=0.1,0,0|12=0,0.2,0|13=400,300|340=2F|70=7|"
                "280=1|281=10|282=20|283=30|71=2|91=3|14=-0.5,-0.5|14=100,-0.5|14=50,80|290=1")},
        {AcDbWipeout::desc(),
         groups("100=AcDbWipeout|90=0|10=1,2,3|11=4,0,0|12=0,5,0|13=1,1|340=0|70=7|280=0|281=50|"
                "282=50|283=0|71=1|91=2|14=-0.5,-0.5|14=0.5,0.5|290=0")},
        {AcDbHatch::desc(),
         groups("100=AcDbHatch|10=0,0,7|210=0,1,0|2=ANSI31|70=0|71=1|91=2|92=7|72=1|73=1|93=2|"
                "10=1,2|42=1|10=3,4|42=0|97=1|330=2F|92=1|93=6|72=1|10=1,2|11=3,4|72=2|10=1,2|"
                "40=5|50=300|51=45|73=1|72=2|10=1,2|40=5|50=10|51=100|73=0|72=2|10=1,2|40=5|"
                "50=0|51=360|73=1|72=3|10=1,2|11=0,4|40=0.5|50=20|51=200|73=0|72=4|94=1|73=1|"
                "74=1|95=4|96=2|40=0|40=0|40=1|40=1|10=1,2|42=1|10=3,4|42=2|97=1|11=5,6|12=1,0|"
                "13=0,1|97=0|75=1|76=2|52=45|41=2|77=1|78=1|53=45|43=1|44=2|45=-3|46=3|79=2|"
                "49=0.5|49=-0.25|98=1|10=8,9")},
        {AcDbRotatedDimension::desc(),
         groups("100=AcDbDimension|2=DOOR|10=1,2,3|11=4,5,3|12=7,8,0|70=128|1=<> m|71=2|72=2|"
                "41=1.5|42=12.5|53=10|51=350|210=0,0,-1|3=PLAN|100=AcDbAlignedDimension|"
                "13=1,2,3|14=4,5,6|50=30|52=15|100=AcDbRotatedDimension")},
        {AcDbAlignedDimension::desc(), // As below, the text in the middle and no more.
         groups("100=AcDbDimension|10=1,2,3|11=4,5,6|70=1|71=5|100=AcDbAlignedDimension|"
                "13=1,2,3|14=4,5,6|52=15")},
        {AcDb2LineAngularDimension::desc(),
         groups("100=AcDbDimension|10=1,2,3|11=4,5,3|70=2|71=5|210=0,0,-1|"
                "100=AcDb2LineAngularDimension|13=1,2,3|14=4,5,6|15=7,8,9|16=1,2,3")},
        {AcDb3PointAngularDimension::desc(),
         groups("100=AcDbDimension|10=1,2,3|11=4,5,6|70=5|71=5|100=AcDb3PointAngularDimension|"
                "13=1,2,3|14=4,5,6|15=7,8,9")},
        {AcDbDiametricDimension::desc(),
         groups("100=AcDbDimension|10=1,2,3|11=4,5,6|70=3|71=5|100=AcDbDiametricDimension|"
                "15=7,8,9|40=4")},
        {AcDbRadialDimension::desc(),
         groups("100=AcDbDimension|10=1,2,3|11=4,5,6|70=4|71=5|100=AcDbRadialDimension|15=7,8,9|"
                "40=4")},
        {AcDbOrdinateDimension::desc(),
         groups("100=AcDbDimension|10=1,2,3|11=4,5,6|70=70|71=5|100=AcDbOrdinateDimension|"
                "13=1,2,3|14=4,5,6")},
        {AcDbLeader::desc(),
         groups("100=AcDbLeader|3=PLAN|71=0|72=1|40=2.5|41=20|76=2|10=1,2,3|10=4,5,6|340=2F|"
                "210=0,1,0|211=0,0,1|212=1,2,3|213=4,5,6")},
        {AcDbMline::desc(),
         groups("100=AcDbMline|2=|340=0|40=20|70=2|71=3|72=1|73=2|10=1,2,3|210=0,0,1|11=1,2,3|"
                "12=0,1,0|13=-1,0,0|74=3|41=0.5|41=1|41=2|75=1|42=0.25|74=0|75=0")},
    };
    for (const auto& c : cases) {
        const auto object = test_support::readWritten(filer, *c.kind, joined(kEntity, c.groups));
        ASSERT_NE(object, nullptr);
        EXPECT_THAT(written(*object), testing::ElementsAreArray(joined(kEntity, c.groups)))
            << headless::toUtf8(c.kind->name());
        EXPECT_TRUE(filer.reports.empty());
    }
}

TEST_F(Written, TablesAndOtherObjectsAsTheirRecordsHaveThem) {
    const struct {
        const AcRxClass* kind;
        WrittenGroups groups;
    } cases[] = {
        {AcDbLayerTableRecord::desc(),
         groups("100=AcDbLayerTableRecord|2=L|70=7|62=-1|6=DASHED|290=0|370=35|390=2F|347=2E|"
                "420=16711680|430=RAL$RED")},
        {AcDbLinetypeTableRecord::desc(),
         groups("100=AcDbLinetypeTableRecord|2=L|70=0|3=-- x --|72=83|73=3|40=3|49=1|74=0|49=-1|"
                "74=3|75=0|340=2F|46=0.1|50=90|44=0.2|45=-0.3|9=GAS|49=-1|74=4|75=132|340=2E|"
                "46=1|50=0|44=0|45=0")},
        {AcDbTextStyleTableRecord::desc(),
         groups("100=AcDbTextStyleTableRecord|2=S|70=5|40=3|41=0.8|50=15|71=6|42=3.5|3=txt.shx|"
                "4=hztxt.shx")},
        {AcDbDimStyleTableRecord::desc(),
         groups("100=AcDbDimStyleTableRecord|2=D|70=0|3=<>mm|40=100|41=1|42=2|43=3|44=4|45=5|"
                "140=6|142=7|144=8|147=9|73=1|74=1|77=2|78=4|176=1|177=2|178=256|271=0|340=2F|"
                "342=2E")},
        {AcDbUCSTableRecord::desc(),
         groups("100=AcDbUCSTableRecord|2=U|70=0|10=1,2,3|11=0,1,0|12=-1,0,0")},
        {AcDbViewTableRecord::desc(),
         groups("100=AcDbViewTableRecord|2=V|70=1|40=10|10=1,2|41=16|11=1,0,0|12=7,8,9|42=35|"
                "43=1.5|44=-2|50=180|71=31")},
        {AcDbViewportTableRecord::desc(),
         groups("100=AcDbViewportTableRecord|2=*Active|70=0|10=0.5,0|11=1,0.5|12=100,200|"
                "16=1,0,0|17=5,6,7|40=30|41=2|42=35|43=1.5|44=-2|"
                "50=10|51=20|71=31")},
        {AcDbRegAppTableRecord::desc(), groups("100=AcDbRegAppTableRecord|2=ORN|70=0")},
        {AcDbBlockTableRecord::desc(), groups("100=AcDbBlockTableRecord|2=B|340=22|70=4|280=0")},
        {AcDbDictionary::desc(),
         groups("100=AcDbDictionary|280=1|281=3|3=A|360=2F|3=\u4e2d|360=2E")},
        {AcDbDictionaryWithDefault::desc(),
         groups("100=AcDbDictionary|281=1|3=Normal|350=2F|100=AcDbDictionaryWithDefault|340=2F")},
        {AcDbGroup::desc(), groups("100=AcDbGroup|300=walls|70=1|71=0|340=2F|340=2E")},
        {AcDbSortentsTable::desc(), groups("100=AcDbSortentsTable|330=1F|331=2F|5=2D|331=2E|5=2F")},
        {AcDbLayout::desc(),
         groups("100=AcDbPlotSettings|1=Setup|2=Plotter|4=A3|40=1|41=2|42=3|43=4|44=420|45=297|"
                "142=1|143=50|70=1024|73=1|100=AcDbLayout|1=Sheet 1|70=1|71=2|10=1,2|11=421,299|"
                "12=7,8,9|14=-1,-2,-3|15=4,5,6|146=10|13=1,2,3|16=0,1,0|17=-1,0,0|76=0|330=2F|"
                "331=2E")},
        {AcDbRasterImageDef::desc(), groups("100=AcDbRasterImageDef|90=0|1=plan 1.png|10=400,300|"
                                            "11=0.5,0.25|280=0|281=5")},
        {AcDbMaterial::desc(), groups("100=AcDbMaterial|1=Brick|2=red")},
        {AcDbMlineStyle::desc(),
         groups("100=AcDbMlineStyle|2=M|70=3|3=walls|62=5|51=45|52=60|71=2|49=0.5|62=1|"
                "420=16711680|6=DASHED|49=-0.5|62=0|6=ByLayer")},
    };
    for (const auto& c : cases) {
        const bool inTable = c.kind->isDerivedFrom(AcDbSymbolTableRecord::desc());
        const WrittenGroups record =
            joined(groups(inTable ? "100=AcDbSymbolTableRecord" : ""), c.groups);
        const auto object = test_support::readWritten(filer, *c.kind, record);
        ASSERT_NE(object, nullptr);
        EXPECT_THAT(written(*object), testing::ElementsAreArray(record))
            << headless::toUtf8(c.kind->name());
    }
}

TEST_F(Written, WhatEveryEntityHas) {
    const WrittenGroups all = groups(
        "100=AcDbEntity|8=WALL|6=DASHED|347=2F|62=1|370=50|48=0.5|60=1|420=16646401|430=RAL$RED|"
        "440=33554559");
    const WrittenGroups line = groups("100=AcDbLine|10=0,0,0|11=0,0,0");
    const auto object = read<AcDbLine>(joined(all, line));
    const auto without = [](WrittenGroups groups, std::initializer_list<int> codes) {
        std::erase_if(groups, [&](const Group& group) {
            return std::find(codes.begin(), codes.end(), group.code) != codes.end();
        });
        return groups;
    };
    EXPECT_EQ(written(*object), joined(all, line));
    // What the versions hold.
    EXPECT_EQ(written(*object, DrawingVersion::k2000),
              without(joined(all, line), {347, 420, 430, 440}));
    EXPECT_EQ(written(*object, DrawingVersion::kR14),
              without(joined(all, line), {347, 370, 420, 430, 440}));
    EXPECT_EQ(written(*object, DrawingVersion::kR12),
              without(joined(all, line), {48, 100, 347, 370, 420, 430, 440}));

    AcDbEntity& entity = *AcDbEntity::cast(object.get());
    AcDbLine other;
    other.setPropertiesFrom(&entity);
    EXPECT_EQ(written(other), joined(all, line)) << "the colour's name goes along";
    entity.setColor(entity.color());
    EXPECT_EQ(written(entity), without(joined(all, line), {430})) << "a colour of no book";
}

TEST_F(Written, OnlyTheDegreesThatWereMeant) {
    for (const double degrees : {0.0, 30.0, 33.3, 45.0, 89.999, 123.456789, 359.9, -17.25})
        EXPECT_EQ(headless::degreesOf(degrees * std::numbers::pi / 180.0), degrees);
    EXPECT_NEAR(headless::degreesOf(1.0), 57.29577951308232, 1e-14);
}

TEST_F(Written, PartsTellWhatTheClassModels) {
    const auto object =
        read<AcDbPolyline>(joined(kEntity, groups("100=AcDbPolyline|90=0|70=1|43=0")));
    DxfOutFiler writer(&db, DrawingVersion::kR12);
    const DxfOutput& out = writer.write(*object);
    ASSERT_EQ(out.parts().size(), 2U) << "R12 has no markers, but parts";
    const headless::DxfOutPart& part = out.parts()[1];
    EXPECT_EQ(part.name, "AcDbPolyline");
    EXPECT_FALSE(part.whole);
    EXPECT_THAT(part.codes, testing::Contains(42)) << "bulges, though none is written";
    const auto tags = out.tagsOf(part);
    ASSERT_EQ(tags.size(), 3U);
    ASSERT_EQ(tags[1].kind, DxfOutTag::Kind::kFlags);
    EXPECT_EQ(tags[1].integer, 1);
    EXPECT_EQ(tags[1].mask, 129U);
}

TEST_F(Written, ApplicationsDataOfLayersAndStyles) {
    DxfOutFiler out(&db, DrawingVersion::k2018);
    const auto dataOf = [&](const AcDbObject& object) {
        WrittenGroups groups;
        const DxfOutput& output = out.write(object);
        for (const headless::DxfOutPart& part : output.parts())
            if (part.application)
                for (const DxfOutTag& tag : output.tagsOf(part))
                    groups.push_back(groupOf(tag));
        return groups;
    };
    AcDbLayerTableRecord layer;
    EXPECT_EQ(dataOf(layer), (groups("1001=AcCmTransparency|1001=AcAecLayerStandard")))
        << "none is kept";
    layer.setTransparency(AcCmTransparency(Adesk::UInt8{127}));
    layer.setDescription(L"walls");
    EXPECT_EQ(dataOf(layer), (groups("1001=AcCmTransparency|1071=33554559|"
                                     "1001=AcAecLayerStandard|1000=|1000=walls")));

    AcDbTextStyleTableRecord style;
    style.setFont(L"SimSun", true, false, 134, 2);
    EXPECT_EQ(dataOf(style), (groups("1001=ACAD|1000=SimSun|1071=33588738")));
    style.setFileName(L"txt.shx");
    EXPECT_EQ(dataOf(style), (groups("1001=ACAD")));
}

TEST_F(Written, ErasedObjectsAreNotReferredTo) {
    const std::string kept = test_support::hexadecimal(coretest::addPoint(db).handle());
    const AcDbObjectId erased = coretest::addPoint(db);
    const std::string gone = test_support::hexadecimal(erased.handle());
    const struct {
        const AcRxClass* kind;
        WrittenGroups groups;
    } cases[] = {
        {AcDbGroup::desc(), groups("100=AcDbGroup|340=" + kept + "|340=" + gone)},
        {AcDbSortentsTable::desc(),
         groups("100=AcDbSortentsTable|331=" + kept + "|5=1|331=" + gone + "|5=2")},
        {AcDbDictionary::desc(),
         groups("100=AcDbDictionary|3=KEPT|350=" + kept + "|3=GONE|350=" + gone)},
        {AcDbHatch::desc(), groups("100=AcDbEntity|8=0|100=AcDbHatch|91=1|92=2|93=0|97=2|330=" +
                                   kept + "|330=" + gone)},
        {AcDbLeader::desc(), groups("100=AcDbEntity|8=0|100=AcDbLeader|340=" + gone)},
    };
    coretest::erase(erased);
    for (const auto& c : cases) {
        const auto object = test_support::readWritten(filer, *c.kind, c.groups);
        const WrittenGroups all = written(*object);
        const auto names = [](const std::string& handle) {
            return testing::Contains(testing::Field(&Group::text, handle));
        };
        EXPECT_THAT(all, testing::Not(names(gone))) << headless::toUtf8(c.kind->name());
        if (c.kind != AcDbLeader::desc()) {
            EXPECT_THAT(all, names(kept)) << headless::toUtf8(c.kind->name());
        }
    }
}

TEST_F(Written, ExtensionRecordsReplaceTheirWholeList) {
    AcDbXrecord record;
    record.setMergeStyle(AcDb::kDrcUnmangleName);
    const AcDbObjectId point = coretest::addPoint(db);
    ads_name name;
    acdbGetAdsName(name, point);
    resbuf* const chain = acutBuildList(1, L"text", 40, 2.5, 90, 7, 280, 3, 330, name, RTNONE);
    EXPECT_EQ(record.setFromRbChain(*chain), Acad::eOk);
    acutRelRb(chain);
    DxfOutFiler out(&db, DrawingVersion::k2018);
    EXPECT_EQ(groupsOf(out.write(record)),
              groups("100=AcDbXrecord|280=5|1=text|40=2.5|90=7|280=3|330=" +
                     test_support::hexadecimal(point.handle())));
    EXPECT_TRUE(out.write(record).parts().back().whole);
}

TEST_F(Written, BlocksBeginAndEndInRecordsOfTheirOwn) {
    const AcDbObjectId id = coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"WINDOW");
    AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
    block->setOrigin({1, 2, 3});
    block->setComments(L"a window");
    auto* const definition = new AcDbAttributeDefinition;
    block->appendAcDbEntity(definition);
    definition->close();

    DxfOutFiler out(&db, DrawingVersion::k2018);
    block->writeBegin(out, block->hasVariableAttributes());
    EXPECT_EQ(groupsOf(out.output()),
              (groups("100=AcDbEntity|8=0|100=AcDbBlockBegin|2=WINDOW|70=2|10=1,2,3|3=WINDOW|1=|"
                      "4=a window")));
    EXPECT_THAT(out.output().parts()[0].codes, testing::IsEmpty()) << "the layer is only a start";
    out.output().clear();
    block->writeEnd(out);
    EXPECT_EQ(groupsOf(out.output()), (groups("100=AcDbEntity|8=0|100=AcDbBlockEnd")));
}

} // namespace
