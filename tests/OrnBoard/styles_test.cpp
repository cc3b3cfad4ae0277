#include "OrnBoard/styles.h"

#include <gmock/gmock.h>

#include "OrnBoard/styles_report.h"
#include "component/component_func.h"
#include "support/session_fixture.h"
#include "support/temporary_folder.h"

namespace {

class Styles : public test_support::SessionTest {
protected:
    CString path(const char* name) const { return (folder_.path() / name).wstring().c_str(); }

    test_support::TemporaryFolder folder_;
};

TEST_F(Styles, AreThoseOfTheDefaultsUntilTheDrawingHasItsOwn) {
    const board::StyleList before = board::listStyles();
    EXPECT_FALSE(before.fromDrawing);
    ASSERT_FALSE(before.styles.empty());

    const board::StyleTransfer loaded = board::loadStyles(database(), CString());
    EXPECT_EQ(loaded.problem, L"");
    EXPECT_EQ(loaded.count, static_cast<int>(before.styles.size()));
    const board::StyleList after = board::listStyles();
    EXPECT_TRUE(after.fromDrawing);
    EXPECT_EQ(after.styles.size(), before.styles.size());
}

TEST_F(Styles, GoFromOneDrawingToAnother) {
    ComponentInfo style;
    style.groupName = L"梁";
    style.typeName = style.styleName = L"x";
    style.attributeValue1 = 77;
    ComponentFunc::SaveComponentDataToDwg({{L"梁-x-x", style}}, nullptr);
    EXPECT_EQ(board::saveStyles(path("one.JSON")).count, 1);

    session().newDrawing();
    ASSERT_FALSE(board::listStyles().fromDrawing);
    EXPECT_EQ(board::loadStyles(database(), path("one.JSON")).count, 1);
    EXPECT_EQ(board::listStyles().styles.at(L"梁-x-x").attributeValue1, 77);
}

TEST_F(Styles, TellWhyNothingWasDone) {
    EXPECT_NE(board::saveStyles(path("s.json")).problem, L"") << "the drawing has none";
    EXPECT_NE(board::loadStyles(database(), path("none.json")).problem, L"");
    EXPECT_NE(board::loadStyles(nullptr, CString()).problem, L"");
    ASSERT_EQ(board::loadStyles(database(), CString()).problem, L"");
    EXPECT_NE(board::saveStyles(path("s.txt")).problem, L"");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "s.txt"));
    EXPECT_NE(board::saveStyles(L"/proc/none/s.json").problem, L"");
    EXPECT_TRUE(session().messageBoxes().empty());
}

TEST_F(Styles, AreReportedAsTheyShow) {
    ComponentInfo outline;
    outline.groupName = L"板";
    outline.typeName = L"t";
    outline.styleName = L"s";
    outline.lineLayerInfo.layerName = L"PC";
    outline.simpleLineLayerInfo = {L"LINE", 3, L"DASHED", 30, 0, 1, 0};
    ComponentInfo bare = outline;
    bare.setHatch = 0;
    ComponentInfo line = outline;
    line.expressionStyle = 1;
    const CString report =
        board::stylesReport({true, {{L"1", outline}, {L"2", bare}, {L"3", line}}});
    EXPECT_EQ(report, L"Styles of the drawing:\n"
                      L"Group  Type  Style  Shown as        Layer  Color  Linetype    Hatch\n"
                      L"板     t     s      outline, hatch  PC         1  CONTINUOUS  混凝土\n"
                      L"板     t     s      outline         PC         1  CONTINUOUS  -\n"
                      L"板     t     s      line            LINE       3  DASHED      -\n");
}

} // namespace
