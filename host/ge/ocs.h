// Object coordinate systems: the axes that flat entities are stored in, chosen by their normal.
#pragma once

#include "ge/matrix3d.h"

namespace headless {

/// The x axis that goes with a normal of any length; a unit vector. A zero normal counts as +z.
[[nodiscard]] AcGeVector3d ocsXAxis(const AcGeVector3d& normal) noexcept;

/// Rotation from the object coordinate system of a normal of any length to world coordinates.
/// A zero normal counts as +z.
[[nodiscard]] AcGeMatrix3d ocsMatrix(const AcGeVector3d& normal) noexcept;

} // namespace headless
