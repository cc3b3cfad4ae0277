// Endless planes.
#pragma once

#include "ge/entity.h"

class AcGeLine3d;
class AcGeLinearEnt3d;

class AcGeSurface : public AcGeEntity3d {};

/// A plane with an origin and two axes, given as vectors of any length and any angle between.
class AcGePlanarEnt : public AcGeSurface {
public:
    [[nodiscard]] AcGePoint3d pointOnPlane() const { return mOrigin; }
    /// Unit normal, the side from which the first axis turns counter-clockwise to the second.
    [[nodiscard]] AcGeVector3d normal() const { return mU.crossProduct(mV).normal(); }
    /// a x + b y + c z + d = 0, with (a, b, c) the unit normal.
    void getCoefficients(double& a, double& b, double& c, double& d) const;
    void get(AcGePoint3d& origin, AcGeVector3d& uVec, AcGeVector3d& vVec) const;
    /// Origin and two unit axes at right angles, the first along the plane's own first axis.
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const;

    [[nodiscard]] AcGePoint3d closestPointTo(const AcGePoint3d& pnt) const;
    /// Where a straight curve passes through; false when it runs along the plane or stops short.
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& intPt,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isParallelTo(const AcGePlanarEnt& plane,
                                              const AcGeTol& tol = AcGeContext::gTol) const {
        return normal().isParallelTo(plane.normal(), tol);
    }
    [[nodiscard]] Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& plane,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        return normal().isPerpendicularTo(plane.normal(), tol);
    }
    [[nodiscard]] Adesk::Boolean isCoplanarTo(const AcGePlanarEnt& plane,
                                              const AcGeTol& tol = AcGeContext::gTol) const {
        return isParallelTo(plane, tol) && isOn(plane.mOrigin, tol);
    }

protected:
    AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& u, const AcGeVector3d& v)
        : mOrigin(origin), mU(u), mV(v) {}

    void apply(const AcGeMatrix3d& mat) override;
    [[nodiscard]] bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    [[nodiscard]] bool holds(const AcGePoint3d& pnt, const AcGeTol& tol) const override;

    AcGePoint3d mOrigin;
    AcGeVector3d mU;
    AcGeVector3d mV;
};

class AcGePlane : public AcGePlanarEnt {
public:
    static const AcGePlane kXYPlane;
    static const AcGePlane kYZPlane;
    static const AcGePlane kZXPlane;

    AcGePlane() : AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis) {}
    /// Axes as in the normal's object coordinate system.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal);
    AcGePlane(const AcGePoint3d& pntU, const AcGePoint3d& org, const AcGePoint3d& pntV)
        : AcGePlane(org, pntU - org, pntV - org) {}
    AcGePlane(const AcGePoint3d& org, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis)
        : AcGePlanarEnt(org, uAxis, vAxis) {}
    /// The plane a x + b y + c z + d = 0.
    AcGePlane(double a, double b, double c, double d);

    AcGePlane& set(const AcGePoint3d& pnt, const AcGeVector3d& normal) {
        return *this = AcGePlane(pnt, normal);
    }
    AcGePlane& set(const AcGePoint3d& pntU, const AcGePoint3d& org, const AcGePoint3d& pntV) {
        return *this = AcGePlane(pntU, org, pntV);
    }
    AcGePlane& set(const AcGePoint3d& org, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
        return *this = AcGePlane(org, uAxis, vAxis);
    }
    AcGePlane& set(double a, double b, double c, double d) { return *this = AcGePlane(a, b, c, d); }

    using AcGePlanarEnt::intersectWith;
    /// The line two planes share; false when they are parallel.
    Adesk::Boolean intersectWith(const AcGePlane& otherPln, AcGeLine3d& resultLine,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Distance along the normal, negative behind the plane.
    [[nodiscard]] double signedDistanceTo(const AcGePoint3d& pnt) const {
        return (pnt - mOrigin).dotProduct(normal());
    }
    AcGePlane& reverseNormal();

    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kPlane; }
    [[nodiscard]] AcGePlane* copy() const override { return new AcGePlane(*this); }
};
