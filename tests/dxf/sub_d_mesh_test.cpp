// Meshes of free faces: drawn by their edges, with their faces left to their record.
#include "db/object_pointer.h"
#include "db/sub_d_mesh.h"
#include "drawing_fixture.h"
#include "dxf/writer.h"

namespace headless::testing {
namespace {

constexpr const char* kBeforeVertices =
    "0|SECTION|2|HEADER|9|$ACADVER|1|AC1024|9|$HANDSEED|5|FF|0|ENDSEC|0|SECTION|2|ENTITIES|"
    "0|MESH|5|A1|330|1F|100|AcDbEntity|8|0|100|AcDbSubDMesh|71|2|72|0|91|0|92|4|";
constexpr const char* kBehindFaces =
    "94|1|90|0|90|1|95|1|140|-1.0|90|0|0|ENDSEC|0|SECTION|2|OBJECTS|"
    "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|0|ENDSEC|0|EOF|";

TEST(SubDMesh, IsDrawnByItsEdgesAndKeepsItsFaces) {
    const struct {
        const char* name;
        std::string faces;
        AcGePoint3d greatest; // of the box, which begins at the origin
        std::size_t findings;
    } cases[] = {
        {"two triangles with an edge in common",
         "93|8|90|3|90|0|90|1|90|2|90|3|90|2|90|1|90|0|",
         {3, 4, 0},
         0},
        {"no faces", "93|0|", {3, 4, 5}, 0},
        {"a face with a corner too many", "93|5|90|4|90|0|90|1|90|2|90|4|", {3, 4, 5}, 1},
        {"a face of more corners than there are", "93|2|90|2000000000|90|1|", {3, 4, 5}, 1},
        {"a face of fewer than none", "93|2|90|-1|90|1|", {3, 4, 5}, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string vertices = "10|0.0|20|0.0|30|0.0|10|3.0|20|0.0|30|0.0|10|0.0|20|4.0|30|"
                                     "0.0|10|0.0|20|0.0|30|5.0|";
        const Drawing drawing(lines(kBeforeVertices + vertices + c.faces + kBehindFaces));
        ASSERT_TRUE(drawing.result) << drawing.result.refusal;
        EXPECT_EQ(drawing.findings().size(), c.findings);
        AcDbObjectPointer<AcDbSubDMesh> mesh(AcDbObjectId(Residence::find(*drawing.db, 0xA1)),
                                             AcDb::kForWrite);
        ASSERT_EQ(mesh.openStatus(), Acad::eOk);
        AcDbExtents box;
        ASSERT_EQ(mesh->getGeomExtents(box), Acad::eOk);
        EXPECT_EQ(box.minPoint(), AcGePoint3d::kOrigin);
        EXPECT_EQ(box.maxPoint(), c.greatest);
        ASSERT_EQ(mesh->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eOk);
        mesh.close();
        std::string saved;
        writeDxf(*drawing.db, [&](std::string_view piece) { saved += piece; });
        const std::string moved = "10|1.0|20|0.0|30|0.0|10|4.0|20|0.0|30|0.0|10|1.0|20|4.0|30|0.0|"
                                  "10|1.0|20|0.0|30|5.0|";
        EXPECT_EQ(saved, lines(kBeforeVertices + moved + c.faces + kBehindFaces));
    }
}

} // namespace
} // namespace headless::testing
