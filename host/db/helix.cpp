#include "db/helix.h"

#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbHelix, AcDbSpline, "HELIX")

namespace field = headless::field;

Acad::ErrorStatus AcDbHelix::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, axis_);
    const AcGeVector3d axis = transform * axis_;
    if (!flat.keepsCircles() || axis.isZeroLength() || !axis.isParallelTo(flat.normal()))
        return Acad::eCannotScaleNonUniformly;
    if (const auto status = AcDbSpline::subTransformBy(transform); status != Acad::eOk)
        return status;
    axisPoint_.transformBy(transform);
    startPoint_.transformBy(transform);
    radius_ *= flat.scale();
    turnHeight_ *= axis.length();
    axis_ = axis.normal();
    if (transform.det() < 0.0) twist_ = !twist_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHelix::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSpline::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbHelix"), field::Point{10, axisPoint_},
                field::Point{11, startPoint_}, field::Point{12, axis_}, field::Real{40, radius_},
                field::Real{41, turns_}, field::Real{42, turnHeight_}, field::Flag{290, twist_});
    axis_ = headless::readNormal(axis_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHelix::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSpline::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 40, 41, 42, 290};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbHelix", kCodes);
    out.point(10, axisPoint_);
    out.point(11, startPoint_);
    out.point(12, axis_);
    out.real(40, radius_);
    out.real(41, turns_);
    out.real(42, turnHeight_);
    out.integer(290, twist_ ? 1 : 0);
    return Acad::eOk;
}
