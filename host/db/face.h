// Faces of three or four corners in space.
#pragma once

#include <array>

#include "db/entity.h"

/// Corners in world coordinates, in order around the face; a triangle repeats its third corner.
class AcDbFace : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbFace);

    AcDbFace() = default;
    AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
             const AcGePoint3d& pt3, Adesk::Boolean e0vis = Adesk::kTrue,
             Adesk::Boolean e1vis = Adesk::kTrue, Adesk::Boolean e2vis = Adesk::kTrue,
             Adesk::Boolean e3vis = Adesk::kTrue);
    AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
             Adesk::Boolean e0vis = Adesk::kTrue, Adesk::Boolean e1vis = Adesk::kTrue,
             Adesk::Boolean e2vis = Adesk::kTrue, Adesk::Boolean e3vis = Adesk::kTrue);

    /// Corners and edges 0 to 3; eInvalidIndex beyond.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    std::array<AcGePoint3d, 4> corners_{};
    unsigned hiddenEdges_ = 0; // Bit i: the edge from corner i on.
};
