#include "db/raster_image_def.h"

#include "db/dxf_output.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbRasterImageDef, AcDbObject, "IMAGEDEF")

namespace field = headless::field;

Acad::ErrorStatus AcDbRasterImageDef::setSourceFileName(const ACHAR* file) {
    return file == nullptr ? Acad::eInvalidInput : change(file_, file);
}

Acad::ErrorStatus AcDbRasterImageDef::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbRasterImageDef"), field::Text{1, file_},
                field::Point{10, size_}, field::Point{11, pixelSize_}, field::Flag{280, loaded_},
                field::Integer{281, resolutionUnits_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImageDef::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {1, 10, 20, 11, 21, 280, 281};
    constexpr std::int64_t kClassVersion = 0;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbRasterImageDef", kCodes);
    out.integer(90, kClassVersion);
    out.text(1, file_);
    out.point(10, AcGePoint2d(size_.x, size_.y));
    out.point(11, AcGePoint2d(pixelSize_.x, pixelSize_.y));
    out.integer(280, loaded_ ? 1 : 0);
    out.integer(281, resolutionUnits_);
    return Acad::eOk;
}
