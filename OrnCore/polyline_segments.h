// A polyline's segments one after the other, without a list of them: long polylines are measured
// faster than such a list is allocated.
#pragma once

#include <dbpl.h>

#include "OrnCore/bulge_segment.h"

namespace orncore {

/// What becomes of the way from an open polyline's end back to its start.
enum class Closing { kAsDrawn, kByStraightLine };

/// Calls `visit` with every segment in the polyline's own plane, also those without length.
/// @param polyline  open for reading.
template <class Visit>
void forEachSegment(const AcDbPolyline& polyline, Closing closing, Visit visit) {
    const unsigned int count = polyline.numVerts();
    if (count == 0) return;
    const bool straight = polyline.isOnlyLines() != 0;
    Segment segment;
    polyline.getPointAt(0, segment.start);
    const AcGePoint2d first = segment.start;
    for (unsigned int i = 0; i + 1 < count; ++i) {
        polyline.getPointAt(i + 1, segment.end);
        if (!straight) polyline.getBulgeAt(i, segment.bulge);
        visit(static_cast<const Segment&>(segment));
        segment.start = segment.end;
    }
    const bool closed = polyline.isClosed();
    if (!closed && closing == Closing::kAsDrawn) return;
    segment.end = first;
    segment.bulge = 0.0;
    if (closed) polyline.getBulgeAt(count - 1, segment.bulge);
    visit(static_cast<const Segment&>(segment));
}

} // namespace orncore
