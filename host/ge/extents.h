// Axis-aligned boxes that grow around what is added to them.
#pragma once

#include <algorithm>
#include <limits>

#include "ge/matrix2d.h"
#include "ge/matrix3d.h"

namespace headless {

/// Empty, and not valid, until something is added.
template <class P>
struct ExtentsOf {
    P min = allCoordinates(std::numeric_limits<double>::infinity());
    P max = allCoordinates(-std::numeric_limits<double>::infinity());

    [[nodiscard]] bool isValid() const noexcept { return min.x <= max.x; }
    void add(const P& point) noexcept {
        for (unsigned int i = 0; i < sizeof(P) / sizeof(double); ++i)
            addRange(i, point[i], point[i]);
    }
    void add(const ExtentsOf& other) noexcept {
        if (!other.isValid()) return;
        add(other.min);
        add(other.max);
    }
    void addRange(unsigned int axis, double low, double high) noexcept {
        min[axis] = std::min(min[axis], low);
        max[axis] = std::max(max[axis], high);
    }

private:
    static P allCoordinates(double value) noexcept {
        P point;
        for (unsigned int i = 0; i < sizeof(P) / sizeof(double); ++i)
            point[i] = value;
        return point;
    }
};

using Extents2d = ExtentsOf<AcGePoint2d>;
using Extents3d = ExtentsOf<AcGePoint3d>;

} // namespace headless
