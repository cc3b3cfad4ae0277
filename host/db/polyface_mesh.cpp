#include "db/polyface_mesh.h"

#include <cstdlib>
#include <vector>

#include "db/dxf_output.h"
#include "db/geometry_sink.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolyFaceMesh, AcDbEntity, "POLYLINE")

Adesk::Int16 AcDbPolyFaceMesh::numVertices() const {
    assertReadEnabled();
    return count<AcDbPolyFaceMeshVertex>();
}

Adesk::Int16 AcDbPolyFaceMesh::numFaces() const {
    assertReadEnabled();
    return count<AcDbFaceRecord>();
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendVertex(AcDbPolyFaceMeshVertex* vertex) {
    return vertices_.append(*this, vertex);
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex) {
    return vertices_.append(*this, vertex, id);
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendFaceRecord(AcDbFaceRecord* face) {
    return vertices_.append(*this, face);
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* face) {
    return vertices_.append(*this, face, id);
}

Acad::ErrorStatus AcDbPolyFaceMesh::openVertex(AcDbVertex*& vertex, AcDbObjectId id,
                                               AcDb::OpenMode mode, bool openErased) const {
    return vertices_.open(vertex, id, mode, openErased);
}

AcDbObjectIterator* AcDbPolyFaceMesh::vertexIterator() const {
    assertReadEnabled();
    return vertices_.newIterator();
}

bool AcDbPolyFaceMesh::takesSubentity(const AcDbEntity& part) const {
    return part.isKindOf(AcDbPolyFaceMeshVertex::desc()) || part.isKindOf(AcDbFaceRecord::desc()) ||
           part.isKindOf(AcDbSequenceEnd::desc());
}

Acad::ErrorStatus AcDbPolyFaceMesh::subErase(bool erasing) {
    vertices_.erase(erasing);
    return AcDbEntity::subErase(erasing);
}

Acad::ErrorStatus AcDbPolyFaceMesh::subTransformBy(const AcGeMatrix3d& transform) {
    vertices_.change<AcDbPolyFaceMeshVertex>(
        [&](AcDbPolyFaceMeshVertex& vertex) { vertex.place(transform * vertex.place()); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyFaceMesh::subGetGripPoints(AcGePoint3dArray& points) const {
    vertices_.forEach<AcDbPolyFaceMeshVertex>(
        [&](const AcDbPolyFaceMeshVertex& vertex) { points.append(vertex.place()); });
    return Acad::eOk;
}

void AcDbPolyFaceMesh::subDescribe(headless::GeometrySink& sink) const {
    std::vector<AcGePoint3d> vertices;
    vertices_.forEach<AcDbPolyFaceMeshVertex>([&](const AcDbPolyFaceMeshVertex& vertex) {
        vertices.push_back(vertex.place());
        sink.point(vertex.place());
    });
    vertices_.forEach<AcDbFaceRecord>([&](const AcDbFaceRecord& face) {
        std::vector<std::size_t> corners;
        for (const Adesk::Int16 number : face.corners()) {
            const auto index = static_cast<std::size_t>(std::abs(number));
            if (index >= 1 && index <= vertices.size()) corners.push_back(index - 1);
        }
        for (std::size_t i = 0; i < corners.size(); ++i)
            sink.segment(vertices[corners[i]], vertices[corners[(i + 1) % corners.size()]]);
    });
}

Acad::ErrorStatus AcDbPolyFaceMesh::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 66, 70, 71, 72};
    constexpr std::int64_t kPolyface = 64;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbPolyFaceMesh", kCodes);
    out.integer(66, 1); // vertices and faces follow
    out.point(10, AcGePoint3d::kOrigin);
    out.integer(70, kPolyface);
    out.integer(71, count<AcDbPolyFaceMeshVertex>());
    out.integer(72, count<AcDbFaceRecord>());
    return Acad::eOk;
}
