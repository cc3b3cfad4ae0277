// The smooth pieces that curves consist of, as values: measured, evaluated, put under transforms.
#pragma once

#include <memory>

#include "ge/bezier_cuts.h"
#include "ge/bulge.h"
#include "ge/ellipse.h"
#include "ge/spline.h"

namespace headless {

/// A straight segment, an arc of a circle or (after an uneven transform) of an ellipse, a spline,
/// or a line without bounds. Its parameter runs from startParam() to endParam().
class CurvePiece {
public:
    enum class Kind {
        segment, // evenly from start to end
        bulge,   // an arc over a chord, evenly by angle
        arc,     // centre + u cos(p) + v sin(p)
        endless, // origin + direction p
        spline   // by its knots
    };

    static CurvePiece segment(const AcGePoint3d& start, const AcGePoint3d& end, double startParam,
                              double endParam);
    /// @param normal  unit normal about which a positive bulge turns counter-clockwise.
    static CurvePiece bulgeArc(const AcGePoint3d& start, const AcGePoint3d& end,
                               const AcGeVector3d& normal, double bulge, double startParam,
                               double endParam);
    /// @param u, v  conjugate half diameters; perpendicular and of one length for a circle.
    static CurvePiece arc(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v,
                          double startParam, double endParam);
    static CurvePiece endless(const AcGePoint3d& origin, const AcGeVector3d& direction,
                              double startParam, double endParam);
    static CurvePiece spline(std::shared_ptr<const Spline> curve);

    Kind kind() const { return kind_; }
    /// Of an arc over a chord; 0 for other kinds.
    double bulge() const { return bulge_; }
    double startParam() const { return startParam_; }
    double endParam() const { return endParam_; }
    AcGePoint3d start() const { return pointAt(startParam_); }
    AcGePoint3d end() const { return pointAt(endParam_); }

    AcGePoint3d pointAt(double param) const;
    AcGeVector3d firstDerivative(double param) const;
    AcGeVector3d secondDerivative(double param) const;

    // Of an arc: its centre and the half diameters that its parameter runs between.
    const AcGePoint3d& center() const { return origin_; }
    const AcGeVector3d& firstAxis() const { return u_; }
    const AcGeVector3d& secondAxis() const { return v_; }
    /// Of a spline: its curve.
    const Spline& curve() const { return *spline_; }

    double length() const { return lengthTo(endParam_); }
    /// Length from the start to a parameter.
    double lengthTo(double param) const;
    double paramAtLength(double length) const;

    /// Parameter of the point nearest to `point`. With an end freed, a segment goes on beyond it
    /// and an arc all the way around.
    double nearestParam(const AcGePoint3d& point, bool freeStart = false,
                        bool freeEnd = false) const;

    /// Half the integral of (p - origin) x dp: summed over a closed flat outline it is the area
    /// enclosed along the plane's normal.
    AcGeVector3d areaAbout(const AcGePoint3d& origin) const;

    /// The exact box; of a spline to 1e-12 of its size.
    Extents3d extents() const;

    /// An arc, or an arc over a chord, by its centre.
    EllipseArc ellipseArc() const;
    /// True for an arc over a chord so shallow that its centre is too far to compute with.
    bool isShallow() const;
    /// The same curve as rational Bezier curves, exact however shallow; none for an endless line.
    std::vector<RationalBezier> beziers() const;

    CurvePiece transformed(const AcGeMatrix3d& transform) const;

private:
    CurvePiece(Kind kind, double startParam, double endParam)
        : kind_(kind), startParam_(startParam), endParam_(endParam) {}

    double share(double param) const; // how far along, from 0 to 1
    double paramAtShare(double share) const;
    AcGePoint3d inFrame(double x, double y) const { return origin_ + u_ * x + v_ * y; }
    BulgeSegment unitArc() const; // the bulge arc in its frame: from (-1, 0) to (1, 0)
    bool isCircular() const;      // the frame is square, so angles and lengths are kept
    double nearestOnSegment(const AcGePoint3d& point, bool freeStart, bool freeEnd) const;
    double nearestOnBulge(const AcGePoint3d& point, bool free) const;
    double nearestOnArc(const AcGePoint3d& point, bool free) const;
    Extents3d bulgeExtents() const;

    Kind kind_;
    double startParam_;
    double endParam_;
    // segment: origin and end point; bulge: chord's middle with the half chord u and v to its left;
    // arc: centre and half diameters; endless: origin and direction u.
    AcGePoint3d origin_;
    AcGePoint3d end_;
    AcGeVector3d u_;
    AcGeVector3d v_;
    double bulge_ = 0.0;
    std::shared_ptr<const Spline> spline_;
};

} // namespace headless
