#include <gtest/gtest.h>

#include <memory>

#include <windows.h>

#include "win/state.h"

using headless::WinState;

namespace {

TEST(MessageBox, IsNotedAndAnswered) {
    const struct {
        const char* name;
        UINT flags;
        int answer;
    } cases[] = {
        {"OK", MB_OK, IDOK},
        {"first button", MB_YESNO | MB_ICONQUESTION, IDYES},
        {"default button", MB_YESNO | MB_DEFBUTTON2, IDNO},
        {"third button", MB_YESNOCANCEL | MB_DEFBUTTON3, IDCANCEL},
        {"no such button", MB_OKCANCEL | MB_DEFBUTTON3, IDOK},
        {"no such box", 0xF, IDOK},
        {"retry", MB_RETRYCANCEL, IDRETRY},
    };
    WinState session;
    for (const auto& c : cases)
        EXPECT_EQ(MessageBox(nullptr, L"text", L"caption", c.flags), c.answer) << c.name;
    session.messageBoxAnswers = {IDNO, IDCANCEL};
    EXPECT_EQ(MessageBoxW(nullptr, L"保存?", nullptr, MB_YESNOCANCEL), IDNO);
    EXPECT_EQ(MessageBoxW(nullptr, nullptr, L"", MB_OK), IDCANCEL);
    EXPECT_EQ(MessageBoxW(nullptr, L"", L"", MB_OK), IDOK) << "the script is over";

    ASSERT_EQ(session.messageBoxes.size(), std::size(cases) + 3);
    const headless::MessageBoxRecord& asked = session.messageBoxes[std::size(cases)];
    EXPECT_EQ(asked.text, L"保存?");
    EXPECT_EQ(asked.caption, L"Error");
    EXPECT_EQ(asked.flags, MB_YESNOCANCEL);
    EXPECT_EQ(asked.answer, IDNO);
}

TEST(GetKeyState, AnswersFromTheSession) {
    WinState session;
    session.pressedKeys.set(VK_LSHIFT);
    session.pressedKeys.set('A');
    EXPECT_LT(GetKeyState(VK_SHIFT), 0) << "either side counts";
    EXPECT_LT(GetAsyncKeyState(VK_LSHIFT), 0);
    EXPECT_EQ(GetKeyState(VK_RSHIFT), 0);
    EXPECT_EQ(GetKeyState(VK_CONTROL), 0);
    EXPECT_LT(GetKeyState('A'), 0);
    EXPECT_EQ(GetKeyState(-1), 0);
    EXPECT_EQ(GetKeyState(256), 0);
}

TEST(WinState, SessionsMayEndInAnyOrder) {
    const WinState* processWide = &WinState::current();
    auto first = std::make_unique<WinState>();
    auto second = std::make_unique<WinState>();
    auto third = std::make_unique<WinState>();
    EXPECT_EQ(&WinState::current(), third.get());
    second.reset();
    EXPECT_EQ(&WinState::current(), third.get());
    third.reset();
    EXPECT_EQ(&WinState::current(), first.get());
    first.reset();
    EXPECT_EQ(&WinState::current(), processWide);
}

} // namespace
