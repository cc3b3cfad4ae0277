#include "ge/plane.h"

#include <cmath>
#include <utility>

#include "ge/lines.h"
#include "ge/ocs.h"

namespace {

/// The plane's axes at right angles, as a coordinate system.
struct Frame {
    AcGePoint3d origin;
    AcGeVector3d x;
    AcGeVector3d y;
};

Frame frameOf(const AcGePlanarEnt& plane) {
    Frame frame;
    plane.getCoordSystem(frame.origin, frame.x, frame.y);
    return frame;
}

} // namespace

const AcGePlane AcGePlane::kXYPlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis,
                                    AcGeVector3d::kYAxis);
const AcGePlane AcGePlane::kYZPlane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis,
                                    AcGeVector3d::kZAxis);
const AcGePlane AcGePlane::kZXPlane(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis,
                                    AcGeVector3d::kXAxis);

void AcGePlanarEnt::getCoefficients(double& a, double& b, double& c, double& d) const {
    const AcGeVector3d n = normal();
    a = n.x;
    b = n.y;
    c = n.z;
    d = -n.dotProduct(mOrigin.asVector());
}

void AcGePlanarEnt::get(AcGePoint3d& origin, AcGeVector3d& uVec, AcGeVector3d& vVec) const {
    origin = mOrigin;
    uVec = mU;
    vVec = mV;
}

void AcGePlanarEnt::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1,
                                   AcGeVector3d& axis2) const {
    origin = mOrigin;
    axis1 = mU.normal();
    axis2 = normal().crossProduct(axis1);
}

AcGePoint3d AcGePlanarEnt::closestPointTo(const AcGePoint3d& pnt) const {
    const AcGeVector3d n = normal();
    return pnt - n * (pnt - mOrigin).dotProduct(n);
}

Adesk::Boolean AcGePlanarEnt::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& intPt,
                                            const AcGeTol& tol) const {
    return line.intersectWith(*this, intPt, tol);
}

void AcGePlanarEnt::apply(const AcGeMatrix3d& mat) {
    mOrigin.transformBy(mat);
    mU.transformBy(mat);
    mV.transformBy(mat);
}

bool AcGePlanarEnt::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const auto& plane = static_cast<const AcGePlanarEnt&>(other);
    return mOrigin.isEqualTo(plane.mOrigin, tol) && mU.isEqualTo(plane.mU, tol) &&
           mV.isEqualTo(plane.mV, tol);
}

bool AcGePlanarEnt::holds(const AcGePoint3d& pnt, const AcGeTol& tol) const {
    return closestPointTo(pnt).isEqualTo(pnt, tol);
}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
    : AcGePlane(origin, AcGeVector3d(), AcGeVector3d()) {
    const AcGeMatrix3d axes = headless::ocsMatrix(normal);
    mU = axes * AcGeVector3d::kXAxis;
    mV = axes * AcGeVector3d::kYAxis;
}

AcGePlane::AcGePlane(double a, double b, double c, double d)
    : AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d(a, b, c)) {
    const AcGeVector3d n(a, b, c);
    const double size = n.lengthSqrd();
    if (size > 0.0) mOrigin = AcGePoint3d::kOrigin - n * (d / size);
}

Adesk::Boolean AcGePlane::intersectWith(const AcGePlane& otherPln, AcGeLine3d& resultLine,
                                        const AcGeTol& tol) const {
    if (isParallelTo(otherPln, tol)) return false;
    const AcGeVector3d mine = normal();
    const AcGeVector3d yours = otherPln.normal();
    const AcGeVector3d along = mine.crossProduct(yours);
    // From this origin, within this plane, straight towards the other one.
    const AcGeVector3d towards = along.crossProduct(mine);
    const double distance = (otherPln.mOrigin - mOrigin).dotProduct(yours);
    resultLine.set(mOrigin + towards * (distance / towards.dotProduct(yours)), along);
    return true;
}

AcGePlane& AcGePlane::reverseNormal() {
    std::swap(mU, mV);
    return *this;
}

AcGePoint3d::AcGePoint3d(const AcGePlanarEnt& pln, const AcGePoint2d& pnt) {
    const Frame frame = frameOf(pln);
    *this = frame.origin + frame.x * pnt.x + frame.y * pnt.y;
}

