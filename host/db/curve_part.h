// Parts of curves as curves of their own.
#pragma once

#include <memory>

class AcDbCurve;

namespace headless {

/// The part of a curve from one parameter to a greater one, with the curve's properties: an arc of
/// a circle, a line or a ray of an endless line, else a curve of the same kind. On a closed curve
/// but a spline the second may lie beyond the end, up to one turn.
///
/// @param curve  open for reading.
/// @return       null for a kind that has no parts.
[[nodiscard]] std::unique_ptr<AcDbCurve> partOf(const AcDbCurve& curve, double from, double to);

} // namespace headless
