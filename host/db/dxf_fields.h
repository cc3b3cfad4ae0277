// Reading the groups that many entities have in common: points, normals, flat coordinates.
#pragma once

#include "db/dxf_filer.h"
#include "ge/ocs.h"

namespace headless {

/// Sets the coordinate that a group holds: codes 10 to 18, 20 to 28, 30 to 38 are x, y, z of
/// points, 210, 220, 230 those of a normal. The second digit from the right tells which.
template <class P>
void setCoordinate(P& point, const DxfTag& tag) {
    const auto axis = static_cast<unsigned>(tag.code % 100 / 10 - 1);
    point[axis] = tag.real();
}

/// The unit vector of a normal as read; +z for one without length.
[[nodiscard]] inline AcGeVector3d readNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    return unit.isUnitLength() ? unit : AcGeVector3d::kZAxis;
}

/// True for the normal of most entities, whose object coordinates are the world's.
[[nodiscard]] inline bool isWorldNormal(const AcGeVector3d& normal) {
    return normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0;
}

/// A point of the normal's object coordinate system in world coordinates.
[[nodiscard]] inline AcGePoint3d ocsToWorld(const AcGePoint3d& point, const AcGeVector3d& normal) {
    return isWorldNormal(normal) ? point : ocsMatrix(normal) * point;
}
[[nodiscard]] inline AcGePoint3d worldToOcs(const AcGePoint3d& point, const AcGeVector3d& normal) {
    return isWorldNormal(normal) ? point : ocsMatrix(normal).transpose() * point;
}

} // namespace headless
