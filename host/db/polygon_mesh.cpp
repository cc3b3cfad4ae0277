#include "db/polygon_mesh.h"

#include <vector>

#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/face.h"
#include "db/geometry_sink.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolygonMesh, AcDbEntity, "POLYLINE")

AcDbPolygonMesh::AcDbPolygonMesh(AcDb::PolyMeshType type, Adesk::Int16 mSize, Adesk::Int16 nSize,
                                 const AcGePoint3dArray& vertices, Adesk::Boolean mClosed,
                                 Adesk::Boolean nClosed)
    : type_(type), mSize_(mSize), nSize_(nSize), mClosed_(mClosed), nClosed_(nClosed) {
    for (const AcGePoint3d& vertex : vertices)
        appendVertex(new AcDbPolygonMeshVertex(vertex));
}

Acad::ErrorStatus AcDbPolygonMesh::appendVertex(AcDbPolygonMeshVertex* vertex) {
    return vertices_.append(*this, vertex);
}

Acad::ErrorStatus AcDbPolygonMesh::appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex) {
    return vertices_.append(*this, vertex, id);
}

Acad::ErrorStatus AcDbPolygonMesh::openVertex(AcDbPolygonMeshVertex*& vertex, AcDbObjectId id,
                                              AcDb::OpenMode mode, bool openErased) const {
    return vertices_.open(vertex, id, mode, openErased);
}

AcDbObjectIterator* AcDbPolygonMesh::vertexIterator() const {
    assertReadEnabled();
    return vertices_.newIterator();
}

bool AcDbPolygonMesh::takesSubentity(const AcDbEntity& part) const {
    return part.isKindOf(AcDbPolygonMeshVertex::desc()) || part.isKindOf(AcDbSequenceEnd::desc());
}

Acad::ErrorStatus AcDbPolygonMesh::subErase(bool erasing) {
    vertices_.erase(erasing);
    return AcDbEntity::subErase(erasing);
}

Acad::ErrorStatus AcDbPolygonMesh::subTransformBy(const AcGeMatrix3d& transform) {
    vertices_.change<AcDbPolygonMeshVertex>(
        [&](AcDbPolygonMeshVertex& vertex) { vertex.place(transform * vertex.place()); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolygonMesh::subGetGripPoints(AcGePoint3dArray& points) const {
    vertices_.forEach<AcDbPolygonMeshVertex>(
        [&](const AcDbPolygonMeshVertex& vertex) { points.append(vertex.place()); });
    return Acad::eOk;
}

AcDbPolygonMesh::Net AcDbPolygonMesh::net() const {
    Net net;
    vertices_.forEach<AcDbPolygonMeshVertex>([&](const AcDbPolygonMeshVertex& vertex) {
        if (!vertex.isFrame()) net.vertices.push_back(vertex.place());
    });
    const bool smooth = type_ != AcDb::kSimpleMesh;
    const auto m = static_cast<std::size_t>(std::max<int>(smooth ? mDensity_ : mSize_, 0));
    const auto n = static_cast<std::size_t>(std::max<int>(smooth ? nDensity_ : nSize_, 0));
    if (m * n != net.vertices.size()) return net;
    net.m = m;
    net.n = n;
    return net;
}

void AcDbPolygonMesh::subDescribe(headless::GeometrySink& sink) const {
    const Net net = this->net();
    // The net's lines where the sizes go with the vertices; in any case the vertices themselves.
    for (const AcGePoint3d& vertex : net.vertices)
        sink.point(vertex);
    for (std::size_t i = 0; i < net.m; ++i) {
        for (std::size_t j = 0; j < net.n; ++j) {
            if (i + 1 < net.m || mClosed_) sink.segment(net.at(i, j), net.at(i + 1, j));
            if (j + 1 < net.n || nClosed_) sink.segment(net.at(i, j), net.at(i, j + 1));
        }
    }
}

Acad::ErrorStatus AcDbPolygonMesh::subExplode(headless::NewEntities& parts) const {
    const Net net = this->net();
    for (std::size_t i = 0; i < net.m && (i + 1 < net.m || mClosed_); ++i) {
        for (std::size_t j = 0; j < net.n && (j + 1 < net.n || nClosed_); ++j) {
            headless::addPart(parts, *this,
                              std::make_unique<AcDbFace>(net.at(i, j), net.at(i + 1, j),
                                                         net.at(i + 1, j + 1), net.at(i, j + 1)));
        }
    }
    return parts.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus AcDbPolygonMesh::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    for (const headless::DxfTag& tag : filer->record().all()) {
        const std::int64_t value = tag.code >= 70 && tag.code <= 75 ? tag.integer() : 0;
        switch (tag.code) {
        case 70:
            mClosed_ = (value & 1) != 0;
            nClosed_ = (value & 32) != 0;
            break;
        case 71:
            mSize_ = static_cast<Adesk::Int16>(value);
            break;
        case 72:
            nSize_ = static_cast<Adesk::Int16>(value);
            break;
        case 73:
            mDensity_ = static_cast<Adesk::Int16>(value);
            break;
        case 74:
            nDensity_ = static_cast<Adesk::Int16>(value);
            break;
        case 75:
            if (value == 5 || value == 6 || value == 8)
                type_ = static_cast<AcDb::PolyMeshType>(value);
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolygonMesh::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 66, 70, 71, 72, 73, 74, 75};
    constexpr std::int64_t kMesh = 16;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbPolygonMesh", kCodes);
    out.integer(66, 1); // vertices follow
    out.point(10, AcGePoint3d::kOrigin);
    out.integer(70, kMesh | (mClosed_ ? 1 : 0) | (nClosed_ ? 32 : 0) |
                        (type_ != AcDb::kSimpleMesh ? 4 : 0));
    out.integer(71, mSize_, 0);
    out.integer(72, nSize_, 0);
    out.integer(73, mDensity_, 0);
    out.integer(74, nDensity_, 0);
    out.integer(75, type_, AcDb::kSimpleMesh);
    return Acad::eOk;
}
