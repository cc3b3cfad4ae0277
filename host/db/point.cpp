#include "db/point.h"

#include <numbers>

#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, "POINT")

namespace field = headless::field;

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    position_.transformBy(transform);
    ecsRotation_ = flat.angle(ecsRotation_);
    normal_ = flat.normal();
    thickness_ *= flat.normalScale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(position_);
    return Acad::eOk;
}

void AcDbPoint::subDescribe(headless::GeometrySink& sink) const { sink.point(position_); }

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbPoint"), field::Point{10, position_},
                field::Real{39, thickness_}, field::Angle{50, ecsRotation_},
                field::Normal{normal_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 39, 50, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbPoint", kCodes);
    out.point(10, position_);
    out.real(39, thickness_, 0.0);
    out.normal(normal_);
    out.angle(50, ecsRotation_, 0.0);
    return Acad::eOk;
}
