// Definitions of pictures: the file that images show.
#pragma once

#include <string>

#include "db/object.h"
#include "ge/vector2d.h"

class AcDbRasterImageDef : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbRasterImageDef);

    AcDbRasterImageDef() = default;

    /// The picture's file as the drawing names it; a text good until the definition changes.
    const ACHAR* sourceFileName() const { return look(file_).c_str(); }
    Acad::ErrorStatus setSourceFileName(const ACHAR* file);
    /// Width and height in pixels.
    AcGeVector2d size() const { return look(size_); }
    bool isLoaded() const { return look(loaded_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    std::wstring file_;
    AcGeVector2d size_;
    AcGeVector2d pixelSize_{1.0, 1.0};
    int resolutionUnits_ = 0; // 0 none, 2 centimetres, 5 inches
    bool loaded_ = true;
};
