#include <cmath>
#include <optional>

#include "ge/angles.h"
#include "ge/bulge.h"
#include "ge/circ_arc.h"
#include "ge/circle_cuts.h"
#include "ge/lines.h"

using headless::CutPoints;

namespace {

/// The circle's centre seen from `a`; nothing when the three points lie on a line.
std::optional<AcGeVector2d> circumcenter(const AcGePoint2d& a, const AcGePoint2d& b,
                                         const AcGePoint2d& c) {
    const AcGeVector2d ab = b - a;
    const AcGeVector2d ac = c - a;
    if (ab.isParallelTo(ac) || ab.isZeroLength() || ac.isZeroLength() || b.isEqualTo(c))
        return std::nullopt;
    const double twice = 2.0 * ab.perpVector().dotProduct(ac);
    return (ab.perpVector() * ac.lengthSqrd() - ac.perpVector() * ab.lengthSqrd()) / twice;
}

AcGeError collinearityOf(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
    if (a.isEqualTo(b)) return AcGe::kEqualArg1Arg2;
    if (a.isEqualTo(c)) return AcGe::kEqualArg1Arg3;
    if (b.isEqualTo(c)) return AcGe::kEqualArg2Arg3;
    return AcGe::kLinearlyDependentArg1Arg2Arg3;
}

/// Hands out the points both curves hold.
Adesk::Boolean keepCommon(const CutPoints& cuts, const AcGeEntity2d& one, const AcGeEntity2d& two,
                          int& intn, AcGePoint2d& p1, AcGePoint2d& p2, const AcGeTol& tol) {
    intn = 0;
    for (int i = 0; i < cuts.count; ++i) {
        if (!one.isOn(cuts.points[i], tol) || !two.isOn(cuts.points[i], tol)) continue;
        (intn == 0 ? p1 : p2) = cuts.points[i];
        ++intn;
    }
    return intn > 0;
}

} // namespace

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& cent, double radius)
    : CircArcOf(cent, radius, AcGeVector2d::kXAxis, 0.0, headless::kFullTurn) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& cent, double radius, double ang1, double ang2,
                             const AcGeVector2d& refVec, Adesk::Boolean isClockWise)
    : CircArcOf(cent, radius, refVec, ang1, ang2), mClockwise(isClockWise) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                             const AcGePoint2d& endPoint)
    : AcGeCircArc2d() {
    set(startPoint, point, endPoint);
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& startPoint, const AcGePoint2d& endPoint,
                             double bulge, Adesk::Boolean bulgeFlag)
    : AcGeCircArc2d() {
    set(startPoint, endPoint, bulge, bulgeFlag);
}

Adesk::Boolean AcGeCircArc2d::isInside(const AcGePoint2d& pnt, const AcGeTol& tol) const {
    return mCenter.distanceTo(pnt) < mRadius - tol.equalPoint();
}

