// Circular arcs.
#pragma once

#include "db/curve.h"

/// An arc counter-clockwise about its normal. The centre is in world coordinates; angles run from
/// the x axis of the object coordinate system. Its parameter is the angle, from the start angle to
/// the end angle, which counts a full turn more when it is the lesser of the two.
class AcDbArc : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);

    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);

    AcGePoint3d center() const { return look(center_); }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center) { return change(center_, center); }
    double radius() const { return look(radius_); }
    /// eInvalidInput for a negative radius.
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const { return look(startAngle_); }
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const { return look(endAngle_); }
    Acad::ErrorStatus setEndAngle(double angle);
    /// The angle swept, in (0, 2 pi].
    double totalAngle() const;
    double length() const { return radius() * totalAngle(); }
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    std::unique_ptr<AcDbEntity> unevenForm() const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

private:
    AcGePoint3d center_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double radius_ = 0.0;
    double startAngle_ = 0.0;
    double endAngle_ = 0.0;
    double thickness_ = 0.0;
};
