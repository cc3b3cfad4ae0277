#include "db/point.h"

#include <numbers>

#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, "POINT")

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
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (const headless::DxfTag& tag : filer->subclass("AcDbPoint")) {
        switch (tag.code) {
        case 10:
        case 20:
        case 30:
            headless::setCoordinate(position_, tag);
            break;
        case 39:
            thickness_ = tag.real();
            break;
        case 50:
            ecsRotation_ = tag.real() * std::numbers::pi / 180.0;
            break;
        case 210:
        case 220:
        case 230:
            headless::setCoordinate(normal, tag);
            break;
        default:
            break;
        }
    }
    normal_ = headless::readNormal(normal);
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
