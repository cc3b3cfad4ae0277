#include "ge/linear_entity.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ge/lines.h"

namespace headless {

namespace {

/// Parameters at which two lines come nearest to each other.
struct Crossing {
    double here;
    double there;
};

double crossProduct(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

Crossing crossing(const AcGePoint2d& p, const AcGeVector2d& v, const AcGePoint2d& q,
                  const AcGeVector2d& w) {
    const AcGeVector2d between = q - p;
    const double turn = crossProduct(v, w);
    return {crossProduct(between, w) / turn, crossProduct(between, v) / turn};
}

Crossing crossing(const AcGePoint3d& p, const AcGeVector3d& v, const AcGePoint3d& q,
                  const AcGeVector3d& w) {
    const AcGeVector3d between = q - p;
    const AcGeVector3d normal = v.crossProduct(w);
    const double size = normal.lengthSqrd();
    return {between.crossProduct(w).dotProduct(normal) / size,
            between.crossProduct(v).dotProduct(normal) / size};
}

double clampTo(const AcGeInterval& range, double param) {
    return std::clamp(param, range.lowerBound(), range.upperBound());
}

} // namespace

template <class D>
Adesk::Boolean LinearEntOf<D>::intersectWith(const LinearEnt& line, Point& intPt,
                                             const AcGeTol& tol) const {
    if (mVector.isZeroLength(tol) || line.mVector.isZeroLength(tol) || isParallelTo(line, tol))
        return false;
    const Crossing at = crossing(mPoint, mVector, line.mPoint, line.mVector);
    const Point here = pointAt(clampTo(this->interval(), at.here));
    const Point there = line.pointAt(clampTo(line.interval(), at.there));
    if (!here.isEqualTo(there, tol)) return false;
    // Ends that only nearly touch are clamped to different points; the crossing itself must be
    // close to both.
    if (!here.isEqualTo(mPoint + mVector * at.here, tol)) return false;
    intPt = here;
    return true;
}

template <class D>
Adesk::Boolean LinearEntOf<D>::overlap(const LinearEnt& line, LinearEnt*& overlap,
                                       const AcGeTol& tol) const {
    if (!isColinearTo(line, tol)) return false;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const bool sameWay = mVector.dotProduct(line.mVector) > 0.0;
    const AcGeInterval other = line.interval();
    const auto project = [&](double param) {
        if (std::isfinite(param)) return footParam(line.pointAt(param));
        return (param > 0.0) == sameWay ? kInfinity : -kInfinity;
    };
    const AcGeInterval projected(project(other.lowerBound()), project(other.upperBound()));
    AcGeInterval shared;
    if (!this->interval().intersectWith(projected, shared)) return false;
    if (shared.length() * mVector.length() <= tol.equalPoint()) return false;

    if (shared.isBounded()) {
        overlap =
            new typename D::LineSeg(pointAt(shared.lowerBound()), pointAt(shared.upperBound()));
    } else if (shared.isUnBounded()) {
        overlap = new typename D::Line(mPoint, mVector);
    } else if (shared.isBoundedBelow()) {
        overlap = new typename D::Ray(pointAt(shared.lowerBound()), mVector);
    } else {
        overlap = new typename D::Ray(pointAt(shared.upperBound()), -mVector);
    }
    return true;
}

template <class D>
Adesk::Boolean LinearEntOf<D>::isColinearTo(const LinearEnt& line, const AcGeTol& tol) const {
    if (!isParallelTo(line, tol)) return false;
    const auto onCarrier = [&](double param) {
        const Point point = line.pointAt(param);
        return point.isEqualTo(mPoint + mVector * footParam(point), tol);
    };
    const AcGeInterval range = line.interval();
    return onCarrier(range.element()) && (!range.isBounded() || onCarrier(range.upperBound()));
}

template <class D>
void LinearEntOf<D>::getLine(Line& line) const {
    line.set(mPoint, mVector);
}

template <class D>
double LinearEntOf<D>::footParam(const Point& pnt) const {
    const double size = mVector.lengthSqrd();
    return size > 0.0 ? (pnt - mPoint).dotProduct(mVector) / size : 0.0;
}

template <class D>
double LinearEntOf<D>::closestParam(const Point& pnt) const {
    return clampTo(this->interval(), footParam(pnt));
}

template <class D>
bool LinearEntOf<D>::nearestTo(const typename D::Curve& other, Point& here, Point& there) const {
    const auto* line = dynamic_cast<const LinearEnt*>(&other);
    if (line == nullptr) return false;

    double best = std::numeric_limits<double>::infinity();
    const auto consider = [&](const Point& onThis, const Point& onOther) {
        const double distance = onThis.distanceTo(onOther);
        if (distance >= best) return;
        best = distance;
        here = onThis;
        there = onOther;
    };
    const AcGeInterval mine = this->interval();
    const AcGeInterval yours = line->interval();
    if (!isParallelTo(*line)) {
        const Crossing at = crossing(mPoint, mVector, line->mPoint, line->mVector);
        if (mine.contains(at.here) && yours.contains(at.there))
            consider(pointAt(at.here), line->pointAt(at.there));
    }
    // Elsewhere the nearest points include an end; endless parallels are as near anywhere.
    for (const double param : {mine.element(), mine.lowerBound(), mine.upperBound()})
        if (std::isfinite(param)) consider(pointAt(param), line->closestPointTo(pointAt(param)));
    for (const double param : {yours.lowerBound(), yours.upperBound()})
        if (std::isfinite(param))
            consider(this->closestPointTo(line->pointAt(param)), line->pointAt(param));
    return true;
}

template <class D>
bool LinearEntOf<D>::equals(const typename D::Entity& other, const AcGeTol& tol) const {
    const auto& line = static_cast<const LinearEnt&>(other);
    return mPoint.isEqualTo(line.mPoint, tol) && mVector.isEqualTo(line.mVector, tol);
}

template class LinearEntOf<Plane2d>;
template class LinearEntOf<Space3d>;

} // namespace headless

void AcGeLinearEnt2d::getPerpLine(const AcGePoint2d& pnt, AcGeLine2d& perpLine) const {
    perpLine.set(pnt, mVector.perpVector());
}

const AcGeLine2d AcGeLine2d::kXAxis(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis);
const AcGeLine2d AcGeLine2d::kYAxis(AcGePoint2d::kOrigin, AcGeVector2d::kYAxis);
const AcGeLine3d AcGeLine3d::kXAxis(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis);
const AcGeLine3d AcGeLine3d::kYAxis(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis);
const AcGeLine3d AcGeLine3d::kZAxis(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGeLine2d& line) {
    const AcGePoint2d p = line.pointOnLine();
    const AcGeVector2d along = line.direction();
    const AcGeVector2d e0 = AcGeVector2d(AcGeVector2d::kXAxis).mirror(along);
    const AcGeVector2d e1 = AcGeVector2d(AcGeVector2d::kYAxis).mirror(along);
    return setCoordSystem(p - (e0 * p.x + e1 * p.y), e0, e1);
}

AcGePoint2d& AcGePoint2d::mirror(const AcGeLine2d& line) {
    const AcGePoint2d base = line.pointOnLine();
    return *this = base + (*this - base).mirror(line.direction());
}
