// Boxes along the axes that hold things of a drawing.
#pragma once

#include "ge/matrix3d.h"
#include "ge/point2d.h"
#include "ge/point3d.h"
#include "rx/error_status.h"

/// A box in space. A fresh one is empty: its least corner lies beyond its greatest.
class AcDbExtents {
public:
    AcDbExtents() = default;
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : min_(min), max_(max) {}

    AcGePoint3d minPoint() const { return min_; }
    AcGePoint3d maxPoint() const { return max_; }
    /// eInvalidInput, changing nothing, when `min` exceeds `max` along some axis.
    Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);

    /// Grows the box to hold the point or the other box; an empty box adds nothing.
    void addPoint(const AcGePoint3d& point);
    void addExt(const AcDbExtents& other);
    /// Adds the box moved by `displacement`.
    void expandBy(const AcGeVector3d& displacement);
    /// Becomes the box around its own eight corners transformed.
    void transformBy(const AcGeMatrix3d& transform);

private:
    static constexpr double kEmpty = 1e20;
    AcGePoint3d min_{kEmpty, kEmpty, kEmpty};
    AcGePoint3d max_{-kEmpty, -kEmpty, -kEmpty};
};

/// A box in the plane, empty when fresh.
class AcDbExtents2d {
public:
    AcDbExtents2d() = default;
    AcDbExtents2d(const AcGePoint2d& min, const AcGePoint2d& max) : min_(min), max_(max) {}

    AcGePoint2d minPoint() const { return min_; }
    AcGePoint2d maxPoint() const { return max_; }
    /// eInvalidInput, changing nothing, when `min` exceeds `max` along some axis.
    Acad::ErrorStatus set(const AcGePoint2d& min, const AcGePoint2d& max);
    void addPoint(const AcGePoint2d& point);
    void addExt(const AcDbExtents2d& other);

private:
    static constexpr double kEmpty = 1e20;
    AcGePoint2d min_{kEmpty, kEmpty};
    AcGePoint2d max_{-kEmpty, -kEmpty};
};

namespace headless {

/// True when nothing was added to the box yet.
[[nodiscard]] inline bool isEmpty(const AcDbExtents& box) {
    return box.minPoint().x > box.maxPoint().x;
}

} // namespace headless
