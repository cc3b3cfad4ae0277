// Where two segments of outlines meet, lines and arcs alike.
#pragma once

#include <vector>

#include <afxwin.h>

#include "OrnCore/bulge_segment.h"

namespace orncore {

/// Points that two segments share, ordered along the first.
///
/// Where they run together the ends of the common stretch are given. Ends count, and so do points
/// where the segments come within the tolerance of each other without crossing.
///
/// @param tolerance  in drawing units; points closer than this are one point.
[[nodiscard]] AFX_EXT_API std::vector<AcGePoint2d>
intersect(const Segment& first, const Segment& second, double tolerance);

/// Positions (see bulge_segment.h) on the whole line or circle of the first segment where it
/// crosses that of the second, ascending; empty when they do not cross or run together.
[[nodiscard]] AFX_EXT_API std::vector<double> carrierCrossings(const Segment& first,
                                                               const Segment& second);

} // namespace orncore
