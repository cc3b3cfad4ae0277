#include "db/line.h"

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, "LINE")

using headless::CurvePiece;
namespace field = headless::field;

Acad::ErrorStatus AcDbLine::getArea(double& /*area*/) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbLine::reverseCurve() {
    assertWriteEnabled();
    std::swap(start_, end_);
    return Acad::eOk;
}

bool AcDbLine::forEachPiece(const headless::PieceVisitor& visit) const {
    return visit(CurvePiece::segment(start_, end_, 0.0, start_.distanceTo(end_)));
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    start_.transformBy(transform);
    end_.transformBy(transform);
    normal_ = flat.normal();
    thickness_ *= flat.normalScale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(start_);
    points.append(start_ + (end_ - start_) / 2.0);
    points.append(end_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbLine"), field::Point{10, start_},
                field::Point{11, end_}, field::Real{39, thickness_}, field::Normal{normal_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31, 39, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbLine", kCodes);
    out.real(39, thickness_, 0.0);
    out.point(10, start_);
    out.point(11, end_);
    out.normal(normal_);
    return Acad::eOk;
}
