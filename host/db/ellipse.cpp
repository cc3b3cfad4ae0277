#include "db/ellipse.h"

#include <cmath>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"
#include "ge/angles.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, "ELLIPSE")

using headless::CurvePiece;
using headless::kFullTurn;
namespace field = headless::field;

namespace {

constexpr double kLeastRatio = 1e-6;

bool isRatio(double ratio) { return ratio >= kLeastRatio && ratio <= 1.0 + 1e-12; }

/// The parameter span from start to end, in (0, 2 pi].
double sweepBetween(double start, double end) {
    const double sweep = end - start;
    if (sweep > 0.0 && sweep <= kFullTurn * (1.0 + 1e-12)) return sweep;
    const double turned = headless::normalizedAngle(sweep);
    return turned == 0.0 ? kFullTurn : turned;
}

/// The angle turned by stretching its cosine and sine, in the same whole turn.
double stretched(double angle, double alongX, double alongY) {
    const double turns = std::floor(angle / kFullTurn);
    const double within =
        headless::normalizedAngle(std::atan2(std::sin(angle) * alongY, std::cos(angle) * alongX));
    // A whole turn comes back as 0 and stays a whole turn.
    return turns * kFullTurn + within;
}

} // namespace

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                         const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                         double endAngle) {
    set(center, unitNormal, majorAxis, radiusRatio, startAngle, endAngle);
}

AcGeVector3d AcDbEllipse::minorAxis() const {
    return look(normal_).crossProduct(majorAxis_) * radiusRatio_;
}

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    return isRatio(ratio) ? change(radiusRatio_, std::min(ratio, 1.0)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbEllipse::setStartAngle(double angle) {
    return change(startParam_, paramAtAngle(angle));
}

Acad::ErrorStatus AcDbEllipse::setEndAngle(double angle) {
    return change(endParam_, paramAtAngle(angle));
}

double AcDbEllipse::paramAtAngle(double angle) const {
    return stretched(angle, look(radiusRatio_), 1.0);
}

double AcDbEllipse::angleAtParam(double param) const {
    return stretched(param, 1.0, look(radiusRatio_));
}

Acad::ErrorStatus AcDbEllipse::get(AcGePoint3d& center, AcGeVector3d& unitNormal,
                                   AcGeVector3d& majorAxis, double& radiusRatio, double& startAngle,
                                   double& endAngle) const {
    center = this->center();
    unitNormal = normal_;
    majorAxis = majorAxis_;
    radiusRatio = radiusRatio_;
    startAngle = this->startAngle();
    endAngle = this->endAngle();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                                   const AcGeVector3d& majorAxis, double radiusRatio,
                                   double startAngle, double endAngle) {
    assertWriteEnabled();
    if (!isRatio(radiusRatio) || majorAxis.isZeroLength() || unitNormal.isZeroLength())
        return Acad::eInvalidInput;
    const AcGeVector3d normal = unitNormal.normal();
    constexpr double kSquare = 1e-8;
    if (std::abs(normal.dotProduct(majorAxis.normal())) > kSquare) return Acad::eInvalidInput;
    center_ = center;
    normal_ = normal;
    majorAxis_ = majorAxis;
    radiusRatio_ = std::min(radiusRatio, 1.0);
    startParam_ = paramAtAngle(startAngle);
    endParam_ = paramAtAngle(endAngle);
    return Acad::eOk;
}

Adesk::Boolean AcDbEllipse::isNull() const { return look(majorAxis_).isZeroLength(); }

bool AcDbEllipse::isClosed() const {
    return sweepBetween(look(startParam_), endParam_) >= kFullTurn - 1e-9;
}

Acad::ErrorStatus AcDbEllipse::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(center_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

bool AcDbEllipse::forEachPiece(const headless::PieceVisitor& visit) const {
    const AcGeVector3d minor = normal_.crossProduct(majorAxis_) * radiusRatio_;
    const double sweep = sweepBetween(startParam_, endParam_);
    return visit(CurvePiece::arc(center_, majorAxis_, minor, startParam_, startParam_ + sweep));
}

Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& transform) {
    const AcGeVector3d u = transform * majorAxis_;
    const AcGeVector3d v = transform * (normal_.crossProduct(majorAxis_) * radiusRatio_);
    const AcGeVector3d normal = u.crossProduct(v);
    if (normal.isZeroLength()) return Acad::eDegenerateGeometry;

    // u and v are conjugate half diameters; the axes are where |u cos p + v sin p| is extreme.
    const double sweep = sweepBetween(startParam_, endParam_);
    double turn = 0.5 * std::atan2(2.0 * u.dotProduct(v), u.lengthSqrd() - v.lengthSqrd());
    const AcGeVector3d major = u * std::cos(turn) + v * std::sin(turn);
    const AcGeVector3d minor = v * std::cos(turn) - u * std::sin(turn);
    center_.transformBy(transform);
    normal_ = normal.normal();
    majorAxis_ = major;
    radiusRatio_ = std::clamp(minor.length() / major.length(), kLeastRatio, 1.0);
    startParam_ = headless::normalizedAngle(startParam_ - turn);
    endParam_ = startParam_ + sweep;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetGripPoints(AcGePoint3dArray& points) const {
    const AcGeVector3d minor = normal_.crossProduct(majorAxis_) * radiusRatio_;
    for (const AcGeVector3d& offset : {AcGeVector3d(), majorAxis_, minor, -majorAxis_, -minor})
        points.append(center_ + offset);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbEllipse"), field::Point{10, center_},
                field::Point{11, majorAxis_}, field::Real{40, radiusRatio_},
                field::Real{41, startParam_}, field::Real{42, endParam_}, field::Normal{normal_});
    radiusRatio_ = std::abs(radiusRatio_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31, 40, 41, 42, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbEllipse", kCodes);
    out.point(10, center_);
    out.point(11, majorAxis_);
    out.normal(normal_);
    out.real(40, radiusRatio_);
    out.real(41, startParam_);
    out.real(42, endParam_);
    return Acad::eOk;
}
