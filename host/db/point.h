// Single points.
#pragma once

#include "db/entity.h"

/// A point in world coordinates.
class AcDbPoint : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbPoint);

    AcDbPoint() = default;
    explicit AcDbPoint(const AcGePoint3d& position) : position_(position) {}

    AcGePoint3d position() const { return look(position_); }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position) {
        return change(position_, position);
    }
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }
    /// Angle of the point's mark in the object coordinate system.
    double ecsRotation() const { return look(ecsRotation_); }
    Acad::ErrorStatus setEcsRotation(double rotation) { return change(ecsRotation_, rotation); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    AcGePoint3d position_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0.0;
    double ecsRotation_ = 0.0;
};
