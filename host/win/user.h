// Win32's message boxes and keys, which the session answers.
#pragma once

#include "win/types.h"

/// Notes the box in the session and answers with the next scripted answer, else with the box's
/// default button.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT flags);

/// The high bit is set while a key is down; either side's Shift, Control and Alt count as VK_SHIFT,
/// VK_CONTROL and VK_MENU.
SHORT GetKeyState(int virtualKey);
SHORT GetAsyncKeyState(int virtualKey);

inline int MessageBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT flags) {
    return MessageBoxW(owner, text, caption, flags);
}
