// What single entities of drawing files look like, by probing pixels.
#include <fstream>
#include <vector>

#include "pixels.h"
#include "support/session_fixture.h"
#include "support/temporary_folder.h"
#include "view/picture.h"

namespace {

using test_support::Pixels;

/// Groups written as "code=value|code=value" as the lines of a file.
std::string groups(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('|'), text.size());
        const std::string_view group = text.substr(0, end);
        const std::size_t split = group.find('=');
        lines.append(group.substr(0, split)).append("\n");
        lines.append(group.substr(split + 1)).append("\n");
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string drawing(std::string_view entities, std::string_view header, std::string_view tables,
                    std::string_view objects) {
    const auto section = [](const char* name, std::string_view content) {
        return groups("0=SECTION|2=" + std::string(name)) + groups(content) + groups("0=ENDSEC");
    };
    return section("HEADER", "9=$ACADVER|1=AC1015|" + std::string(header)) +
           section("TABLES", tables) + section("ENTITIES", entities) + section("OBJECTS", objects) +
           groups("0=EOF");
}

struct Probe {
    int left, bottom, right, top;
    bool isMarked; // else all white
};

struct Probed {
    const char* name;
    std::string entities;
    std::vector<Probe> probes;
    std::string header = {};
    std::string tables = {};
    std::string objects = {};
};

class EntityKinds : public test_support::SessionTest {
protected:
    std::string draw(const Probed& c) {
        const auto file = folder_.path() / "entities.dxf";
        std::ofstream(file) << drawing(c.entities, c.header, c.tables, c.objects);
        EXPECT_TRUE(session().openDrawing(file)) << c.name;
        headless::PictureOptions options;
        options.width = 100;
        options.height = 100;
        options.window = {0, 0, 100, 100};
        return std::get<std::string>(headless::drawPicture(*database(), options));
    }

