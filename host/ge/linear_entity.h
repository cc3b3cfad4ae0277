// Straight curves: what lines, rays and segments share in the plane and in space.
#pragma once

#include "ge/curve.h"

namespace headless {

/// point + t * vector over an interval of t. A line's and a ray's vector has unit length, a
/// segment's reaches from its start (t = 0) to its end (t = 1).
template <class D>
class LinearEntOf : public D::Curve {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;
    using LinearEnt = typename D::LinearEnt;
    using Line = typename D::Line;

    /// The only common point of two straight curves; false, and `intPt` untouched, when they are
    /// parallel or do not meet within the tolerance.
    Adesk::Boolean intersectWith(const LinearEnt& line, Point& intPt,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// The stretch two colinear curves share, as a heap object the caller deletes; false, and
    /// `overlap` untouched, when they share none or no more than a point.
    Adesk::Boolean overlap(const LinearEnt& line, LinearEnt*& overlap,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    [[nodiscard]] Adesk::Boolean isParallelTo(const LinearEnt& line,
                                              const AcGeTol& tol = AcGeContext::gTol) const {
        return mVector.isParallelTo(line.mVector, tol);
    }
    [[nodiscard]] Adesk::Boolean isPerpendicularTo(const LinearEnt& line,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        return mVector.isPerpendicularTo(line.mVector, tol);
    }
    /// True when both lie on one endless line.
    [[nodiscard]] Adesk::Boolean isColinearTo(const LinearEnt& line,
                                              const AcGeTol& tol = AcGeContext::gTol) const;

    [[nodiscard]] Point pointOnLine() const { return mPoint; }
    [[nodiscard]] Vector direction() const { return mVector.normal(); }
    /// The endless line that carries the curve.
    void getLine(Line& line) const;

protected:
    LinearEntOf(const Point& point, const Vector& vector) : mPoint(point), mVector(vector) {}

    [[nodiscard]] Point pointAt(double param) const override { return mPoint + mVector * param; }
    [[nodiscard]] Vector derivativeAt(double /*param*/, int order) const override {
        return order == 1 ? mVector : Vector();
    }
    [[nodiscard]] double closestParam(const Point& pnt) const override;
    [[nodiscard]] double lengthBetween(double from, double to) const override {
        return std::abs(to - from) * mVector.length();
    }
    bool nearestTo(const typename D::Curve& other, Point& here, Point& there) const override;
    [[nodiscard]] bool equals(const typename D::Entity& other, const AcGeTol& tol) const override;
    void apply(const typename D::Matrix& mat) override {
        mPoint.transformBy(mat);
        mVector.transformBy(mat);
    }
    void reverse() override { mVector.negate(); }

    /// Parameter of the foot of the perpendicular on the carrying line.
    [[nodiscard]] double footParam(const Point& pnt) const;

    Point mPoint;
    Vector mVector;
};

extern template class LinearEntOf<Plane2d>;
extern template class LinearEntOf<Space3d>;

} // namespace headless

class AcGeLinearEnt2d : public headless::LinearEntOf<headless::Plane2d> {
public:
    /// The line through `pnt` perpendicular to this.
    void getPerpLine(const AcGePoint2d& pnt, AcGeLine2d& perpLine) const;

protected:
    using LinearEntOf::LinearEntOf;
};

class AcGeLinearEnt3d : public headless::LinearEntOf<headless::Space3d> {
public:
    using LinearEntOf::intersectWith;
    using LinearEntOf::isOn;
    using LinearEntOf::isParallelTo;
    using LinearEntOf::isPerpendicularTo;

    /// Where the curve passes through the plane; false when it runs along it or stops short.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& intPnt,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Where two curves cross when looked at along `projDir`.
    Adesk::Boolean projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& projDir,
                                     AcGePoint3d& pntOnThisLine, AcGePoint3d& pntOnOtherLine,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isOn(const AcGePlane& plane,
                                      const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isParallelTo(const AcGePlanarEnt& plane,
                                              const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& plane,
                                                   const AcGeTol& tol = AcGeContext::gTol) const;
    /// The plane through `pnt` perpendicular to this.
    void getPerpPlane(const AcGePoint3d& pnt, AcGePlane& plane) const;

protected:
    using LinearEntOf::LinearEntOf;
};
