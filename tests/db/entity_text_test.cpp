// Texts: where they lie for each alignment, and what multiline contents say without their codes.
#include <algorithm>
#include <numbers>

#include "db/attribute.h"
#include "db/mtext.h"
#include "db/resbuf.h"
#include "db/state.h"
#include "db/text.h"
#include "db/text_metrics.h"
#include "entity_support.h"

namespace {

using coretest::CoreTest;
using enttest::Box;
using std::numbers::pi;

class TextTest : public CoreTest {};

TEST_F(TextTest, AlignmentsHangTheTextOnTheirPoint) {
    // "ab" is two letters wide; with the height 10 its box is `w` by 10.
    const double w = headless::fontOfStyle({}).width(L"ab") * 10.0;
    const struct {
        const char* name;
        AcDb::TextHorzMode horizontal;
        AcDb::TextVertMode vertical;
        Box box;
    } cases[] = {
        {"left", AcDb::kTextLeft, AcDb::kTextBase, {{0, 0, 0}, {w, 10, 0}}},
        {"center", AcDb::kTextCenter, AcDb::kTextBase, {{-w / 2, 0, 0}, {w / 2, 10, 0}}},
        {"right top", AcDb::kTextRight, AcDb::kTextTop, {{-w, -10, 0}, {0, 0, 0}}},
        {"middle", AcDb::kTextMid, AcDb::kTextBase, {{-w / 2, -5, 0}, {w / 2, 5, 0}}},
        {"left middle", AcDb::kTextLeft, AcDb::kTextVertMid, {{0, -5, 0}, {w, 5, 0}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbText text({0, 0, 0}, L"%%uab", {}, 10.0);
        text.setHorizontalMode(c.horizontal);
        text.setVerticalMode(c.vertical);
        enttest::expectNear(enttest::boxOf(text), c.box);
        ASSERT_EQ(text.setRotation(pi / 2.0), Acad::eOk);
        const Box turned{{-c.box.max.y, c.box.min.x, 0}, {-c.box.min.y, c.box.max.x, 0}};
        enttest::expectNear(enttest::boxOf(text), turned);
    }
}

TEST_F(TextTest, FittedTextReachesFromPointToPoint) {
    AcDbText text({1, 1, 0}, L"abcd", {}, 10.0);
    EXPECT_EQ(text.setAlignmentPoint({7, 1, 0}), Acad::eNotApplicable);
    text.setHorizontalMode(AcDb::kTextFit);
    ASSERT_EQ(text.setAlignmentPoint({7, 1, 0}), Acad::eOk);
    enttest::expectNear(enttest::boxOf(text), {{1, 1, 0}, {7, 11, 0}});
    text.setHorizontalMode(AcDb::kTextAlign);
    const double height = 6.0 / headless::fontOfStyle({}).width(L"abcd");
    enttest::expectNear(enttest::boxOf(text), {{1, 1, 0}, {7, 1 + height, 0}});
    ASSERT_EQ(text.adjustAlignment(), Acad::eOk);
    EXPECT_NEAR(text.height(), height, 1e-12);
    EXPECT_NEAR(text.widthFactor(), 1.0, 1e-12);
}

TEST_F(TextTest, TransformsTakeTheBoxAlong) {
    AcGeMatrix3d uneven;
    uneven.entry[0][0] = 3.0;
    AcGeMatrix3d mirrored;
    mirrored.entry[1][1] = -1.0;
    for (const AcGeMatrix3d& transform :
         {uneven, mirrored, AcGeMatrix3d::rotation(0.5, AcGeVector3d(1, 1, 1))}) {
        AcDbText text({2, 3, 0}, L"abc", {}, 4.0, 0.3);
        text.setOblique(0.2);
        text.setWidthFactor(0.7);
        const Box wanted = enttest::boxUnder(text, transform);
        ASSERT_EQ(text.transformBy(transform), Acad::eOk);
        enttest::expectNear(enttest::boxOf(text), wanted);
    }
}

TEST_F(TextTest, ReadsTextsAndAttributesByTheirOwnGroups) {
    const auto text = enttest::read<AcDbText>(
        db, "100=AcDbText|10=1,2|40=5|1=abc|72=1|11=9,8|210=0,0,-1|100=AcDbText|73=3");
    EXPECT_STREQ(text->textStringConst(), L"abc");
    EXPECT_EQ(text->horizontalMode(), AcDb::kTextCenter);
    EXPECT_EQ(text->verticalMode(), AcDb::kTextTop);
    enttest::expectNear(text->alignmentPoint(), {-9, 8, 0}, 1e-12);

    // In attributes 73 is the field length; what follows belongs to another object.
    const auto attribute = enttest::read<AcDbAttribute>(
        db, "100=AcDbText|10=1,2|40=5|1=value|100=AcDbAttribute|2=TAG|70=1|73=12|74=2|"
            "100=AcDbXrecord|70=0|10=77|2=other");
    EXPECT_STREQ(attribute->tagConst(), L"TAG");
    EXPECT_TRUE(attribute->isInvisible());
    EXPECT_EQ(attribute->fieldLength(), 12);
    EXPECT_EQ(attribute->verticalMode(), AcDb::kTextVertMid);
    EXPECT_EQ(attribute->position().x, 1.0);
}

TEST_F(TextTest, AttributesTakeTheirPlaceFromTheBlock) {
    AcDbAttributeDefinition definition({1, 2, 0}, L"preset", L"TAG", L"Which?");
    definition.setHeight(3.0);
    definition.setInvisible(true);
    AcDbAttribute attribute;
    const AcGeMatrix3d transform =
        AcGeMatrix3d::translation({10, 0, 0}) * AcGeMatrix3d::scaling(2.0);
    ASSERT_EQ(attribute.setAttributeFromBlock(&definition, transform), Acad::eOk);
    EXPECT_STREQ(attribute.tagConst(), L"TAG");
    enttest::expectNear(attribute.position(), {12, 4, 0}, 1e-12);
    EXPECT_NEAR(attribute.height(), 6.0, 1e-12);
    EXPECT_TRUE(attribute.isInvisible());
    EXPECT_EQ(attribute.setAttributeFromBlock(nullptr, transform), Acad::eNullObjectPointer);
}

TEST_F(TextTest, MultilineContentsReadPlain) {
    const struct {
        const wchar_t *contents, *plain;
    } cases[] = {
        {L"one\\Ptwo", L"one\ntwo"},
        {L"{\\fArial|b1|i0|c0|p0;bold} plain", L"bold plain"},
        {L"\\A1;\\C1;\\H2.5x;\\W0.8;\\Q15;\\T2;\\pxql;text", L"text"},
        {L"\\Lunder\\l \\Oover\\o \\Kstruck\\k", L"under over struck"},
        {L"\\A1;20\\S0.01^ 0.02;", L"200.01^0.02"},
        {L"\\S1/2; \\S3#4; \\Sa\\#b;", L"1/2 3/4 a#b"},
        {L"a\\~b \\\\ \\{x\\}", L"a b \\ {x}"},
        {L"%%c80 27%%d %%p1 %%65", L"\u00D880 27\u00B0 \u00B11 %%65"},
        {L"tab^Iline^Jcaret^ end", L"tab\tline\ncaret^end"},
        {L"\\C1 without an end", L"1 without an end"},
        {L"\\", L"\\"},
        {L"\\Zno code", L"\\Zno code"},
        {L"\\PROJECT", L"\nROJECT"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.contents));
        EXPECT_EQ(headless::plainMText(c.contents), c.plain);
    }
}

/// The letters of each line, from the base lines that the runs share.
std::vector<std::wstring> linesOf(const headless::MTextLayout& layout) {
    std::vector<std::wstring> lines;
    double baseLine = 1.0;
    for (const headless::PlacedRun& placed : layout.runs) {
        if (placed.origin.y != baseLine) lines.emplace_back();
        baseLine = placed.origin.y;
        lines.back() += placed.run.text;
    }
    return lines;
}

headless::MTextLayout layOut(std::wstring_view contents, const headless::MTextFrame& frame) {
    headless::MTextFormat format;
    format.height = 1.0;
    return headless::layOut(headless::parseMText(contents, format), frame);
}

TEST_F(TextTest, LinesBreakAtBlanksAndBehindSquares) {
    const double letter = headless::fontOfStyle({}).width(L'a');
    const double square = headless::fontOfStyle({}).width(L'\u677F');
    const struct {
        const wchar_t* contents;
        double width; // 0 for no breaking
        std::vector<std::wstring> lines;
    } cases[] = {
        {L"aa bb cc", 5.1 * letter, {L"aa bb", L"cc"}},
        {L"aa bb cc", 0, {L"aa bb cc"}},
        {L"a{\\C1;a b}b cc", 5.1 * letter, {L"aa bb", L"cc"}},
        {L"aaaaaaa bb", 3.1 * letter, {L"aaaaaaa", L"bb"}},
        {L"a bbbbbbb", 3.1 * letter, {L"a", L"bbbbbbb"}},
        {L"aa\\P\\Pbb", 9.0 * letter, {L"aa", L"bb"}},
        {L"", 4.0, {}},
        {L"\u677F\u677F\u677F", 2.1 * square, {L"\u677F\u677F", L"\u677F"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.contents));
        EXPECT_EQ(linesOf(layOut(c.contents, {c.width, 1.0, 0.0, 1.0})), c.lines);
    }
}

TEST_F(TextTest, InlineCodesChangeTheRoomOfTheirLetters) {
    const double letter = headless::fontOfStyle({}).width(L'a');
    const struct {
        const char* name;
        const wchar_t* contents;
        double letters; // width of the box
        double height;
    } cases[] = {
        {"plain", L"aa", 2.0, 1.0},
        {"absolute height", L"\\H3;aa", 6.0, 3.0},
        {"relative height", L"\\H2x;\\H2x;aa", 8.0, 4.0},
        {"braces end a height", L"{\\H3;a}a", 4.0, 3.0},
        {"width factor", L"\\W0.5;aa", 1.0, 1.0},
        {"tracking", L"\\T2;aa", 4.0, 1.0},
        {"fraction", L"\\Saa/a;", 1.4, 1.0},
        {"slanted fraction", L"\\Saa#a;", 2.1, 1.0},
        {"second line is higher", L"a\\P\\H3;a", 3.0, 1.0 + 3.0 * 5.0 / 3.0},
        {"heights of nothing are no heights", L"\\H0;\\W0;a", 1.0, 1.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const headless::MTextLayout layout = layOut(c.contents, {0.0, 1.0, 0.0, 1.0});
        EXPECT_NEAR(layout.width, c.letters * letter, 1e-12);
        EXPECT_NEAR(layout.height, c.height, 1e-12);
    }
}

TEST_F(TextTest, LinesAlignWithinTheBox) {
    const auto layout = layOut(L"aaaa\\Paa", {0.0, 1.0, 0.5, 1.0});
    ASSERT_EQ(layout.runs.size(), 2U);
    EXPECT_EQ(layout.runs[0].origin.x, 0.0);
    EXPECT_NEAR(layout.runs[1].origin.x, layout.width / 4.0, 1e-12);
}

TEST_F(TextTest, WidthsComeFromTheStylesFont) {
    // Advances in the font's file: A 0.6079, digits 0.5508, squares 1 em.
    const auto fontOf = [](const wchar_t* file, const wchar_t* typeface) -> const auto& {
        return headless::DbState::current().fonts().find({file, typeface, false, false});
    };
    const headless::TextFont& outlines = fontOf(L"", L"wenquanyi micro hei");
    ASSERT_FALSE(outlines.path().empty()) << "the font of packages.txt is not installed";
    EXPECT_NEAR(outlines.width(L'\u677F') / outlines.width(L'5'), 1.0 / 0.5508, 1e-3);
    EXPECT_NEAR(outlines.width(L'A') / outlines.width(L'5'), 0.6079 / 0.5508, 1e-3);
    EXPECT_NEAR(outlines.width(L"A5"), outlines.width(L'A') + outlines.width(L'5'), 1e-12);
    EXPECT_EQ(&fontOf(L"", L"wenquanyi micro hei"), &outlines);

    EXPECT_EQ(fontOf(L"C:\\Fonts\\WQY-MicroHei.TTC", L"").width(L'\u677F'),
              outlines.width(L'\u677F'));
    const headless::TextFont& strokes = fontOf(L"gbcbig.shx", L"");
    EXPECT_EQ(strokes.width(L'\u677F'), 1.0);
    EXPECT_EQ(strokes.width(L'A'), outlines.width(L'A'));
    EXPECT_EQ(fontOf(L"", L"No Such Family").width(L'A'), outlines.width(L'A'));
}

TEST_F(TextTest, MultilineTextHangsOnItsAttachment) {
    const auto text = enttest::read<AcDbMText>(db, {{100, "AcDbMText"},
                                                    {10, "100"},
                                                    {20, "50"},
                                                    {40, "2"},
                                                    {41, "0"},
                                                    {71, "9"},
                                                    {3, "ab"},
                                                    {1, "\\Pcd"},
                                                    {50, "90"}});
    ACHAR* plain = text->text();
    EXPECT_STREQ(plain, L"ab\ncd");
    acutDelString(plain);
    // Two lines of the height 2 are 2 + 10 / 3 high; hung at the lower right, turned by 90 degrees.
    const double width =
        std::max(headless::fontOfStyle({}).width(L"ab"), headless::fontOfStyle({}).width(L"cd")) *
        2.0;
    const double height = 2.0 + 10.0 / 3.0;
    enttest::expectNear(enttest::boxOf(*text), {{100 - height, 50 - width, 0}, {100, 50, 0}});
    EXPECT_NEAR(text->rotation(), pi / 2.0, 1e-12);
}

} // namespace
