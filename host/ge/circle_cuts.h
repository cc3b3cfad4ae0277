// Common points of circles and endless lines in the plane.
#pragma once

#include "ge/matrix2d.h"

namespace headless {

struct Circle2d {
    AcGePoint2d center;
    double radius = 0.0;
};

/// At most two points. A touch within the tolerance counts as one.
struct CutPoints {
    int count = 0;
    AcGePoint2d points[2];

    void add(const AcGePoint2d& point) { points[count++] = point; }
};

/// @param along  the line's direction, a unit vector.
[[nodiscard]] CutPoints cutCircle(const Circle2d& circle, const AcGePoint2d& point,
                                  const AcGeVector2d& along, double tolerance) noexcept;

/// None for circles of one centre.
[[nodiscard]] CutPoints cutCircle(const Circle2d& circle, const Circle2d& other,
                                  double tolerance) noexcept;

/// Common points of two endless lines given by points and directions: none when parallel.
[[nodiscard]] CutPoints cutLine(const AcGePoint2d& point, const AcGeVector2d& along,
                                const AcGePoint2d& otherPoint,
                                const AcGeVector2d& otherAlong) noexcept;

} // namespace headless