Adesk::Boolean AcGeCircArc2d::intersectWith(const AcGeLinearEnt2d& line, int& intn, AcGePoint2d& p1,
                                            AcGePoint2d& p2, const AcGeTol& tol) const {
    const CutPoints cuts = headless::cutCircle({mCenter, mRadius}, line.pointOnLine(),
                                               line.direction(), tol.equalPoint());
    return keepCommon(cuts, *this, line, intn, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc2d::intersectWith(const AcGeCircArc2d& arc, int& intn, AcGePoint2d& p1,
                                            AcGePoint2d& p2, const AcGeTol& tol) const {
    const CutPoints cuts =
        headless::cutCircle({mCenter, mRadius}, {arc.mCenter, arc.mRadius}, tol.equalPoint());
    return keepCommon(cuts, *this, arc, intn, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc2d::tangent(const AcGePoint2d& pnt, AcGeLine2d& line,
                                      const AcGeTol& tol) const {
    AcGeError error = AcGe::kOk;
    return tangent(pnt, line, tol, error);
}

Adesk::Boolean AcGeCircArc2d::tangent(const AcGePoint2d& pnt, AcGeLine2d& line, const AcGeTol& tol,
                                      AcGeError& error) const {
    const AcGeVector2d out = pnt - mCenter;
    const double distance = out.length();
    if (std::abs(distance - mRadius) <= tol.equalPoint()) {
        error = AcGe::kArg1OnThis;
        line.set(pnt, across().dotProduct(mRef.perpVector()) * out.perpVector());
        return true;
    }
    if (distance < mRadius) {
        error = AcGe::kArg1InsideThis;
        return false;
    }
    // The touching points lie on the circle over the stretch from the point to the centre.
    const headless::Circle2d thales{mCenter + out / 2.0, distance / 2.0};
    const CutPoints touches = headless::cutCircle({mCenter, mRadius}, thales, 0.0);
    if (touches.count < 2) return false;
    error = AcGe::kOk;
    const bool second = !isOn(touches.points[0], tol) && isOn(touches.points[1], tol);
    line.set(pnt, touches.points[second ? 1 : 0]);
    return true;
}

AcGeCircArc2d& AcGeCircArc2d::setCenter(const AcGePoint2d& cent) {
    mCenter = cent;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setRadius(double radius) {
    mRadius = radius;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setAngles(double startAng, double endAng) {
    assignAngles(startAng, endAng);
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setToComplement() {
    assignAngles(mEnd, mStart + headless::kFullTurn);
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setRefVec(const AcGeVector2d& vec) {
    mRef = vec.normal();
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& cent, double radius) {
    return *this = AcGeCircArc2d(cent, radius);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& cent, double radius, double ang1, double ang2,
                                  const AcGeVector2d& refVec, Adesk::Boolean isClockWise) {
    return *this = AcGeCircArc2d(cent, radius, ang1, ang2, refVec, isClockWise);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                                  const AcGePoint2d& endPoint) {
    AcGeError error = AcGe::kOk;
    return set(startPoint, point, endPoint, error);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                                  const AcGePoint2d& endPoint, AcGeError& error) {
    const auto fromStart = circumcenter(startPoint, point, endPoint);
    if (!fromStart) {
        error = collinearityOf(startPoint, point, endPoint);
        return *this;
    }
    error = AcGe::kOk;
    const AcGePoint2d cent = startPoint + *fromStart;
    const bool clockwise = (point - startPoint).perpVector().dotProduct(endPoint - point) < 0.0;
    const double sense = clockwise ? -1.0 : 1.0;
    const double from = headless::normalizedAngle(sense * (startPoint - cent).angle());
    const double to = headless::normalizedAngle(sense * (endPoint - cent).angle());
    return set(cent, fromStart->length(), from, to, AcGeVector2d::kXAxis, clockwise);
}

AcGeCircArc2d& AcGeCircArc2d::set(const AcGePoint2d& startPoint, const AcGePoint2d& endPoint,
                                  double bulge, Adesk::Boolean bulgeFlag) {
    const double half = startPoint.distanceTo(endPoint) / 2.0;
    const double tangentOfQuarter = bulgeFlag ? bulge / half : bulge;
    if (tangentOfQuarter == 0.0 || half == 0.0) return *this;
    const headless::Arc2d arc = headless::arcFromBulge(startPoint, endPoint, tangentOfQuarter);
    const bool clockwise = arc.sweep < 0.0;
    const double from = clockwise ? headless::normalizedAngle(-arc.startAngle) : arc.startAngle;
    return set(arc.center, arc.radius, from, from + std::abs(arc.sweep), AcGeVector2d::kXAxis,
               clockwise);
}

void AcGeCircArc2d::apply(const AcGeMatrix2d& mat) {
    const AcGeVector2d ref = mat * mRef;
    mCenter.transformBy(mat);
    mRadius *= ref.length();
    mRef = ref.normal();
    if (mat.det() < 0.0) mClockwise = !mClockwise;
}

void AcGeCircArc2d::reverse() {
    mClockwise = !mClockwise;
    turnAngles();
}

bool AcGeCircArc2d::equals(const AcGeEntity2d& other, const AcGeTol& tol) const {
    return mClockwise == static_cast<const AcGeCircArc2d&>(other).mClockwise &&
           CircArcOf::equals(other, tol);
}
