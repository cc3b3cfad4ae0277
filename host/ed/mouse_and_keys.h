// Acts out what a user does with mouse and keys: posts the window messages of it to the filters
// that programs registered, while GetKeyState tells which keys are held, and finds what it means.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "ed/gestures.h"
#include "win/types.h"

namespace headless {

/// What a key means to a prompt.
enum class KeyMeaning { nothing, enter, escape };

class MouseAndKeys {
public:
    /// Posts WM_MOUSEMOVE, WM_LBUTTONDOWN and WM_LBUTTONUP.
    ///
    /// @return  the point in user coordinates. Nothing when a filter kept the button from the host,
    ///          for a pixel outside of all viewports, for a point that the view cannot show,
    ///          without a drawing, and for a click into another viewport, which becomes the current
    ///          one.
    std::optional<AcGePoint3d> click(const MouseClick& click);

    /// Posts WM_KEYDOWN and WM_KEYUP, or WM_SYSKEYDOWN and WM_SYSKEYUP while Alt is held alone.
    /// Letters and digits are typed unless a filter keeps them or Control or Alt is held.
    KeyMeaning press(const KeyPress& press);

    /// What was typed key by key, for the answer that Enter ends.
    std::wstring takeTyped() { return std::exchange(typed_, {}); }

private:
    bool post(UINT message, WPARAM wParam, LPARAM lParam);
    void type(const KeyPress& press);

    POINT cursor_{0, 0};
    DWORD posted_ = 0; // Counts messages, for want of a clock.
    std::wstring typed_;
};

} // namespace headless
