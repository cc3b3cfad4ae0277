#include "db/view_tables.h"

#include "db/dxf_fields.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbUCSTableRecord, AcDbSymbolTableRecord, "UCS")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord)
HEADLESS_DXF_DEFINE_MEMBERS(AcDbViewTableRecord, AcDbAbstractViewTableRecord, "VIEW")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord, "VPORT")
ACRX_CONS_DEFINE_MEMBERS(AcDbUCSTable, AcDbSymbolTable, 0)
ACRX_CONS_DEFINE_MEMBERS(AcDbViewTable, AcDbSymbolTable, 0)
ACRX_CONS_DEFINE_MEMBERS(AcDbViewportTable, AcDbSymbolTable, 0)

namespace field = headless::field;

namespace {

constexpr std::uint32_t kAllModes = 0x1F;

} // namespace

Acad::ErrorStatus AcDbUCSTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    field::read(*filer, filer->subclass("AcDbUCSTableRecord"), field::Point{10, origin_},
                field::Point{11, xAxis_}, field::Point{12, yAxis_});
    return Acad::eOk;
}

void AcDbAbstractViewTableRecord::readLens(AcDbDxfFiler& filer, const char* marker) {
    field::read(filer, filer.subclass(marker), field::Real{42, view_.lensLength},
                field::Real{43, view_.frontClip}, field::Real{44, view_.backClip},
                field::Integer{71, view_.mode});
}

Acad::ErrorStatus AcDbViewTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    constexpr const char* kMarker = "AcDbViewTableRecord";
    readLens(*filer, kMarker);
    field::read(*filer, filer->subclass(kMarker), field::Point{10, view_.center},
                field::Point{11, view_.direction}, field::Point{12, view_.target},
                field::Real{40, view_.height}, field::Real{41, width_},
                field::Angle{50, view_.twist}, field::Bit{70, 1, paperSpace_});
    headless::makeUsable(view_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewportTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    constexpr const char* kMarker = "AcDbViewportTableRecord";
    double aspect = 1.0;
    readLens(*filer, kMarker);
    field::read(*filer, filer->subclass(kMarker), field::Point{10, lowerLeft_},
                field::Point{11, upperRight_}, field::Point{12, view_.center},
                field::Point{16, view_.direction}, field::Point{17, view_.target},
                field::Real{40, view_.height}, field::Real{45, view_.height}, // newer files'
                field::Real{41, aspect}, field::Angle{50, snapAngle_},
                field::Angle{51, view_.twist});
    headless::makeUsable(view_);
    width_ = view_.height * aspect;
    return Acad::eOk;
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
