// Drawings as they should not be: what is refused, what is repaired, and what is said about it.
#include <algorithm>
#include <chrono>
#include <map>

#include <gmock/gmock.h>

#include "db/arc.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/line.h"
#include "db/opaque.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/text.h"
#include "drawing_fixture.h"
#include "dxf/source.h"

namespace headless::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string section(const std::string& name, const std::string& records) {
    return "0|SECTION|2|" + name + (records.empty() ? "" : "|" + records) + "|0|ENDSEC|";
}

std::string file(const std::string& sections) { return lines(sections + "0|EOF|"); }

/// A drawing of nothing but entities.
std::string entitiesFile(const std::string& records) { return file(section("ENTITIES", records)); }

const std::string kLine = "0|LINE|8|0|10|1.0|20|2.0|30|0.0|11|3.0|21|4.0|31|0.0";

TEST(ReadDxf, RefusesWhatIsNoDrawingInOneLine) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* refusal;
    };
    const std::string endless =
        lines("0|SECTION|2|ENTITIES|0|TEXT|1|") + std::string(2U << 20, 'x');
    const Case cases[] = {
        {"nothing", "", "test.dxf: the file is empty"},
        {"picture", "\xFF\xD8\xFF\xE0\x00\x10JFIF",
         "test.dxf: line 1: not a DXF drawing (looks like a JPEG picture)"},
        {"DWG", "AC1015\x00\x00\x00",
         "test.dxf: line 1: not a DXF drawing (looks like a DWG drawing; save it as DXF)"},
        {"letter", "Dear Sir,\nplease find enclosed\n",
         "test.dxf: line 1: not a DXF drawing (a group code is expected)"},
        {"letter below blank lines", "\n\nDear Sir,\n",
         "test.dxf: line 3: not a DXF drawing (a group code is expected)"},
        {"numbers", "1\n2\n3\n4\n", "test.dxf: line 1: not a DXF drawing (it has no sections)"},
        {"unknown records", "0\nX\n0\nY\n",
         "test.dxf: line 1: not a DXF drawing (it has no sections)"},
        {"an endless line", endless,
         "test.dxf: line 8: the line is longer than 1048576 characters"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Drawing(c.bytes).result.refusal, c.refusal);
    }
}

TEST(ReadDxf, RefusesFilesItCannotOpen) {
    const auto folder = std::filesystem::temp_directory_path();
    EXPECT_EQ(Drawing(folder).result.refusal, folder.string() + ": is a folder, not a drawing");
    const auto missing = folder / "no-such-drawing.dxf";
    EXPECT_EQ(Drawing(missing).result.refusal, missing.string() + ": no such file");
    EXPECT_EQ(Drawing(std::filesystem::path("/dev/null")).result.refusal,
              "/dev/null: is not a regular file");
}

