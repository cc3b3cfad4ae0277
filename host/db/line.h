// Straight lines between two points.
#pragma once

#include "db/curve.h"

/// A line from a start to an end point, both in world coordinates. Its parameter is the distance
/// from the start point.
class AcDbLine : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine);

    AcDbLine() = default;
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : start_(start), end_(end) {}

    AcGePoint3d startPoint() const { return look(start_); }
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point) { return change(start_, point); }
    AcGePoint3d endPoint() const { return look(end_); }
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point) { return change(end_, point); }
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus reverseCurve() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

private:
    AcGePoint3d start_;
    AcGePoint3d end_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0.0;
};
