// Common points of two pieces of curves.
#pragma once

#include <vector>

#include "db/curve_piece.h"

namespace headless {

/// Whether a piece goes on beyond its ends: a segment straight on, an arc all the way around. A
/// spline never does.
struct PieceReach {
    bool beyondStart = false;
    bool beyondEnd = false;
};

/// The places where two pieces come as near to each other as `tolerance`, a length; each once.
///
/// Exact but for ellipses in one plane and for splines, see cutBeziers. Pieces that lie on each
/// other along a stretch have no single common points there, but the end that they share when they
/// part from there.
[[nodiscard]] std::vector<AcGePoint3d> cutPieces(const CurvePiece& a, PieceReach reachA,
                                                 const CurvePiece& b, PieceReach reachB,
                                                 double tolerance);

} // namespace headless
