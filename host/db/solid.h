// Flat filled triangles and quadrilaterals.
#pragma once

#include <array>

#include "db/entity.h"

namespace headless {

/// What SOLID and TRACE have in common: four corners in world coordinates, the last two crosswise
/// (the outline runs 0, 1, 3, 2), in the plane of a normal.
class FlatQuad : public AcDbEntity {
public:
    /// Corners 0 to 3; eInvalidIndex beyond.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;

protected:
    FlatQuad() = default;
    explicit FlatQuad(const std::array<AcGePoint3d, 4>& corners) : corners_(corners) {}

    Acad::ErrorStatus readCorners(AcDbDxfFiler& filer);
    Acad::ErrorStatus writeCorners(AcDbDxfFiler& filer) const;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(GeometrySink& sink) const override;

private:
    std::array<AcGePoint3d, 4> corners_{};
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0.0;
};

} // namespace headless

class AcDbSolid : public headless::FlatQuad {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid);

    AcDbSolid() = default;
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
              const AcGePoint3d& pt3)
        : FlatQuad({pt0, pt1, pt2, pt3}) {}
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2)
        : FlatQuad({pt0, pt1, pt2, pt2}) {}

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};
