#include "ge/matrix3d.h"

#include <algorithm>
#include <cmath>

#include "ge/matrix_ops.h"
#include "ge/ocs.h"

namespace {

struct Axes {
    AcGeVector3d x;
    AcGeVector3d y;
    AcGeVector3d z;
};

Axes axesOf(const AcGeMatrix3d& m) {
    AcGePoint3d origin;
    Axes axes;
    m.getCoordSystem(origin, axes.x, axes.y, axes.z);
    return axes;
}

} // namespace

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& mat) const {
    AcGeMatrix3d product;
    headless::multiply(entry, mat.entry, product.entry);
    return product;
}

AcGeMatrix3d& AcGeMatrix3d::invert() {
    const double d = det();
    if (d == 0.0 || !std::isfinite(1.0 / d)) return *this;
    const Axes axes = axesOf(*this);
    AcGeMatrix3d
        rows; // The inverse's rows are the cross products of the axes over the determinant.
    rows.setCoordSystem(AcGePoint3d::kOrigin, axes.y.crossProduct(axes.z) / d,
                        axes.z.crossProduct(axes.x) / d, axes.x.crossProduct(axes.y) / d);
    const AcGeMatrix3d linear = rows.transpose();
    const AcGeVector3d shift = linear * translation();
    *this = linear;
    return setTranslation(-shift);
}

Adesk::Boolean AcGeMatrix3d::inverse(AcGeMatrix3d& inv, const AcGeTol& tol) const {
    if (isSingular(tol)) return false;
    inv = inverse();
    return true;
}

Adesk::Boolean AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    // Relative to the axes' lengths: a small uniform scale is no singularity.
    const double size = axes.x.length() * axes.y.length() * axes.z.length();
    return !(std::abs(det()) > tol.equalVector() * size);
}

AcGeMatrix3d& AcGeMatrix3d::transposeIt() {
    headless::transposeInPlace(entry);
    return *this;
}

Adesk::Boolean AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& mat, const AcGeTol& tol) const {
    return headless::nearlyEqual(entry, mat.entry, tol.equalVector());
}

Adesk::Boolean AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    return axes.x.isPerpendicularTo(axes.y, tol) && axes.y.isPerpendicularTo(axes.z, tol) &&
           axes.z.isPerpendicularTo(axes.x, tol);
}

Adesk::Boolean AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    const auto [shortest, longest] =
        std::minmax({axes.x.length(), axes.y.length(), axes.z.length()});
    return isScaledOrtho(tol) && longest - shortest <= tol.equalVector() * longest;
}

double AcGeMatrix3d::det() const {
    const Axes axes = axesOf(*this);
    return axes.x.dotProduct(axes.y.crossProduct(axes.z));
}

double AcGeMatrix3d::scale() const {
    const Axes axes = axesOf(*this);
    return std::max({axes.x.length(), axes.y.length(), axes.z.length()});
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& vec) {
    for (unsigned int row = 0; row < 3; ++row)
        entry[row][3] = vec[row];
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    setToIdentity();
    for (unsigned int row = 0; row < 3; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = zAxis[row];
        entry[row][3] = origin[row];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    xAxis.set(entry[0][0], entry[1][0], entry[2][0]);
    yAxis.set(entry[0][1], entry[1][1], entry[2][1]);
    zAxis.set(entry[0][2], entry[1][2], entry[2][2]);
    origin.set(entry[0][3], entry[1][3], entry[2][3]);
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vec) {
    return setToIdentity().setTranslation(vec);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis,
                                          const AcGePoint3d& center) {
    const double size = axis.length();
    if (size == 0.0) return setToIdentity();
    const AcGeVector3d unit = axis / size;
    const double cosine = std::cos(angle);
    const AcGeVector3d sines = unit * std::sin(angle);
    const AcGeVector3d versed = unit * (1.0 - cosine);
    const auto turned = [&](const AcGeVector3d& v) {
        return v * cosine + sines.crossProduct(v) + versed * unit.dotProduct(v);
    };
    setCoordSystem(AcGePoint3d::kOrigin, turned(AcGeVector3d::kXAxis), turned(AcGeVector3d::kYAxis),
                   turned(AcGeVector3d::kZAxis));
    return setTranslation(center - *this * center);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double scaleAll, const AcGePoint3d& center) {
    return setCoordSystem(center - center.asVector() * scaleAll, AcGeVector3d::kXAxis * scaleAll,
                          AcGeVector3d::kYAxis * scaleAll, AcGeVector3d::kZAxis * scaleAll);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& pnt) { return setToScaling(-1, pnt); }

AcGeMatrix3d&
AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                 const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                 const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                 const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis) {
    AcGeMatrix3d from;
    from.setCoordSystem(fromOrigin, fromXAxis, fromYAxis, fromZAxis);
    return setCoordSystem(toOrigin, toXAxis, toYAxis, toZAxis).postMultBy(from.invert());
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
    return *this = headless::ocsMatrix(normal).transpose();
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
    return *this = headless::ocsMatrix(normal);
}

AcGeMatrix2d AcGeMatrix3d::convertToLocal(AcGeVector3d& normal, double& elev) const {
    const AcGeMatrix3d before = headless::ocsMatrix(normal);
    const AcGeMatrix3d moved = *this * before;
    const AcGeVector3d newNormal =
        (moved * AcGeVector3d::kXAxis).crossProduct(moved * AcGeVector3d::kYAxis).normal();
    const AcGeMatrix3d local = worldToPlane(newNormal) * moved;
    const AcGePoint3d origin = local * AcGePoint3d(0.0, 0.0, elev);
    normal = newNormal;
    elev = origin.z;

    AcGeMatrix2d flat;
    return flat.setCoordSystem(AcGePoint2d(origin.x, origin.y),
                               AcGeVector2d(local.entry[0][0], local.entry[1][0]),
                               AcGeVector2d(local.entry[0][1], local.entry[1][1]));
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& vec) {
    return AcGeMatrix3d().setToTranslation(vec);
}
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                    const AcGePoint3d& center) {
    return AcGeMatrix3d().setToRotation(angle, axis, center);
}
AcGeMatrix3d AcGeMatrix3d::scaling(double scaleAll, const AcGePoint3d& center) {
    return AcGeMatrix3d().setToScaling(scaleAll, center);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& pln) {
    return AcGeMatrix3d().setToMirroring(pln);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& pnt) {
    return AcGeMatrix3d().setToMirroring(pnt);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGeLine3d& line) {
    return AcGeMatrix3d().setToMirroring(line);
}
AcGeMatrix3d AcGeMatrix3d::projection(const AcGePlane& projectionPlane,
                                      const AcGeVector3d& projectDir) {
    return AcGeMatrix3d().setToProjection(projectionPlane, projectDir);
}
AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& fromOrigin,
                                         const AcGeVector3d& fromXAxis,
                                         const AcGeVector3d& fromYAxis,
                                         const AcGeVector3d& fromZAxis, const AcGePoint3d& toOrigin,
                                         const AcGeVector3d& toXAxis, const AcGeVector3d& toYAxis,
                                         const AcGeVector3d& toZAxis) {
    return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromXAxis, fromYAxis, fromZAxis, toOrigin,
                                             toXAxis, toYAxis, toZAxis);
}
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    return AcGeMatrix3d().setToWorldToPlane(normal);
}
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGePlane& plane) {
    return AcGeMatrix3d().setToWorldToPlane(plane);
}
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    return AcGeMatrix3d().setToPlaneToWorld(normal);
}
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGePlane& plane) {
    return AcGeMatrix3d().setToPlaneToWorld(plane);
}
