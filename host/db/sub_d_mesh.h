// Meshes of faces with any number of corners.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "db/entity.h"

/// Faces over a list of vertices in world coordinates, drawn by their edges. A mesh that is to be
/// smoothed is drawn as the faces that it is smoothed from.
///
/// Its faces and creases stay in its record. Only the drawing that it was read into can hold it.
class AcDbSubDMesh : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSubDMesh);

    AcDbSubDMesh() = default;

    int numOfVertices() const { return static_cast<int>(look(vertices_).size()); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    /// @param list  of each face the number of its corners and these, as indices of vertices.
    /// @returns whether all of it made faces.
    bool takeFaces(const std::vector<std::int64_t>& list);

    std::vector<AcGePoint3d> vertices_;
    std::vector<std::pair<std::size_t, std::size_t>> edges_; // indices of vertices, each edge once
};
