// Drawings changed and saved.
#include <fstream>
#include <iterator>
#include <numbers>

#include <sys/mount.h>
#include <sys/stat.h>

#include <gmock/gmock.h>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/line.h"
#include "db/object_pointer.h"
#include "db/polyline.h"
#include "db/resbuf.h"
#include "db/undo_journal.h"
#include "db/xrecord.h"
#include "drawing_fixture.h"
#include "dxf/writer.h"
#include "support/temporary_folder.h"

namespace headless::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string saved(AcDbDatabase& db) {
    std::string bytes;
    writeDxf(db, [&](std::string_view piece) { bytes += piece; });
    return bytes;
}

/// Opens the object for writing and changes it.
template <class T, class Change>
void change(const Drawing& drawing, std::uint64_t handle, Change apply) {
    AcDbObjectPointer<T> object(AcDbObjectId(Residence::find(*drawing.db, handle)),
                                AcDb::kForWrite);
    ASSERT_EQ(object.openStatus(), Acad::eOk);
    apply(*object);
}

template <class T>
AcDbObjectId append(AcDbDatabase& db, T* entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

constexpr const char* kHead = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$DWGCODEPAGE|3|ANSI_936|9|"
                              "$HANDSEED|5|FF|0|ENDSEC|0|SECTION|2|TABLES|0|TABLE|2|LAYER|5|2|70|1|"
                              "0|LAYER|5|21|100|AcDbSymbolTableRecord|100|AcDbLayerTableRecord|"
                              "2|walls|70|0|62|7|6|Continuous|0|ENDTAB|0|ENDSEC|"
                              "0|SECTION|2|ENTITIES|";
constexpr const char* kTail = "0|ENDSEC|0|SECTION|2|OBJECTS|0|DICTIONARY|5|C|330|0|100|"
                              "AcDbDictionary|281|1|0|ENDSEC|0|EOF|";
constexpr const char* kKnownLine =
    "0|LINE|5|A1|102|{APP|330|C|102|}|330|1F|100|AcDbEntity|999|note|"
    "8|walls|62|   1|284|3|100|AcDbLine|10|1.50|20|2|30|0|11|4.0|21|5|31|"
    "0|1001|APP|1000|\xB0\xE5|";

TEST(SavedDrawing, ChangedRecordsKeepWhatDidNotChange) {
    struct Case {
        const char* name;
        std::function<void(AcDbLine&)> apply;
        const char* line;
    };
    const Case cases[] = {
        {"nothing", [](AcDbLine& line) { line.setColorIndex(1); }, kKnownLine},
        {"a value", [](AcDbLine& line) { line.setColorIndex(3); },
         "0|LINE|5|A1|102|{APP|330|C|102|}|330|1F|100|AcDbEntity|999|note|8|walls|62|3|284|3|100|"
         "AcDbLine|10|1.50|20|2|30|0|11|4.0|21|5|31|0|1001|APP|1000|\xB0\xE5|"},
        {"back to what goes without saying", [](AcDbLine& line) { line.setColorIndex(256); },
         "0|LINE|5|A1|102|{APP|330|C|102|}|330|1F|100|AcDbEntity|999|note|8|walls|284|3|100|"
         "AcDbLine|10|1.50|20|2|30|0|11|4.0|21|5|31|0|1001|APP|1000|\xB0\xE5|"},
        {"a point",
         [](AcDbLine& line) {
             line.setStartPoint({7.25, 2, 0});
         },
         "0|LINE|5|A1|102|{APP|330|C|102|}|330|1F|100|AcDbEntity|999|note|8|walls|62|   1|284|3|"
         "100|AcDbLine|10|7.25|20|2|30|0|11|4.0|21|5|31|0|1001|APP|1000|\xB0\xE5|"},
        {"a point before a value",
         [](AcDbLine& line) {
             line.setStartPoint({7.25, 2, 0});
             line.setColorIndex(3);
         },
         "0|LINE|5|A1|102|{APP|330|C|102|}|330|1F|100|AcDbEntity|999|note|8|walls|62|3|284|3|100|"
         "AcDbLine|10|7.25|20|2|30|0|11|4.0|21|5|31|0|1001|APP|1000|\xB0\xE5|"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* const lineEnd : {"\n", "\r\n", "\r"}) {
            const Drawing drawing(lines(std::string(kHead) + kKnownLine + kTail, lineEnd));
            change<AcDbLine>(drawing, 0xA1, c.apply);
            const std::string expected = std::string(kHead) + c.line + kTail;
            EXPECT_EQ(saved(*drawing.db), lines(expected, lineEnd));
        }
    }
}

TEST(SavedDrawing, LooksChangeNothingElseOfARecord) {
    const std::string place = "10|1.50|20|2|30|0|11|4.0|21|5|31|0|";
    struct Case {
        const char* name;
        std::string beforeColor;
        std::string behindColor;
    };
    const Case cases[] = {
        {"markers in braces", "100|AcDbEntity|8|walls|102|{APP|100|AcDbLine|62|5|102|}|",
         "100|AcDbLine|62|4|" + place},
        {"braces that never close", "100|AcDbEntity|8|walls|", "102|{APP|100|AcDbLine|" + place},
        {"no marker behind", "100|AcDbEntity|8|walls|", "1001|APP|1070|5|"},
        {"no marker at all", "8|walls|", place},
        {"numbers written in other ways", "100|AcDbEntity|8|walls|",
         "100|AcDbLine|10|  1.50 |20|+2|30|0|11|4.0|21|5.0e0|31|0|"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto file = [&](const char* color) {
            return lines(std::string(kHead) + "0|LINE|5|A1|" + c.beforeColor + color +
                         c.behindColor + kTail);
        };
        const Drawing drawing(file("62|1|"));
        change<AcDbLine>(drawing, 0xA1, [](AcDbLine& line) { line.setColorIndex(3); });
        EXPECT_EQ(saved(*drawing.db), file("62|3|"));
    }
}

TEST(SavedDrawing, ChangesThatAreRedoneAreSaved) {
    const Drawing drawing(lines(std::string(kHead) + kKnownLine + kTail));
    drawing.db->disableUndoRecording(false);
    UndoJournal& journal = *drawing.db->undoJournal();
    change<AcDbLine>(drawing, 0xA1, [](AcDbLine& line) { line.setStartPoint({7.25, 2, 0}); });
    journal.undo(1);
    change<AcDbLine>(drawing, 0xA1, [](AcDbLine& line) { line.setColorIndex(3); });
    EXPECT_THAT(saved(*drawing.db), AllOf(HasSubstr("1.50"), HasSubstr("62\n3\n")));
    journal.undo(1);
    change<AcDbLine>(drawing, 0xA1, [](AcDbLine& line) { line.setStartPoint({7.25, 2, 0}); });
    journal.undo(1);
    journal.redo();
    EXPECT_THAT(saved(*drawing.db), AllOf(HasSubstr("7.25"), HasSubstr("62\n   1\n")));
}

TEST(SavedDrawing, PartsStandBehindWhatTheirOwnerGot) {
    const std::string insert = "0|INSERT|5|B1|330|1F|100|AcDbEntity|8|0|100|AcDbBlockReference|2|"
                               "DOOR|10|0|20|0|30|0|";
    const Drawing drawing(lines(kHead + insert + kTail));
    change<AcDbBlockReference>(drawing, 0xB1, [](AcDbBlockReference& reference) {
        reference.setRotation(std::numbers::pi / 2);
        auto* const attribute = new AcDbAttribute({0, 0, 0}, L"x", L"TAG");
        ASSERT_EQ(reference.appendAttribute(attribute), Acad::eOk);
        attribute->close();
    });
    EXPECT_THAT(saved(*drawing.db), HasSubstr(lines("|30|0|50|90.0|0|ATTRIB|")));
}

TEST(SavedDrawing, ErasedAndDeletedRecordsAreLeftOut) {
    const std::string other = "0|POINT|5|A2|8|walls|10|1|20|2|30|0|";
    const Drawing drawing(lines(kHead + other + kKnownLine + kTail));
    change<AcDbLine>(drawing, 0xA1, [](AcDbLine& line) { line.erase(); });
    EXPECT_EQ(saved(*drawing.db), lines(kHead + other + kTail));
    delete at<AcDbEntity>(drawing, 0xA2);
    EXPECT_EQ(saved(*drawing.db), lines(std::string(kHead) + kTail));
}

TEST(SavedDrawing, NewObjectsGoToTheEndsOfTheirContainers) {
    Drawing drawing(lines(std::string(kHead) + kKnownLine + kTail, "\r\n"));
    AcDbObjectPointer<AcDbLayerTable> layers(drawing.db->layerTableId(), AcDb::kForWrite);
    auto* const layer = new AcDbLayerTableRecord;
    layer->setName(L"\x677F");
    ASSERT_EQ(layers->add(layer), Acad::eOk);
    const AcDbObjectId layerId = layer->objectId();
    layer->close();
    auto* const line = new AcDbLine({0, 0, 0}, {0.1, 1e20, 0});
    line->setLayer(layerId);
    const AcDbObjectId lineId = append(*drawing.db, line);

    const std::string bytes = saved(*drawing.db);
    EXPECT_THAT(bytes, HasSubstr(lines("0|ENDTAB|", "\r\n")));
    EXPECT_THAT(bytes, HasSubstr(lines("AcDbLayerTableRecord|2|\xB0\xE5|70|", "\r\n")));
    EXPECT_THAT(bytes, HasSubstr(lines("5|2|70|2|", "\r\n"))) << "the table's count";
    EXPECT_THAT(bytes, HasSubstr(lines("11|0.1|21|1e+20|31|0.0|0|ENDSEC|", "\r\n")));
    const Drawing again(bytes);
    const auto* const read = at<AcDbLine>(again, lineId.handle());
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(nameOf(Opened<AcDbLine>(read->objectId())->layerId()),
              toUtf8(std::wstring(L"\x677F")));
    EXPECT_GT(static_cast<Adesk::UInt64>(again.db->handseed()),
              static_cast<Adesk::UInt64>(lineId.handle()));
    EXPECT_EQ(again.findings(), drawing.findings()) << "the linetype was missing before";
}

TEST(SavedDrawing, RenamedRecordsAreNamedAnewWhereTheyAreUsed) {
    const std::string dataOnly = "0|POINT|5|A2|330|1F|100|AcDbEntity|8|0|100|AcDbPoint|10|1|20|2|"
                                 "30|0|1001|APP|1003|WALLS|1000|walls|";
    const std::string before = std::string(kHead) + kKnownLine + "1003|walls|" + dataOnly + kTail;
    const Drawing drawing(lines(before));
    change<AcDbLayerTableRecord>(
        drawing, 0x21, [](AcDbLayerTableRecord& layer) { layer.setName(L"\x6881 \x1F600"); });
    std::string expected = before;
    for (const std::string name : {"2|walls", "8|walls", "1003|walls", "1003|WALLS"})
        for (std::size_t at = 0; (at = expected.find('|' + name + '|', at)) != std::string::npos;)
            expected.replace(at + name.find('|') + 2, 5, "\xC1\xBA \\U+D83D\\U+DE00");
    EXPECT_EQ(saved(*drawing.db), lines(expected));
    const Opened<AcDbEntity> entity(at<AcDbEntity>(drawing, 0xA2)->objectId());
    const std::unique_ptr<resbuf, int (*)(resbuf*)> data(entity->xData(L"APP"), &acutRelRb);
    EXPECT_EQ(std::wstring(data->rbnext->resval.rstring), L"\x6881 \x1F600");
    EXPECT_EQ(std::wstring(data->rbnext->rbnext->resval.rstring), L"walls") << "is only a text";
}

TEST(SavedDrawing, LayersKeepTheirDescriptionAndAColourThatFilesKnow) {
    const Drawing drawing(lines(std::string(kHead) + kKnownLine + kTail));
    change<AcDbLayerTableRecord>(drawing, 0x21, [](AcDbLayerTableRecord& layer) {
        layer.setDescription(L"\x677F");
        AcCmColor byLayer;
        byLayer.setColorIndex(256);
        layer.setColor(byLayer);
    });
    const std::string bytes = saved(*drawing.db);
    EXPECT_THAT(bytes, HasSubstr(lines("|62|7|6|Continuous|1001|AcAecLayerStandard|1000||1000|"
                                       "\xB0\xE5|0|")));
    EXPECT_THAT(bytes, HasSubstr(lines("|0|APPID|"))) << "data of unknown applications is refused";
    const Drawing again(bytes);
    const Opened<AcDbLayerTableRecord> layer(at<AcDbLayerTableRecord>(again, 0x21)->objectId());
    const std::unique_ptr<ACHAR, void (*)(ACHAR*)> text(layer->description(),
                                                        [](ACHAR* s) { acutDelString(s); });
    EXPECT_EQ(std::wstring(text.get()), L"\x677F");
}

TEST(SavedDrawing, BlocksSayWhetherTheyHaveAttributes) {
    const std::string tables = "0|SECTION|2|TABLES|0|TABLE|2|BLOCK_RECORD|5|1|70|1|0|BLOCK_RECORD|"
                               "5|30|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|DOOR|0|"
                               "ENDTAB|0|ENDSEC|";
    const auto block = [](int flags, const std::string& contents) {
        return "0|SECTION|2|BLOCKS|0|BLOCK|5|31|330|30|100|AcDbEntity|8|0|100|AcDbBlockBegin|2|"
               "DOOR|70|" +
               std::to_string(flags) + "|10|0|20|0|30|0|3|DOOR|1||" + contents +
               "0|ENDBLK|5|32|330|30|100|AcDbEntity|8|0|100|AcDbBlockEnd|0|ENDSEC|0|EOF|";
    };
    const std::string definition =
        "0|ATTDEF|5|33|330|30|100|AcDbEntity|8|0|100|AcDbText|10|0|20|0|30|0|40|1|1|x|100|"
        "AcDbAttributeDefinition|3|p|2|TAG|70|0|";
    const std::string head = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$HANDSEED|5|FF|0|ENDSEC|";
    const Drawing losing(lines(head + tables + block(2, definition)));
    change<AcDbAttributeDefinition>(losing, 0x33, [](auto& attribute) { attribute.erase(); });
    EXPECT_EQ(saved(*losing.db), lines(head + tables + block(0, "")));

    const Drawing getting(lines(head + tables + block(64, "")));
    change<AcDbBlockTableRecord>(getting, 0x30, [](AcDbBlockTableRecord& record) {
        auto* const attribute = new AcDbAttributeDefinition;
        ASSERT_EQ(record.appendAcDbEntity(attribute), Acad::eOk);
        attribute->close();
    });
    EXPECT_THAT(saved(*getting.db), HasSubstr(lines("2|DOOR|70|66|")));
}

TEST(SavedDrawing, SettingsChangeTheirHeaderVariables) {
    const std::string head = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$LTSCALE|40|1.0|0|ENDSEC|";
    const std::string rest = "0|SECTION|2|ENTITIES|0|ENDSEC|0|EOF|";
    const Drawing drawing(lines(head + rest));
    drawing.db->setLtscale(2.5);
    drawing.db->setTextsize(12);
    EXPECT_EQ(saved(*drawing.db),
              lines("0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$LTSCALE|40|2.5|9|$TEXTSIZE|40|12.0|"
                    "0|ENDSEC|" +
                    rest));
}

TEST(SavedDrawing, NewDrawingsReadBackWithoutFindings) {
    AcDbDatabase db(true, true);
    auto* const polyline = new AcDbPolyline(2);
    polyline->addVertexAt(0, {0, 0}, 0.5);
    polyline->addVertexAt(1, {10, 1.0 / 3.0});
    const AcDbObjectId id = append(db, polyline);
    db.setLtscale(3);
    const Drawing again(saved(db));
    ASSERT_TRUE(again.result) << again.result.refusal;
    EXPECT_TRUE(again.findings().empty()) << ::testing::PrintToString(again.findings());
    const Opened<AcDbPolyline> read(at<AcDbPolyline>(again, id.handle())->objectId());
    AcGePoint2d point;
    ASSERT_EQ(read->getPointAt(1, point), Acad::eOk);
    EXPECT_EQ(point.y, 1.0 / 3.0);
    EXPECT_EQ(again.db->ltscale(), 3);
}

TEST(SavedDrawing, WhatR12CannotHoldMakesItADrawingOf2000) {
    const std::string old = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1009|0|ENDSEC|0|SECTION|2|ENTITIES|"
                            "0|LINE|8|0|10|1|20|2|11|3|21|4|1001|APP|1070|5|0|ENDSEC|0|EOF|";
    Drawing plain(lines(old));
    append(*plain.db, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    EXPECT_THAT(saved(*plain.db), Not(HasSubstr("AcDb")));

    Drawing drawing(lines(old));
    auto* const polyline = new AcDbPolyline(1);
    polyline->addVertexAt(0, {0, 0});
    append(*drawing.db, polyline);
    std::string bytes;
    const DxfWriteResult result =
        writeDxf(*drawing.db, [&](std::string_view piece) { bytes += piece; });
    EXPECT_EQ(result.version, "AC1015");
    EXPECT_EQ(result.notes.size(), 1U);
    const Drawing again(bytes);
    EXPECT_TRUE(again.findings().empty()) << ::testing::PrintToString(again.findings());
    EXPECT_EQ(entities(again.db->modelSpaceId()).size(), 2U);
    EXPECT_THAT(bytes, HasSubstr("1001\nAPP\n"));
}

TEST(SavedDrawing, ADrawingOf2000KeepsWhatOnlyTheFileOfR12Has) {
    const std::string head = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1009|0|ENDSEC|";
    const struct {
        const char* name;
        std::string sections;
        const char* kept;
    } cases[] = {
        {"a group that lines do not have", "0|SECTION|2|ENTITIES|0|LINE|8|0|66|1|90|7|10|1|20|2|",
         "90|7|"},
        {"a kind whose subclass is known",
         "0|SECTION|2|ENTITIES|0|TOLERANCE|8|0|62|3|3|Standard|1|{\\Fgdt;r}|",
         "100|AcDbFcf|3|Standard|1|{\\Fgdt;r}|"},
        {"a kind of nobody's", "0|SECTION|2|ENTITIES|0|GADGET|8|0|70|3|40|1.5|", "70|3|40|1.5|"},
        {"subclasses of a newer file",
         "0|SECTION|2|ENTITIES|0|GADGET|100|AcDbEntity|8|0|100|AcDbGadget|70|3|330|1F|",
         "8|0|100|AcDbGadget|70|3|330|1F|"},
        {"a section of others",
         "0|SECTION|2|NOTES|7|q|0|NOTE|1|text|70|4|0|ENDSEC|0|SECTION|2|ENTITIES|",
         "0|SECTION|2|NOTES|7|q|0|NOTE|1|text|70|4|0|ENDSEC|0|EOF|"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Drawing drawing(lines(head + c.sections + "0|ENDSEC|0|EOF|"));
        auto* const polyline = new AcDbPolyline(1);
        polyline->addVertexAt(0, {0, 0});
        append(*drawing.db, polyline);
        std::string bytes = saved(*drawing.db);
        std::erase(bytes, ' ');
        EXPECT_THAT(bytes, HasSubstr("AC1015"));
        EXPECT_THAT(bytes, HasSubstr(lines(c.kept)));
        EXPECT_THAT(bytes, Not(HasSubstr("66\n1\n"))) << "no parts follow";
    }
}

/// What the drawing's sheets hold, by handle, in order, and the tile records by theirs.
std::string told(const Drawing& drawing) {
    std::string text;
    for (const AcDbBlockTableRecord* const block :
         records<AcDbBlockTableRecord>(drawing.db->blockTableId())) {
        text += toUtf8(block->nameOf()) + ":";
        for (const AcDbObjectId id : block->entityIds())
            text += " " + handleText(id.handle());
        text += "; ";
    }
    for (const auto* const tile : records<AcDbViewportTableRecord>(drawing.db->viewportTableId()))
        text += toUtf8(tile->nameOf()) + " " + handleText(tile->objectId().handle()) + "; ";
    return text;
}

TEST(SavedDrawing, TheSheetShownIsPaperSpaceAndTilesKeepTheirOrder) {
    const std::string record = "100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|";
    const std::string begin = "100|AcDbEntity|8|0|100|AcDbBlockBegin|2|";
    const std::string file =
        "0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$HANDSEED|5|FF|0|ENDSEC|0|SECTION|2|TABLES|"
        "0|TABLE|2|VPORT|5|8|70|3|0|VPORT|5|32|100|AcDbSymbolTableRecord|"
        "100|AcDbViewportTableRecord|2|*Active|0|VPORT|5|31|100|AcDbSymbolTableRecord|"
        "100|AcDbViewportTableRecord|2|*Active|0|VPORT|5|33|100|AcDbSymbolTableRecord|"
        "100|AcDbViewportTableRecord|2|*Active|0|ENDTAB|0|TABLE|2|BLOCK_RECORD|5|1|70|3|"
        "0|BLOCK_RECORD|5|1F|" +
        record + "*Model_Space|0|BLOCK_RECORD|5|1B|" + record +
        "*Paper_Space|0|BLOCK_RECORD|5|1C|" + record + "*Paper_Space0|0|BLOCK_RECORD|5|1A|" +
        record +
        "X|0|ENDTAB|0|ENDSEC|0|SECTION|2|BLOCKS|"
        "0|BLOCK|5|3A|330|1A|" +
        begin + "X|70|2|0|ENDBLK|5|3B|330|1A|0|BLOCK|5|20|330|1F|" + begin +
        "*Model_Space|70|0|0|ENDBLK|5|21|330|1F|"
        "0|BLOCK|5|1D|330|1B|" +
        begin +
        "*Paper_Space|70|0|0|ENDBLK|5|1E|330|1B|"
        "0|BLOCK|5|2D|330|1C|" +
        begin +
        "*Paper_Space0|70|0|"
        "0|INSERT|5|C1|330|1C|100|AcDbEntity|67|1|8|0|284|3|100|AcDbBlockReference|66|1|2|X|10|0|"
        "0|ATTRIB|5|C2|330|C1|100|AcDbEntity|67|1|8|0|100|AcDbText|10|0|40|1|1|v|"
        "100|AcDbAttribute|2|T|70|0|0|SEQEND|5|C3|330|C1|100|AcDbEntity|67|1|8|0|"
        "0|LINE|5|C4|330|1C|100|AcDbEntity|67|1|8|0|100|AcDbLine|10|1|11|2|"
        "0|ENDBLK|5|2E|330|1C|0|ENDSEC|0|SECTION|2|ENTITIES|"
        "0|LINE|5|A1|330|1F|100|AcDbEntity|8|0|100|AcDbLine|10|1|11|2|"
        "0|LINE|5|B1|330|1B|100|AcDbEntity|67|1|8|0|284|3|100|AcDbLine|10|1.50|11|2|0|ENDSEC|"
        "0|EOF|";
    Drawing drawing(lines(file));
    ASSERT_TRUE(drawing.result) << drawing.result.refusal;
    const auto show = [](const Drawing& of, std::uint64_t sheet) {
        auto& blocks = *Residence::peek<AcDbBlockTable>(of.db->blockTableId());
        blocks.exchangeNames(*at<AcDbBlockTableRecord>(of, sheet),
                             *Residence::peek<AcDbBlockTableRecord>(of.db->paperSpaceId()));
    };
    show(drawing, 0x1C);
    EXPECT_EQ(drawing.db->paperSpaceId().handle(), 0x1CU);
    change<AcDbViewportTableRecord>(drawing, 0x31,
                                    [](AcDbViewportTableRecord& tile) { tile.setHeight(5); });
    change<AcDbLine>(drawing, 0xC4, [](AcDbLine& line) { line.setEndPoint({9, 9, 0}); });
    const std::string bytes = saved(*drawing.db);
    const Drawing again(bytes);
    EXPECT_TRUE(again.findings().empty()) << ::testing::PrintToString(again.findings());
    EXPECT_EQ(told(again), "*Model_Space: A1; *Paper_Space0: B1; *Paper_Space: C1 C4; X:; "
                           "*Active 32; *Active 31; *Active 33; ");
    const std::size_t entitiesAt = bytes.find("\nENTITIES\n");
    EXPECT_LT(bytes.find("5\nB1\n"), entitiesAt) << "in its block now";
    EXPECT_GT(bytes.find("5\nC1\n"), entitiesAt);
    EXPECT_THAT(bytes, HasSubstr(lines("284|3|100|AcDbLine|10|1.50|11|2|")));
    EXPECT_THAT(bytes, HasSubstr(lines("284|3|100|AcDbBlockReference|66|1|2|X|10|0|0|ATTRIB|")));
    EXPECT_THAT(bytes, HasSubstr(lines("0|SEQEND|5|C3|330|C1|100|AcDbEntity|67|1|8|0|0|LINE|")));

    change<AcDbViewportTableRecord>(drawing, 0x31,
                                    [](AcDbViewportTableRecord& tile) { tile.setHeight(1); });
    show(again, 0x1B);
    const Drawing back(saved(*again.db));
    EXPECT_EQ(told(back), "*Model_Space: A1; *Paper_Space: B1; *Paper_Space0: C1 C4; X:; "
                          "*Active 32; *Active 31; *Active 33; ");
}

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(SavedDrawing, ReplacesTheFileItCameFrom) {
    const test_support::TemporaryFolder folder;
    const auto file = folder.path() / "plan.dxf";
    std::ofstream(file, std::ios::binary) << lines(std::string(kHead) + kKnownLine + kTail);
    ::chmod(file.c_str(), 0640);
    const auto link = folder.path() / "link.dxf";
    std::filesystem::create_symlink("plan.dxf", link);

    const Drawing drawing(link);
    for (const int color : {3, 4}) { // It can be used and saved again.
        change<AcDbLine>(drawing, 0xA1, [&](AcDbLine& line) {
            line.setColorIndex(static_cast<Adesk::UInt16>(color));
        });
        const DxfWriteResult result = writeDxf(*drawing.db, link);
        ASSERT_TRUE(result) << result.refusal;
        EXPECT_EQ(result.changed, 1U);
        EXPECT_THAT(contents(file), HasSubstr("62\n" + std::to_string(color) + "\n"));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    struct stat status {};
    ::stat(file.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(SavedDrawing, HoldsWhatWasReadWhateverBecomesOfTheFile) {
    const test_support::TemporaryFolder folder;
    const auto file = folder.path() / "plan.dxf";
    const std::string bytes = lines(std::string(kHead) + kKnownLine + kTail);
    for (const bool cut : {true, false}) {
        SCOPED_TRACE(cut ? "cut off" : "written over");
        std::ofstream(file, std::ios::binary) << bytes;
        const Drawing drawing(file);
        if (cut)
            std::filesystem::resize_file(file, 0);
        else
            std::ofstream(file, std::ios::binary | std::ios::in) << std::string(bytes.size(), '0');
        EXPECT_EQ(saved(*drawing.db), bytes);
    }
}

TEST(SavedDrawing, FailuresLeaveEverythingAsItWas) {
    const test_support::TemporaryFolder folder;
    const auto file = folder.path() / "plan.dxf";
    std::ofstream(file, std::ios::binary) << "old";
    ::chmod(file.c_str(), 0440);
    const auto sub = folder.path() / "folder.dxf";
    std::filesystem::create_directory(sub);
    const Drawing drawing(lines(std::string(kHead) + kKnownLine + kTail));
    struct Case {
        std::filesystem::path target;
        const char* reason;
    };
    const Case cases[] = {
        {file, "not allowed"}, {sub, "folder"}, {folder.path() / "gone" / "x.dxf", "not there"}};
    for (const Case& c : cases) {
        const DxfWriteResult result = writeDxf(*drawing.db, c.target);
        EXPECT_THAT(result.refusal, HasSubstr(c.target.string() + ": "));
        EXPECT_THAT(result.refusal, HasSubstr(c.reason));
    }
    EXPECT_EQ(contents(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(SavedDrawing, AFullDiskLeavesTheOldDrawing) {
    const test_support::TemporaryFolder folder;
    const char* const disk = folder.path().c_str();
    if (::mount("tmpfs", disk, "tmpfs", 0, "size=16k") != 0) GTEST_SKIP() << "not allowed to mount";
    const auto file = folder.path() / "plan.dxf";
    std::ofstream(file, std::ios::binary) << "old";
    std::string many = kHead;
    for (int i = 0; i < 500; ++i)
        many += "0|POINT|8|walls|10|1|20|2|30|0|";
    const Drawing drawing(lines(many + kTail));
    EXPECT_EQ(writeDxf(*drawing.db, file).refusal, file.string() + ": the disk is full");
    EXPECT_EQ(contents(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    ::umount(disk);
}

} // namespace
} // namespace headless::testing
