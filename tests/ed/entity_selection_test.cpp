// Entities and selection sets that the user picks, by clicks and by typing.
#include <gmock/gmock.h>

#include "drawn_fixture.h"
#include "ed/entity_selection.h"
#include "ed/prompts.h"

namespace {

using headless::EscapeKey;
using headless::MouseClick;
using testing::ElementsAre;
using testing::IsEmpty;

class UserSelection : public DrawnTest {
protected:
    void click(double x, double y, bool shift = false) {
        ed_.input.add(MouseClick{AcGePoint3d(x, y, 0), {.shift = shift}});
    }
    int entSel() { return acedEntSel(L"\nPick: ", name_, point_); }
    AcDbObjectId picked() const {
        AcDbObjectId id;
        EXPECT_EQ(acdbGetObjectId(id, name_), Acad::eOk);
        return id;
    }
    AcGePoint3d point() const { return {point_[0], point_[1], point_[2]}; }

    Ids choose(const ACHAR* mode = nullptr, const void* prompts = nullptr) {
        ads_name set;
        result_ = acedSSGet(mode, prompts, nullptr, nullptr, set);
        return take(result_, set);
    }

    ads_name name_{};
    ads_point point_{};
    int result_ = 0;
};

TEST_F(UserSelection, OneEntityByClickPointOrWord) {
    const AcDbObjectId below = line({0, 50, 0}, {100, 50, 0});
    const AcDbObjectId above = line({50, 0, 0}, {50, 100, 0});
    setUcs({10, 0, 0}, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    click(50, 50);
    EXPECT_EQ(entSel(), RTNORM);
    EXPECT_EQ(picked(), above) << "the newest";
    EXPECT_EQ(point(), AcGePoint3d(40, 50, 0));
    // The pick box reaches three pixels: 0.99 units here.
    click(20, 50.9);
    EXPECT_EQ(entSel(), RTNORM);
    EXPECT_EQ(picked(), below);
    type(L"*80,50");
    EXPECT_EQ(entSel(), RTNORM);
    EXPECT_EQ(picked(), below);
    setLayer(above, layer(L"off", true));
    type(L"l");
    EXPECT_EQ(entSel(), RTNORM);
    EXPECT_EQ(picked(), below);
    EXPECT_EQ(acedEntSel(nullptr, nullptr, point_), RTERROR);
}

TEST_F(UserSelection, OneEntityTellsWhyThereIsNone) {
    const AcDbObjectId only = line({0, 50, 0}, {100, 50, 0});
    click(20, 51.1);
    EXPECT_EQ(entSel(), RTERROR);
    EXPECT_EQ(integerOf(L"ERRNO"), 7);
    EXPECT_EQ(point(), AcGePoint3d(20, 51.1, 0)) << "where the click was";
    type(L"");
    EXPECT_EQ(entSel(), RTERROR);
    EXPECT_EQ(integerOf(L"ERRNO"), 52);
    ed_.input.add(EscapeKey{});
    EXPECT_EQ(entSel(), RTCAN);
    EXPECT_EQ(entSel(), RTCAN) << "no more input";

    acedInitGet(0, L"Undo Last");
    type(L"u");
    EXPECT_EQ(entSel(), RTKWORD);
    acedInitGet(0, L"Undo LASt");
    type(L"nonsense");
    type(L"last");
    EXPECT_EQ(entSel(), RTKWORD) << "a keyword goes before the option";
    ACHAR keyword[133];
    EXPECT_EQ(acedGetInput(keyword), RTNORM);
    EXPECT_STREQ(keyword, L"LASt");
    type(L"u");
    type(L"L");
    EXPECT_EQ(entSel(), RTNORM) << "keywords hold for one prompt";
    EXPECT_EQ(picked(), only);
}

TEST_F(UserSelection, SetsGrowAndShrinkByClicks) {
    const AcDbObjectId left = line({10, 10, 0}, {10, 20, 0});
    const AcDbObjectId middle = line({50, 10, 0}, {50, 90, 0});
    const AcDbObjectId right = line({90, 10, 0}, {90, 20, 0});
    const auto box = [&](double x1, double x2, bool shift = false) {
        click(x1, 5);
        click(x2, 30, shift);
    };
    const struct {
        const char* name;
        std::function<void()> input;
        Ids chosen;
    } cases[] = {
        {"clicks, one of them twice",
         [&] { click(90, 15), click(10, 15), click(90, 15); },
         {right, left}},
        {"a window from the left", [&] { box(5, 95); }, {right, left}},
        {"a crossing box from the right", [&] { box(95, 5); }, {right, middle, left}},
        {"a click with Shift removes", [&] { box(95, 5), click(50, 15, true); }, {right, left}},
        {"so does a box", [&] { box(95, 5), box(30, 5, true); }, {right, middle}},
        {"a corner typed relative to the first",
         [&] { click(5, 5), type(L"@90,30"); },
         {right, left}},
        {"options", [&] { type(L"w 5,5 20,30 L"); }, {left, right}},
        {"a fence", [&] { type(L"f 5,15 60,15  "); }, {middle, left}},
        {"a polygon", [&] { type(L"cp 40,0 95,0 95,15 40,15  "); }, {right, middle}},
        {"everything but", [&] { type(L"all R 50,15 a u"); }, {right, middle, left}},
        {"nonsense is asked again", [&] { type(L"nonsense all"); }, {right, middle, left}},
        {"nothing", [] {}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ed_.input.clear();
        c.input();
        type(L"");
        EXPECT_EQ(choose(), c.chosen);
        EXPECT_EQ(result_, c.chosen.empty() ? RTERROR : RTNORM);
    }
    ed_.output.clear();
    box(95, 5), click(10, 15), click(10, 15, true), type(L"");
    EXPECT_EQ(choose().size(), 2U);
    EXPECT_TRUE(printed(L"3 found\n"));
    EXPECT_TRUE(printed(L"1 found (1 duplicate), 3 total"));
    EXPECT_TRUE(printed(L"1 found, 1 removed, 2 total"));
    type(L"p ");
    EXPECT_THAT(choose(), ElementsAre(right, middle)) << "the previous set";
}

TEST_F(UserSelection, SetsEndWithoutAny) {
    const AcDbObjectId only = line({10, 10, 0}, {10, 20, 0});
    click(10, 15);
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_EQ(result_, RTCAN) << "input ran out";
    click(10, 15);
    ed_.input.add(EscapeKey{});
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_EQ(result_, RTCAN);
    click(50, 50); // The first corner of a box.
    ed_.input.add(EscapeKey{});
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_EQ(ed_.selections.openCount(), 0U);

    const ACHAR* const prompts[] = {L"\nBoards: ", L"\nNot: "};
    click(10, 15);
    EXPECT_THAT(choose(L"_:S:$", prompts), ElementsAre(only)) << "one choice ends it";
    EXPECT_TRUE(printed(L"\nBoards: "));
    setLayer(only, layer(L"locked", false));
    AcDbObjectPointer<AcDbLayerTableRecord>(
        AcDbObjectPointer<AcDbEntity>(only, AcDb::kForRead)->layerId(), AcDb::kForWrite)
        ->setIsLocked(true);
    click(10, 15);
    EXPECT_THAT(choose(L":S"), ElementsAre(only));
    type(L"w 0,0 20,30 ");
    EXPECT_THAT(choose(L":L"), IsEmpty());
    EXPECT_EQ(result_, RTERROR);
    EXPECT_THAT(choose(L":?"), IsEmpty());
    EXPECT_THAT(choose(L":$"), IsEmpty()) << "no prompts given";
}

} // namespace
