#include "win/user.h"

#include <array>

#include "win/constants.h"
#include "win/state.h"

namespace {

/// Buttons of the six kinds of boxes, from left to right.
constexpr std::array<int, 3> kButtons[] = {
    {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE}, {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO}, {IDRETRY, IDCANCEL},
};

int defaultButton(UINT flags) {
    const UINT kind = flags & MB_TYPEMASK;
    const UINT index = (flags & MB_DEFMASK) / MB_DEFBUTTON2;
    if (kind >= std::size(kButtons) || index >= 3) return IDOK;
    const int button = kButtons[kind][index];
    return button != 0 ? button : kButtons[kind][0];
}

bool isDown(int virtualKey) {
    const auto& keys = headless::WinState::current().pressedKeys;
    return virtualKey >= 0 && virtualKey < static_cast<int>(keys.size()) &&
           keys[static_cast<std::size_t>(virtualKey)];
}

} // namespace

int MessageBoxW(HWND /*owner*/, LPCWSTR text, LPCWSTR caption, UINT flags) {
    auto& state = headless::WinState::current();
    int answer = defaultButton(flags);
    if (!state.messageBoxAnswers.empty()) {
        answer = state.messageBoxAnswers.front();
        state.messageBoxAnswers.pop_front();
    }
    // A box without a caption says "Error".
    state.messageBoxes.push_back(
        {text == nullptr ? L"" : text, caption == nullptr ? L"Error" : caption, flags, answer});
    return answer;
}

SHORT GetKeyState(int virtualKey) {
    const bool down = isDown(virtualKey) ||
                      (virtualKey == VK_SHIFT && (isDown(VK_LSHIFT) || isDown(VK_RSHIFT))) ||
                      (virtualKey == VK_CONTROL && (isDown(VK_LCONTROL) || isDown(VK_RCONTROL))) ||
                      (virtualKey == VK_MENU && (isDown(VK_LMENU) || isDown(VK_RMENU)));
    return down ? static_cast<SHORT>(-0x8000) : SHORT{0};
}

SHORT GetAsyncKeyState(int virtualKey) { return GetKeyState(virtualKey); }
