#include "ge/curve.h"

#include <algorithm>
#include <cmath>

#include "ge/minimum.h"

namespace headless {

template <class D>
void CurveOf<D>::getInterval(AcGeInterval& intrvl, Point& start, Point& end) const {
    getInterval(intrvl);
    hasStartPoint(start);
    hasEndPoint(end);
}

template <class D>
Adesk::Boolean CurveOf<D>::hasStartPoint(Point& startPnt) const {
    const AcGeInterval range = interval();
    if (!range.isBoundedBelow()) return false;
    startPnt = pointAt(range.lowerBound());
    return true;
}

template <class D>
Adesk::Boolean CurveOf<D>::hasEndPoint(Point& endPnt) const {
    const AcGeInterval range = interval();
    if (!range.isBoundedAbove()) return false;
    endPnt = pointAt(range.upperBound());
    return true;
}

template <class D>
typename D::Point CurveOf<D>::evalPoint(double param, int numDeriv, VectorArray& derivArray) const {
    derivArray.setLogicalLength(0);
    for (int order = 1; order <= numDeriv; ++order)
        derivArray.append(derivativeAt(param, order));
    return pointAt(param);
}

template <class D>
typename D::Point CurveOf<D>::closestPointTo(const Curve& other, Point& pntOnOtherCrv,
                                             const AcGeTol& /*tol*/) const {
    Point here;
    if (nearestTo(other, here, pntOnOtherCrv)) return here;
    // Only a bounded curve can be walked; of a line and an arc that is the arc.
    if (interval().isBounded()) {
        nearestByDescent(other, here, pntOnOtherCrv);
    } else {
        other.nearestByDescent(static_cast<const Curve&>(*this), pntOnOtherCrv, here);
    }
    return here;
}

template <class D>
double CurveOf<D>::distanceTo(const Curve& other, const AcGeTol& tol) const {
    Point there;
    return closestPointTo(other, there, tol).distanceTo(there);
}

/// Walks this curve and refines each valley of the distance to the other one.
template <class D>
void CurveOf<D>::nearestByDescent(const Curve& other, Point& here, Point& there) const {
    constexpr int kSteps = 64; // Conics have at most eight valleys between them.
    const AcGeInterval range = interval();
    const auto param = [&](int i) {
        return range.lowerBound() + range.length() * std::clamp(i, 0, kSteps) / kSteps;
    };
    const auto distance = [&](double t) { return other.distanceTo(pointAt(t)); };
    double heights[kSteps + 1];
    for (int i = 0; i <= kSteps; ++i)
        heights[i] = distance(param(i));

    double best = param(0);
    for (int i = 0; i <= kSteps; ++i) {
        const bool valley = (i == 0 || heights[i] <= heights[i - 1]) &&
                            (i == kSteps || heights[i] <= heights[i + 1]);
        if (!valley) continue;
        const double refined = goldenMinimum(param(i - 1), param(i + 1), distance);
        for (const double candidate : {refined, param(i)})
            if (distance(candidate) < distance(best)) best = candidate;
    }
    here = pointAt(best);
    there = other.closestPointTo(here);
}

template <class D>
Adesk::Boolean CurveOf<D>::isOn(const Point& pnt, double& param, const AcGeTol& tol) const {
    if (!isOn(pnt, tol)) return false;
    param = closestParam(pnt);
    return true;
}

template <class D>
Adesk::Boolean CurveOf<D>::isOn(double param, const AcGeTol& tol) const {
    AcGeInterval range = interval();
    return range.setTolerance(tol.equalPoint()).contains(param);
}

template <class D>
double CurveOf<D>::paramAtLength(double datumParam, double length, Adesk::Boolean posParamDir,
                                 double tol) const {
    const double sign = posParamDir ? 1.0 : -1.0;
    const double wanted = length * sign;
    double param = datumParam;
    // Newton's rule with the speed as derivative; lines and circles are met in the first step.
    for (int i = 0; i < 60; ++i) {
        const double reached = lengthBetween(datumParam, param) * (param < datumParam ? -1.0 : 1.0);
        const double speed = derivativeAt(param, 1).length();
        if (std::abs(wanted - reached) <= tol || !(speed > 0.0)) break;
        param += (wanted - reached) / speed;
    }
    return param;
}

template <class D>
Adesk::Boolean CurveOf<D>::isClosed(const AcGeTol& tol) const {
    Point start;
    Point end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol) &&
           interval().length() > 0.0;
}

template <class D>
Adesk::Boolean CurveOf<D>::isPeriodic(double& period) const {
    const AcGeInterval range = interval();
    if (!range.isBounded() || !isClosed()) return false;
    const Vector turn = derivativeAt(range.lowerBound(), 1) - derivativeAt(range.upperBound(), 1);
    if (!turn.isZeroLength()) return false;
    period = range.length();
    return true;
}

template <class D>
void CurveOf<D>::getSamplePoints(int numSample, PointArray& pointArray) const {
    AcGeDoubleArray params;
    getSamplePoints(numSample, pointArray, params);
}

template <class D>
void CurveOf<D>::getSamplePoints(int numSample, PointArray& pointArray,
                                 AcGeDoubleArray& paramArray) const {
    pointArray.setLogicalLength(0);
    paramArray.setLogicalLength(0);
    const AcGeInterval range = interval();
    if (!range.isBounded()) return;
    for (int i = 0; i < numSample; ++i) {
        const double share = numSample > 1 ? static_cast<double>(i) / (numSample - 1) : 0.0;
        const double param = range.lowerBound() + share * range.length();
        paramArray.append(param);
        pointArray.append(pointAt(param));
    }
}

template <class D>
void CurveOf<D>::getSamplePoints(double fromParam, double toParam, double approxEps,
                                 PointArray& pointArray, AcGeDoubleArray& paramArray) const {
    // A chord over the step h strays by |c''| h^2 / 8; conics bend most where |c''| is largest,
    // which a coarse look finds closely enough for an approximation.
    double bend = 0.0;
    for (int i = 0; i <= 16; ++i) {
        const double param = fromParam + (toParam - fromParam) * i / 16.0;
        bend = std::max(bend, derivativeAt(param, 2).length());
    }
    constexpr double kMostSteps = 1e5;
    const double eps = std::max(approxEps, AcGeContext::gTol.equalPoint());
    const double steps = std::ceil(std::abs(toParam - fromParam) * std::sqrt(bend / (8.0 * eps)));
    const int count = static_cast<int>(std::clamp(steps, 1.0, kMostSteps));

    pointArray.setLogicalLength(0);
    paramArray.setLogicalLength(0);
    for (int i = 0; i <= count; ++i) {
        const double param = fromParam + (toParam - fromParam) * i / count;
        paramArray.append(param);
        pointArray.append(pointAt(param));
    }
}

template class CurveOf<Plane2d>;
template class CurveOf<Space3d>;

} // namespace headless
