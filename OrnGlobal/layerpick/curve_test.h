// Whether an entity meets the pick square.
#pragma once

#include <dbpl.h>

namespace layerpick {

/// True when the entity crosses the square's edges; what lies wholly inside does not. A curve that
/// starts at another height than 0 is looked at in the plane of the square; of a multiline its
/// lines count.
/// @param entity  open for reading, or in no drawing.
[[nodiscard]] bool crosses(const AcDbEntity& entity, const AcDbPolyline& square);

} // namespace layerpick
