#include "db/face.h"

#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbFace, AcDbEntity, "3DFACE")

namespace field = headless::field;

AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                   const AcGePoint3d& pt3, Adesk::Boolean e0vis, Adesk::Boolean e1vis,
                   Adesk::Boolean e2vis, Adesk::Boolean e3vis)
    : corners_{pt0, pt1, pt2, pt3},
      hiddenEdges_((e0vis ? 0U : 1U) | (e1vis ? 0U : 2U) | (e2vis ? 0U : 4U) | (e3vis ? 0U : 8U)) {}

AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                   Adesk::Boolean e0vis, Adesk::Boolean e1vis, Adesk::Boolean e2vis,
                   Adesk::Boolean e3vis)
    : AcDbFace(pt0, pt1, pt2, pt2, e0vis, e1vis, e2vis, e3vis) {}

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    point = look(corners_)[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    return change(corners_[index], point);
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    visible = (look(hiddenEdges_) & 1U << index) == 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    return change(hiddenEdges_, hiddenEdges_ & ~(1U << index));
}

Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    return change(hiddenEdges_, hiddenEdges_ | 1U << index);
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& transform) {
    for (AcGePoint3d& corner : corners_)
        corner.transformBy(transform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& corner : corners_)
        points.append(corner);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const AcGePoint3d& corner : corners_)
        box.addPoint(corner);
    extents = box;
    return Acad::eOk;
}

void AcDbFace::subDescribe(headless::GeometrySink& sink) const {
    for (std::size_t i = 0; i < corners_.size(); ++i)
        if ((hiddenEdges_ & 1U << i) == 0)
            sink.segment(corners_[i], corners_[(i + 1) % corners_.size()]);
}

Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    const auto edges = [this](const headless::DxfTag& tag) {
        if (tag.code == 70) hiddenEdges_ = static_cast<unsigned>(tag.integer()) & 0xFU;
        return false;
    };
    field::read(*filer, filer->subclass("AcDbFace"), field::Point{10, corners_[0]},
                field::Point{11, corners_[1]}, field::Point{12, corners_[2]},
                field::Point{13, corners_[3]}, edges);
    if (filer->record().find(13) == nullptr) corners_[3] = corners_[2];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 70};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbFace", kCodes);
    for (std::size_t i = 0; i < corners_.size(); ++i)
        out.point(10 + static_cast<int>(i), corners_[i]);
    out.integer(70, hiddenEdges_, 0);
    return Acad::eOk;
}