TEST(ReadDxf, RepairsAndReports) {
    struct Case {
        const char* name;
        std::string bytes;
        std::size_t entities; // in model space
        std::vector<std::string> findings;
    };
    const Case cases[] = {
        {"a plain file", entitiesFile(kLine), 1, {}},
        {"malformed number",
         entitiesFile("0|CIRCLE|5|A1|10|1.x|20|2|40|5"),
         1,
         {"line 9: object A1: CIRCLE, group 10: not a number, taken as 0"}},
        {"number out of range",
         entitiesFile("0|CIRCLE|5|A1|10|1e400|20|2|40|5"),
         1,
         {"line 9: object A1: CIRCLE, group 10: the number is out of range, taken as 0"}},
        {"malformed handle",
         entitiesFile("0|CIRCLE|5|no|8|0|40|5"),
         1,
         {"line 7: \"no\" is no handle; a new one is given"}},
        {"a line of rubbish",
         entitiesFile("0|CIRCLE|5|A1|what?|10|1|20|2|40|5"),
         1,
         {"line 9: \"what?\" is no group code; skipped"}},
        {"vertex without polyline",
         entitiesFile("0|VERTEX|5|A1|10|1|0|CIRCLE|40|1"),
         1,
         {"line 5: object A1: \"VERTEX\" left out: it belongs to no entity before it"}},
        {"polyline without its end",
         entitiesFile("0|POLYLINE|5|A1|66|1|0|VERTEX|10|1|20|1|0|CIRCLE|40|1"),
         2,
         {"line 5: object A1: its parts end without SEQEND"}},
        {"a table record among entities",
         entitiesFile("0|LAYER|2|X|0|CIRCLE|40|1"),
         1,
         {"line 5: \"LAYER\" left out: it is no entity"}},
        {"reference to an undefined block",
         entitiesFile("0|INSERT|5|A1|2|NONE|10|0|20|0"),
         1,
         {"line 9: object A1: block \"NONE\" is not defined"}},
        {"no sections",
         lines("0|CIRCLE|5|A1|40|1|0|EOF|"),
         1,
         {"line 1: object A1: entities stand in no section; they are put into their space"}},
        {"section without end",
         lines("0|SECTION|2|BLOCKS|0|SECTION|2|ENTITIES|0|CIRCLE|40|1|0|EOF|"),
         1,
         {"line 5: a section begins before the last one has ended"}},
        {"no end mark",
         lines("0|SECTION|2|ENTITIES|0|CIRCLE|40|1|0|ENDSEC|"),
         1,
         {"the file ends without its end mark; something may be missing"}},
        {"handle used twice by entities",
         entitiesFile("0|CIRCLE|5|A1|40|1|0|CIRCLE|5|A1|40|2"),
         2,
         {"line 11: object A1: the handle is CIRCLE's already; this CIRCLE gets A2"}},
        {"unknown code page",
         file(section("HEADER", "9|$ACADVER|1|AC1015|9|$DWGCODEPAGE|3|KLINGON") +
              section("ENTITIES", "0|CIRCLE|40|1")),
         1,
         {"line 11: code page \"KLINGON\" is not known"}},
        {"block without end",
         file(section("BLOCKS", "0|BLOCK|2|B|0|CIRCLE|40|1|0|BLOCK|2|C|0|ENDBLK") +
              section("ENTITIES", "0|INSERT|2|B")),
         1,
         {"the block ends without ENDBLK"}},
        {"entity outside any block",
         file(section("BLOCKS", "0|CIRCLE|40|1") + section("ENTITIES", "0|CIRCLE|40|1")),
         1,
         {"line 5: \"CIRCLE\" left out: it stands in no block"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Drawing drawing(c.bytes);
        ASSERT_TRUE(drawing.result) << drawing.result.refusal;
        EXPECT_EQ(entities(drawing.db->modelSpaceId()).size(), c.entities);
        const auto findings = drawing.findings();
        ASSERT_EQ(findings.size(), c.findings.size()) << ::testing::PrintToString(findings);
        for (std::size_t i = 0; i < findings.size(); ++i) {
            EXPECT_THAT(findings[i], HasSubstr(c.findings[i]));
        }
    }
}

TEST(ReadDxf, MakesWhatIsNotDefined) {
    const Drawing drawing(entitiesFile("0|CIRCLE|5|A1|8|WALLS|6|DASHED|40|1|0|CIRCLE|8|walls|40|1|"
                                       "0|CIRCLE|8|A:B*<>|40|1"));
    ASSERT_TRUE(drawing.result);
    EXPECT_THAT(drawing.findings(),
                ElementsAre("line 9: object A1: layer \"WALLS\" is not defined; made with default "
                            "properties",
                            "line 11: object A1: linetype \"DASHED\" is not defined; made with "
                            "default properties",
                            HasSubstr("layer \"A:B*<>\" is not defined")));
    const auto all = entities(drawing.db->modelSpaceId());
    ASSERT_EQ(all.size(), 3U);
    const Opened<AcDbEntity> first(all[0]->objectId());
    const Opened<AcDbEntity> second(all[1]->objectId());
    const Opened<AcDbEntity> third(all[2]->objectId());
    EXPECT_EQ(first->layerId(), second->layerId());
    EXPECT_EQ(nameOf(first->layerId()), "WALLS");
    EXPECT_EQ(nameOf(first->linetypeId()), "DASHED");
    EXPECT_EQ(nameOf(third->layerId()), "A:B*<>");
}

TEST(ReadDxf, TakesALayersTransparencyFromItsExtendedData) {
    const Drawing drawing(
        std::string("0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n"
                    "0\nLAYER\n5\n20\n2\nHALF\n70\n0\n"
                    "1001\nOTHER\n1071\n33554687\n1001\nAcCmTransparency\n1071\n33554559\n"
                    "0\nLAYER\n5\n21\n2\nSOLID\n70\n0\n"
                    "0\nENDTAB\n0\nENDSEC\n0\nEOF\n"));
    const Opened<AcDbLayerTableRecord> half(at<AcDbLayerTableRecord>(drawing, 0x20)->objectId());
    EXPECT_EQ(half->transparency().alpha(), 127);
    EXPECT_TRUE(half->transparency().isByAlpha());
    const Opened<AcDbLayerTableRecord> solid(at<AcDbLayerTableRecord>(drawing, 0x21)->objectId());
    EXPECT_TRUE(solid->transparency().isSolid());
}

TEST(ReadDxf, FindsWhatIsDefinedLater) {
    // Tables and blocks behind the entities, linetypes behind the layers, inner blocks behind
    // outer.
    const Drawing drawing(
        file(section("ENTITIES", "0|INSERT|8|WALLS|2|OUTER|10|0|20|0") +
             section("BLOCKS", "0|BLOCK|2|OUTER|0|INSERT|8|WALLS|2|INNER|0|ENDBLK|"
                               "0|BLOCK|2|INNER|10|5|20|6|0|CIRCLE|8|0|40|1|0|ENDBLK") +
             section("TABLES", "0|LAYER|2|WALLS|62|-3|6|DASHED|0|LAYER|2|0|62|7|6|CONTINUOUS|"
                               "0|LTYPE|2|DASHED|3|- - -|0|LTYPE|2|CONTINUOUS|3|")));
    ASSERT_TRUE(drawing.result);
    EXPECT_THAT(drawing.findings(), IsEmpty());
    const auto space = entities(drawing.db->modelSpaceId());
    ASSERT_EQ(space.size(), 1U);
    const Opened<AcDbBlockReference> outer(space[0]->objectId());
    const auto inner = entities(outer->blockTableRecord());
    ASSERT_EQ(inner.size(), 1U);
    const Opened<AcDbBlockReference> reference(inner[0]->objectId());
    EXPECT_EQ(nameOf(reference->blockTableRecord()), "INNER");
    const Opened<AcDbBlockTableRecord> block(reference->blockTableRecord());
    EXPECT_EQ(block->origin(), AcGePoint3d(5, 6, 0));
    const Opened<AcDbLayerTableRecord> layer(outer->layerId());
    EXPECT_TRUE(layer->isOff());
    EXPECT_EQ(nameOf(layer->linetypeObjectId()), "DASHED");
}

TEST(ReadDxf, KeepsBlocksThatContainThemselves) {
    const Drawing drawing(
        file(section("BLOCKS", "0|BLOCK|2|A|0|INSERT|8|0|2|B|0|ENDBLK|"
                               "0|BLOCK|2|B|0|INSERT|8|0|2|A|0|CIRCLE|8|0|40|2|0|ENDBLK") +
             section("ENTITIES", "0|INSERT|5|A1|8|0|2|A|10|1|20|0")));
    ASSERT_TRUE(drawing.result);
    const Opened<AcDbBlockReference> reference(at<AcDbBlockReference>(drawing, 0xA1)->objectId());
    AcDbExtents box;
    ASSERT_EQ(reference->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(3, 2, 0));
}

TEST(ReadDxf, PutsEntitiesIntoTheirSpaces) {
    const std::string tables =
        section("TABLES", "0|BLOCK_RECORD|5|1F|2|*MODEL_SPACE|0|BLOCK_RECORD|5|1B|2|*Paper_Space|"
                          "0|BLOCK_RECORD|5|1D|2|*Paper_Space0|0|BLOCK_RECORD|5|30|2|B");
    const Drawing drawing(file(
        tables + section("BLOCKS", "0|BLOCK|330|1D|2|*Paper_Space0|0|CIRCLE|8|0|40|1|0|ENDBLK") +
        section("ENTITIES", "0|CIRCLE|330|1F|8|0|40|1|0|CIRCLE|330|1B|8|0|40|1|"
                            "0|CIRCLE|330|1D|8|0|40|1|0|CIRCLE|8|0|67|1|40|1|"
                            "0|CIRCLE|330|30|8|0|40|1|0|CIRCLE|330|FFFF|8|0|67|0|40|1")));
    ASSERT_TRUE(drawing.result);
    const auto count = [&](const wchar_t* name) {
        const auto* const table = Residence::peek<AcDbSymbolTable>(drawing.db->blockTableId());
        return entities(table->findRecord(name)).size();
    };
    EXPECT_EQ(count(L"*Model_Space"), 3U);
    EXPECT_EQ(count(L"*Paper_Space"), 2U);
    EXPECT_EQ(count(L"*Paper_Space0"), 2U);
    EXPECT_EQ(count(L"B"), 0U);
}

TEST(ReadDxf, ReadsOldSpaceNamesAndBlocksWithoutRecords) {
    const Drawing drawing(
        file(section("BLOCKS", "0|BLOCK|2|$MODEL_SPACE|0|ENDBLK|0|BLOCK|2|$PAPER_SPACE|0|ENDBLK|"
                               "0|BLOCK|2|DOOR|70|0|10|1|20|2|30|0|0|CIRCLE|8|0|40|1|0|ENDBLK") +
             section("ENTITIES", "0|INSERT|8|0|2|door")));
    ASSERT_TRUE(drawing.result);
    EXPECT_THAT(drawing.findings(), IsEmpty());
    std::vector<std::string> names;
    for (const auto* block : records<AcDbBlockTableRecord>(drawing.db->blockTableId())) {
        names.push_back(toUtf8(block->nameOf()));
    }
    EXPECT_THAT(names, ElementsAre("*Model_Space", "*Paper_Space", "DOOR"));
}

TEST(ReadDxf, GivesHandlesOfTableRecordsToEntities) {
    const Drawing drawing(
        file(section("TABLES", "0|TABLE|2|LAYER|5|3|0|LAYER|5|10|2|0|62|7") +
             section("ENTITIES", "0|CIRCLE|5|10|8|0|40|1|0|CIRCLE|5|3|8|0|40|2")));
    ASSERT_TRUE(drawing.result);
    EXPECT_EQ(drawing.report.count(), 2U);
    ASSERT_NE(at<AcDbCircle>(drawing, 0x10), nullptr);
    ASSERT_NE(at<AcDbCircle>(drawing, 0x3), nullptr);
    const Opened<AcDbCircle> circle(at<AcDbCircle>(drawing, 0x10)->objectId());
    EXPECT_EQ(nameOf(circle->layerId()), "0");
    EXPECT_GT(circle->layerId().handle(), 0x10U);
}

TEST(ReadDxf, ReadsHeaderVariablesOutsideAnySection) {
    const Drawing drawing(
        lines("9|$ACADVER|1|AC1015|9|$DWGCODEPAGE|3|ANSI_936|9|$LTSCALE|40|2.5|") +
        entitiesFile("0|TEXT|5|A1|8|0|1|\xD6\xD0"));
    ASSERT_TRUE(drawing.result);
    EXPECT_EQ(drawing.db->ltscale(), 2.5);
    const Opened<AcDbText> text(at<AcDbText>(drawing, 0xA1)->objectId());
    EXPECT_EQ(toUtf8(text->textStringConst()), "\u4E2D");
}

TEST(ReadDxf, ReadsPartsOfEntities) {
    const Drawing drawing(entitiesFile(
        "0|POLYLINE|5|A1|8|0|66|1|70|1|0|VERTEX|5|A2|8|0|10|1|20|1|0|VERTEX|5|A3|8|0|10|2|20|1|42|"
        "1|"
        "0|SEQEND|5|A4|8|0|0|POLYLINE|5|B1|8|0|70|8|0|VERTEX|5|B2|8|0|10|1|20|1|30|7|0|SEQEND|8|0|"
        "0|INSERT|5|C1|8|0|66|1|2|NONE|0|ATTRIB|5|C2|8|0|2|TAG|1|value|0|SEQEND|8|0"));
    ASSERT_TRUE(drawing.result);
    auto* const flat = at<AcDb2dPolyline>(drawing, 0xA1);
    ASSERT_NE(flat, nullptr);
    ASSERT_EQ(flat->subentities().size(), 2U);
    EXPECT_EQ(flat->subentities().idAt(1).handle(), 0xA3U);
    EXPECT_EQ(at<AcDbEntity>(drawing, 0xA3)->ownerId(), flat->objectId());
    auto* const spatial = at<AcDb3dPolyline>(drawing, 0xB1);
    ASSERT_NE(spatial, nullptr);
    ASSERT_EQ(spatial->subentities().size(),
              1U); // although the vertex does not call itself spatial
    auto* const reference = at<AcDbBlockReference>(drawing, 0xC1);
    ASSERT_NE(reference, nullptr);
    ASSERT_EQ(reference->subentities().size(), 1U);
    const Opened<AcDbAttribute> attribute(reference->subentities().idAt(0));
    EXPECT_EQ(toUtf8(attribute->tagConst()), "TAG");
}

TEST(ReadDxf, KeepsTheSourceOfEverything) {
    const std::string bytes =
        lines("999|written by hand|") +
        file(
            section("HEADER", "9|$ACADVER|1|AC1015") + section("CLASSES", "0|CLASS|1|X|2|Y") +
            section("ENTITIES", "0|GADGET|5|A1|8|0|1|what|0|CIRCLE|5|A2|8|0|40|1|1001|APP|1000|x") +
            section("OBJECTS", "0|DICTIONARY|5|C|3|KEY|350|D|0|WIDGET|5|D|1|why") +
            section("THUMBNAILIMAGE", "90|0"));
    const Drawing drawing(bytes);
    ASSERT_TRUE(drawing.result);
    const auto text = [&](const AcDbObject* object) {
        return std::string(drawing.db->sourceOf(Residence::source(*object)));
    };
    const auto* const gadget = at<OpaqueEntity>(drawing, 0xA1);
    ASSERT_NE(gadget, nullptr);
    EXPECT_EQ(gadget->dxfName(), "GADGET");
    EXPECT_EQ(text(gadget), lines("0|GADGET|5|A1|8|0|1|what|"));
    EXPECT_EQ(text(at<AcDbCircle>(drawing, 0xA2)),
              lines("0|CIRCLE|5|A2|8|0|40|1|1001|APP|1000|x|"));
    const auto* const widget = at<OpaqueObject>(drawing, 0xD);
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(drawing.db->namedObjectsDictionaryId().handle(), 0xCU);

    // Together with the objects the pieces cover the whole file up to its end mark.
    std::string whole;
    std::map<std::uint64_t, std::string> spans;
    for (const DxfPiece& piece : dxfSource(*drawing.db)->pieces) {
        spans[piece.span.offset] = drawing.db->sourceOf(piece.span);
    }
    for (const AcDbObjectId id : Residence::residents(*drawing.db)) {
        const AcDbObject* const object = Residence::peek(id);
        const SourceSpan span = Residence::source(*object);
        if (span.length != 0) spans[span.offset] = drawing.db->sourceOf(span);
    }
    for (const auto& [offset, span] : spans)
        whole += span;
    EXPECT_EQ(whole + lines("0|EOF|"), bytes);
}

TEST(ReadDxf, NestsNothingHoweverDeepTheFile) {
    std::string braces = "0|XRECORD|5|A1|";
    for (int i = 0; i < 200'000; ++i)
        braces += "102|{A|";
    const Drawing drawing(file(section("OBJECTS", braces + "90|1")));
    EXPECT_TRUE(drawing.result);

    std::string blocks;
    for (int i = 0; i < 20'000; ++i) {
        blocks += "0|BLOCK|2|B" + std::to_string(i) + "|0|INSERT|8|0|2|B" + std::to_string(i + 1) +
                  "|0|ENDBLK|";
    }
    const Drawing deep(
        file(section("BLOCKS", blocks + "0|BLOCK|2|B20000|0|CIRCLE|8|0|40|1|0|ENDBLK") +
             section("ENTITIES", "0|INSERT|5|FFFFF|8|0|2|B0")));
    EXPECT_TRUE(deep.result);
    EXPECT_EQ(records<AcDbBlockTableRecord>(deep.db->blockTableId()).size(), 20'003U);
}

/// A small file with something of everything.
std::string sampleFile() {
    return file(
        section("HEADER", "9|$ACADVER|1|AC1015|9|$DWGCODEPAGE|3|ANSI_936|9|$HANDSEED|5|FF") +
        section("TABLES", "0|TABLE|2|LAYER|5|2|0|LAYER|5|10|100|AcDbSymbolTableRecord|100|"
                          "AcDbLayerTableRecord|2|\xD6\xD0|70|0|62|-7|0|ENDTAB|"
                          "0|BLOCK_RECORD|5|1F|2|*Model_Space|0|BLOCK_RECORD|5|20|2|B") +
        section("BLOCKS", "0|BLOCK|5|21|2|B|10|0.0|20|0.0|0|LINE|5|22|8|0|11|1.0|0|ENDBLK|5|23") +
        section(
            "ENTITIES",
            "0|LINE|5|30|102|{ACAD_XDICTIONARY|360|41|102|}|8|0|10|1.5|20|2.5|11|3.0|21|4.0|"
            "1001|A|1000|{|1070|1|"
            "0|LWPOLYLINE|5|31|100|AcDbEntity|8|0|100|AcDbPolyline|90|2|70|1|10|0.0|20|0.0|42|1|"
            "10|5.0|20|0.0|"
            "0|POLYLINE|5|32|8|0|66|1|0|VERTEX|5|33|8|0|10|1.0|20|1.0|0|SEQEND|5|34|"
            "0|TEXT|5|35|8|0|1|\\U+4E2D\\M+5D6D0|0|INSERT|5|36|8|0|2|B|41|-1.0") +
        section("OBJECTS", "0|DICTIONARY|5|C|3|K|350|41|0|XRECORD|5|41|100|AcDbXrecord|310|A0F1"));
}

TEST(ReadDxf, SurvivesACutAtEveryByte) {
    const std::string whole = sampleFile();
    const Drawing complete(whole);
    ASSERT_TRUE(complete.result);
    EXPECT_THAT(complete.findings(), IsEmpty());
    ASSERT_EQ(entities(complete.db->modelSpaceId()).size(), 5U);
    std::size_t before = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        const Drawing cut(whole.substr(0, size));
        if (!cut.result) {
            EXPECT_THAT(cut.result.refusal, HasSubstr("test.dxf: "));
            continue;
        }
        const std::size_t count = entities(cut.db->modelSpaceId()).size();
        EXPECT_GE(count, before); // a longer piece never gives less
        before = count;
        EXPECT_EQ(cut.report.count() == 0, size + 1 == whole.size());
    }
    EXPECT_EQ(before, 5U);
}

TEST(ReadDxf, TakesTimeInProportionToTheFile) {
    // Each of these once took time by the square, or could: seconds instead of fractions.
    std::string variables;
    std::string braces = "0|LINE|8|0|";
    std::string handles;
    std::string names;
    for (int i = 0; i < 50'000; ++i) {
        const std::string number = std::to_string(i);
        variables += "9|$V" + number + "|70|1|";
        braces += "102|{A|";
        handles += "0|POINT|5|1|8|0|";
        names += "0|INSERT|8|0|2|B" + number + "|";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(Drawing(file(section("HEADER", variables + "9|$X|70|1"))).result);
    EXPECT_TRUE(Drawing(entitiesFile(braces + "102|}|" + braces + "62|1")).result);
    EXPECT_TRUE(Drawing(entitiesFile(handles + "0|POINT|8|0")).result);
    EXPECT_TRUE(Drawing(entitiesFile(names + "0|POINT|8|0")).result);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

/// A small binary drawing with codes of one or of two bytes.
std::string binaryFile(bool oneByteCodes) {
    std::string bytes("AutoCAD Binary DXF\r\n\x1A\0", 22);
    const auto raw = [&](const auto& value) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto code = [&](int value) {
        if (oneByteCodes && value < 255) return bytes.push_back(static_cast<char>(value));
        if (oneByteCodes) bytes.push_back('\xFF');
        raw(static_cast<std::int16_t>(value));
    };
    const auto text = [&](int group, std::string_view value) {
        code(group);
        bytes.append(value).push_back('\0');
    };
    text(0, "SECTION");
    text(2, "ENTITIES");
    for (const double end : {3.0, 5.0}) {
        text(0, "LINE");
        text(8, "0");
        code(62);
        raw(std::int16_t{3});
        code(11);
        raw(end);
        text(1001, "APP");
        code(1071);
        raw(std::int32_t{7});
    }
    text(0, "ENDSEC");
    text(0, "EOF");
    return bytes;
}

TEST(ReadDxf, ReadsBinaryFilesAndSurvivesTheirCuts) {
    for (const bool oneByteCodes : {true, false}) {
        const std::string whole = binaryFile(oneByteCodes);
        const Drawing complete(whole);
        ASSERT_TRUE(complete.result) << complete.result.refusal;
        EXPECT_THAT(complete.findings(), IsEmpty());
        const auto all = entities(complete.db->modelSpaceId());
        ASSERT_EQ(all.size(), 2U);
        const Opened<AcDbLine> line(all[1]->objectId());
        EXPECT_EQ(line->endPoint(), AcGePoint3d(5, 0, 0));
        EXPECT_EQ(line->colorIndex(), 3);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const Drawing cut(whole.substr(0, size));
            EXPECT_TRUE(!cut.result || cut.report.count() != 0) << size;
        }
    }
}

TEST(ReadDxf, KeepsOnlyTheFirstFindings) {
    std::string many;
    for (int i = 0; i < 3000; ++i)
        many += "0|VERTEX|8|0|";
    const Drawing drawing(entitiesFile(many + "0|CIRCLE|8|0|40|1"));
    EXPECT_EQ(drawing.report.findings().size(), DxfReadReport::kKept);
    EXPECT_EQ(drawing.report.count(), 3000U);
}

TEST(ReadDxf, TellsItsProgress) {
    std::string many;
    for (int i = 0; i < 20'000; ++i)
        many += "0|CIRCLE|8|0|40|1|";
    std::vector<double> parts;
    DxfReadOptions options;
    options.progress = [&](double part) { parts.push_back(part); };
    AcDbDatabase db(false, true);
    DxfReadReport report;
    ASSERT_TRUE(readDxf(db, DxfInput::fromMemory(entitiesFile(many + "0|CIRCLE|40|1")), "x", report,
                        options));
    ASSERT_GE(parts.size(), 2U);
    EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
    EXPECT_LE(parts.back(), 1.0);
}

} // namespace
} // namespace headless::testing
