#include "blocks/clip_boundary.h"

#include <algorithm>
#include <cmath>

#include "OrnCore/point_in_outline.h"

namespace blocks {
namespace {

/// What counts as on the boundary: the rounding of coordinates of that size.
double roundingOf(const std::vector<AcGePoint3d>& corners) {
    double size = 1.0;
    for (const AcGePoint3d& corner : corners)
        size = std::max({size, std::abs(corner.x), std::abs(corner.y)});
    return 1e-10 * size;
}

} // namespace

std::vector<AcGePoint3d> rectangle(const AcGePoint2d& corner, const AcGePoint2d& opposite) {
    return {{corner.x, corner.y, 0.0},
            {opposite.x, corner.y, 0.0},
            {opposite.x, opposite.y, 0.0},
            {corner.x, opposite.y, 0.0}};
}

bool shows(const ClipBoundary& clip, const AcGePoint3d& point) {
    const AcGePoint3d seen = clip.toClipSpace * point;
    const double rounding = roundingOf(clip.corners);
    if (seen.z > clip.front + rounding || seen.z < clip.back - rounding) return false;
    if (!clip.boundsPlane()) return true;
    const orncore::Place hidden =
        clip.inverted ? orncore::Place::kInside : orncore::Place::kOutside;
    return orncore::placeOf(AcGePoint2d(seen.x, seen.y), clip.corners, rounding) != hidden;
}

} // namespace blocks
