#include "db/arc.h"

#include <numbers>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/ellipse.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"
#include "ge/angles.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbArc, AcDbCurve, "ARC")

using headless::CurvePiece;
using headless::normalizedAngle;
namespace field = headless::field;

namespace {

/// The angle swept counter-clockwise from one direction to the other, in (0, 2 pi].
double sweepBetween(double start, double end) {
    const double sweep = normalizedAngle(end - start);
    return sweep == 0.0 ? headless::kFullTurn : sweep;
}

} // namespace

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                 double startAngle, double endAngle)
    : center_(center), normal_(headless::readNormal(normal)), radius_(std::abs(radius)),
      startAngle_(normalizedAngle(startAngle)), endAngle_(normalizedAngle(endAngle)) {}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    return radius >= 0.0 ? change(radius_, radius) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    return change(startAngle_, normalizedAngle(angle));
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    return change(endAngle_, normalizedAngle(angle));
}

double AcDbArc::totalAngle() const { return sweepBetween(startAngle(), endAngle()); }

Acad::ErrorStatus AcDbArc::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(center_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbArc::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

bool AcDbArc::forEachPiece(const headless::PieceVisitor& visit) const {
    const double sweep = sweepBetween(startAngle_, endAngle_);
    const headless::EllipseArc arc =
        headless::circleArc(center_, normal_, radius_, startAngle_, sweep);
    return visit(CurvePiece::arc(arc.center, arc.u, arc.v, startAngle_, startAngle_ + sweep));
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    // The sweep is kept as it is: worked out from two turned angles it could vanish or wrap.
    const double sweep = sweepBetween(startAngle_, endAngle_);
    center_.transformBy(transform);
    normal_ = flat.normal();
    radius_ *= flat.scale();
    thickness_ *= flat.normalScale();
    const double start = flat.angle(startAngle_);
    if (start != startAngle_) endAngle_ = normalizedAngle(start + sweep);
    startAngle_ = start;
    return Acad::eOk;
}

std::unique_ptr<AcDbEntity> AcDbArc::unevenForm() const {
    const AcGeVector3d major = headless::ocsMatrix(normal_) * (AcGeVector3d::kXAxis * radius_);
    auto ellipse =
        std::make_unique<AcDbEllipse>(center_, normal_, major, 1.0, startAngle_,
                                      startAngle_ + sweepBetween(startAngle_, endAngle_));
    ellipse->copyProperties(*this);
    return ellipse;
}

Acad::ErrorStatus AcDbArc::subGetGripPoints(AcGePoint3dArray& points) const {
    const double sweep = sweepBetween(startAngle_, endAngle_);
    const headless::EllipseArc arc =
        headless::circleArc(center_, normal_, radius_, startAngle_, sweep);
    points.append(center_);
    for (const double share : {0.0, 0.5, 1.0})
        points.append(arc.pointAt(startAngle_ + sweep * share));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    // Centre and angles stand in two subclasses, and writers differ in where they put the normal.
    field::read(*filer, filer->record().all(), field::Normal{normal_},
                field::OcsPoint{10, center_, normal_}, field::Real{39, thickness_},
                field::Real{40, radius_}, field::Angle{50, startAngle_},
                field::Angle{51, endAngle_});
    radius_ = std::abs(radius_);
    startAngle_ = normalizedAngle(startAngle_);
    endAngle_ = normalizedAngle(endAngle_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    // Thickness and normal stand in either part, as writers differ.
    static constexpr std::int16_t kCircleCodes[] = {10, 20, 30, 39, 40, 210, 220, 230};
    static constexpr std::int16_t kArcCodes[] = {39, 50, 51, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbCircle", kCircleCodes);
    out.real(39, thickness_, 0.0);
    out.ocsPoint(10, center_, normal_);
    out.real(40, radius_);
    out.normal(normal_);
    out.subclass("AcDbArc", kArcCodes);
    out.angle(50, startAngle_);
    out.angle(51, endAngle_);
    return Acad::eOk;
}
