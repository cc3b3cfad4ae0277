// Spline curves, by control points or through fit points.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "db/curve.h"

namespace headless {

class DxfOutput;
struct Spline;

} // namespace headless

/// A non-uniform rational B-spline in world coordinates. Its parameter is that of its knots.
///
/// A spline known by its fit points only runs through them as a cubic whose parameter is the length
/// of the chords; an end without a tangent has no curvature.
class AcDbSpline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline);

    AcDbSpline() = default;
    /// Through the points; the curve is a cubic whatever the order asked for.
    explicit AcDbSpline(const AcGePoint3dArray& fitPoints, int order = 4,
                        double fitTolerance = 0.0);
    AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
               const AcGeVector3d& endTangent, int order = 4, double fitTolerance = 0.0);
    /// @param knots    controlPoints + degree + 1 values that never fall.
    /// @param weights  one per control point, or empty when not rational.
    AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
               const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
               const AcGeDoubleArray& weights, double controlPtTol = 0.0, double knotTol = 0.0);

    /// True for a spline without a curve.
    Adesk::Boolean isNull() const { return look(curve_) == nullptr; }
    Adesk::Boolean isRational() const;
    /// 0 for a spline without a curve.
    int degree() const;

    int numControlPoints() const;
    /// eInvalidIndex for no such control point.
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
    /// The weight of a control point; -1 for a spline that is not rational.
    double weightAt(int index) const;
    /// eDegenerateGeometry for a spline without a curve.
    Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                   Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                   AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                   double& controlPtTol, double& knotTol) const;
    /// eInvalidInput, changing nothing, when the counts do not go together or the knots fall.
    Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                   Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                   const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                   double controlPtTol = 0.0, double knotTol = 0.0);

    /// The part between two parameters, the lesser first, with the same layer, colour and so on;
    /// null for a spline without a curve.
    std::unique_ptr<AcDbSpline> partBetween(double from, double to) const;

    Adesk::Boolean hasFitData() const { return !look(fitPoints_).empty(); }
    int numFitPoints() const { return static_cast<int>(look(fitPoints_).size()); }
    /// eInvalidIndex for no such fit point.
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    double fitTolerance() const { return look(fitTolerance_); }
    /// eNotApplicable when the tangents were not given.
    Acad::ErrorStatus getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const;

    bool isClosed() const override;
    bool isPeriodic() const override { return look(periodic_); }
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override;
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

    /// The curve as a spline of no more, with the same layer, colour and so on, whether or not this
    /// is open; null for a spline without a curve.
    std::unique_ptr<AcDbSpline> bareSpline() const;

private:
    /// Makes the curve through the fit points.
    void fit();
    bool normalOf(AcGeVector3d& normal) const;
    void writeHead(headless::DxfOutput& out, const headless::Spline& curve) const;

    std::shared_ptr<const headless::Spline> curve_;
    std::vector<AcGePoint3d> fitPoints_;
    std::optional<AcGeVector3d> startTangent_;
    std::optional<AcGeVector3d> endTangent_;
    double fitTolerance_ = 0.0;
    double controlPointTolerance_ = 0.0;
    double knotTolerance_ = 0.0;
    bool closed_ = false;
    bool periodic_ = false;
    bool onlyFitPointsStated_ = false; // by the record it was read from
};
