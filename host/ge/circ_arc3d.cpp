#include "ge/angles.h"
#include "ge/circ_arc.h"
#include "ge/lines.h"
#include "ge/plane.h"

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius)
    : AcGeCircArc3d(cent, nrm, nrm.perpVector(), radius, 0.0, headless::kFullTurn) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm,
                             const AcGeVector3d& refVec, double radius, double startAng,
                             double endAng)
    : CircArcOf(cent, radius, refVec, startAng, endAng), mNormal(nrm.normal()) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                             const AcGePoint3d& endPoint)
    : AcGeCircArc3d() {
    set(startPoint, pnt, endPoint);
}

void AcGeCircArc3d::getPlane(AcGePlane& plane) const { plane.set(mCenter, mRef, across()); }

AcGeCircArc2d AcGeCircArc3d::flat() const {
    return AcGeCircArc2d(AcGePoint2d::kOrigin, mRadius, mStart, mEnd);
}

Adesk::Boolean AcGeCircArc3d::isInside(const AcGePoint3d& pnt, const AcGeTol& tol) const {
    AcGePlane plane;
    getPlane(plane);
    return plane.isOn(pnt, tol) && flat().isInside(pnt.convert2d(plane), tol);
}

Adesk::Boolean AcGeCircArc3d::keepOn(const AcGeEntity3d& other, int count,
                                     const AcGePoint2d (&flatPoints)[2], int& intn, AcGePoint3d& p1,
                                     AcGePoint3d& p2, const AcGeTol& tol) const {
    AcGePlane plane;
    getPlane(plane);
    intn = 0;
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d point(plane, flatPoints[i]);
        if (!other.isOn(point, tol)) continue;
        (intn == 0 ? p1 : p2) = point;
        ++intn;
    }
    return intn > 0;
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGeLinearEnt3d& line, int& intn, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    AcGePlane plane;
    getPlane(plane);
    intn = 0;
    if (!line.isParallelTo(plane, tol)) {
        AcGePoint3d through;
        if (!line.intersectWith(plane, through, tol) || !isOn(through, tol)) return false;
        p1 = through;
        intn = 1;
        return true;
    }
    if (!line.isOn(plane, tol)) return false;
    const AcGeLine2d carrier(line.pointOnLine().convert2d(plane),
                             line.direction().convert2d(plane));
    AcGePoint2d found[2];
    int count = 0;
    flat().intersectWith(carrier, count, found[0], found[1], tol);
    return keepOn(line, count, found, intn, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGeCircArc3d& arc, int& intn, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    AcGePlane plane;
    AcGePlane otherPlane;
    getPlane(plane);
    arc.getPlane(otherPlane);
    intn = 0;
    AcGePoint2d found[2];
    int count = 0;
    if (plane.isCoplanarTo(otherPlane, tol)) {
        const AcGeCircArc2d circle(arc.mCenter.convert2d(plane), arc.mRadius);
        flat().intersectWith(circle, count, found[0], found[1], tol);
    } else {
        AcGeLine3d shared;
        if (!plane.intersectWith(otherPlane, shared, tol)) return false;
        const AcGeLine2d carrier(shared.pointOnLine().convert2d(plane),
                                 shared.direction().convert2d(plane));
        flat().intersectWith(carrier, count, found[0], found[1], tol);
    }
    return keepOn(arc, count, found, intn, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGePlane& plane, int& intn, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    AcGePlane mine;
    AcGeLine3d shared;
    getPlane(mine);
    intn = 0;
    return mine.intersectWith(plane, shared, tol) && intersectWith(shared, intn, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc3d::tangent(const AcGePoint3d& pnt, AcGeLine3d& line,
                                      const AcGeTol& tol) const {
    AcGePlane plane;
    getPlane(plane);
    AcGeLine2d touching;
    if (!plane.isOn(pnt, tol) || !flat().tangent(pnt.convert2d(plane), touching, tol)) return false;
    line.set(AcGePoint3d(plane, touching.pointOnLine()), AcGeVector3d(plane, touching.direction()));
    return true;
}

AcGeCircArc3d& AcGeCircArc3d::setCenter(const AcGePoint3d& cent) {
    mCenter = cent;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
    mNormal = normal.normal();
    mRef = refVec.normal();
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setRadius(double radius) {
    mRadius = radius;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAng, double endAng) {
    assignAngles(startAng, endAng);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius) {
    return *this = AcGeCircArc3d(cent, nrm, radius);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& nrm,
                                  const AcGeVector3d& refVec, double radius, double startAng,
                                  double endAng) {
    return *this = AcGeCircArc3d(cent, nrm, refVec, radius, startAng, endAng);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                                  const AcGePoint3d& endPoint) {
    AcGeError error = AcGe::kOk;
    return set(startPoint, pnt, endPoint, error);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                                  const AcGePoint3d& endPoint, AcGeError& error) {
    const AcGePlane plane(startPoint, pnt - startPoint, endPoint - startPoint);
    const AcGePoint2d flatPoints[] = {AcGePoint2d::kOrigin, pnt.convert2d(plane),
                                      endPoint.convert2d(plane)};
    AcGeCircArc2d arc;
    arc.set(flatPoints[0], flatPoints[1], flatPoints[2], error);
    if (error != AcGe::kOk) return *this;
    // The plane's normal is the one about which the three points turn counter-clockwise.
    const AcGePoint3d cent(plane, arc.center());
    return set(cent, plane.normal(), startPoint - cent, arc.radius(), 0.0,
               arc.endAng() - arc.startAng());
}

void AcGeCircArc3d::apply(const AcGeMatrix3d& mat) {
    const AcGeVector3d ref = mat * mRef;
    mNormal = ref.crossProduct(mat * across()).normal();
    mCenter.transformBy(mat);
    mRadius *= ref.length();
    mRef = ref.normal();
}

void AcGeCircArc3d::reverse() {
    mNormal.negate();
    turnAngles();
}

bool AcGeCircArc3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    return mNormal.isEqualTo(static_cast<const AcGeCircArc3d&>(other).mNormal, tol) &&
           CircArcOf::equals(other, tol);
}
