// The outline that remains when the rounded corners of a board are sharpened. Inside the library
// only.
#pragma once

#include <vector>

#include "OrnCore/outline.h"

namespace geometry {

/// Corners of the outer tangents of a closed outline, in its direction; see
/// LineTools::GetPlineOutTangant for the rules.
[[nodiscard]] std::vector<AcGePoint2d> outerCorners(orncore::Outline outline);

} // namespace geometry
