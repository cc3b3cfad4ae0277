#include "db/view_tables.h"

#include <numbers>

#include "db/dxf_fields.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbUCSTableRecord, AcDbSymbolTableRecord, "UCS")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord)
HEADLESS_DXF_DEFINE_MEMBERS(AcDbViewTableRecord, AcDbAbstractViewTableRecord, "VIEW")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord, "VPORT")
ACRX_CONS_DEFINE_MEMBERS(AcDbUCSTable, AcDbSymbolTable, 0)
ACRX_CONS_DEFINE_MEMBERS(AcDbViewTable, AcDbSymbolTable, 0)
ACRX_CONS_DEFINE_MEMBERS(AcDbViewportTable, AcDbSymbolTable, 0)

using headless::DxfTag;
using headless::setCoordinate;

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr std::uint32_t kPerspective = 1;

/// Which point of a record a group is of: codes 12, 22 and 32 are of the point 12.
int pointOf(int code) { return code >= 10 && code <= 39 ? 10 + code % 10 : 0; }

void setCoordinate2d(AcGePoint2d& point, const DxfTag& tag) {
    if (tag.code < 30) setCoordinate(point, tag);
}

} // namespace

Acad::ErrorStatus AcDbUCSTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbUCSTableRecord")) {
        switch (pointOf(tag.code)) {
        case 10:
            setCoordinate(origin_, tag);
            break;
        case 11:
            setCoordinate(xAxis_, tag);
            break;
        case 12:
            setCoordinate(yAxis_, tag);
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbViewTableRecord"))
        readField(tag);
    return Acad::eOk;
}

void AcDbViewTableRecord::readField(const DxfTag& tag) {
    switch (pointOf(tag.code)) {
    case 10:
        return setCoordinate2d(center_, tag);
    case 11:
        return setCoordinate(direction_, tag);
    case 12:
        return setCoordinate(target_, tag);
    default:
        break;
    }
    switch (tag.code) {
    case 40:
        height_ = tag.real();
        break;
    case 41:
        width_ = tag.real();
        break;
    case 42:
        lens_ = tag.real();
        break;
    case 50:
        twist_ = tag.real() * kRadians;
        break;
    case 70:
        paperSpace_ = (tag.integer() & 1) != 0;
        break;
    case 71:
        perspective_ = (tag.integer() & kPerspective) != 0;
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbViewportTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    double aspect = 1.0;
    for (const DxfTag& tag : filer->subclass("AcDbViewportTableRecord")) {
        if (tag.code == 41)
            aspect = tag.real();
        else if (!readPoint(tag))
            readField(tag);
    }
    width_ = height_ * aspect;
    return Acad::eOk;
}

bool AcDbViewportTableRecord::readPoint(const DxfTag& tag) {
    switch (pointOf(tag.code)) {
    case 10:
        setCoordinate2d(lowerLeft_, tag);
        return true;
    case 11:
        setCoordinate2d(upperRight_, tag);
        return true;
    case 12:
        setCoordinate2d(center_, tag);
        return true;
    case 16:
        setCoordinate(direction_, tag);
        return true;
    case 17:
        setCoordinate(target_, tag);
        return true;
    default:
        return false;
    }
}

void AcDbViewportTableRecord::readField(const DxfTag& tag) {
    switch (tag.code) {
    case 40:
    case 45: // newer files' height
        height_ = tag.real();
        break;
    case 42:
        lens_ = tag.real();
        break;
    case 50:
        snapAngle_ = tag.real() * kRadians;
        break;
    case 51:
        twist_ = tag.real() * kRadians;
        break;
    case 71:
        perspective_ = (tag.integer() & kPerspective) != 0;
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbViewportTable::checkName(const AcDbSymbolTableRecord& record) const {
    return record.nameOf().empty() ? Acad::eInvalidInput : Acad::eOk;
}

Acad::ErrorStatus AcDbUCSTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2, 10, 20, 30, 11, 21, 31, 12, 22, 32, 70};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbUCSTableRecord", kCodes);
    out.flags(70, 0, 0);
    out.point(10, origin_);
    out.point(11, xAxis_);
    out.point(12, yAxis_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 11, 21, 31, 12, 22,
                                              32, 40, 41, 42, 50, 70, 71};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbViewTableRecord", kCodes);
    out.flags(70, paperSpace_ ? 1 : 0, 1);
    out.real(40, height_);
    out.point(10, center_);
    out.real(41, width_);
    out.point(11, direction_);
    out.point(12, target_);
    out.real(42, lens_);
    out.angle(50, twist_);
    out.flags(71, perspective_ ? kPerspective : 0, kPerspective);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewportTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 11, 21, 12, 22, 16, 26, 36, 17,
                                              27, 37, 40, 41, 42, 45, 50, 51, 70, 71};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbViewportTableRecord", kCodes);
    out.flags(70, 0, 0);
    out.point(10, lowerLeft_);
    out.point(11, upperRight_);
    out.point(12, center_);
    out.point(16, direction_);
    out.point(17, target_);
    out.real(40, height_);
    out.real(41, height_ > 0.0 ? width_ / height_ : 1.0);
    out.real(42, lens_);
    out.angle(50, snapAngle_);
    out.angle(51, twist_);
    out.flags(71, perspective_ ? kPerspective : 0, kPerspective);
    return Acad::eOk;
}
