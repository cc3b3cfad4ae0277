// Ellipses and their arcs.
#pragma once

#include <numbers>

#include "db/curve.h"

/// An ellipse, whole or an arc of it, counter-clockwise about its normal, in world coordinates.
///
/// The curve is centre + major cos(p) + minor sin(p); the parameter p is not the angle at the
/// centre unless the axes are equal: tan(angle) = ratio tan(p).
class AcDbEllipse : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse);

    AcDbEllipse() = default;
    /// @param radiusRatio  minor to major radius, in (0, 1].
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                const AcGeVector3d& majorAxis, double radiusRatio, double startAngle = 0.0,
                double endAngle = 2.0 * std::numbers::pi);

    AcGePoint3d center() const { return look(center_); }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center) { return change(center_, center); }
    AcGeVector3d normal() const { return look(normal_); }
    AcGeVector3d majorAxis() const { return look(majorAxis_); }
    AcGeVector3d minorAxis() const;
    double majorRadius() const { return majorAxis().length(); }
    double minorRadius() const { return majorRadius() * radiusRatio(); }
    double radiusRatio() const { return look(radiusRatio_); }
    /// eInvalidInput unless 1e-6 <= ratio <= 1.
    Acad::ErrorStatus setRadiusRatio(double ratio);

    double startAngle() const { return angleAtParam(look(startParam_)); }
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const { return angleAtParam(look(endParam_)); }
    Acad::ErrorStatus setEndAngle(double angle);
    Acad::ErrorStatus setStartParam(double param) { return change(startParam_, param); }
    Acad::ErrorStatus setEndParam(double param) { return change(endParam_, param); }
    /// Both keep whole turns, so they run on beyond 2 pi.
    double paramAtAngle(double angle) const;
    double angleAtParam(double param) const;

    Acad::ErrorStatus get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis,
                          double& radiusRatio, double& startAngle, double& endAngle) const;
    /// eInvalidInput, changing nothing, for a ratio out of range, no major axis, or axes that are
    /// not perpendicular.
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                          const AcGeVector3d& majorAxis, double radiusRatio,
                          double startAngle = 0.0, double endAngle = 2.0 * std::numbers::pi);
    /// True for an ellipse without size.
    Adesk::Boolean isNull() const;

    bool isClosed() const override;
    bool isPeriodic() const override { return isClosed(); }
    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

private:
    AcGePoint3d center_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGeVector3d majorAxis_ = AcGeVector3d::kXAxis;
    double radiusRatio_ = 1.0;
    double startParam_ = 0.0;
    double endParam_ = 2.0 * std::numbers::pi;
};
