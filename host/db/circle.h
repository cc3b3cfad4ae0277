// Full circles.
#pragma once

#include "db/curve.h"

/// A circle about a centre in world coordinates, in the plane of its normal. Its parameter is the
/// angle from the x axis of the object coordinate system, from 0 to 2 pi.
class AcDbCircle : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);

    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

    AcGePoint3d center() const { return look(center_); }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center) { return change(center_, center); }
    double radius() const { return look(radius_); }
    /// eInvalidInput for a negative radius.
    Acad::ErrorStatus setRadius(double radius);
    double diameter() const { return 2.0 * radius(); }
    Acad::ErrorStatus setDiameter(double diameter) { return setRadius(diameter / 2.0); }
    double circumference() const;
    Acad::ErrorStatus setCircumference(double circumference);
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    bool isClosed() const override { return true; }
    bool isPeriodic() const override { return true; }
    Acad::ErrorStatus getArea(double& area) const override;
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
    double thickness_ = 0.0;
};
