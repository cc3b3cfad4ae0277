// What rays and construction lines have in common.
#pragma once

#include "db/curve.h"

namespace headless {

/// A straight line without bounds, in world coordinates; it has no extents. Its parameter is the
/// distance from the base point along the direction.
class EndlessLine : public AcDbCurve {
public:
    AcGePoint3d basePoint() const { return look(basePoint_); }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point) { return change(basePoint_, point); }
    AcGeVector3d unitDir() const { return look(unitDir_); }
    /// eInvalidInput for a vector without length.
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);

    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getArea(double& area) const override;

protected:
    EndlessLine() = default;

    Acad::ErrorStatus readGeometry(AcDbDxfFiler& filer);
    Acad::ErrorStatus writeGeometry(AcDbDxfFiler& filer, const char* marker) const;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    bool forEachPiece(const PieceVisitor& visit) const override;

    /// The parameter that the line begins at; its lowest.
    virtual double firstParam() const = 0;

private:
    AcGePoint3d basePoint_;
    AcGeVector3d unitDir_ = AcGeVector3d::kXAxis;
};

} // namespace headless
