#include "db/mline.h"

#include "db/dxf_fields.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMline, AcDbEntity, "MLINE")

AcGePoint3d AcDbMline::vertexAt(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < look(vertices_).size() ? vertices_[at] : AcGePoint3d();
}

Acad::ErrorStatus AcDbMline::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    for (AcGePoint3d& vertex : vertices_)
        vertex.transformBy(transform);
    normal_ = flat.normal();
    scale_ *= flat.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMline::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& vertex : vertices_)
        points.append(vertex);
    return Acad::eOk;
}

void AcDbMline::subDescribe(headless::GeometrySink& sink) const {
    for (std::size_t i = 0; i + 1 < vertices_.size(); ++i)
        sink.segment(vertices_[i], vertices_[i + 1]);
    if (closed_ && !vertices_.empty()) sink.segment(vertices_.back(), vertices_.front());
}

Acad::ErrorStatus AcDbMline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (const headless::DxfTag& tag : filer->subclass("AcDbMline")) {
        switch (tag.code) {
        case 11:
            vertices_.emplace_back();
            [[fallthrough]];
        case 21:
        case 31:
            if (!vertices_.empty()) headless::setCoordinate(vertices_.back(), tag);
            break;
        case 40:
            scale_ = tag.real();
            break;
        case 70:
            justification_ = static_cast<Adesk::Int8>(tag.integer());
            break;
        case 71:
            closed_ = (tag.integer() & 2) != 0;
            break;
        case 210:
        case 220:
        case 230:
            headless::setCoordinate(normal, tag);
            break;
        case 340:
            style_ = filer->objectId(tag);
            break;
        default:
            break;
        }
    }
    normal_ = headless::readNormal(normal);
    return Acad::eOk;
}
