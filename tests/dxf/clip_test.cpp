// Clips of references, as files have them.
#include "db/dxf_output.h"
#include "db/opaque.h"
#include "db/spatial_filter.h"
#include "drawing_fixture.h"

namespace headless::testing {
namespace {

// A clip of a reference that stood at (5, 5): the block's own place is five less. The second one
// is that of a hole: its boundary goes around the hole and back.
constexpr const char* kDrawing =
    "0|SECTION|2|HEADER|9|$ACADVER|1|AC1027|0|ENDSEC|0|SECTION|2|OBJECTS|0|DICTIONARY|5|C|"
    "0|SPATIAL_FILTER|5|A1|330|C|100|AcDbFilter|100|AcDbSpatialFilter|70|2|10|7|20|3|10|10|20|13|"
    "210|0|220|0|230|1|11|0|21|0|31|2|71|1|72|1|40|4|73|1|41|-6|"
    "40|1|40|0|40|0|40|-5|40|0|40|1|40|0|40|-5|40|0|40|0|40|1|40|0|"
    "40|1|40|0|40|0|40|0|40|0|40|1|40|0|40|0|40|0|40|0|40|1|40|-2|"
    "0|SPATIAL_FILTER|5|A2|102|{ACAD_XDICTIONARY|360|B1|102|}|330|C|100|AcDbFilter|"
    "100|AcDbSpatialFilter|70|3|10|0|20|0|10|9|20|0|10|9|20|9|210|0|220|0|230|1|"
    "11|0|21|0|31|0|71|0|72|0|73|0|40|1|"
    "0|DICTIONARY|5|B1|330|A2|100|AcDbDictionary|3|ACAD_XREC_ROUNDTRIP|360|B2|"
    "0|XRECORD|5|B2|330|B1|100|AcDbXrecord|280|1|102|ACAD_INVERTEDCLIP_ROUNDTRIP|"
    "10|1|20|2|30|0|10|3|20|4|30|0|102|ACAD_INVERTEDCLIP_ROUNDTRIP_COMPARE|"
    "10|0|20|0|30|0|10|9|20|0|30|0|10|9|20|CORNER|30|0|0|ENDSEC|0|EOF|";

Drawing read(const std::string& corner) {
    std::string text = kDrawing;
    text.replace(text.find("CORNER"), 6, corner);
    return Drawing(lines(text));
}

struct Definition {
    AcGePoint2dArray points;
    AcGeVector3d normal;
    double elevation = 0.0;
    double front = 0.0;
    double back = 0.0;
    Adesk::Boolean enabled = false;
    bool inverted = false;
};

Definition definitionOf(const Drawing& drawing, std::uint64_t handle) {
    Definition d;
    AcDbSpatialFilter* filter = nullptr;
    const AcDbObjectId id(Residence::find(*drawing.db, handle));
    EXPECT_EQ(acdbOpenObject(filter, id, AcDb::kForRead), Acad::eOk);
    if (filter == nullptr) return d;
    filter->getDefinition(d.points, d.normal, d.elevation, d.front, d.back, d.enabled);
    d.inverted = filter->isInverted();
    filter->close();
    return d;
}

TEST(Clips, HaveTheirBoundaryAndPlace) {
    const Drawing drawing = read("9");
    ASSERT_TRUE(drawing.result) << drawing.result.refusal;
    const Definition d = definitionOf(drawing, 0xA1);
    ASSERT_EQ(d.points.length(), 2);
    EXPECT_EQ(d.points[1], AcGePoint2d(10, 13));
    EXPECT_EQ(d.elevation, 2.0);
    EXPECT_EQ(d.front, 4.0);
    EXPECT_EQ(d.back, -6.0);
    EXPECT_TRUE(d.enabled);
    EXPECT_FALSE(d.inverted);

    const auto* const filter = at<AcDbSpatialFilter>(drawing, 0xA1);
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(object, filter->objectId(), AcDb::kForRead), Acad::eOk);
    AcGeMatrix3d matrix;
    EXPECT_EQ(filter->getOriginalInverseBlockXform(matrix) * AcGePoint3d(5, 5, 0), AcGePoint3d());
    EXPECT_EQ(filter->getClipSpaceToWCSMatrix(matrix) * AcGePoint3d(), AcGePoint3d(0, 0, 2));
    object->close();
}

TEST(Clips, MayHideWhatTheirBoundaryHolds) {
    const Drawing drawing = read("9");
    const Definition hole = definitionOf(drawing, 0xA2);
    EXPECT_TRUE(hole.inverted);
    EXPECT_FALSE(hole.enabled);
    ASSERT_EQ(hole.points.length(), 2);
    EXPECT_EQ(hole.points[1], AcGePoint2d(3, 4));
    EXPECT_EQ(hole.front, ACDB_INFINITE_XCLIP_DEPTH);

    const Definition changed = definitionOf(read("8"), 0xA2);
    EXPECT_FALSE(changed.inverted) << "the boundary is no longer that of the hole";
    EXPECT_EQ(changed.points.length(), 3);
}

TEST(Clips, AreWrittenAsTheyWereRead) {
    const Drawing drawing = read("9");
    const auto* const filter = at<AcDbSpatialFilter>(drawing, 0xA1);
    DxfOutFiler filer(drawing.db.get(), DrawingVersion::k2013);
    std::string written;
    for (const DxfOutTag& tag : filer.write(*filter).tags()) {
        if (tag.kind == DxfOutTag::Kind::kName) continue;
        const bool real = tag.kind == DxfOutTag::Kind::kReal;
        const auto value = real ? static_cast<std::int64_t>(tag.real) : tag.integer;
        written += std::to_string(tag.code) + '|' + std::to_string(value) + '|';
    }
    const std::string text = kDrawing;
    const std::size_t begin = text.find("70|2|");
    EXPECT_EQ(written, text.substr(begin, text.find("0|SPATIAL_FILTER|5|A2") - begin));
    EXPECT_EQ(dxfName(*filter), "SPATIAL_FILTER");
}

} // namespace
} // namespace headless::testing
