#include "db/sub_d_mesh.h"

#include <algorithm>

#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSubDMesh, AcDbEntity, "MESH")

namespace field = headless::field;

void AcDbSubDMesh::subDescribe(headless::GeometrySink& sink) const {
    if (edges_.empty())
        for (const AcGePoint3d& vertex : vertices_)
            sink.point(vertex);
    for (const auto& [from, to] : edges_)
        sink.segment(vertices_[from], vertices_[to]);
}

Acad::ErrorStatus AcDbSubDMesh::subTransformBy(const AcGeMatrix3d& transform) {
    for (AcGePoint3d& vertex : vertices_)
        vertex.transformBy(transform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& vertex : vertices_)
        points.append(vertex);
    return Acad::eOk;
}

bool AcDbSubDMesh::takeFaces(const std::vector<std::int64_t>& list) {
    const auto isVertex = [this](std::int64_t index) {
        return index >= 0 && index < std::ssize(vertices_);
    };
    auto at = list.begin();
    bool sound = true;
    while (at != list.end() && sound) {
        const std::int64_t corners = *at++;
        sound =
            corners >= 0 && corners <= list.end() - at && std::all_of(at, at + corners, isVertex);
        if (!sound) break;
        for (std::int64_t i = 0; i < corners; ++i) {
            const auto [low, high] = std::minmax(at[i], at[(i + 1) % corners]);
            edges_.emplace_back(static_cast<std::size_t>(low), static_cast<std::size_t>(high));
        }
        at += corners;
    }
    std::sort(edges_.begin(), edges_.end());
    edges_.erase(std::unique(edges_.begin(), edges_.end()), edges_.end());
    return sound;
}

Acad::ErrorStatus AcDbSubDMesh::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    constexpr int kFaces = 93;
    constexpr int kEdges = 94;
    const auto tags = filer->subclass("AcDbSubDMesh");
    std::vector<std::int64_t> list;
    bool inFaces = false;
    const auto faces = [&](const headless::DxfTag& tag) {
        if (tag.code == kFaces || tag.code == kEdges) inFaces = tag.code == kFaces;
        if (inFaces && tag.code == 90) list.push_back(tag.integer());
        return tag.code >= 90 && tag.code <= kEdges;
    };
    field::read(*filer, tags, faces, field::Points{10, vertices_});
    if (!takeFaces(list))
        filer->report(tags.front(), "a mesh with faces that it has no vertices for");
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbSubDMesh", kCodes);
    for (const AcGePoint3d& vertex : vertices_)
        out.point(10, vertex);
    return Acad::eOk;
}
