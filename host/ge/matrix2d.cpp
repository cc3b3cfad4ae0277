#include "ge/matrix2d.h"

#include <algorithm>
#include <cmath>

#include "ge/matrix_ops.h"

namespace {

struct Axes {
    AcGeVector2d e0;
    AcGeVector2d e1;
};

Axes axesOf(const AcGeMatrix2d& m) {
    AcGePoint2d origin;
    Axes axes;
    m.getCoordSystem(origin, axes.e0, axes.e1);
    return axes;
}

} // namespace

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& mat) const {
    AcGeMatrix2d product;
    headless::multiply(entry, mat.entry, product.entry);
    return product;
}

AcGeMatrix2d& AcGeMatrix2d::invert() {
    const double d = det();
    if (d == 0.0 || !std::isfinite(1.0 / d)) return *this;
    const auto& m = entry;
    const AcGeVector2d e0 = AcGeVector2d(m[1][1], -m[1][0]) / d;
    const AcGeVector2d e1 = AcGeVector2d(-m[0][1], m[0][0]) / d;
    const AcGeVector2d t = translation();
    return setCoordSystem(AcGePoint2d::kOrigin - (e0 * t.x + e1 * t.y), e0, e1);
}

Adesk::Boolean AcGeMatrix2d::isSingular(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    // Relative to the axes' lengths: a small uniform scale is no singularity.
    return !(std::abs(det()) > tol.equalVector() * axes.e0.length() * axes.e1.length());
}

AcGeMatrix2d& AcGeMatrix2d::transposeIt() {
    headless::transposeInPlace(entry);
    return *this;
}

Adesk::Boolean AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& mat, const AcGeTol& tol) const {
    return headless::nearlyEqual(entry, mat.entry, tol.equalVector());
}

Adesk::Boolean AcGeMatrix2d::isScaledOrtho(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    return axes.e0.isPerpendicularTo(axes.e1, tol);
}

Adesk::Boolean AcGeMatrix2d::isUniScaledOrtho(const AcGeTol& tol) const {
    const Axes axes = axesOf(*this);
    return isScaledOrtho(tol) &&
           std::abs(axes.e0.length() - axes.e1.length()) <= tol.equalVector() * scale();
}

double AcGeMatrix2d::scale() const {
    const Axes axes = axesOf(*this);
    return std::max(axes.e0.length(), axes.e1.length());
}

double AcGeMatrix2d::det() const { return entry[0][0] * entry[1][1] - entry[0][1] * entry[1][0]; }

AcGeMatrix2d& AcGeMatrix2d::setTranslation(const AcGeVector2d& vec) {
    entry[0][2] = vec.x;
    entry[1][2] = vec.y;
    return *this;
}

AcGeMatrix2d& AcGeMatrix2d::setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0,
                                           const AcGeVector2d& e1) {
    setToIdentity();
    for (unsigned int row = 0; row < 2; ++row) {
        entry[row][0] = e0[row];
        entry[row][1] = e1[row];
        entry[row][2] = origin[row];
    }
    return *this;
}

void AcGeMatrix2d::getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const {
    origin.set(entry[0][2], entry[1][2]);
    e0.set(entry[0][0], entry[1][0]);
    e1.set(entry[0][1], entry[1][1]);
}

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& vec) {
    return setToIdentity().setTranslation(vec);
}

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& center) {
    const AcGeVector2d e0(std::cos(angle), std::sin(angle));
    const AcGeVector2d e1 = e0.perpVector();
    return setCoordSystem(center - (e0 * center.x + e1 * center.y), e0, e1);
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double scaleAll, const AcGePoint2d& center) {
    return setCoordSystem(center - center.asVector() * scaleAll, AcGeVector2d(scaleAll, 0.0),
                          AcGeVector2d(0.0, scaleAll));
}

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGePoint2d& pnt) { return setToScaling(-1, pnt); }

AcGeMatrix2d& AcGeMatrix2d::setToAlignCoordSys(const AcGePoint2d& fromOrigin,
                                               const AcGeVector2d& fromE0,
                                               const AcGeVector2d& fromE1,
                                               const AcGePoint2d& toOrigin,
                                               const AcGeVector2d& toE0, const AcGeVector2d& toE1) {
    AcGeMatrix2d from;
    from.setCoordSystem(fromOrigin, fromE0, fromE1);
    return setCoordSystem(toOrigin, toE0, toE1).postMultBy(from.invert());
}

AcGeMatrix2d AcGeMatrix2d::translation(const AcGeVector2d& vec) {
    return AcGeMatrix2d().setToTranslation(vec);
}
AcGeMatrix2d AcGeMatrix2d::rotation(double angle, const AcGePoint2d& center) {
    return AcGeMatrix2d().setToRotation(angle, center);
}
AcGeMatrix2d AcGeMatrix2d::scaling(double scaleAll, const AcGePoint2d& center) {
    return AcGeMatrix2d().setToScaling(scaleAll, center);
}
AcGeMatrix2d AcGeMatrix2d::mirroring(const AcGePoint2d& pnt) {
    return AcGeMatrix2d().setToMirroring(pnt);
}
AcGeMatrix2d AcGeMatrix2d::mirroring(const AcGeLine2d& line) {
    return AcGeMatrix2d().setToMirroring(line);
}
AcGeMatrix2d AcGeMatrix2d::alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                         const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                         const AcGeVector2d& toE0, const AcGeVector2d& toE1) {
    return AcGeMatrix2d().setToAlignCoordSys(fromOrigin, fromE0, fromE1, toOrigin, toE0, toE1);
}

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    return transformBy(AcGeMatrix2d::rotation(angle));
}

AcGeVector2d& AcGeVector2d::mirror(const AcGeVector2d& line) {
    const double size = line.lengthSqrd();
    if (size == 0.0) return *this;
    return *this = line * (2.0 * dotProduct(line) / size) - *this;
}

AcGePoint2d& AcGePoint2d::rotateBy(double angle, const AcGePoint2d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle);
}
