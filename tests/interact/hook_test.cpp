// What the hook sees of clicks and keys while a command prompts.
#include <gmock/gmock.h>

#include <aced.h>
#include <adslib.h>

#include "ed/viewports.h"
#include "interact/hook_use_tool.h"
#include "support/session_fixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class Hook : public test_support::SessionTest {
protected:
    Hook() {
        headless::View view = headless::currentView(*database());
        view.center.set(800, 450); // A drawing unit is a pixel, and the origin lower left.
        view.height = 900.0;
        headless::setCurrentView(*database(), view);
        CHookUseTool::m_bMouseLeftDown = 0;
    }
    void ask() {
        ads_point point;
        EXPECT_EQ(acedGetPoint(nullptr, L"\nPoint: ", point), RTNORM);
    }
    /// What the command line shows after the key.
    std::wstring pressed(const headless::KeyModifiers& held) {
        session().clearOutput();
        session().pressKey('C', held);
        session().pressKey('D'); // reaches the host, as C does
        session().pressKey(VK_RETURN);
        session().runInput();
        return session().output();
    }
};

TEST_F(Hook, SeesClicksAndShift) {
    const CHookUseTool hook;
    session().clickAt({120, 80, 0}, {.shift = true});
    ask();
    EXPECT_EQ(CHookUseTool::m_bMouseLeftDown, 1);
    EXPECT_EQ(CHookUseTool::m_bShiftDown, 1);
    EXPECT_LT(CHookUseTool::m_LeftDownPt.distanceTo({120, 80, 0}), 1e-6);
    session().pressKey(VK_F2);
    session().typePoint({5, 5, 0});
    ask();
    EXPECT_EQ(CHookUseTool::m_bShiftDown, 0) << "as of the last message";
    EXPECT_EQ(CHookUseTool::m_bMouseLeftDown, 1) << "until somebody clears it";
    session().clickAt({-20, 80, 0}); // left of the view, where pixels are negative
    ask();
    EXPECT_LT(CHookUseTool::m_LeftDownPt.distanceTo({120, 80, 0}), 1e-6) << "outside of the view";
}

TEST_F(Hook, SeesNothingAfterItsEnd) {
    { const CHookUseTool hook; }
    session().clickAt({120, 80, 0});
    ask();
    EXPECT_EQ(CHookUseTool::m_bMouseLeftDown, 0);
}

TEST_F(Hook, RunsTheCommandOfItsShortcut) {
    const wchar_t* const ran = L"MYUCS";
    const CHookUseTool hook;
    EXPECT_THAT(pressed({.alt = true}), Not(HasSubstr(ran))) << "none set";
    CHookUseTool::InitShortcutKey(CHookUseTool::kUcsShortcut, ran);
    EXPECT_THAT(pressed({.alt = true}), HasSubstr(ran));
    EXPECT_THAT(pressed({}), Not(HasSubstr(ran))) << "without Alt";
    EXPECT_THAT(pressed({}), HasSubstr(L"CD")) << "the key goes on to the host";
    CHookUseTool::InitShortcutKey(CHookUseTool::kNoShortcut, ran);
    EXPECT_THAT(pressed({.alt = true}), Not(HasSubstr(ran))) << "of no kind";
    CHookUseTool::InitShortcutKey(CHookUseTool::kUcsShortcut, ran);
    CHookUseTool::InitShortcutKey(CHookUseTool::kUcsShortcut, L"");
    EXPECT_THAT(pressed({.alt = true}), Not(HasSubstr(ran))) << "switched off";
    CHookUseTool::InitShortcutKey(CHookUseTool::kUcsShortcut, ran);
    { const CHookUseTool another; }
    EXPECT_THAT(pressed({.alt = true}), Not(HasSubstr(ran))) << "every beginning and end resets it";
}

} // namespace
