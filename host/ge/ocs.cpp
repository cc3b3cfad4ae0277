#include "ge/ocs.h"

#include <cmath>

namespace headless {

namespace {

/// Scaled by its largest coordinate first, so that no length overflows or vanishes.
AcGeVector3d unitNormal(const AcGeVector3d& normal) noexcept {
    const double size = std::abs(normal[normal.largestElement()]);
    if (!(size > 0.0) || !std::isfinite(size)) return AcGeVector3d::kZAxis;
    const AcGeVector3d scaled = normal / size;
    return scaled / scaled.length();
}

} // namespace

AcGeVector3d ocsXAxis(const AcGeVector3d& normal) noexcept {
    // Every program that reads drawings draws the line between the two cases here.
    constexpr double kNearZ = 1.0 / 64.0;
    const AcGeVector3d z = unitNormal(normal);
    const bool nearWorldZ = std::abs(z.x) < kNearZ && std::abs(z.y) < kNearZ;
    const AcGeVector3d x =
        (nearWorldZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(z);
    return x / x.length();
}

AcGeMatrix3d ocsMatrix(const AcGeVector3d& normal) noexcept {
    const AcGeVector3d z = unitNormal(normal);
    const AcGeVector3d x = ocsXAxis(z);
    AcGeMatrix3d matrix;
    return matrix.setCoordSystem(AcGePoint3d::kOrigin, x, z.crossProduct(x), z);
}

} // namespace headless
