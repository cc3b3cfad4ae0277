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
constexpr std::uint32_t kAllModes = 0x1F;

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

bool AcDbAbstractViewTableRecord::readView(const DxfTag& tag) {
    switch (tag.code) {
    case 42:
        view_.lensLength = tag.real();
        return true;
    case 43:
        view_.frontClip = tag.real();
        return true;
    case 44:
        view_.backClip = tag.real();
        return true;
    case 71:
        view_.mode = static_cast<short>(tag.integer());
        return true;
    default:
        return false;
    }
}

Acad::ErrorStatus AcDbViewTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbViewTableRecord")) {
        if (!readView(tag)) readField(tag);
    }
    headless::makeUsable(view_);
    return Acad::eOk;
}

void AcDbViewTableRecord::readField(const DxfTag& tag) {
    switch (pointOf(tag.code)) {
    case 10:
        return setCoordinate2d(view_.center, tag);
    case 11:
        return setCoordinate(view_.direction, tag);
    case 12:
        return setCoordinate(view_.target, tag);
    default:
        break;
    }
    switch (tag.code) {
    case 40:
        view_.height = tag.real();
        break;
    case 41:
        width_ = tag.real();
        break;
    case 50:
        view_.twist = tag.real() * kRadians;
        break;
    case 70:
        paperSpace_ = (tag.integer() & 1) != 0;
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
        else if (!readPoint(tag) && !readView(tag))
            readField(tag);
    }
    headless::makeUsable(view_);
    width_ = view_.height * aspect;
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
        setCoordinate2d(view_.center, tag);
        return true;
    case 16:
        setCoordinate(view_.direction, tag);
        return true;
    case 17:
        setCoordinate(view_.target, tag);
        return true;
    default:
        return false;
    }
}

void AcDbViewportTableRecord::readField(const DxfTag& tag) {
    switch (tag.code) {
    case 40:
    case 45: // newer files' height
        view_.height = tag.real();
        break;
    case 50:
        snapAngle_ = tag.real() * kRadians;
        break;
    case 51:
        view_.twist = tag.real() * kRadians;
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

void AcDbAbstractViewTableRecord::writeLens(headless::DxfOutput& out) const {
    out.real(42, view_.lensLength);
    out.real(43, view_.frontClip);
    out.real(44, view_.backClip);
}

void AcDbAbstractViewTableRecord::writeMode(headless::DxfOutput& out) const {
    out.flags(71, static_cast<std::uint32_t>(view_.mode) & kAllModes, kAllModes);
}

Acad::ErrorStatus AcDbViewTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 11, 21, 31, 12, 22, 32,
                                              40, 41, 42, 43, 44, 50, 70, 71};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbViewTableRecord", kCodes);
    out.flags(70, paperSpace_ ? 1 : 0, 1);
    out.real(40, view_.height);
    out.point(10, view_.center);
    out.real(41, width_);
    out.point(11, view_.direction);
    out.point(12, view_.target);
    writeLens(out);
    out.angle(50, view_.twist);
    writeMode(out);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewportTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 11, 21, 12, 22, 16, 26, 36, 17, 27,
                                              37, 40, 41, 42, 43, 44, 45, 50, 51, 70, 71};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbViewportTableRecord", kCodes);
    out.flags(70, 0, 0);
    out.point(10, lowerLeft_);
    out.point(11, upperRight_);
    out.point(12, view_.center);
    out.point(16, view_.direction);
    out.point(17, view_.target);
    out.real(40, view_.height);
    out.real(41, width_ / view_.height);
    writeLens(out);
    out.angle(50, snapAngle_);
    out.angle(51, view_.twist);
    writeMode(out);
    return Acad::eOk;
}
