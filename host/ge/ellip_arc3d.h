// AcGeEllipArc3d, the elliptical arc as a curve.
#pragma once

#include "ge/curve.h"
#include "ge/ellipse.h"

class AcGePlane;
class AcGeCircArc3d;

/// An arc or the whole of an ellipse with axes at right angles; its parameter is the eccentric
/// angle from the major axis.
class AcGeEllipArc3d : public AcGeCurve3d {
public:
    /// The unit circle about the origin in the xy plane.
    AcGeEllipArc3d();
    explicit AcGeEllipArc3d(const AcGeCircArc3d& arc);
    AcGeEllipArc3d(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                   const AcGeVector3d& minorAxis, double majorRadius, double minorRadius);
    AcGeEllipArc3d(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                   const AcGeVector3d& minorAxis, double majorRadius, double minorRadius,
                   double ang1, double ang2);

    [[nodiscard]] AcGePoint3d center() const { return mArc.center; }
    [[nodiscard]] double majorRadius() const { return mArc.u.length(); }
    [[nodiscard]] double minorRadius() const { return mArc.v.length(); }
    [[nodiscard]] AcGeVector3d majorAxis() const { return mArc.u.normal(); }
    [[nodiscard]] AcGeVector3d minorAxis() const { return mArc.v.normal(); }
    [[nodiscard]] AcGeVector3d normal() const { return mArc.u.crossProduct(mArc.v).normal(); }
    [[nodiscard]] double startAng() const { return mArc.start; }
    [[nodiscard]] double endAng() const { return mArc.start + mArc.sweep; }
    [[nodiscard]] AcGePoint3d startPoint() const { return pointAt(startAng()); }
    [[nodiscard]] AcGePoint3d endPoint() const { return pointAt(endAng()); }
    [[nodiscard]] Adesk::Boolean isCircular(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(majorRadius() - minorRadius()) <= tol.equalPoint();
    }
    /// True for points within the whole ellipse, away from its edge.
    [[nodiscard]] Adesk::Boolean isInside(const AcGePoint3d& pnt,
                                          const AcGeTol& tol = AcGeContext::gTol) const;
    void getPlane(AcGePlane& plane) const;

    AcGeEllipArc3d& setCenter(const AcGePoint3d& cent);
    AcGeEllipArc3d& setMajorRadius(double rad);
    AcGeEllipArc3d& setMinorRadius(double rad);
    AcGeEllipArc3d& setAxes(const AcGeVector3d& majorAxis, const AcGeVector3d& minorAxis);
    AcGeEllipArc3d& setAngles(double startAngle, double endAngle);
    AcGeEllipArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                        const AcGeVector3d& minorAxis, double majorRadius, double minorRadius);
    AcGeEllipArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& majorAxis,
                        const AcGeVector3d& minorAxis, double majorRadius, double minorRadius,
                        double startAngle, double endAngle);

    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kEllipArc3d; }
    [[nodiscard]] AcGeEllipArc3d* copy() const override { return new AcGeEllipArc3d(*this); }

protected:
    [[nodiscard]] AcGeInterval interval() const override { return {startAng(), endAng()}; }
    [[nodiscard]] AcGePoint3d pointAt(double param) const override { return mArc.pointAt(param); }
    [[nodiscard]] AcGeVector3d derivativeAt(double param, int order) const override {
        return mArc.derivativeAt(param, order);
    }
    [[nodiscard]] double closestParam(const AcGePoint3d& pnt) const override {
        return headless::ellipseClosestParam(mArc, pnt);
    }
    [[nodiscard]] double lengthBetween(double from, double to) const override {
        return headless::ellipseLength(mArc, from, to);
    }
    void apply(const AcGeMatrix3d& mat) override;
    void reverse() override;
    [[nodiscard]] bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;

private:
    headless::EllipseArc mArc;
};

namespace headless {

/// Axes at right angles, the longer one first, for the same points in the same direction.
[[nodiscard]] EllipseArc withPrincipalAxes(const EllipseArc& arc) noexcept;

} // namespace headless
