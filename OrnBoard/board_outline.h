// What the take-off needs to know of one polyline or circle, of whichever kind.
#pragma once

#include <optional>

#include <dbmain.h>

namespace board {

/// The lengths of the first two sides of an outline's outer tangent outline, mm.
struct Sides {
    double a;
    double b;
};

struct Outline {
    enum class Kind { kPolyline, kCircle };

    Kind kind = Kind::kPolyline;
    bool closed = false;
    int vertices = 0; // 0 for a circle
    std::optional<double>
        areaSquareMetre;          // an open one closed by a straight line; none off a plane
    std::optional<double> length; // mm; none for meshes
};

/// The outline that an entity is; none for other entities than polylines of all kinds, meshes
/// drawn as polylines, and circles. The entity must be open for reading.
std::optional<Outline> outlineOf(const AcDbEntity& entity);

/// The sides of a closed outline, of a circle those of the square around it. None for open ones,
/// curves off a plane, meshes, and outlines without four corners.
std::optional<Sides> sidesOf(const AcDbEntity& entity);

} // namespace board
