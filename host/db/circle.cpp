#include "db/circle.h"

#include <numbers>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/ellipse.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"
#include "ge/angles.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, "CIRCLE")

using headless::CurvePiece;
namespace field = headless::field;

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : center_(center), normal_(headless::readNormal(normal)), radius_(std::abs(radius)) {}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    return radius >= 0.0 ? change(radius_, radius) : Acad::eInvalidInput;
}

double AcDbCircle::circumference() const { return headless::kFullTurn * radius(); }

Acad::ErrorStatus AcDbCircle::setCircumference(double circumference) {
    return setRadius(circumference / headless::kFullTurn);
}

Acad::ErrorStatus AcDbCircle::getArea(double& area) const {
    area = std::numbers::pi * radius() * radius();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(center_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbCircle::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

bool AcDbCircle::forEachPiece(const headless::PieceVisitor& visit) const {
    const headless::EllipseArc arc =
        headless::circleArc(center_, normal_, radius_, 0.0, headless::kFullTurn);
    return visit(CurvePiece::arc(arc.center, arc.u, arc.v, 0.0, headless::kFullTurn));
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    center_.transformBy(transform);
    normal_ = flat.normal();
    radius_ *= flat.scale();
    thickness_ *= flat.normalScale();
    return Acad::eOk;
}

std::unique_ptr<AcDbEntity> AcDbCircle::unevenForm() const {
    const AcGeVector3d major = headless::ocsMatrix(normal_) * (AcGeVector3d::kXAxis * radius_);
    auto ellipse = std::make_unique<AcDbEllipse>(center_, normal_, major, 1.0);
    ellipse->copyProperties(*this);
    return ellipse;
}

Acad::ErrorStatus AcDbCircle::subGetGripPoints(AcGePoint3dArray& points) const {
    const AcGeMatrix3d ecs = headless::ocsMatrix(normal_);
    const AcGeVector3d x = ecs * (AcGeVector3d::kXAxis * radius_);
    const AcGeVector3d y = ecs * (AcGeVector3d::kYAxis * radius_);
    for (const AcGeVector3d& offset : {AcGeVector3d(), x, y, -x, -y})
        points.append(center_ + offset);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbCircle"), field::Normal{normal_},
                field::OcsPoint{10, center_, normal_}, field::Real{39, thickness_},
                field::Real{40, radius_});
    radius_ = std::abs(radius_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 39, 40, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbCircle", kCodes);
    out.real(39, thickness_, 0.0);
    out.ocsPoint(10, center_, normal_);
    out.real(40, radius_);
    out.normal(normal_);
    return Acad::eOk;
}
