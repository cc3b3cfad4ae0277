// The loops of a hatch as closed polylines.
#pragma once

#include <memory>
#include <vector>

#include <dbhatch.h>
#include <dbpl.h>

namespace layerpick {

/// One polyline in the hatch's plane for each loop; lines and circular arcs exactly, of ellipse
/// arcs and splines chords that stray from them by at most 1e-4 of the loop's size. Loops without
/// two points are left out.
/// @param hatch  open for reading.
[[nodiscard]] std::vector<std::unique_ptr<AcDbPolyline>> loopsOf(const AcDbHatch& hatch);

} // namespace layerpick
