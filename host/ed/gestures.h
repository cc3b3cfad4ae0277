// What a user does with mouse and keys, as input that waits for its turn.
#pragma once

#include <variant>

#include "ge/point2d.h"
#include "ge/point3d.h"

namespace headless {

/// The keys that are held meanwhile.
struct KeyModifiers {
    bool shift = false;
    bool control = false;
    bool alt = false;
};

/// A click with the left button on a point of the world, or on a pixel of the drawing area.
struct MouseClick {
    std::variant<AcGePoint3d, AcGePoint2d> at;
    KeyModifiers held;
};

/// A key pressed and let go, by its virtual key code.
struct KeyPress {
    int key = 0; // VK_..., a capital letter or a digit
    KeyModifiers held;
};

} // namespace headless
