// Meshes of faces over a common list of vertices.
#pragma once

#include "db/sequence_end.h"
#include "db/subentities.h"
#include "db/vertex.h"

/// Faces that name their corners by number among the vertices, all in world coordinates. Files may
/// hold meshes whose faces are missing; their vertices still have extents.
class AcDbPolyFaceMesh : public AcDbEntity, public headless::SubentityOwner {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyFaceMesh);

    AcDbPolyFaceMesh() = default;

    Adesk::Int16 numVertices() const;
    Adesk::Int16 numFaces() const;

    /// The mesh takes the part over. The forms with an id need a resident mesh (eNotInDatabase).
    Acad::ErrorStatus appendVertex(AcDbPolyFaceMeshVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex);
    Acad::ErrorStatus appendFaceRecord(AcDbFaceRecord* face);
    Acad::ErrorStatus appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* face);
    Acad::ErrorStatus openVertex(AcDbVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    /// Vertices and face records; the caller deletes the iterator.
    AcDbObjectIterator* vertexIterator() const;

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
    /// How many parts of one kind there are, whether or not the mesh is open.
    template <class T>
    Adesk::Int16 count() const {
        Adesk::Int16 count = 0;
        vertices_.forEach<T>([&](const T&) { ++count; });
        return count;
    }

    headless::Subentities vertices_;
};
