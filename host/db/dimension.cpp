#include "db/dimension.h"

#include <numbers>

#include "db/block_table.h"
#include "db/dim_style_table.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/resbuf.h"

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

void AcDbDimension::subDescribe(headless::GeometrySink& sink) const {
    headless::GeometrySink::Reference drawn;
    drawn.block = block_;
    const AcGePoint3d moved = headless::ocsToWorld(blockPosition_, normal_);
    drawn.transform = AcGeMatrix3d::translation(moved.asVector());
    sink.reference(drawn);
}

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& transform) {
    // The block is drawn in place, so only moves leave its picture right.
    AcGeMatrix3d turned = transform;
    turned.setTranslation({});
    if (!turned.isEqualTo(AcGeMatrix3d::kIdentity)) return Acad::eNotApplicable;
    blockPosition_ = headless::worldToOcs(
        headless::ocsToWorld(blockPosition_, normal_) + transform.translation(), normal_);
    textPosition_ += transform.translation();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(textPosition_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    AcGePoint3d textPosition;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (const headless::DxfTag& tag : filer->subclass("AcDbDimension")) {
        switch (tag.code) {
        case 1:
            text_ = filer->text(tag);
            break;
        case 2:
            // A dimension without a block of its own names none, or an empty one.
            if (!tag.text().empty()) block_ = filer->symbolId(AcDbBlockTableRecord::desc(), tag);
            break;
        case 3:
            style_ = filer->symbolId(AcDbDimStyleTableRecord::desc(), tag);
            break;
        case 11:
        case 21:
        case 31:
            headless::setCoordinate(textPosition, tag);
            break;
        case 12:
        case 22:
        case 32:
            headless::setCoordinate(blockPosition_, tag);
            break;
        case 42:
            measurement_ = tag.real();
            break;
        case 51:
            horizontalRotation_ = tag.real() * std::numbers::pi / 180.0;
            break;
        case 53:
            textRotation_ = tag.real() * std::numbers::pi / 180.0;
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
    textPosition_ = headless::ocsToWorld(textPosition, normal_);
    return Acad::eOk;
}
