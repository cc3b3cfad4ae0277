// The component styles that a drawing carries itself. Inside the library only.
#pragma once

#include "component/component_info.h"

namespace component {

/// The styles of the working database; empty when it carries none.
[[nodiscard]] ComponentMap drawingStyles();

} // namespace component
