#include "db/extents.h"

#include <algorithm>

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
    if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidInput;
    min_ = min;
    max_ = max;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& point) {
    min_ = {std::min(min_.x, point.x), std::min(min_.y, point.y), std::min(min_.z, point.z)};
    max_ = {std::max(max_.x, point.x), std::max(max_.y, point.y), std::max(max_.z, point.z)};
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (headless::isEmpty(other)) return;
    addPoint(other.min_);
    addPoint(other.max_);
}

void AcDbExtents::expandBy(const AcGeVector3d& displacement) {
    if (headless::isEmpty(*this)) return;
    addExt({min_ + displacement, max_ + displacement});
}

void AcDbExtents::transformBy(const AcGeMatrix3d& transform) {
    if (headless::isEmpty(*this)) return;
    AcDbExtents box;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const AcGePoint3d point((corner & 1U) != 0 ? max_.x : min_.x,
                                (corner & 2U) != 0 ? max_.y : min_.y,
                                (corner & 4U) != 0 ? max_.z : min_.z);
        box.addPoint(transform * point);
    }
    *this = box;
}

Acad::ErrorStatus AcDbExtents2d::set(const AcGePoint2d& min, const AcGePoint2d& max) {
    if (min.x > max.x || min.y > max.y) return Acad::eInvalidInput;
    min_ = min;
    max_ = max;
    return Acad::eOk;
}

void AcDbExtents2d::addPoint(const AcGePoint2d& point) {
    min_ = {std::min(min_.x, point.x), std::min(min_.y, point.y)};
    max_ = {std::max(max_.x, point.x), std::max(max_.y, point.y)};
}

void AcDbExtents2d::addExt(const AcDbExtents2d& other) {
    if (other.min_.x > other.max_.x) return;
    addPoint(other.min_);
    addPoint(other.max_);
}