    void expectProbes(const Probed& c) {
        SCOPED_TRACE(c.name);
        const std::string png = draw(c);
        const Pixels picture(png);
        for (const Probe& p : c.probes)
            EXPECT_EQ(picture.marked(p.left, p.bottom, p.right, p.top) > 0, p.isMarked)
                << p.left << ',' << p.bottom << " to " << p.right << ',' << p.top;
    }

private:
    test_support::TemporaryFolder folder_;
};

constexpr const char* kBox = "0=LWPOLYLINE|8=0|100=AcDbEntity|100=AcDbPolyline|90=2|70=0|43=90|"
                             "10=5|20=50|10=95|20=50|";

/// A solid hatch of three squares within each other.
std::string nestedSquares(int style, const std::string& look = {}) {
    std::string text = "0=HATCH|8=0|100=AcDbEntity" + look +
                       "|100=AcDbHatch|10=0|20=0|30=0|210=0|220=0|230=1|2=SOLID|70=1|71=0|91=3";
    for (const int inset : {10, 25, 40}) {
        const std::string low = std::to_string(inset);
        const std::string high = std::to_string(100 - inset);
        text += "|92=2|72=0|73=1|93=4|10=" + low + "|20=" + low + "|10=" + high + "|20=" + low +
                "|10=" + high + "|20=" + high + "|10=" + low + "|20=" + high + "|97=0";
    }
    return text + "|75=" + std::to_string(style) + "|76=1|98=0";
}

/// A multiline along y = 50 with elements 10 to either side.
std::string mline(const char* style) {
    return std::string("0=MLINE|8=0|100=AcDbEntity|100=AcDbMline|2=") + style +
           "|340=A0|40=1|70=1|71=1|72=2|73=2|10=20|20=50|30=0|210=0|220=0|230=1|"
           "11=20|21=50|31=0|12=1|22=0|32=0|13=0|23=1|33=0|74=2|41=10|41=0|75=0|74=2|41=-10|41=0|"
           "75=0|11=80|21=50|31=0|12=1|22=0|32=0|13=0|23=1|33=0|74=2|41=10|41=0|75=0|74=2|41=-10|"
           "41=0|75=0";
}

std::string mlineStyle(int flags) {
    return "0=MLINESTYLE|5=A0|100=AcDbMlineStyle|2=S|70=" + std::to_string(flags) +
           "|3=|62=3|51=90|52=90|71=2|49=10|62=256|6=BYLAYER|49=-10|62=256|6=BYLAYER";
}

TEST_F(EntityKinds, ShowWhatTheyAre) {
    const Probed cases[] = {
        {"a polyline tapers evenly",
         "0=LWPOLYLINE|8=0|100=AcDbEntity|100=AcDbPolyline|90=2|70=0|10=10|20=50|40=40|41=0|10=90|"
         "20=50|40=0|41=0",
         {{11, 33, 12, 67, true},
          {49, 42, 50, 58, true},
          {49, 30, 50, 39, false},
          {10, 71, 90, 100, false}}},
        {"an old polyline has its default width",
         "0=POLYLINE|8=0|66=1|10=0|20=0|30=0|70=0|40=20|41=20|0=VERTEX|8=0|10=10|20=50|30=0|"
         "0=VERTEX|8=0|10=90|20=50|30=0|0=SEQEND|8=0",
         {{50, 41, 51, 42, true}, {50, 58, 51, 59, true}, {50, 62, 51, 70, false}}},
        {"wide segments meet in a mitre",
         "0=LWPOLYLINE|8=0|100=AcDbEntity|100=AcDbPolyline|90=3|70=0|43=20|10=10|20=20|10=70|20=20|"
         "10=70|20=90",
         {{78, 11, 79, 12, true}, {82, 5, 83, 9, false}}},
        {"a sharp corner is bevelled",
         "0=LWPOLYLINE|8=0|100=AcDbEntity|100=AcDbPolyline|90=3|70=0|43=4|10=10|20=50|10=60|20=50|"
         "10=10|20=55",
         {{55, 50, 57, 51, true}, {66, 40, 100, 60, false}}},
        {"a face hides an edge",
         "0=3DFACE|8=0|10=20|20=20|30=0|11=80|21=20|31=0|12=80|22=80|32=0|13=20|23=80|33=0|70=2",
         {{45, 19, 46, 22, true}, {78, 40, 83, 60, false}, {45, 79, 46, 82, true}}},
        {"a wipeout covers what is below, and not what is above",
         std::string(kBox) +
             "0=WIPEOUT|8=0|100=AcDbEntity|100=AcDbWipeout|90=0|10=20|20=20|30=0|11=60|21=0|31=0|"
             "12=0|22=60|32=0|13=1|23=1|340=0|70=7|280=1|71=1|91=2|14=-.5|24=-.5|14=.5|24=.5|"
             "0=LINE|8=0|10=30|20=50|30=0|11=70|21=50|31=0",
         {{10, 10, 11, 11, true}, {25, 25, 75, 45, false}, {50, 49, 51, 52, true}}},
        {"a point is a dot",
         "0=POINT|8=0|10=50|20=50|30=0",
         {{49, 49, 52, 52, true}, {53, 40, 60, 60, false}}},
        {"a point is a crossed circle in a square",
         "0=POINT|8=0|10=50|20=50|30=0",
         {{49, 34, 51, 36, true},
          {64, 35, 66, 45, true},
          {32, 32, 34, 34, true},
          {40, 49, 45, 52, false}},
         "9=$PDMODE|70=99|9=$PDSIZE|40=30|"},
        {"a point shows as nothing",
         "0=POINT|8=0|10=50|20=50|30=0",
         {{0, 0, 100, 100, false}},
         "9=$PDMODE|70=1|"},
        {"what dimensions were measured between never comes to paper",
         "0=POINT|8=Defpoints|10=50|20=50|30=0|0=LINE|8=0|10=0|20=0|30=0|11=1|21=0|31=0",
         {{2, 2, 100, 100, false}}},
        {"a leader has an arrow as large as its style says",
         "0=LEADER|8=0|100=AcDbEntity|100=AcDbLeader|3=STANDARD|71=1|72=0|73=3|40=1|41=1|76=2|"
         "10=10|20=50|30=0|10=90|20=50|30=0|210=0|220=0|230=1",
         {{37, 46, 38, 49, true}, {20, 48, 21, 49, true}, {43, 52, 90, 60, false}},
         {},
         "0=TABLE|2=DIMSTYLE|70=1|0=DIMSTYLE|105=D1|100=AcDbSymbolTableRecord|"
         "100=AcDbDimStyleTableRecord|2=STANDARD|70=0|40=10|41=3|0=ENDTAB"},
        {"a leader says otherwise than its style",
         "0=LEADER|8=0|100=AcDbEntity|100=AcDbLeader|3=STANDARD|71=1|72=0|73=3|40=1|41=1|76=2|"
         "10=10|20=50|30=0|10=90|20=50|30=0|210=0|220=0|230=1|1001=ACAD|1000=DSTYLE|1002={|"
         "1070=41|1040=30|1002=}",
         {{37, 46, 38, 49, true}}},
        {"islands within islands",
         nestedSquares(0),
         {{15, 49, 16, 50, true}, {30, 49, 31, 50, false}, {50, 49, 51, 50, true}}},
        {"only the outermost island",
         nestedSquares(1),
         {{15, 49, 16, 50, true}, {30, 49, 31, 50, false}, {50, 49, 51, 50, false}}},
        {"no islands",
         nestedSquares(2),
         {{15, 49, 16, 50, true}, {30, 49, 31, 50, true}, {50, 49, 51, 50, true}}},
        {"a multiline is its elements, open at the ends",
         mline("S"),
         {{50, 59, 51, 62, true},
          {50, 39, 51, 42, true},
          {50, 45, 51, 55, false},
          {15, 43, 25, 57, false}},
         {},
         {},
         mlineStyle(0)},
        {"a multiline is capped and filled",
         mline("S"),
         {{50, 49, 51, 50, true},
          {9, 48, 12, 52, true},
          {78, 43, 82, 57, true},
          {84, 43, 95, 57, false}},
         {},
         {},
         mlineStyle(1 + 64 + 256)},
        {"a multiline shows no caps of its style",
         mline("S") + "|71=13",
         {{0, 43, 25, 57, false}, {75, 43, 95, 57, false}},
         {},
         {},
         mlineStyle(64 + 256)},
        {"text is underlined where it says so",
         "0=TEXT|8=0|10=10|20=50|30=0|40=10|1=%%u      %%u      |",
         {{12, 47, 18, 49, true}, {60, 45, 90, 50, false}}},
        {"multiline text without a direction runs along x, seen from behind",
         "0=MTEXT|8=0|100=AcDbEntity|100=AcDbMText|10=50|20=50|30=0|40=20|41=0|71=1|1=HH|210=0|"
         "220=0|230=-1",
         {{52, 50, 70, 70, true}, {0, 0, 50, 100, false}}},
        {"lines, letters and solids in the paper's colour show, and hatches in it cover these",
         "0=LINE|8=0|62=255|10=5|20=50|11=95|21=50|0=TEXT|8=0|420=16777215|10=5|20=92|30=0|40=6|"
         "1=H|0=SOLID|8=0|420=16777215|10=80|20=90|11=95|21=90|12=80|22=98|13=95|23=98|" +
             nestedSquares(2, "|62=255"),
         {{5, 49, 9, 51, true},
          {12, 40, 88, 60, false},
          {5, 92, 12, 98, true},
          {82, 92, 93, 96, true}}},
        {"a fraction has its bar",
         "0=MTEXT|8=0|100=AcDbEntity|100=AcDbMText|10=10|20=90|30=0|40=40|41=0|71=1|1=\\S /888;",
         {{20, 69, 21, 72, true}, {20, 75, 60, 90, false}}},
    };
    for (const Probed& c : cases)
        expectProbes(c);
}

TEST_F(EntityKinds, BrokenLinesBeginAndEndAlike) {
    const auto linetype = [](const char* dashes) {
        return std::string("0=TABLE|2=LTYPE|70=1|0=LTYPE|5=L1|100=AcDbSymbolTableRecord|"
                           "100=AcDbLinetypeTableRecord|2=BROKEN|70=0|3=|72=65|") +
               dashes + "|0=ENDTAB";
    };
    const std::string along = "0=LINE|8=0|6=BROKEN|10=10|20=50|30=0|11=90|21=50|31=0";
    const Probed cases[] = {
        {"what is left over is shared by both ends",
         "0=LINE|8=0|6=BROKEN|10=10|20=50|30=0|11=85|21=50|31=0",
         {{10, 49, 27, 52, true},
          {28, 49, 37, 52, false},
          {56, 49, 57, 52, true},
          {58, 49, 67, 52, false},
          {84, 49, 85, 52, true}},
         {},
         linetype("73=2|40=30|49=20|74=0|49=-10|74=0")},
        {"a line shorter than the pattern is solid",
         along,
         {{60, 49, 90, 52, true}},
         {},
         linetype("73=2|40=99|49=50|74=0|49=-49|74=0")},
        {"a pattern too fine to be seen is solid",
         along,
         {{10, 49, 11, 52, true}, {55, 49, 56, 52, true}},
         "9=$LTSCALE|40=1e-9|",
         linetype("73=2|40=30|49=20|74=0|49=-10|74=0")},
        {"dots",
         along,
         {{10, 49, 12, 52, true}, {14, 49, 26, 52, false}, {29, 49, 32, 52, true}},
         {},
         linetype("73=2|40=20|49=0|74=0|49=-20|74=0")},
        {"the pattern writes a text",
         along,
         {{30, 46, 37, 54, true}, {20, 55, 80, 60, false}},
         {},
         linetype("73=3|40=80|49=30|74=0|49=-5|74=2|75=0|340=0|46=8|50=0|44=0|45=-4|9=H|"
                  "49=-45|74=0")},
    };
    for (const Probed& c : cases)
        expectProbes(c);
}

TEST_F(EntityKinds, SurviveNumbersOutOfReason) {
    const Probed cases[] = {
        {"far away", "0=LINE|8=0|10=-1e15|20=50|30=0|11=1e15|21=50|31=0", {{50, 49, 51, 52, true}}},
        {"further", "0=LINE|8=0|10=-1e300|20=50|30=0|11=1e300|21=50|31=0", {}},
        {"a circle as large as the earth",
         "0=CIRCLE|8=0|10=50|20=-1e7|30=0|40=10000050",
         {{45, 48, 55, 53, true}, {0, 53, 100, 100, false}}},
        {"a hatch around everything",
         "0=HATCH|8=0|100=AcDbEntity|100=AcDbHatch|10=0|20=0|30=0|210=0|220=0|230=1|2=SOLID|70=1|"
         "71=0|91=1|92=2|72=0|73=1|93=4|10=-1e12|20=-1e12|10=1e12|20=-1e12|10=1e12|20=1e12|"
         "10=-1e12|20=1e12|97=0|75=0|76=1|98=0",
         {{50, 50, 51, 51, true}}},
        {"a pattern finer than light",
         "0=HATCH|8=0|100=AcDbEntity|100=AcDbHatch|10=0|20=0|30=0|210=0|220=0|230=1|2=FINE|70=0|"
         "71=0|91=1|92=2|72=0|73=1|93=4|10=0|20=0|10=90|20=0|10=90|20=90|10=0|20=90|97=0|75=0|"
         "76=1|52=0|41=1|77=0|78=1|53=45|43=0|44=0|45=1e-9|46=1e-9|79=2|49=1e-12|49=-1e-12|98=0",
         {{50, 50, 51, 51, true}}},
        {"dashes without length in a pattern",
         "0=HATCH|8=0|100=AcDbEntity|100=AcDbHatch|10=0|20=0|30=0|210=0|220=0|230=1|2=FINE|70=0|"
         "71=0|91=1|92=2|72=0|73=1|93=4|10=0|20=0|10=90|20=0|10=90|20=90|10=0|20=90|97=0|75=0|"
         "76=1|52=0|41=1|77=0|78=1|53=0|43=0|44=0|45=0|46=9|79=2|49=-0.0|49=-0.0|98=0|"
         "0=LINE|8=0|10=95|20=0|30=0|11=95|21=90|31=0",
         {{94, 40, 97, 41, true}}},
    };
    for (const Probed& c : cases)
        expectProbes(c);
}

} // namespace
