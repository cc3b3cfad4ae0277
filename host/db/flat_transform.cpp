#include "db/flat_transform.h"

#include <cmath>
#include <numbers>

namespace headless {

FlatTransform::FlatTransform(const AcGeMatrix3d& transform, const AcGeVector3d& normal) {
    const AcGeMatrix3d ecs = ocsMatrix(normal);
    const AcGeMatrix3d toWorld = transform * ecs;
    const AcGeVector3d x = toWorld * AcGeVector3d::kXAxis;
    const AcGeVector3d y = toWorld * AcGeVector3d::kYAxis;
    normal_ = readNormal(x.crossProduct(y));
    scale_ = x.length();
    normalScale_ = (toWorld * AcGeVector3d::kZAxis).dotProduct(normal_);
    constexpr double kRelative = 1e-9;
    keepsCircles_ = std::abs(y.length() - scale_) <= kRelative * scale_ &&
                    std::abs(x.dotProduct(y)) <= kRelative * scale_ * scale_;
    local_ = ocsMatrix(normal_).transpose() * toWorld;
    turns_ = local_(0, 0) != local_(1, 1) || local_(0, 0) <= 0.0 || local_(0, 1) != 0.0 ||
             local_(1, 0) != 0.0;
}

double FlatTransform::angle(double before) const {
    constexpr double kFullTurn = 2.0 * std::numbers::pi;
    if (!turns_ && before >= 0.0 && before < kFullTurn) return before;
    const AcGeVector3d after = local_ * AcGeVector3d(std::cos(before), std::sin(before), 0.0);
    return AcGeVector2d(after.x, after.y).angle();
}

} // namespace headless
