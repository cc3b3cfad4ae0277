// Polylines in space: straight segments between vertices that are objects of their own.
#pragma once

#include "db/curve.h"
#include "db/sequence_end.h"
#include "db/subentities.h"
#include "db/vertex.h"

/// A chain of straight segments in world coordinates. The parameter is the number of the drawn
/// vertex; control points of a smoothed polyline are kept but not drawn.
class AcDb3dPolyline : public AcDbCurve, public headless::SubentityOwner {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline);

    AcDb3dPolyline() = default;
    AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices,
                   Adesk::Boolean closed = Adesk::kFalse);

    AcDb::Poly3dType polyType() const { return look(type_); }
    Acad::ErrorStatus setPolyType(AcDb::Poly3dType type) { return change(type_, type); }
    bool isClosed() const override { return look(closed_); }
    Acad::ErrorStatus makeClosed() { return change(closed_, true); }
    Acad::ErrorStatus makeOpen() { return change(closed_, false); }
    Acad::ErrorStatus length(double& length) const;

    /// The polyline takes the vertex over. The form with an id needs a resident polyline
    /// (eNotInDatabase).
    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                 AcDb::OpenMode mode, bool openErased = false) const;
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode);
    /// All vertices, the control points too; the caller deletes the iterator.
    AcDbObjectIterator* vertexIterator() const;

    Acad::ErrorStatus reverseCurve() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    bool takesSubentity(const AcDbEntity& part) const override;
    headless::Subentities& subentities() override { return vertices_; }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;
    bool keepsExtents() const override { return false; }

private:
    headless::Subentities vertices_;
    AcDb::Poly3dType type_ = AcDb::k3dSimplePoly;
    bool closed_ = false;
};
