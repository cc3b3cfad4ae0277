// Circular arcs and circles.
#pragma once

#include "ge/curve.h"

namespace headless {

/// What circular arcs of the plane and of space share: a centre, a radius, a reference vector and
/// two angles measured from it in the arc's own direction. The angle is the parameter.
template <class D>
class CircArcOf : public D::Curve {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;

    [[nodiscard]] Point center() const { return mCenter; }
    [[nodiscard]] double radius() const { return mRadius; }
    [[nodiscard]] double startAng() const { return mStart; }
    [[nodiscard]] double endAng() const { return mEnd; }
    [[nodiscard]] Vector refVec() const { return mRef; }
    [[nodiscard]] Point startPoint() const { return pointAt(mStart); }
    [[nodiscard]] Point endPoint() const { return pointAt(mEnd); }

protected:
    CircArcOf(const Point& center, double radius, const Vector& ref, double start, double end);

    /// The unit vector a quarter turn ahead of the reference vector.
    [[nodiscard]] virtual Vector across() const = 0;

    [[nodiscard]] AcGeInterval interval() const override { return {mStart, mEnd}; }
    [[nodiscard]] Point pointAt(double param) const override;
    [[nodiscard]] Vector derivativeAt(double param, int order) const override;
    [[nodiscard]] double closestParam(const Point& pnt) const override;
    [[nodiscard]] double lengthBetween(double from, double to) const override {
        return std::abs(to - from) * mRadius;
    }
    [[nodiscard]] bool equals(const typename D::Entity& other, const AcGeTol& tol) const override;

    void assignAngles(double start, double end);
    /// Keeps the points and turns the angles' sense.
    void turnAngles();

    Point mCenter;
    double mRadius;
    Vector mRef;
    double mStart = 0.0;
    double mEnd = 0.0;
};

extern template class CircArcOf<Plane2d>;
extern template class CircArcOf<Space3d>;

} // namespace headless

class AcGeLinearEnt2d;
class AcGeLinearEnt3d;
class AcGePlane;

class AcGeCircArc2d : public headless::CircArcOf<headless::Plane2d> {
public:
    /// The unit circle about the origin.
    AcGeCircArc2d() : AcGeCircArc2d(AcGePoint2d::kOrigin, 1.0) {}
    AcGeCircArc2d(const AcGePoint2d& cent, double radius);
    AcGeCircArc2d(const AcGePoint2d& cent, double radius, double ang1, double ang2,
                  const AcGeVector2d& refVec = AcGeVector2d::kXAxis,
                  Adesk::Boolean isClockWise = Adesk::kFalse);
    /// Through three points; a unit circle when they lie on a line.
    AcGeCircArc2d(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                  const AcGePoint2d& endPoint);
    /// Over a chord. `bulge` is the height over the chord when `bulgeFlag` is true, else the
    /// tangent of a quarter of the sweep; positive turns counter-clockwise.
    AcGeCircArc2d(const AcGePoint2d& startPoint, const AcGePoint2d& endPoint, double bulge,
                  Adesk::Boolean bulgeFlag = Adesk::kTrue);

    [[nodiscard]] Adesk::Boolean isClockWise() const { return mClockwise; }
    /// True for points within the circle, away from its edge.
    [[nodiscard]] Adesk::Boolean isInside(const AcGePoint2d& pnt,
                                          const AcGeTol& tol = AcGeContext::gTol) const;

