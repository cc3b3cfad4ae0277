// Curves with a parameter: what lines and arcs answer alike, in the plane and in space.
#pragma once

#include "ge/entity.h"
#include "ge/interval.h"

namespace headless {

/// A curve of either dimension. Derived classes supply the protected hooks; the rest follows
/// from them.
template <class D>
class CurveOf : public D::Entity {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;
    using Curve = typename D::Curve;
    using PointArray = typename D::PointArray;
    using VectorArray = typename D::VectorArray;
    using D::Entity::isOn;

    void getInterval(AcGeInterval& intrvl) const { intrvl = interval(); }
    /// The interval with the points at its bounds, each untouched when its bound is missing.
    void getInterval(AcGeInterval& intrvl, Point& start, Point& end) const;
    Adesk::Boolean hasStartPoint(Point& startPnt) const;
    Adesk::Boolean hasEndPoint(Point& endPnt) const;

    /// Runs the curve the other way.
    Curve& reverseParam() {
        reverse();
        return static_cast<Curve&>(*this);
    }

    [[nodiscard]] Point evalPoint(double param) const { return pointAt(param); }
    /// The point, and in `derivArray` the derivatives of the first to the `numDeriv`-th order.
    Point evalPoint(double param, int numDeriv, VectorArray& derivArray) const;

    [[nodiscard]] Point closestPointTo(const Point& pnt,
                                       const AcGeTol& /*tol*/ = AcGeContext::gTol) const {
        return pointAt(closestParam(pnt));
    }
    [[nodiscard]] double distanceTo(const Point& pnt,
                                    const AcGeTol& tol = AcGeContext::gTol) const {
        return closestPointTo(pnt, tol).distanceTo(pnt);
    }
    /// The point nearest to another curve, and that curve's nearest point.
    Point closestPointTo(const Curve& other, Point& pntOnOtherCrv,
                         const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] double distanceTo(const Curve& other,
                                    const AcGeTol& tol = AcGeContext::gTol) const;

    /// Parameter of the curve's point nearest to `pnt`.
    [[nodiscard]] double paramOf(const Point& pnt,
                                 const AcGeTol& /*tol*/ = AcGeContext::gTol) const {
        return closestParam(pnt);
    }
    /// As `isOn`, with the parameter; `param` is untouched off the curve.
    Adesk::Boolean isOn(const Point& pnt, double& param,
                        const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isOn(double param, const AcGeTol& tol = AcGeContext::gTol) const;

    [[nodiscard]] double length(double fromParam, double toParam, double /*tol*/ = 1e-10) const {
        return lengthBetween(fromParam, toParam);
    }
    /// Parameter at the arc length `length` from `datumParam`, ahead or behind.
    [[nodiscard]] double paramAtLength(double datumParam, double length,
                                       Adesk::Boolean posParamDir = Adesk::kTrue,
                                       double tol = 1e-10) const;

    [[nodiscard]] Adesk::Boolean isClosed(const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isPeriodic(double& period) const;

    /// `numSample` points evenly spaced by parameter, both ends included.
    void getSamplePoints(int numSample, PointArray& pointArray) const;
    void getSamplePoints(int numSample, PointArray& pointArray, AcGeDoubleArray& paramArray) const;
    /// Points whose chords stray from the curve by at most `approxEps`.
    void getSamplePoints(double fromParam, double toParam, double approxEps, PointArray& pointArray,
                         AcGeDoubleArray& paramArray) const;

protected:
    [[nodiscard]] virtual AcGeInterval interval() const = 0;
    [[nodiscard]] virtual Point pointAt(double param) const = 0;
    /// The derivative of the given order, from 1 on.
    [[nodiscard]] virtual Vector derivativeAt(double param, int order) const = 0;
    [[nodiscard]] virtual double closestParam(const Point& pnt) const = 0;
    [[nodiscard]] virtual double lengthBetween(double from, double to) const = 0;
    virtual void reverse() = 0;
    /// The nearest points of two curves for which a closed form is known; false when none is.
    virtual bool nearestTo(const Curve& /*other*/, Point& /*here*/, Point& /*there*/) const {
        return false;
    }

    [[nodiscard]] bool holds(const Point& pnt, const AcGeTol& tol) const override {
        return distanceTo(pnt, tol) <= tol.equalPoint();
    }

private:
    template <class>
    friend class CurveOf;
    void nearestByDescent(const Curve& other, Point& here, Point& there) const;
};

extern template class CurveOf<Plane2d>;
extern template class CurveOf<Space3d>;

} // namespace headless

class AcGeCurve2d : public headless::CurveOf<headless::Plane2d> {};
class AcGeCurve3d : public headless::CurveOf<headless::Space3d> {};
