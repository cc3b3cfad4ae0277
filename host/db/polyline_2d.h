// Old flat polylines, whose vertices are objects of their own.
#pragma once

#include "db/curve.h"
#include "db/sequence_end.h"
#include "db/subentities.h"
#include "db/vertex.h"

namespace headless {

struct WideSegment;

} // namespace headless

/// A chain of lines and arcs in the plane of its normal at its elevation. A smoothed polyline also
/// keeps the control points it was made from; the curve runs through the other vertices only. The
/// parameter is the number of the drawn vertex.
class AcDb2dPolyline : public AcDbCurve, public headless::SubentityOwner {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline);

    AcDb2dPolyline() = default;
    /// @param bulges  one per vertex, or null for straight segments.
    AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation = 0.0,
                   Adesk::Boolean closed = Adesk::kFalse, double defaultStartWidth = 0.0,
                   double defaultEndWidth = 0.0, AcGeDoubleArray* bulges = nullptr);

    AcDb::Poly2dType polyType() const { return look(type_); }
    Acad::ErrorStatus setPolyType(AcDb::Poly2dType type) { return change(type_, type); }
    bool isClosed() const override { return look(closed_); }
    Acad::ErrorStatus makeClosed() { return change(closed_, true); }
    Acad::ErrorStatus makeOpen() { return change(closed_, false); }
    double defaultStartWidth() const { return look(startWidth_); }
    Acad::ErrorStatus setDefaultStartWidth(double width) { return change(startWidth_, width); }
    double defaultEndWidth() const { return look(endWidth_); }
    Acad::ErrorStatus setDefaultEndWidth(double width) { return change(endWidth_, width); }
    double elevation() const { return look(elevation_); }
    Acad::ErrorStatus setElevation(double elevation) { return change(elevation_, elevation); }
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }
    Adesk::Boolean isLinetypeGenerationOn() const { return look(linetypeGeneration_); }
    Acad::ErrorStatus setLinetypeGenerationOn() { return change(linetypeGeneration_, true); }
    Acad::ErrorStatus setLinetypeGenerationOff() { return change(linetypeGeneration_, false); }
    Acad::ErrorStatus length(double& length) const;

    /// The polyline takes the vertex over. The form with an id needs a resident polyline
    /// (eNotInDatabase).
    Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
    /// Inserts behind `before`; a null one inserts at the beginning.
    Acad::ErrorStatus insertVertexAt(const AcDb2dVertex* before, AcDb2dVertex* vertex);
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, const AcDbObjectId& before,
                                     AcDb2dVertex* vertex);
    Acad::ErrorStatus openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode);
    /// All vertices, the control points too; the caller deletes the iterator.
    AcDbObjectIterator* vertexIterator() const;
    /// A vertex's position in world coordinates.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;

    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    bool takesSubentity(const AcDbEntity& part) const override;
    headless::Subentities& subentities() override { return vertices_; }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;

    bool keepsExtents() const override { return false; }

private:
    AcGePoint3d toWorld(const AcGePoint3d& position) const;
    headless::WideSegment wideSegment(const AcDb2dVertex& from, const AcDb2dVertex& to) const;
    void readFlags(std::int64_t flags);
    std::int64_t flags() const;

    headless::Subentities vertices_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double elevation_ = 0.0;
    double thickness_ = 0.0;
    double startWidth_ = 0.0;
    double endWidth_ = 0.0;
    AcDb::Poly2dType type_ = AcDb::k2dSimplePoly;
    bool closed_ = false;
    bool linetypeGeneration_ = false;
};
