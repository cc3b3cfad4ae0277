// Helices.
#pragma once

#include "db/spline.h"

/// A spline that also says what axis it runs around. Both go along when it is moved, turned,
/// mirrored and scaled; what would leave it no helix is refused with eCannotScaleNonUniformly, and
/// explosions make a spline of it then. Points are in world coordinates.
class AcDbHelix : public AcDbSpline {
public:
    ACRX_DECLARE_MEMBERS(AcDbHelix);

    AcDbHelix() = default;

    AcGePoint3d axisPoint() const { return look(axisPoint_); }
    AcGePoint3d startPoint() const { return look(startPoint_); }
    /// A unit vector.
    AcGeVector3d axisVector() const { return look(axis_); }
    double baseRadius() const { return look(radius_); }
    double turns() const { return look(turns_); }
    double turnHeight() const { return look(turnHeight_); }
    /// True for one that runs counter-clockwise, seen against the axis, as it rises.
    Adesk::Boolean twist() const { return look(twist_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    std::unique_ptr<AcDbEntity> unevenForm() const override { return bareSpline(); }

private:
    AcGePoint3d axisPoint_;
    AcGePoint3d startPoint_;
    AcGeVector3d axis_ = AcGeVector3d::kZAxis;
    double radius_ = 0.0; // at the base
    double turns_ = 0.0;
    double turnHeight_ = 0.0;
    bool twist_ = true;
};
