#include "db/material.h"

#include "db/dxf_output.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMaterial, AcDbObject, "MATERIAL")

Acad::ErrorStatus AcDbMaterial::setName(const ACHAR* name) {
    if (name == nullptr || *name == L'\0') return Acad::eInvalidInput;
    return change(name_, name);
}

Acad::ErrorStatus AcDbMaterial::setDescription(const ACHAR* description) {
    return description == nullptr ? Acad::eInvalidInput : change(description_, description);
}

Acad::ErrorStatus AcDbMaterial::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    for (const headless::DxfTag& tag : filer->subclass("AcDbMaterial")) {
        if (tag.code == 1) name_ = filer->text(tag);
        if (tag.code == 2) description_ = filer->text(tag);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMaterial::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {1, 2};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbMaterial", kCodes);
    out.text(1, name_);
    out.text(2, description_, L"");
    return Acad::eOk;
}
