#include "ge/vector3d.h"

#include "ge/ocs.h"

AcGeVector3d AcGeVector3d::perpVector() const { return headless::ocsXAxis(*this); }

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& normalToPlane) {
    const double size = normalToPlane.lengthSqrd();
    if (size == 0.0) return *this;
    return *this -= normalToPlane * (2.0 * dotProduct(normalToPlane) / size);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    return project(planeNormal, planeNormal);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal, const AcGeTol& tol,
                                        AcGeError& flag) const {
    flag = planeNormal.isZeroLength(tol) ? AcGe::k0Arg1 : AcGe::kOk;
    return orthoProject(planeNormal);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal,
                                   const AcGeVector3d& projectDirection) const {
    const double along = planeNormal.dotProduct(projectDirection);
    if (along == 0.0) return *this;
    return *this - projectDirection * (dotProduct(planeNormal) / along);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal,
                                   const AcGeVector3d& projectDirection, const AcGeTol& tol,
                                   AcGeError& flag) const {
    if (planeNormal.isZeroLength(tol)) {
        flag = AcGe::k0Arg1;
    } else if (projectDirection.isZeroLength(tol)) {
        flag = AcGe::k0Arg2;
    } else {
        flag = planeNormal.isPerpendicularTo(projectDirection, tol) ? AcGe::kPerpendicularArg1Arg2
                                                                    : AcGe::kOk;
    }
    return flag == AcGe::kOk ? project(planeNormal, projectDirection) : *this;
}

AcGeMatrix3d AcGeVector3d::rotationTo(const AcGeVector3d& vec, const AcGeVector3d& axis) const {
    if (!axis.isZeroLength()) return AcGeMatrix3d::rotation(angleTo(vec, axis), axis);
    const AcGeVector3d common = crossProduct(vec);
    // Parallel vectors have no common normal; opposite ones turn about any perpendicular.
    return AcGeMatrix3d::rotation(angleTo(vec), common.isZeroLength() ? perpVector() : common);
}

unsigned int AcGeVector3d::largestElement() const {
    const double ax = std::abs(x);
    const double ay = std::abs(y);
    const double az = std::abs(z);
    if (ax >= ay && ax >= az) return 0;
    return ay >= az ? 1 : 2;
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& vec,
                                   const AcGePoint3d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle, vec);
}
