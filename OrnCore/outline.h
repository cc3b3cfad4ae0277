// Outlines as values, and what can be measured of them.
//
// An outline is its vertices in order. A vertex's bulge, tan(sweep / 4), shapes the segment that
// leaves it: 0 is straight, positive turns counter-clockwise. In a closed outline the last vertex
// joins the first; in an open one the last vertex's bulge means nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <afxwin.h>

#include "OrnCore/bulge_segment.h"

class AcDbPolyline;

namespace orncore {

struct OutlineVertex {
    AcGePoint2d point;
    double bulge = 0.0;
};

using Outline = std::span<const OutlineVertex>;

/// The segment that leaves vertex i; the last vertex's joins it to the first.
[[nodiscard]] inline Segment segmentAt(Outline outline, std::size_t i) noexcept {
    const std::size_t next = i + 1 < outline.size() ? i + 1 : 0;
    return {outline[i].point, outline[next].point, outline[i].bulge};
}

/// A polyline's vertices in its own plane, taken as closed: the last vertex of an open polyline has
/// no bulge, so that a straight line closes it. The polyline must be open for reading.
[[nodiscard]] AFX_EXT_API std::vector<OutlineVertex> readOutline(const AcDbPolyline& polyline);

/// Area enclosed by the closed outline, in square drawing units, positive when it runs
/// counter-clockwise. Self-crossing parts count by their direction.
[[nodiscard]] AFX_EXT_API double signedArea(Outline outline) noexcept;

/// Length along the segments, with the closing one when `closed`.
[[nodiscard]] AFX_EXT_API double lengthOf(Outline outline, bool closed) noexcept;

/// How many times the direction of travel turns round counter-clockwise on one way along the
/// segments and back to the first one's direction: 1 for a simple counter-clockwise outline, -1 for
/// a clockwise one. Segments shorter than 1e-10 have no direction and are passed over. Empty when a
/// coordinate or bulge is not a finite number.
[[nodiscard]] AFX_EXT_API std::optional<int> turningNumber(Outline outline, bool closed) noexcept;

} // namespace orncore
