#include "ed/mouse_and_keys.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "db/state.h"
#include "ed/screen.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "ed/viewports.h"
#include "win/casing.h"
#include "win/constants.h"
#include "win/state.h"

namespace headless {
namespace {

/// While it lives, keys count as down.
class HeldKeys {
public:
    explicit HeldKeys(const KeyModifiers& held)
        : keys_(WinState::current().pressedKeys), before_(keys_) {
        if (held.shift) hold(VK_SHIFT);
        if (held.control) hold(VK_CONTROL);
        if (held.alt) hold(VK_MENU);
    }
    ~HeldKeys() { keys_ = before_; }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

    void hold(int key) { keys_.set(static_cast<std::size_t>(key)); }
    void letGo(int key) { keys_.reset(static_cast<std::size_t>(key)); }

private:
    std::bitset<256>& keys_;
    std::bitset<256> before_;
};

/// A click found on the screen: where, in which viewport, and the point of the world it means.
struct Target {
    AcGePoint2d pixel;
    short viewport;
    AcGePoint3d world;
};

std::optional<Target> targetOf(const AcDbDatabase& db, const AcGePoint3d& world) {
    const short viewport = currentViewport(db);
    const auto pixel = worldToPixel(db, viewport, world);
    if (!pixel) return std::nullopt;
    return Target{*pixel, viewport, world};
}

std::optional<Target> targetOf(const AcDbDatabase& db, const AcGePoint2d& pixel) {
    const auto viewport = viewportAt(db, pixel);
    const auto world = viewport ? pixelToWorld(db, *viewport, pixel) : std::nullopt;
    if (!world) return std::nullopt;
    return Target{pixel, *viewport, *world};
}

/// The pixel as messages give it, in 16 bits; a point far outside the view is at their end.
LONG coordinate(double pixel) {
    constexpr double kLeast = std::numeric_limits<SHORT>::min();
    constexpr double kMost = std::numeric_limits<SHORT>::max();
    return static_cast<LONG>(std::lround(std::clamp(pixel, kLeast, kMost)));
}

WPARAM mouseKeys(const KeyModifiers& held) {
    return (held.shift ? MK_SHIFT : 0) | (held.control ? MK_CONTROL : 0);
}

} // namespace

bool MouseAndKeys::post(UINT message, WPARAM wParam, LPARAM lParam) {
    EdState& state = EdState::current();
    return state.messageFilters.pass(
        {state.drawingView.GetSafeHwnd(), message, wParam, lParam, ++posted_, cursor_});
}

std::optional<AcGePoint3d> MouseAndKeys::click(const MouseClick& click) {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return std::nullopt;
    const auto target = std::visit([&](const auto& at) { return targetOf(*db, at); }, click.at);
    if (!target) return std::nullopt;

    cursor_ = {coordinate(target->pixel.x), coordinate(target->pixel.y)};
    const LPARAM place = MAKELPARAM(static_cast<WORD>(cursor_.x), static_cast<WORD>(cursor_.y));
    const WPARAM keys = mouseKeys(click.held);
    HeldKeys held(click.held);
    post(WM_MOUSEMOVE, keys, place);
    held.hold(VK_LBUTTON);
    const bool pressed = post(WM_LBUTTONDOWN, keys | MK_LBUTTON, place);
    held.letGo(VK_LBUTTON);
    post(WM_LBUTTONUP, keys, place);
    if (!pressed) return std::nullopt;
    if (target->viewport != currentViewport(*db)) {
        setCurrentViewport(*db, target->viewport);
        return std::nullopt;
    }
    return userToWorld(*db).inverse() * target->world;
}

KeyMeaning MouseAndKeys::press(const KeyPress& press) {
    const bool system = press.held.alt && !press.held.control;
    // The repeat count, and the bits of a key let go and of Alt.
    constexpr LPARAM kOnce = 1;
    constexpr LPARAM kUp = 0xC0000000;
    const LPARAM alt = press.held.alt ? 0x20000000 : 0;
    const auto key = static_cast<WPARAM>(press.key & 0xFF);

    HeldKeys held(press.held);
    held.hold(static_cast<int>(key));
    const bool pressed = post(system ? WM_SYSKEYDOWN : WM_KEYDOWN, key, kOnce | alt);
    held.letGo(static_cast<int>(key));
    post(system ? WM_SYSKEYUP : WM_KEYUP, key, kOnce | alt | kUp);
    if (!pressed || press.held.alt || press.held.control) return KeyMeaning::nothing;
    if (press.key == VK_ESCAPE) {
        typed_.clear();
        return KeyMeaning::escape;
    }
    if (press.key == VK_RETURN || press.key == VK_SPACE) return KeyMeaning::enter;
    type(press);
    return KeyMeaning::nothing;
}

void MouseAndKeys::type(const KeyPress& press) {
    const bool letter = press.key >= 'A' && press.key <= 'Z';
    const bool digit = press.key >= '0' && press.key <= '9' && !press.held.shift;
    const auto character = static_cast<wchar_t>(press.key);
    if (press.key == VK_BACK && !typed_.empty()) typed_.pop_back();
    if (letter || digit) typed_ += letter && !press.held.shift ? lower(character) : character;
}

} // namespace headless
