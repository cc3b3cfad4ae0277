// Spline curves, by control points or through fit points.
#pragma once

#include <memory>
#include <vector>

#include "db/curve.h"

/// A non-uniform rational B-spline in world coordinates. Its parameter is that of its knots.
///
/// A spline known by its fit points only runs through them as a cubic whose parameter is the length
/// of the chords; an end without a tangent has no curvature.
class AcDbSpline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline);

    AcDbSpline();
    ~AcDbSpline() override;
    /// Through the points; `order` is kept for files, the curve itself is a cubic.
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
    Adesk::Boolean isNull() const;
    Adesk::Boolean isRational() const;
    int degree() const;

    int numControlPoints() const;
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
    double weightAt(int index) const;
    Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                   Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                   AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                   double& controlPtTol, double& knotTol) const;
    /// eInvalidInput, changing nothing, when the counts do not go together or the knots fall.
    Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                   Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                   const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                   double controlPtTol = 0.0, double knotTol = 0.0);

    Adesk::Boolean hasFitData() const { return numFitPoints() > 0; }
    int numFitPoints() const;
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    double fitTolerance() const;
    /// eNotApplicable when the tangents were not given.
    Acad::ErrorStatus getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const;

    bool isClosed() const override;
    bool isPeriodic() const override;
    bool isPlanar() const override;
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

private:
    struct Data;
    std::unique_ptr<Data> data_;
};
