#include "geometry/ac_utils.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <acutads.h>
#include <geassign.h>
#include <geline2d.h>

namespace {

/// The line through `point` at right angles to its direction towards `corner`.
AcGeLine2d perpendicularAt(const AcGePoint2d& point, const AcGePoint2d& corner) {
    return {point, (corner - point).perpVector()};
}

} // namespace

bool AcUtils::getArcBulge(double& bulge, AcGePoint2d& center, const AcGePoint2d& p1,
                          const AcGePoint2d& p2, const AcGePoint2d& corner) {
    AcGeTol tolerance;
    tolerance.setEqualPoint(1e-6);
    tolerance.setEqualVector(1e-6);
    if (p1.isEqualTo(p2, tolerance)) return false;

    AcGePoint2d meeting;
    if (!perpendicularAt(p1, corner).intersectWith(perpendicularAt(p2, corner), meeting))
        return false;
    center = meeting;
    bulge = std::tan(((p2 - center).angle() - (p1 - center).angle()) * 0.25);
    return true;
}

void AcUtils::sortPoints(AcGePoint3dArray& pts, double angle, const double& tol) {
    struct Keyed {
        double key;
        AcGePoint3d point;
    };
    if (pts.isEmpty()) return;
    const AcGePoint3d origin = pts[0];
    std::vector<Keyed> keyed;
    for (int i = 0; i < pts.length(); ++i) {
        const double direction = acutAngle(asDblArray(origin), asDblArray(pts[i]));
        const double distance = origin.distanceTo(pts[i]);
        keyed.push_back({std::abs(direction - angle) < tol ? distance : -distance, pts[i]});
    }
    std::ranges::stable_sort(keyed, {}, &Keyed::key);
    for (int i = 0; i < pts.length(); ++i)
        pts[i] = keyed[static_cast<std::size_t>(i)].point;
}
