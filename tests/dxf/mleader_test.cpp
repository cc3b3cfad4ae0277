// Multileaders: what is drawn of them, with their record kept as it is.
#include <cmath>
#include <sstream>

#include <gmock/gmock.h>

#include "db/line.h"
#include "db/mleader.h"
#include "db/mtext.h"
#include "db/object_pointer.h"
#include "db/opaque.h"
#include "db/text.h"
#include "drawing_fixture.h"
#include "dxf/writer.h"
#include "rx/ac_string.h"

namespace headless::testing {
namespace {

using ::testing::ElementsAreArray;

/// A note and a balloon, with the block that the balloon shows.
std::string drawing(const std::string& multileader) {
    return lines(
        "0|SECTION|2|HEADER|9|$ACADVER|1|AC1024|9|$HANDSEED|5|FF|0|ENDSEC|"
        "0|SECTION|2|TABLES|0|TABLE|2|BLOCK_RECORD|5|1|70|1|0|BLOCK_RECORD|5|33|100|"
        "AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|TAG|0|ENDTAB|0|ENDSEC|"
        "0|SECTION|2|BLOCKS|0|BLOCK|5|30|330|33|2|TAG|70|2|10|0|20|0|30|0|"
        "0|CIRCLE|5|31|330|33|100|AcDbEntity|8|0|100|AcDbCircle|10|0|20|0|30|0|40|2|"
        "0|ATTDEF|5|34|330|33|100|AcDbEntity|8|0|100|AcDbText|10|1|20|-1|30|0|40|1.5|1|X|100|"
        "AcDbAttributeDefinition|3|P|2|ONE|70|0|0|ENDBLK|5|32|0|ENDSEC|0|SECTION|2|ENTITIES|" +
        multileader +
        "0|ENDSEC|0|SECTION|2|OBJECTS|0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|0|ENDSEC|"
        "0|EOF|");
}

/// A leader whose line begins at the origin, bends at 30, 40 and lands from 50, 40 on.
std::string record(const std::string& contents, int lineKind, int isPlaced,
                   const std::string& look = "") {
    return "0|MULTILEADER|5|A1|330|1F|100|AcDbEntity|8|0|62|1|100|AcDbMLeader|270|2|300|"
           "CONTEXT_DATA{|40|2.0|10|60|20|40|30|0|41|3.0|140|5.0|145|1.0|174|1|" +
           contents +
           "110|0|120|0|130|0|111|1|121|0|131|0|112|0|122|1|132|0|297|0|302|LEADER{|290|" +
           std::to_string(isPlaced) +
           "|291|1|10|50|20|40|30|0|11|1|21|0|31|0|90|0|40|10|304|LEADER_LINE{|10|0|20|0|30|0|"
           "10|30|20|40|30|0|91|0|92|-1056964608|305|}|271|0|303|}|272|9|301|}|340|0|90|0|170|" +
           std::to_string(lineKind) + "|91|-1023410171|341|0|171|-2|290|1|291|1|41|9|42|9|" + look;
}

const std::string kText = "290|1|304|a|11|0|21|0|31|1|340|0|12|62|22|44|32|0|13|0|23|1|33|0|42|0|"
                          "43|20|45|1|170|1|90|-1040187137|171|2|172|1|291|0|292|0|296|0|";
const std::string kBlock = "290|0|296|1|341|33|14|0|24|0|34|1|15|100|25|10|35|0|16|2|26|2|36|2|"
                           "46|1.5707963267948966|93|-1056964608|";

/// The kind and colour of a part, and the box of those that no font has a say in.
std::string shortly(const AcDbEntity& part) {
    std::ostringstream text;
    text << dxfName(part) << ' ' << part.color().colorIndex();
    if (part.color().isByColor()) text << " blue " << int{part.color().blue()};
    const auto put = [&text](const AcGePoint3d& p) {
        text << ' ' << std::round(p.x * 100) / 100 << ',' << std::round(p.y * 100) / 100;
    };
    AcString words;
    if (const auto* const mtext = AcDbMText::cast(&part)) {
        mtext->contents(words);
        put(mtext->location());
        text << " height " << mtext->textHeight() << " width " << mtext->width() << " at "
             << mtext->attachment() << " up " << mtext->direction().y;
    } else if (const auto* const line = AcDbText::cast(&part)) {
        put(line->position());
        text << " height " << line->height() << ' ' << toUtf8(line->textStringConst());
    } else {
        AcDbExtents box;
        EXPECT_EQ(part.getGeomExtents(box), Acad::eOk);
        put(box.minPoint());
        put(box.maxPoint());
    }
    return text.str();
}

TEST(MLeader, ShowsItsLinesArrowsAndContents) {
    // Colour 5 of the palette for lines, and 255 of blue for the text.
    const std::vector<std::string> leader = {"LINE 5 0,0 30,40", "LINE 5 30,40 50,40",
                                             "LINE 5 50,40 60,40", "SOLID 5 0,0 3.67,4.5"};
    const struct {
        const char* name;
        std::string record;
        std::vector<std::string> arrows;
        std::vector<std::string> contents;
    } cases[] = {
        {"a text that runs upwards",
         record(kText, 1, 1),
         leader,
         {"MTEXT 7 blue 255 62,44 height 3 width 40 at 2 up 1"}},
        {"lines that show nowhere",
         record(kText, 0, 1),
         {},
         {"MTEXT 7 blue 255 62,44 height 3 width 40 at 2 up 1"}},
        {"a leader that has no end yet",
         record(kText, 1, 0),
         {},
         {"MTEXT 7 blue 255 62,44 height 3 width 40 at 2 up 1"}},
        {"a block turned by a quarter, with what its attribute says",
         record(kBlock, 1, 1, "330|34|177|1|44|0|302|B7|"),
         leader,
         {"INSERT 1 96,6 104,14", "TEXT 256 102,12 height 3 B7"}},
        {"arrows that are blocks",
         record("290|0|296|0|", 1, 1, "342|33|"),
         {"LINE 5 0,0 30,40", "LINE 5 30,40 50,40", "LINE 5 50,40 60,40", "INSERT 5 -10,-10 10,10"},
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string file = drawing(c.record);
        const Drawing read(file);
        ASSERT_TRUE(read.result) << read.result.refusal;
        AcDbObjectPointer<AcDbMLeader> note(AcDbObjectId(Residence::find(*read.db, 0xA1)),
                                            AcDb::kForWrite);
        ASSERT_EQ(note.openStatus(), Acad::eOk);
        NewEntities parts;
        ASSERT_EQ(note->takeApart(parts), Acad::eOk);
        std::vector<std::string> shown;
        AcDbExtents all;
        for (const auto& part : parts) {
            shown.push_back(shortly(*part));
            AcDbExtents box;
            if (part->getGeomExtents(box) == Acad::eOk) all.addExt(box);
        }
        std::vector<std::string> wanted = c.arrows;
        wanted.insert(wanted.end(), c.contents.begin(), c.contents.end());
        EXPECT_THAT(shown, ElementsAreArray(wanted));
        AcDbExtents box;
        ASSERT_EQ(note->getGeomExtents(box), Acad::eOk);
        EXPECT_EQ(box.minPoint(), all.minPoint());
        EXPECT_EQ(box.maxPoint(), all.maxPoint());
        EXPECT_EQ(note->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotApplicable);
        note->setColorIndex(3);
        note.close();
        std::string saved;
        writeDxf(*read.db, [&](std::string_view piece) { saved += piece; });
        EXPECT_EQ(saved, std::string(file).replace(file.find("62\n1\n"), 5, "62\n3\n"));
    }
}

} // namespace
} // namespace headless::testing
