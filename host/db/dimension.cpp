#include "db/dimension.h"

#include <cmath>
#include <numbers>
#include <span>

#include "db/block_table.h"
#include "db/dim_style_table.h"
#include "db/dimension_picture.h"
#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/resbuf.h"
#include "ge/angles.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDimension, AcDbEntity)
HEADLESS_DXF_DEFINE_MEMBERS(AcDbAlignedDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbRotatedDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDb2LineAngularDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDb3PointAngularDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbDiametricDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbRadialDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbOrdinateDimension, AcDbDimension, "DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbArcDimension, AcDbDimension, "ARC_DIMENSION")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbRadialDimensionLarge, AcDbDimension, "LARGE_RADIAL_DIMENSION")

using headless::DxfTag;
namespace field = headless::field;

namespace {

// Bits of a dimension's flags beside its kind.
constexpr std::uint32_t kOrdinateX = 64;
constexpr std::uint32_t kTextMoved = 128;

double radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

} // namespace

Acad::ErrorStatus AcDbDimension::setDimBlockId(AcDbObjectId block) {
    assertWriteEnabled();
    block_ = block;
    picture_.reset();
    return Acad::eOk;
}

AcGePoint3d AcDbDimension::dimBlockPosition() const {
    return headless::ocsToWorld(look(blockPosition_), normal_);
}

Acad::ErrorStatus AcDbDimension::setDimBlockPosition(const AcGePoint3d& position) {
    return change(blockPosition_, headless::worldToOcs(position, normal_));
}

ACHAR* AcDbDimension::dimensionText() const { return acutNewString(look(text_).c_str()); }

Acad::ErrorStatus AcDbDimension::setDimensionText(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    return change(text_, text);
}

Acad::ErrorStatus AcDbDimension::measurement(double& value) const {
    if (!look(measurement_)) return Acad::eNotApplicable;
    value = *measurement_;
    return Acad::eOk;
}

AcGeMatrix3d AcDbDimension::picture() const {
    if (picture_ != nullptr) return *picture_;
    return AcGeMatrix3d::translation(headless::ocsToWorld(blockPosition_, normal_).asVector());
}

void AcDbDimension::subDescribe(headless::GeometrySink& sink) const {
    headless::GeometrySink::Reference drawn;
    drawn.block = block_;
    drawn.transform = picture();
    sink.reference(drawn);
}

Acad::ErrorStatus AcDbDimension::subExplode(headless::NewEntities& parts) const {
    return headless::addPicture(parts, block_, picture(), normal_);
}

namespace {

bool onlyMoves(const AcGeMatrix3d& transform) {
    AcGeMatrix3d turned = transform;
    turned.setTranslation({});
    return turned.isEqualTo(AcGeMatrix3d::kIdentity);
}

double angleOf(const AcGeVector3d& direction) {
    return AcGeVector2d(direction.x, direction.y).angle();
}

AcGeVector3d directionAt(double angle) { return {std::cos(angle), std::sin(angle), 0.0}; }

} // namespace

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (flat.scale() == 0.0) return Acad::eDegenerateGeometry;
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    // What is mirrored is still looked at from its side.
    const bool turnsAway = transform.det() < 0.0 && flat.normal().dotProduct(normal_) < 0.0;
    const AcGeVector3d normal = turnsAway ? -flat.normal() : flat.normal();
    if (const auto status = transformPicture(transform, normal); status != Acad::eOk) return status;
    transformAngles(headless::ocsMatrix(normal).transpose() * transform *
                    headless::ocsMatrix(normal_));
    normal_ = normal;
    textPosition_.transformBy(transform);
    geometry_.definition.transformBy(transform);
    for (AcGePoint3d& point : geometry_.points)
        point.transformBy(transform);
    geometry_.length *= flat.scale();
    if (measurement_ && !measuresAngle()) *measurement_ *= flat.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::transformPicture(const AcGeMatrix3d& transform,
                                                  const AcGeVector3d& normal) {
    const AcGeMatrix3d placed = transform * picture();
    if (block_.isNull() || onlyMoves(placed)) {
        const AcGePoint3d moved = AcGePoint3d::kOrigin + placed.translation();
        blockPosition_ = headless::worldToOcs(moved, normal);
        picture_.reset();
        return Acad::eOk;
    }
    headless::NewEntities tried;
    const auto status = headless::addPicture(tried, block_, placed, normal);
    if (status != Acad::eOk) return status;
    blockPosition_ = AcGePoint3d::kOrigin;
    picture_ = std::make_shared<AcGeMatrix3d>(placed);
    return Acad::eOk;
}

/// @param local  object coordinates before to object coordinates afterwards
void AcDbDimension::transformAngles(const AcGeMatrix3d& local) {
    const AcGeVector3d text = local * directionAt(textRotation_);
    const AcGeVector3d before = directionAt(-horizontalRotation_);
    AcGeVector3d across = local * before;
    // A mirror keeps left and right: letters are not to stand on their heads.
    const bool mirrors = local.det() < 0.0;
    if (mirrors && across.dotProduct(before) < 0.0) across = -across;
    horizontalRotation_ = headless::normalizedAngle(-angleOf(across));
    if (textRotation_ != 0.0)
        textRotation_ = angleOf(mirrors && text.dotProduct(across) < 0.0 ? -text : text);
    geometry_.rotation = angleOf(local * directionAt(geometry_.rotation));
    if (mirrors && geometry_.oblique != 0.0)
        geometry_.oblique = headless::normalizedAngle(-geometry_.oblique);
}

Acad::ErrorStatus AcDbDimension::subClose() {
    const bool lacksBlock = picture_ != nullptr && !isErased() && block_.database() == database();
    if (lacksBlock) {
        assertWriteEnabled();
        headless::NewEntities parts;
        auto status = headless::addPicture(parts, block_, *picture_, normal_);
        if (status == Acad::eOk)
            status = headless::makePictureBlock(*database(), std::move(parts), block_);
        if (status != Acad::eOk) return status;
        picture_.reset();
    }
    return AcDbEntity::subClose();
}

Acad::ErrorStatus AcDbDimension::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(textPosition_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    for (const DxfTag& tag : filer->record().all())
        readGeometry(tag);
    const auto measured = [this](const DxfTag& tag) {
        if (tag.code == 42) measurement_ = tag.real();
        // A dimension without a block of its own names none, or an empty one.
        return tag.code == 42 || (tag.code == 2 && tag.text().empty());
    };
    field::read(*filer, filer->subclass("AcDbDimension"), measured, field::Normal{normal_},
                field::OcsPoint{11, textPosition_, normal_}, field::Point{12, blockPosition_},
                field::Text{1, text_}, field::Symbol{2, AcDbBlockTableRecord::desc(), block_},
                field::Symbol{3, AcDbDimStyleTableRecord::desc(), style_},
                field::Real{41, lineSpacing_}, field::Angle{51, horizontalRotation_},
                field::Angle{53, textRotation_}, field::Bit{70, kOrdinateX, geometry_.usesX},
                field::Bit{70, kTextMoved, textMoved_}, field::Integer{71, attachment_},
                field::Integer{72, lineSpacingStyle_});
    geometryToWorld(geometry_);
    return Acad::eOk;
}

/// Groups that stand in the parts of the kinds.
void AcDbDimension::readGeometry(const DxfTag& tag) {
    const int number = tag.code % 10;
    const bool coordinate = tag.code >= 10 && tag.code < 40;
    if (coordinate && number == 0) {
        headless::setCoordinate(geometry_.definition, tag);
    } else if (coordinate && number >= 3 && number <= 7) {
        headless::setCoordinate(geometry_.points[static_cast<std::size_t>(number - 3)], tag);
    } else if (tag.code == 40) {
        geometry_.length = tag.real();
    } else if (tag.code == 50) {
        geometry_.rotation = radians(tag.real());
    } else if (tag.code == 52) {
        geometry_.oblique = radians(tag.real());
    }
}

Acad::ErrorStatus AcDbDimension::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {1,  2,  3,  10, 20, 30, 11, 21, 31,  12,  22,
                                              32, 41, 42, 51, 53, 70, 71, 72, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbDimension", kCodes);
    out.symbol(2, block_);
    out.point(10, geometry_.definition);
    out.ocsPoint(11, textPosition_, normal_);
    if (blockPosition_ != AcGePoint3d::kOrigin) out.point(12, blockPosition_);
    writeFlags(out);
    out.text(1, text_, L"");
    if (out.since(headless::DrawingVersion::k2000)) {
        out.integer(71, attachment_);
        out.integer(72, lineSpacingStyle_, 1);
        out.real(41, lineSpacing_, 1.0);
        if (measurement_) out.real(42, *measurement_);
    }
    out.angle(53, textRotation_, 0.0);
    out.angle(51, horizontalRotation_, 0.0);
    out.normal(normal_);
    out.symbol(3, style_);
    writeGeometry(out, geometry_);
    return Acad::eOk;
}

void AcDbDimension::writeFlags(headless::DxfOutput& out) const {
    constexpr std::uint32_t kKind = 7;
    const int kind = kindNumber();
    const std::uint32_t states = (geometry_.usesX ? kOrdinateX : 0) | (textMoved_ ? kTextMoved : 0);
    if (kind < 0)
        out.flags(70, states, kOrdinateX | kTextMoved);
    else
        out.flags(70, static_cast<std::uint32_t>(kind) | states, kKind | kOrdinateX | kTextMoved);
}

namespace {

constexpr std::int16_t kLinearCodes[] = {13, 23, 33, 14, 24, 34, 50, 52};

/// The points of groups `first` to `last`.
void writePoints(headless::DxfOutput& out, std::span<const AcGePoint3d> points, int first,
                 int last) {
    for (int group = first; group <= last; ++group)
        out.point(group, points[static_cast<std::size_t>(group - 13)]);
}

} // namespace

void AcDbAlignedDimension::writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const {
    out.subclass("AcDbAlignedDimension", kLinearCodes);
    writePoints(out, geometry.points, 13, 14);
    out.angle(52, geometry.oblique, 0.0);
}

void AcDbRotatedDimension::writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {50, 52};
    out.subclass("AcDbAlignedDimension", kLinearCodes);
    writePoints(out, geometry.points, 13, 14);
    out.angle(50, geometry.rotation, 0.0);
    out.angle(52, geometry.oblique, 0.0);
    out.subclass("AcDbRotatedDimension", kCodes);
}