    /// Common points, at most two; p1 and p2 are untouched beyond `intn`. False when none.
    Adesk::Boolean intersectWith(const AcGeLinearEnt2d& line, int& intn, AcGePoint2d& p1,
                                 AcGePoint2d& p2, const AcGeTol& tol = AcGeContext::gTol) const;
    /// The same with an arc; arcs of one circle have no single points in common.
    Adesk::Boolean intersectWith(const AcGeCircArc2d& arc, int& intn, AcGePoint2d& p1,
                                 AcGePoint2d& p2, const AcGeTol& tol = AcGeContext::gTol) const;
    /// A line through `pnt` that touches the circle: at `pnt` itself when that is on the circle,
    /// else on the arc if one of the two touching points is; false for a point inside.
    Adesk::Boolean tangent(const AcGePoint2d& pnt, AcGeLine2d& line,
                           const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean tangent(const AcGePoint2d& pnt, AcGeLine2d& line, const AcGeTol& tol,
                           AcGeError& error) const;

    AcGeCircArc2d& setCenter(const AcGePoint2d& cent);
    AcGeCircArc2d& setRadius(double radius);
    AcGeCircArc2d& setAngles(double startAng, double endAng);
    /// Changes the arc to the rest of its circle.
    AcGeCircArc2d& setToComplement();
    /// Turns the arc so that its angles count from `vec`.
    AcGeCircArc2d& setRefVec(const AcGeVector2d& vec);
    AcGeCircArc2d& set(const AcGePoint2d& cent, double radius);
    AcGeCircArc2d& set(const AcGePoint2d& cent, double radius, double ang1, double ang2,
                       const AcGeVector2d& refVec = AcGeVector2d::kXAxis,
                       Adesk::Boolean isClockWise = Adesk::kFalse);
    AcGeCircArc2d& set(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                       const AcGePoint2d& endPoint);
    /// As above; an `error` leaves the arc as it was.
    AcGeCircArc2d& set(const AcGePoint2d& startPoint, const AcGePoint2d& point,
                       const AcGePoint2d& endPoint, AcGeError& error);
    AcGeCircArc2d& set(const AcGePoint2d& startPoint, const AcGePoint2d& endPoint, double bulge,
                       Adesk::Boolean bulgeFlag = Adesk::kTrue);
    /// The circle of this radius touching two lines or arcs near the given parameters, cut to the
    /// arc between the touching points. The parameters become those of the touching points;
    /// without `success` nothing changes.
    AcGeCircArc2d& set(const AcGeCurve2d& curve1, const AcGeCurve2d& curve2, double radius,
                       double& param1, double& param2, Adesk::Boolean& success);

    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kCircArc2d; }
    [[nodiscard]] AcGeCircArc2d* copy() const override { return new AcGeCircArc2d(*this); }

protected:
    [[nodiscard]] AcGeVector2d across() const override {
        return mClockwise ? -mRef.perpVector() : mRef.perpVector();
    }
    void apply(const AcGeMatrix2d& mat) override;
    void reverse() override;
    [[nodiscard]] bool equals(const AcGeEntity2d& other, const AcGeTol& tol) const override;

private:
    bool mClockwise = false;
};

class AcGeCircArc3d : public headless::CircArcOf<headless::Space3d> {
public:
    /// The unit circle about the origin in the xy plane.
    AcGeCircArc3d() : AcGeCircArc3d(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, 1.0) {}
    AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius);
    AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm, const AcGeVector3d& refVec,
                  double radius, double startAng, double endAng);
    /// Through three points, its angles counted from the first; a unit circle when they lie on a
    /// line.
    AcGeCircArc3d(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                  const AcGePoint3d& endPoint);

    [[nodiscard]] AcGeVector3d normal() const { return mNormal; }
    void getPlane(AcGePlane& plane) const;
    [[nodiscard]] Adesk::Boolean isInside(const AcGePoint3d& pnt,
                                          const AcGeTol& tol = AcGeContext::gTol) const;

    /// Common points, at most two; p1 and p2 are untouched beyond `intn`. False when none.
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, int& intn, AcGePoint3d& p1,
                                 AcGePoint3d& p2, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean intersectWith(const AcGeCircArc3d& arc, int& intn, AcGePoint3d& p1,
                                 AcGePoint3d& p2, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean intersectWith(const AcGePlane& plane, int& intn, AcGePoint3d& p1,
                                 AcGePoint3d& p2, const AcGeTol& tol = AcGeContext::gTol) const;
    /// As in the plane; false too for a point off the arc's plane.
    Adesk::Boolean tangent(const AcGePoint3d& pnt, AcGeLine3d& line,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    AcGeCircArc3d& setCenter(const AcGePoint3d& cent);
    AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);
    AcGeCircArc3d& setRadius(double radius);
    AcGeCircArc3d& setAngles(double startAng, double endAng);
    AcGeCircArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius);
    AcGeCircArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& nrm, const AcGeVector3d& refVec,
                       double radius, double startAng, double endAng);
    AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                       const AcGePoint3d& endPoint);
    AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                       const AcGePoint3d& endPoint, AcGeError& error);

    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kCircArc3d; }
    [[nodiscard]] AcGeCircArc3d* copy() const override { return new AcGeCircArc3d(*this); }

protected:
    [[nodiscard]] AcGeVector3d across() const override { return mNormal.crossProduct(mRef); }
    void apply(const AcGeMatrix3d& mat) override;
    void reverse() override;
    [[nodiscard]] bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;

private:
    /// The arc in the coordinates of `getPlane`.
    [[nodiscard]] AcGeCircArc2d flat() const;
    /// The `count` flat points that lie on `other`, back in space.
    Adesk::Boolean keepOn(const AcGeEntity3d& other, int count, const AcGePoint2d (&flatPoints)[2],
                          int& intn, AcGePoint3d& p1, AcGePoint3d& p2, const AcGeTol& tol) const;

    AcGeVector3d mNormal = AcGeVector3d::kZAxis;
};
