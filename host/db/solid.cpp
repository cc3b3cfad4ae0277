#include "db/solid.h"

#include <array>

#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/trace.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSolid, AcDbEntity, "SOLID")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbTrace, AcDbEntity, "TRACE")

namespace field = headless::field;

namespace headless {

Acad::ErrorStatus FlatQuad::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    point = look(corners_)[index];
    return Acad::eOk;
}

Acad::ErrorStatus FlatQuad::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index >= corners_.size()) return Acad::eInvalidIndex;
    return change(corners_[index], point);
}

Acad::ErrorStatus FlatQuad::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(corners_)[0], normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void FlatQuad::getEcs(AcGeMatrix3d& ecs) const { ecs = ocsMatrix(look(normal_)); }

Acad::ErrorStatus FlatQuad::subTransformBy(const AcGeMatrix3d& transform) {
    const FlatTransform flat(transform, normal_);
    for (AcGePoint3d& corner : corners_)
        corner.transformBy(transform);
    normal_ = flat.normal();
    thickness_ *= flat.normalScale();
    return Acad::eOk;
}

Acad::ErrorStatus FlatQuad::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& corner : corners_)
        points.append(corner);
    return Acad::eOk;
}

void FlatQuad::subDescribe(GeometrySink& sink) const {
    constexpr std::size_t kOutline[] = {0, 1, 3, 2, 0};
    for (std::size_t i = 0; i < 4; ++i)
        sink.segment(corners_[kOutline[i]], corners_[kOutline[i + 1]]);
    sink.area(std::array{corners_[0], corners_[1], corners_[3], corners_[2]});
}

Acad::ErrorStatus FlatQuad::readCorners(AcDbDxfFiler& filer) {
    const auto tags = filer.record().all();
    field::read(filer, tags, field::Normal{normal_}, field::Point{10, corners_[0]},
                field::Point{11, corners_[1]}, field::Point{12, corners_[2]},
                field::Point{13, corners_[3]}, field::Real{39, thickness_});
    // A triangle repeats its third corner; careless files leave the fourth out.
    if (filer.record().find(13) == nullptr) corners_[3] = corners_[2];
    for (AcGePoint3d& corner : corners_)
        corner = ocsToWorld(corner, normal_);
    return Acad::eOk;
}

Acad::ErrorStatus FlatQuad::writeCorners(AcDbDxfFiler& filer) const {
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31,  12,  22,
                                              32, 13, 23, 33, 39, 210, 220, 230};
    DxfOutput& out = filer.output();
    out.subclass("AcDbTrace", kCodes); // of solids too
    for (std::size_t i = 0; i < corners_.size(); ++i)
        out.ocsPoint(10 + static_cast<int>(i), corners_[i], normal_);
    out.real(39, thickness_, 0.0);
    out.normal(normal_);
    return Acad::eOk;
}

} // namespace headless

Acad::ErrorStatus AcDbSolid::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    return status == Acad::eOk ? readCorners(*filer) : status;
}

Acad::ErrorStatus AcDbTrace::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    return status == Acad::eOk ? readCorners(*filer) : status;
}

Acad::ErrorStatus AcDbSolid::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    return status == Acad::eOk ? writeCorners(*filer) : status;
}

Acad::ErrorStatus AcDbTrace::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    return status == Acad::eOk ? writeCorners(*filer) : status;
}
