// Tables as objects: drawn by their block, with everything else left to their record.
#include <numbers>

#include "db/object_pointer.h"
#include "db/table_entity.h"
#include "drawing_fixture.h"
#include "dxf/writer.h"

namespace headless::testing {
namespace {

/// A table that runs upwards from 100, 50, with values in its cells that have the codes of
/// references.
const std::string kTable =
    "0|SECTION|2|HEADER|9|$ACADVER|1|AC1024|9|$HANDSEED|5|FF|0|ENDSEC|"
    "0|SECTION|2|BLOCKS|0|BLOCK|5|30|2|*T1|70|1|10|0|20|0|30|0|"
    "0|LINE|5|31|330|1F|100|AcDbEntity|8|0|100|AcDbLine|10|0|20|0|30|0|11|10|21|-4|31|0|"
    "0|ENDBLK|5|32|0|ENDSEC|0|SECTION|2|ENTITIES|"
    "0|ACAD_TABLE|5|A1|330|1F|100|AcDbEntity|8|0|100|AcDbBlockReference|2|*T1|10|100.0|20|50.0|"
    "30|0.0|100|AcDbTable|280|0|342|0|11|0.0|21|1.0|31|0.0|90|22|91|1|92|2|141|9.0|142|63.5|"
    "171|1|172|0|41|1.5|50|45.0|70|2|2|LABEL|1|cell|"
    "0|ENDSEC|0|SECTION|2|OBJECTS|0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|0|ENDSEC|0|EOF|";

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(TableEntity, IsDrawnByItsBlockAndKeepsItsCells) {
    const AcGePoint3d place(100, 50, 0);
    const AcGeMatrix3d quarter =
        AcGeMatrix3d::rotation(-std::numbers::pi / 2, AcGeVector3d::kZAxis, place);
    const struct {
        const char* name;
        AcGeMatrix3d transform;
        AcGePoint3d corner; // opposite to the table's place
        std::string file;
    } cases[] = {
        {"as it is", {}, {104, 60, 0}, kTable},
        {"moved",
         AcGeMatrix3d::translation({1, 2, 3}),
         {105, 62, 3},
         replaced(kTable, "10|100.0|20|50.0|30|0.0|", "10|101.0|20|52.0|30|3.0|")},
        {"turned",
         quarter,
         {110, 46, 0},
         replaced(kTable, "11|0.0|21|1.0|31|0.0|", "11|1.0|21|0.0|31|0.0|")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Drawing drawing(lines(kTable));
        ASSERT_TRUE(drawing.result) << drawing.result.refusal;
        AcDbObjectPointer<AcDbTable> table(AcDbObjectId(Residence::find(*drawing.db, 0xA1)),
                                           AcDb::kForWrite);
        ASSERT_EQ(table.openStatus(), Acad::eOk);
        ASSERT_EQ(table->transformBy(c.transform), Acad::eOk);
        AcDbExtents box;
        ASSERT_EQ(table->getGeomExtents(box), Acad::eOk);
        AcDbExtents wanted;
        wanted.addPoint(c.transform * place);
        wanted.addPoint(c.corner);
        EXPECT_TRUE(box.minPoint().isEqualTo(wanted.minPoint()));
        EXPECT_TRUE(box.maxPoint().isEqualTo(wanted.maxPoint()));
        NewEntities parts;
        ASSERT_EQ(table->takeApart(parts), Acad::eOk);
        EXPECT_EQ(parts.size(), 1U);
        table.close();
        std::string saved;
        writeDxf(*drawing.db, [&](std::string_view piece) { saved += piece; });
        EXPECT_EQ(saved, lines(c.file));
    }
}

} // namespace
} // namespace headless::testing
