// Where curves cross the boundary of a clip.
#pragma once

#include <vector>

#include <dbcurve.h>

#include "blocks/clip_boundary.h"

namespace blocks {

/// Parameters between a curve's ends, in order, at which it may pass from hidden to shown or back:
/// where it meets the lines through the boundary's edges or one of its planes. Exact for lines and
/// arcs of circles and ellipses, to rounding for splines.
///
/// @param curve  open for reading.
[[nodiscard]] std::vector<double> crossings(const AcDbCurve& curve, const ClipBoundary& clip);

} // namespace blocks
