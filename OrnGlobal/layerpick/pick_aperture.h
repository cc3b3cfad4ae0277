// How far around a point a pick reaches.
#pragma once

namespace layerpick {

/// Side of the pick square in drawing units: PICKBOX pixels either way and the one under the
/// cursor. 3 pixels where PICKBOX cannot be read; infinite on a screen without height.
[[nodiscard]] double pickAperture();

} // namespace layerpick
