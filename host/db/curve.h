// Entities that are one continuous curve: measured, cut and evaluated by parameter.
#pragma once

#include <functional>
#include <optional>

#include "db/entity.h"

namespace headless {

class CurvePiece;

/// Called with a curve's pieces in order; answers false to stop.
using PieceVisitor = std::function<bool(const CurvePiece&)>;

} // namespace headless

/// A curve in the world, run through by a parameter. Lengths in drawing units, parameters as each
/// class says (vertex numbers for polylines, angles for arcs, distances for lines).
class AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);

    virtual bool isClosed() const { return false; }
    virtual bool isPeriodic() const { return false; }

    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
    virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
    virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& deriv) const;
    /// The point of the curve nearest to `point`; with `extend` of the curve continued at its ends.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                                bool extend = false) const;
    /// The area enclosed, an open curve closed by a straight line; never negative.
    virtual Acad::ErrorStatus getArea(double& area) const;
    virtual Acad::ErrorStatus reverseCurve();
    /// Cuts at parameters into new curves, in the order of the curve, whose properties they have;
    /// the array gets pointers to AcDbCurve that the caller owns. A closed curve but a spline is
    /// cut at its start only when the parameters name it. eInvalidInput when there is no parameter
    /// to cut at (for a circle no two) or one is not of the curve.
    Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curves) const;

protected:
    /// How far a parameter worked out from points may overshoot an end.
    static constexpr double kOvershoot = 1e-9;

    AcDbCurve() = default;
    /// Adds a line or an arc for each piece that has length. The pieces are segments and flat arcs
    /// about the normal.
    Acad::ErrorStatus explodePieces(headless::NewEntities& parts, const AcGeVector3d& normal,
                                    double thickness) const;

    /// Visits the smooth pieces that the curve consists of, joined end to start and their
    /// parameters likewise. False when the visitor stopped. Called whether or not the curve is
    /// open.
    virtual bool forEachPiece(const headless::PieceVisitor& visit) const = 0;
    void subDescribe(headless::GeometrySink& sink) const override;
    /// The piece that a parameter lies on, at a joint the later one; nothing beyond the ends.
    virtual std::optional<headless::CurvePiece> pieceAt(double param) const;
};