AcGePoint3d& AcGePoint3d::set(const AcGePlanarEnt& pln, const AcGePoint2d& pnt) {
    return *this = AcGePoint3d(pln, pnt);
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& pln) const {
    const Frame frame = frameOf(pln);
    const AcGeVector3d fromOrigin = *this - frame.origin;
    return {fromOrigin.dotProduct(frame.x), fromOrigin.dotProduct(frame.y)};
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlane& pln) {
    const AcGePoint3d base = pln.pointOnPlane();
    return *this = base + (*this - base).mirror(pln.normal());
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& pln) const {
    return pln.closestPointTo(*this);
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& pln, const AcGeVector3d& vec) const {
    if (pln.normal().isPerpendicularTo(vec)) return *this;
    const AcGePoint3d base = pln.pointOnPlane();
    return base + (*this - base).project(pln.normal(), vec);
}

AcGeVector3d::AcGeVector3d(const AcGePlanarEnt& pln, const AcGeVector2d& vec) {
    const Frame frame = frameOf(pln);
    *this = frame.x * vec.x + frame.y * vec.y;
}

AcGeVector3d& AcGeVector3d::set(const AcGePlanarEnt& pln, const AcGeVector2d& vec) {
    return *this = AcGeVector3d(pln, vec);
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& pln) const {
    const Frame frame = frameOf(pln);
    return {dotProduct(frame.x), dotProduct(frame.y)};
}

double AcGeVector3d::angleOnPlane(const AcGePlanarEnt& pln) const { return convert2d(pln).angle(); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& pln) {
    const AcGeVector3d n = pln.normal();
    setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(AcGeVector3d::kXAxis).mirror(n),
                   AcGeVector3d(AcGeVector3d::kYAxis).mirror(n),
                   AcGeVector3d(AcGeVector3d::kZAxis).mirror(n));
    return setTranslation(n * (2.0 * pln.pointOnPlane().asVector().dotProduct(n)));
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    const AcGeVector3d along = line.direction();
    const auto mirrored = [&](const AcGeVector3d& v) {
        return along * (2.0 * v.dotProduct(along)) - v;
    };
    const AcGePoint3d base = line.pointOnLine();
    setCoordSystem(AcGePoint3d::kOrigin, mirrored(AcGeVector3d::kXAxis),
                   mirrored(AcGeVector3d::kYAxis), mirrored(AcGeVector3d::kZAxis));
    return setTranslation(base - *this * base);
}

AcGeMatrix3d& AcGeMatrix3d::setToProjection(const AcGePlane& projectionPlane,
                                            const AcGeVector3d& projectDir) {
    const AcGeVector3d n = projectionPlane.normal();
    if (n.isPerpendicularTo(projectDir)) return setToIdentity();
    const AcGePoint3d base = projectionPlane.pointOnPlane();
    setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis.project(n, projectDir),
                   AcGeVector3d::kYAxis.project(n, projectDir),
                   AcGeVector3d::kZAxis.project(n, projectDir));
    return setTranslation(base - *this * base);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
    const Frame frame = frameOf(plane);
    return setCoordSystem(frame.origin, frame.x, frame.y, frame.x.crossProduct(frame.y));
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) {
    return setToPlaneToWorld(plane).invert();
}

Adesk::Boolean AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& intPt,
                                              const AcGeTol& tol) const {
    const AcGeVector3d n = plane.normal();
    if (mVector.isZeroLength(tol) || mVector.isPerpendicularTo(n, tol)) return false;
    const double param = (plane.pointOnPlane() - mPoint).dotProduct(n) / mVector.dotProduct(n);
    const AcGePoint3d crossing = mPoint + mVector * param;
    if (!isOn(crossing, tol)) return false;
    intPt = crossing;
    return true;
}

Adesk::Boolean AcGeLinearEnt3d::projIntersectWith(const AcGeLinearEnt3d& line,
                                                  const AcGeVector3d& projDir,
                                                  AcGePoint3d& pntOnThisLine,
                                                  AcGePoint3d& pntOnOtherLine,
                                                  const AcGeTol& tol) const {
    // The plane through the other line along the direction of sight cuts this line, and back.
    const AcGePlane sight(line.mPoint, line.mVector, projDir);
    const AcGePlane back(mPoint, mVector, projDir);
    AcGePoint3d here;
    AcGePoint3d there;
    if (!intersectWith(sight, here, tol) || !line.intersectWith(back, there, tol)) return false;
    pntOnThisLine = here;
    pntOnOtherLine = there;
    return true;
}

Adesk::Boolean AcGeLinearEnt3d::isOn(const AcGePlane& plane, const AcGeTol& tol) const {
    return plane.isOn(mPoint, tol) && isParallelTo(plane, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return mVector.isPerpendicularTo(plane.normal(), tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGePlanarEnt& plane,
                                                  const AcGeTol& tol) const {
    return mVector.isParallelTo(plane.normal(), tol);
}

void AcGeLinearEnt3d::getPerpPlane(const AcGePoint3d& pnt, AcGePlane& plane) const {
    plane.set(pnt, mVector);
}
