// Meshes over a grid of M by N vertices.
#pragma once

#include "db/sequence_end.h"
#include "db/subentities.h"
#include "db/vertex.h"

/// A net of four-sided patches in world coordinates; vertices run along N within M. A smoothed mesh
/// keeps its control points, which are not drawn.
class AcDbPolygonMesh : public AcDbEntity, public headless::SubentityOwner {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolygonMesh);

    AcDbPolygonMesh() = default;
    AcDbPolygonMesh(AcDb::PolyMeshType type, Adesk::Int16 mSize, Adesk::Int16 nSize,
                    const AcGePoint3dArray& vertices, Adesk::Boolean mClosed = Adesk::kTrue,
                    Adesk::Boolean nClosed = Adesk::kTrue);

    AcDb::PolyMeshType polyMeshType() const { return look(type_); }
    Acad::ErrorStatus setPolyMeshType(AcDb::PolyMeshType type) { return change(type_, type); }
    Adesk::Int16 mSize() const { return look(mSize_); }
    Acad::ErrorStatus setMSize(Adesk::Int16 size) { return change(mSize_, size); }
    Adesk::Int16 nSize() const { return look(nSize_); }
    Acad::ErrorStatus setNSize(Adesk::Int16 size) { return change(nSize_, size); }
    Adesk::Boolean isMClosed() const { return look(mClosed_); }
    Acad::ErrorStatus makeMClosed() { return change(mClosed_, true); }
    Acad::ErrorStatus makeMOpen() { return change(mClosed_, false); }
    Adesk::Boolean isNClosed() const { return look(nClosed_); }
    Acad::ErrorStatus makeNClosed() { return change(nClosed_, true); }
    Acad::ErrorStatus makeNOpen() { return change(nClosed_, false); }
    /// The grid's size when the mesh is smoothed.
    Adesk::Int16 mSurfaceDensity() const { return look(mDensity_); }
    Acad::ErrorStatus setMSurfaceDensity(Adesk::Int16 density) {
        return change(mDensity_, density);
    }
    Adesk::Int16 nSurfaceDensity() const { return look(nDensity_); }
    Acad::ErrorStatus setNSurfaceDensity(Adesk::Int16 density) {
        return change(nDensity_, density);
    }

    /// The mesh takes the vertex over. The form with an id needs a resident mesh (eNotInDatabase).
    Acad::ErrorStatus appendVertex(AcDbPolygonMeshVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex);
    Acad::ErrorStatus openVertex(AcDbPolygonMeshVertex*& vertex, AcDbObjectId id,
                                 AcDb::OpenMode mode, bool openErased = false) const;
    /// The caller deletes the iterator.
    AcDbObjectIterator* vertexIterator() const;

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
    bool keepsExtents() const override { return false; }

private:
    /// The vertices that are drawn, and how many there are each way; none when the sizes do not go
    /// with the vertices.
    struct Net {
        std::vector<AcGePoint3d> vertices;
        std::size_t m = 0;
        std::size_t n = 0;
        const AcGePoint3d& at(std::size_t i, std::size_t j) const {
            return vertices[i % m * n + j % n];
        }
    };
    Net net() const;

    headless::Subentities vertices_;
    AcDb::PolyMeshType type_ = AcDb::kSimpleMesh;
    Adesk::Int16 mSize_ = 0;
    Adesk::Int16 nSize_ = 0;
    Adesk::Int16 mDensity_ = 0;
    Adesk::Int16 nDensity_ = 0;
    bool mClosed_ = false;
    bool nClosed_ = false;
};