void AcDb2LineAngularDimension::geometryToWorld(Geometry& geometry) const {
    AcGePoint3d& arc = geometry.points[3]; // The only point in object coordinates.
    arc = headless::ocsToWorld(arc, normalOf());
}

void AcDb2LineAngularDimension::writeGeometry(headless::DxfOutput& out,
                                              const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36};
    out.subclass("AcDb2LineAngularDimension", kCodes);
    writePoints(out, geometry.points, 13, 15);
    out.ocsPoint(16, geometry.points[3], normalOf());
}

void AcDb3PointAngularDimension::writeGeometry(headless::DxfOutput& out,
                                               const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {13, 23, 33, 14, 24, 34, 15, 25, 35};
    out.subclass("AcDb3PointAngularDimension", kCodes);
    writePoints(out, geometry.points, 13, 15);
}

namespace {

/// Diameters and radii have the same groups.
void writeRadial(headless::DxfOutput& out, const char* marker, const AcGePoint3d& chord,
                 double leader) {
    static constexpr std::int16_t kCodes[] = {15, 25, 35, 40};
    out.subclass(marker, kCodes);
    out.point(15, chord);
    out.real(40, leader);
}

} // namespace

void AcDbDiametricDimension::writeGeometry(headless::DxfOutput& out,
                                           const Geometry& geometry) const {
    writeRadial(out, "AcDbDiametricDimension", geometry.points[2], geometry.length);
}

void AcDbRadialDimension::writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const {
    writeRadial(out, "AcDbRadialDimension", geometry.points[2], geometry.length);
}

void AcDbOrdinateDimension::writeGeometry(headless::DxfOutput& out,
                                          const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {13, 23, 33, 14, 24, 34};
    out.subclass("AcDbOrdinateDimension", kCodes);
    writePoints(out, geometry.points, 13, 14);
}

void AcDbArcDimension::writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {13, 23, 33, 14, 24, 34, 15, 25,
                                              35, 16, 26, 36, 17, 27, 37};
    out.subclass("AcDbArcDimension", kCodes);
    writePoints(out, geometry.points, 13, 17);
}

void AcDbRadialDimensionLarge::writeGeometry(headless::DxfOutput& out,
                                             const Geometry& geometry) const {
    static constexpr std::int16_t kCodes[] = {13, 23, 33, 14, 24, 34, 15, 25, 35};
    out.subclass("AcDbRadialDimensionLarge", kCodes);
    writePoints(out, geometry.points, 13, 15);
}

void AcDbDimension::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(block_, headless::ReferenceKind::kHardPointer);
    visit(style_, headless::ReferenceKind::kHardPointer);
}
