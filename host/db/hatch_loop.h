// The loops of hatches, inside the host.
#pragma once

#include <vector>

#include "db/curve_piece.h"
#include "db/hatch.h"

/// One boundary, in the object coordinate system at height 0: a polyline, or edges one after the
/// other.
struct AcDbHatch::Loop {
    Adesk::Int32 type = 0;
    bool closed = true;
    std::vector<AcGePoint2d> vertices;
    std::vector<double> bulges;
    std::vector<headless::CurvePiece> edges;

    bool isPolyline() const { return (type & kPolyline) != 0; }
    /// The edges, made from the vertices for a polyline.
    std::vector<headless::CurvePiece> pieces() const;
};
