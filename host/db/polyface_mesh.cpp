#include "db/polyface_mesh.h"

#include <cstdlib>
#include <vector>

#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/face.h"
#include "db/geometry_sink.h"
#include "db/line.h"
#include "db/point.h"

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

namespace {

/// What a face record stands for: a face, a line between two corners, or a point.
std::unique_ptr<AcDbEntity> entityOf(std::vector<Adesk::Int16> numbers,
                                     const std::vector<AcGePoint3d>& vertices) {
    const auto corner = [&](std::size_t i) {
        return vertices[static_cast<std::size_t>(std::abs(numbers[i])) - 1];
    };
    switch (numbers.size()) {
    case 0:
        return nullptr;
    case 1:
        return std::make_unique<AcDbPoint>(corner(0));
    case 2:
        return std::make_unique<AcDbLine>(corner(0), corner(1));
    case 3:
        numbers.push_back(numbers.back());
        break;
    default:
        break;
    }
    return std::make_unique<AcDbFace>(corner(0), corner(1), corner(2), corner(3), numbers[0] > 0,
                                      numbers[1] > 0, numbers[2] > 0, numbers[3] > 0);
}

} // namespace

Acad::ErrorStatus AcDbPolyFaceMesh::subExplode(headless::NewEntities& parts) const {
    std::vector<AcGePoint3d> vertices;
    vertices_.forEach<AcDbPolyFaceMeshVertex>(
        [&](const AcDbPolyFaceMeshVertex& vertex) { vertices.push_back(vertex.place()); });
    vertices_.forEach<AcDbFaceRecord>([&](const AcDbFaceRecord& record) {
        std::vector<Adesk::Int16> numbers;
        for (const Adesk::Int16 number : record.corners()) {
            if (number != 0 && static_cast<std::size_t>(std::abs(number)) <= vertices.size())
                numbers.push_back(number);
        }
        if (auto entity = entityOf(std::move(numbers), vertices))
            headless::addPart(parts, *this, std::move(entity));
    });
    return parts.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
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
