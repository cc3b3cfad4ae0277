// Materials that renderings draw surfaces in.
#pragma once

#include <string>

#include "db/object.h"

/// A material of the dictionary ACAD_MATERIAL. How it looks is not modelled: it stays in the file.
class AcDbMaterial : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbMaterial);

    AcDbMaterial() = default;

    /// Texts good until the material changes.
    const ACHAR* name() const { return look(name_).c_str(); }
    /// eInvalidInput for an empty name.
    Acad::ErrorStatus setName(const ACHAR* name);
    const ACHAR* description() const { return look(description_).c_str(); }
    Acad::ErrorStatus setDescription(const ACHAR* description);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    std::wstring name_;
    std::wstring description_;
};
