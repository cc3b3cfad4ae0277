#include "db/line.h"

#include "db/curve_piece.h"
#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/flat_transform.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, "LINE")

using headless::CurvePiece;

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
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (const headless::DxfTag& tag : filer->subclass("AcDbLine")) {
        switch (tag.code) {
        case 10:
        case 20:
        case 30:
            headless::setCoordinate(start_, tag);
            break;
        case 11:
        case 21:
        case 31:
            headless::setCoordinate(end_, tag);
            break;
        case 39:
            thickness_ = tag.real();
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
