#include "ge/ellip_arc3d.h"

#include <cmath>
#include <numbers>

#include "ge/angles.h"
#include "ge/circ_arc.h"
#include "ge/plane.h"

namespace headless {

EllipseArc withPrincipalAxes(const EllipseArc& arc) noexcept {
    // u cos t + v sin t is longest where tan 2t = 2 u.v / (u.u - v.v).
    const double skew = 2.0 * arc.u.dotProduct(arc.v);
    const double difference = arc.u.lengthSqrd() - arc.v.lengthSqrd();
    // Of a circle any two radii are principal: rounding must not pick others than are there.
    const double noise = 1e-14 * (arc.u.lengthSqrd() + arc.v.lengthSqrd());
    if (std::abs(skew) <= noise && difference >= -noise) return arc;
    const double longest = std::atan2(skew, difference) / 2.0;
    EllipseArc principal = arc;
    principal.u = arc.pointAt(longest) - arc.center;
    principal.v = arc.pointAt(longest + std::numbers::pi / 2.0) - arc.center;
    principal.start = arc.start - longest;
    return principal;
}

} // namespace headless

AcGeEllipArc3d::AcGeEllipArc3d()
    : AcGeEllipArc3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 1.0, 1.0) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGeCircArc3d& arc)
    : AcGeEllipArc3d(arc.center(), arc.refVec(), arc.normal().crossProduct(arc.refVec()),
                     arc.radius(), arc.radius(), arc.startAng(), arc.endAng()) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius,
                               double minorRadius)
    : AcGeEllipArc3d(cent, majorAxis, minorAxis, majorRadius, minorRadius, 0.0,
                     headless::kFullTurn) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius,
                               double minorRadius, double ang1, double ang2)
    : mArc{cent, majorAxis.normal() * majorRadius, minorAxis.normal() * minorRadius, ang1,
           headless::endOfTurn(ang1, ang2) - ang1} {}

Adesk::Boolean AcGeEllipArc3d::isInside(const AcGePoint3d& pnt, const AcGeTol& tol) const {
    AcGePlane plane;
    getPlane(plane);
    const AcGePoint2d flat = pnt.convert2d(plane);
    const double outward = std::hypot(flat.x / majorRadius(), flat.y / minorRadius());
    headless::EllipseArc whole = mArc;
    whole.sweep = headless::kFullTurn;
    const AcGePoint3d edge = whole.pointAt(headless::ellipseClosestParam(whole, pnt));
    return plane.isOn(pnt, tol) && outward < 1.0 && edge.distanceTo(pnt) > tol.equalPoint();
}

void AcGeEllipArc3d::getPlane(AcGePlane& plane) const { plane.set(mArc.center, mArc.u, mArc.v); }

AcGeEllipArc3d& AcGeEllipArc3d::setCenter(const AcGePoint3d& cent) {
    mArc.center = cent;
    return *this;
}

AcGeEllipArc3d& AcGeEllipArc3d::setMajorRadius(double rad) {
    mArc.u = majorAxis() * rad;
    return *this;
}

AcGeEllipArc3d& AcGeEllipArc3d::setMinorRadius(double rad) {
    mArc.v = minorAxis() * rad;
    return *this;
}

AcGeEllipArc3d& AcGeEllipArc3d::setAxes(const AcGeVector3d& majorAxis,
                                        const AcGeVector3d& minorAxis) {
    return set(center(), majorAxis, minorAxis, majorRadius(), minorRadius(), startAng(), endAng());
}

AcGeEllipArc3d& AcGeEllipArc3d::setAngles(double startAngle, double endAngle) {
    mArc.start = startAngle;
    mArc.sweep = headless::endOfTurn(startAngle, endAngle) - startAngle;
    return *this;
}

AcGeEllipArc3d& AcGeEllipArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                                    const AcGeVector3d& minorAxis, double majorRadius,
                                    double minorRadius) {
    return *this = AcGeEllipArc3d(cent, majorAxis, minorAxis, majorRadius, minorRadius);
}

AcGeEllipArc3d& AcGeEllipArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                                    const AcGeVector3d& minorAxis, double majorRadius,
                                    double minorRadius, double startAngle, double endAngle) {
    return *this = AcGeEllipArc3d(cent, majorAxis, minorAxis, majorRadius, minorRadius, startAngle,
                                  endAngle);
}

void AcGeEllipArc3d::apply(const AcGeMatrix3d& mat) {
    mArc.transformBy(mat);
    mArc = headless::withPrincipalAxes(mArc);
}

void AcGeEllipArc3d::reverse() {
    const double end = endAng();
    mArc.v.negate();
    mArc.start = -end;
}

bool AcGeEllipArc3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const auto& arc = static_cast<const AcGeEllipArc3d&>(other).mArc;
    return mArc.center.isEqualTo(arc.center, tol) && mArc.u.isEqualTo(arc.u, tol) &&
           mArc.v.isEqualTo(arc.v, tol) && std::abs(mArc.start - arc.start) <= tol.equalVector() &&
           std::abs(mArc.sweep - arc.sweep) <= tol.equalVector();
}
