#include "ed/view_transform.h"

#include <cmath>

#include "ge/ocs.h"

namespace headless {
namespace {

/// How much smaller things look at that height above the target's plane; nothing beyond the eye.
std::optional<double> foreshortening(const View& view, double z) {
    if (!view.has(kPerspectiveView)) return 1.0;
    const double eye = view.direction.length();
    if (!(z < eye)) return std::nullopt;
    return eye / (eye - z);
}

} // namespace

AcGeMatrix3d displayMatrix(const View& view) {
    const AcGeVector3d towardsEye = view.direction.normal();
    const AcGeVector3d right = ocsXAxis(view.direction);
    const AcGeVector3d up = towardsEye.crossProduct(right);
    const double c = std::cos(view.twist);
    const double s = std::sin(view.twist);
    AcGeMatrix3d matrix;
    matrix.setCoordSystem(view.target, right * c - up * s, right * s + up * c, towardsEye);
    return matrix;
}

std::optional<AcGePoint3d> worldToDisplay(const View& view, const AcGePoint3d& point) {
    const AcGePoint3d seen = displayMatrix(view).inverse() * point;
    const auto scale = foreshortening(view, seen.z);
    if (!scale) return std::nullopt;
    return AcGePoint3d(seen.x * *scale, seen.y * *scale, seen.z);
}

std::optional<AcGePoint3d> displayToWorld(const View& view, const AcGePoint3d& point) {
    const auto scale = foreshortening(view, point.z);
    if (!scale) return std::nullopt;
    return displayMatrix(view) * AcGePoint3d(point.x / *scale, point.y / *scale, point.z);
}

AcGeVector3d lineOfSight(const View& view, const AcGePoint3d& onTargetPlane) {
    if (!view.has(kPerspectiveView)) return view.direction;
    return view.target + view.direction - onTargetPlane;
}

} // namespace headless
