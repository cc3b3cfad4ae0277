// Clicks and keys: what programs' message filters see of them, and what they answer.
#include <gmock/gmock.h>

#include "ed/entity_selection.h"
#include "ed/message_filters.h"
#include "ed/prompts.h"
#include "ed/screen.h"
#include "view_fixture.h"
#include "win/constants.h"
#include "win/state.h"
#include "win/user.h"

namespace {

using headless::KeyModifiers;
using headless::KeyPress;
using headless::MouseClick;
using testing::ElementsAre;
using testing::IsEmpty;

/// A message as a filter saw it, and the keys that were down at that moment.
struct Seen {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    bool shift, button;

    bool operator==(const Seen&) const = default;
};
std::vector<Seen> heard;

BOOL watch(MSG* message) {
    heard.push_back({message->message, message->wParam, message->lParam, GetKeyState(VK_SHIFT) < 0,
                     GetKeyState(VK_LBUTTON) < 0});
    return FALSE;
}
BOOL keepButton(MSG* message) { return message->message == WM_LBUTTONDOWN ? TRUE : FALSE; }
BOOL keepKeys(MSG* message) { return message->message == WM_KEYDOWN ? TRUE : FALSE; }
BOOL removeItself(MSG* /*message*/) { return acedRemoveFilterWinMsg(removeItself) & FALSE; }

class MouseAndKeysTest : public ViewTest {
protected:
    MouseAndKeysTest() {
        headless::View view; // A drawing unit is a pixel, and the origin lower left.
        view.center.set(800, 450);
        view.height = 900;
        show(view);
        acedRegisterFilterWinMsg(watch);
        heard.clear();
    }

    std::optional<AcGePoint3d> askPoint() {
        ads_point point;
        if (acedGetPoint(nullptr, L"\nPoint: ", point) != RTNORM) return std::nullopt;
        return AcGePoint3d(point[0], point[1], point[2]);
    }
    void press(int key, const KeyModifiers& held = {}) { ed_.input.add(KeyPress{key, held}); }

    headless::WinState win_;
};

TEST_F(MouseAndKeysTest, AClickRunsThroughTheFiltersThenAnswers) {
    ed_.input.add(MouseClick{AcGePoint3d(100.25, 200, 0), {.shift = true}});
    expectNear(askPoint(), {100.25, 200, 0});
    const LPARAM place = MAKELPARAM(100, 700); // Pixels count downwards.
    EXPECT_THAT(heard, ElementsAre(Seen{WM_MOUSEMOVE, MK_SHIFT, place, true, false},
                                   Seen{WM_LBUTTONDOWN, MK_SHIFT | MK_LBUTTON, place, true, true},
                                   Seen{WM_LBUTTONUP, MK_SHIFT, place, true, false}));
    EXPECT_EQ(GetKeyState(VK_SHIFT), 0);

    // What a filter keeps for itself answers nothing, nor does it reach the filters after it.
    acedRemoveFilterWinMsg(watch);
    acedRegisterFilterWinMsg(keepButton);
    acedRegisterFilterWinMsg(watch);
    heard.clear();
    ed_.input.add(MouseClick{AcGePoint2d(10, 890), {}});
    EXPECT_EQ(askPoint(), std::nullopt);
    EXPECT_EQ(heard.size(), 2U);
    EXPECT_EQ(acedRemoveFilterWinMsg(keepButton), TRUE);
    EXPECT_EQ(acedRemoveFilterWinMsg(keepButton), FALSE);
    EXPECT_EQ(acedRegisterFilterWinMsg(nullptr), FALSE);

    acedRegisterFilterWinMsg(removeItself);
    ed_.input.add(MouseClick{AcGePoint2d(10, 890), {}});
    expectNear(askPoint(), {10, 10, 0});
    EXPECT_EQ(ed_.messageFilters.count(), 1U);
}

TEST_F(MouseAndKeysTest, ClicksGiveUserCoordinates) {
    setUcs({1000, 0, 0}, AcGeVector3d::kYAxis, -AcGeVector3d::kXAxis);
    ed_.input.add(MouseClick{AcGePoint3d(900, 30, 0), {}});
    expectNear(askPoint(), {30, 100, 0});
    ed_.input.add(MouseClick{AcGePoint2d(900, 870), {}});
    expectNear(askPoint(), {30, 100, 0});
    // Outside of the drawing area there is nothing to click; a point there may still be meant.
    ed_.input.add(MouseClick{AcGePoint2d(2000, 10), {}});
    EXPECT_EQ(askPoint(), std::nullopt);
    ed_.input.add(MouseClick{AcGePoint3d(-1e9, 0, 0), {}});
    expectNear(askPoint(), {0, 1e9 + 1000, 0});
    EXPECT_EQ(static_cast<SHORT>(LOWORD(static_cast<DWORD_PTR>(heard.back().lParam))), -32768);
}

TEST_F(MouseAndKeysTest, KeysTypeAnswersUnlessTheyAreKept) {
    for (const int key : {int{'1'}, VK_F2, int{'2'}, VK_BACK, int{'5'}, VK_RETURN})
        press(key);
    int number = 0;
    EXPECT_EQ(acedGetInt(nullptr, &number), RTNORM);
    EXPECT_EQ(number, 15);

    ACHAR text[133];
    press('A', {.shift = true});
    press('B');
    ed_.input.add(MouseClick{AcGePoint3d(1, 1, 0), {}}); // A text cannot be clicked.
    press('C', {.alt = true});
    press('C', {.control = true});
    press(VK_SPACE);
    heard.clear();
    EXPECT_EQ(acedGetString(0, nullptr, text), RTNORM);
    EXPECT_STREQ(text, L"Ab");
    constexpr LPARAM kAlt = 0x20000001;
    EXPECT_THAT(heard, testing::Contains(Seen{WM_SYSKEYDOWN, 'C', kAlt, false, false}));
    EXPECT_THAT(heard, testing::Contains(Seen{WM_KEYDOWN, 'C', 1, false, false}));

    press('X');
    press(VK_ESCAPE);
    EXPECT_EQ(acedGetInt(nullptr, &number), RTCAN);
    acedRegisterFilterWinMsg(keepKeys);
    press(VK_ESCAPE);
    press('7');
    type(L"8");
    EXPECT_EQ(acedGetInt(nullptr, &number), RTNORM);
    EXPECT_EQ(number, 8);
}

TEST(NoDrawing, HasNoViewAndNothingToClick) {
    headless::DbState db;
    headless::EdState ed;
    EXPECT_EQ(acedGetAcadDwgView(), nullptr);
    ed.input.add(MouseClick{AcGePoint3d(), {}});
    ads_point point;
    EXPECT_EQ(acedGetPoint(nullptr, nullptr, point), RTCAN);
    ads_name entity;
    EXPECT_EQ(acedEntSel(nullptr, entity, point), RTCAN);
    ed.documents.open(std::make_unique<AcDbDatabase>(true, true), L"new", false);
    EXPECT_NE(acedGetAcadDwgView(), nullptr);
}

} // namespace
