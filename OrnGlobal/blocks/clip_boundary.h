// What a clipped reference shows of its block. Values only: no drawing is asked.
//
// The boundary lies in a plane of its own, the clip space, and is seen along that plane's normal.
#pragma once

#include <limits>
#include <vector>

#include <gemat3d.h>
#include <gepnt2d.h>
#include <gepnt3d.h>

namespace blocks {

struct ClipBoundary {
    /// A polygon in clip space: three corners or more, running either way, the first not repeated.
    /// Fewer bound nothing.
    std::vector<AcGePoint3d> corners = {};
    bool inverted = false; ///< Hides what the polygon holds instead of all else.
    /// Greatest and least height above the plane of what is shown.
    double front = std::numeric_limits<double>::infinity();
    double back = -std::numeric_limits<double>::infinity();
    /// From the coordinates of the points that are asked about, mostly the block's own.
    AcGeMatrix3d toClipSpace = {};

    [[nodiscard]] bool boundsPlane() const { return corners.size() >= 3; }
};

/// The polygon between two opposite corners.
[[nodiscard]] std::vector<AcGePoint3d> rectangle(const AcGePoint2d& corner,
                                                 const AcGePoint2d& opposite);

/// True for a point that is not hidden. What is on the boundary is shown, inverted or not.
[[nodiscard]] bool shows(const ClipBoundary& clip, const AcGePoint3d& point);

} // namespace blocks
