#include "db/endless_line.h"

#include <limits>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/ray.h"
#include "db/xline.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbRay, AcDbCurve, "RAY")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbXline, AcDbCurve, "XLINE")

namespace field = headless::field;

namespace headless {

Acad::ErrorStatus EndlessLine::setUnitDir(const AcGeVector3d& direction) {
    return changeNormal(unitDir_, direction);
}

Acad::ErrorStatus EndlessLine::getEndParam(double& /*param*/) const { return Acad::eNotApplicable; }

Acad::ErrorStatus EndlessLine::getEndPoint(AcGePoint3d& /*point*/) const {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus EndlessLine::getArea(double& /*area*/) const { return Acad::eNotApplicable; }

Acad::ErrorStatus EndlessLine::subTransformBy(const AcGeMatrix3d& transform) {
    const AcGeVector3d direction = transform * unitDir_;
    if (direction.isZeroLength()) return Acad::eDegenerateGeometry;
    basePoint_.transformBy(transform);
    unitDir_ = direction.normal();
    return Acad::eOk;
}

Acad::ErrorStatus EndlessLine::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(basePoint_);
    return Acad::eOk;
}

bool EndlessLine::forEachPiece(const PieceVisitor& visit) const {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    return visit(CurvePiece::endless(basePoint_, unitDir_, firstParam(), kInfinity));
}

Acad::ErrorStatus EndlessLine::readGeometry(AcDbDxfFiler& filer) {
    AcGeVector3d direction = AcGeVector3d::kXAxis;
    field::read(filer, filer.record().all(), field::Point{10, basePoint_},
                field::Point{11, direction});
    unitDir_ = direction.isZeroLength() ? AcGeVector3d::kXAxis : direction.normal();
    return Acad::eOk;
}

Acad::ErrorStatus EndlessLine::writeGeometry(AcDbDxfFiler& filer, const char* marker) const {
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31};
    DxfOutput& out = filer.output();
    out.subclass(marker, kCodes);
    out.point(10, basePoint_);
    out.point(11, unitDir_);
    return Acad::eOk;
}

} // namespace headless

Acad::ErrorStatus AcDbRay::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    return status == Acad::eOk ? readGeometry(*filer) : status;
}

Acad::ErrorStatus AcDbXline::getStartParam(double& /*param*/) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbXline::getStartPoint(AcGePoint3d& /*point*/) const {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbXline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    return status == Acad::eOk ? readGeometry(*filer) : status;
}

Acad::ErrorStatus AcDbRay::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    return status == Acad::eOk ? writeGeometry(*filer, "AcDbRay") : status;
}

Acad::ErrorStatus AcDbXline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    return status == Acad::eOk ? writeGeometry(*filer, "AcDbXline") : status;
}
