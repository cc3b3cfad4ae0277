// A pick carried down into the coordinates of a block, and the square that it reaches.
#pragma once

#include <dbents.h>
#include <gepnt3d.h>
#include <gescl3d.h>

class AcDbPolyline;

namespace layerpick {

struct PickSpot {
    AcGePoint3d at;
    double aperture = 0.0; // Side of the square around it, drawing units.
};

/// How a block reference places its block.
struct Placing {
    AcGePoint3d position;
    AcGeScale3d scale;
    double rotation = 0.0; // radians
    AcGePoint3d origin;    // The block's base point.
};

/// The spot in the coordinates of the block. The scales are undone before the rotation, and the
/// scale along x alone shrinks the aperture: callers know picks inside unevenly scaled references
/// to answer so, and the inverse of the reference's transform would answer otherwise.
[[nodiscard]] PickSpot carriedInto(const PickSpot& spot, const Placing& placing);

/// Gives an empty polyline the corners of the square around a spot, turned against the reference's
/// rotation.
void makeSquare(const PickSpot& spot, double rotation, AcDbPolyline& square);

/// True for a point in a box's rectangle, or no farther from it than 1e-6; heights do not count.
[[nodiscard]] bool holds(const AcDbExtents& box, const AcGePoint3d& point);

} // namespace layerpick
