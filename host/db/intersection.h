// Where the drawn geometry of two entities meets.
#pragma once

#include <optional>
#include <vector>

#include "db/entity.h"
#include "db/piece_cuts.h"

namespace headless {

/// A piece of what an entity is drawn with, and the box around all that it reaches.
struct DrawnPiece {
    CurvePiece piece;
    PieceReach reach;
    Extents3d box; // With infinite corners when it has no bounds.
};

enum class Extended : bool { no, yes };

/// What an entity is drawn with: the pieces of its curve or of its block's contents, the sides of
/// the boxes of its texts, and pieces without length for points.
/// @param extended  yes: an open curve goes on beyond its ends.
/// @return          nothing for what there is no room for: blocks within blocks can hold more
/// pieces
///                  than there are atoms.
[[nodiscard]] std::optional<std::vector<DrawnPiece>> drawnPieces(const AcDbEntity& entity,
                                                                 Extended extended = Extended::no);

/// A common point and which of the first pieces it lies on.
struct Meeting {
    AcGePoint3d point;
    std::size_t piece = 0;
};

/// Where two lists of pieces meet, in the order of the first; each place once, within the global
/// tolerance for points and the rounding of the coordinates.
[[nodiscard]] std::vector<Meeting> meetings(const std::vector<DrawnPiece>& first,
                                            const std::vector<DrawnPiece>& second);

} // namespace headless
