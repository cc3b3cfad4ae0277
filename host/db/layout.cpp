#include "db/layout.h"

#include <algorithm>

#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPlotSettings, AcDbObject, "PLOTSETTINGS")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbLayout, AcDbPlotSettings, "LAYOUT")

using headless::DxfTag;
using headless::setCoordinate;

namespace {

constexpr std::uint32_t kModelType = 1024;

} // namespace

Acad::ErrorStatus AcDbPlotSettings::getPlotSettingsName(const ACHAR*& name) const {
    name = look(name_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::setPlotSettingsName(const ACHAR* name) {
    return name == nullptr ? Acad::eInvalidInput : change(name_, name);
}

Acad::ErrorStatus AcDbPlotSettings::getPlotCfgName(const ACHAR*& name) const {
    name = look(plotter_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getCanonicalMediaName(const ACHAR*& name) const {
    name = look(media_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotPaperSize(double& width, double& height) const {
    width = look(paperWidth_);
    height = paperHeight_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotPaperMargins(double& left, double& bottom, double& right,
                                                        double& top) const {
    left = look(margins_).left;
    bottom = margins_.bottom;
    right = margins_.right;
    top = margins_.top;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getCustomPrintScale(double& paper, double& drawing) const {
    paper = look(paperUnits_);
    drawing = drawingUnits_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    for (const DxfTag& tag : filer->subclass("AcDbPlotSettings")) {
        if (double* const length = lengthOf(tag.code); length != nullptr)
            *length = tag.real();
        else
            readField(*filer, tag);
    }
    return Acad::eOk;
}

double* AcDbPlotSettings::lengthOf(int code) {
    switch (code) {
    case 40:
        return &margins_.left;
    case 41:
        return &margins_.bottom;
    case 42:
        return &margins_.right;
    case 43:
        return &margins_.top;
    case 44:
        return &paperWidth_;
    case 45:
        return &paperHeight_;
    case 142:
        return &paperUnits_;
    case 143:
        return &drawingUnits_;
    default:
        return nullptr;
    }
}

void AcDbPlotSettings::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 1:
        name_ = filer.text(tag);
        break;
    case 2:
        plotter_ = filer.text(tag);
        break;
    case 4:
        media_ = filer.text(tag);
        break;
    case 70:
        modelType_ = (tag.integer() & kModelType) != 0;
        break;
    case 73:
        rotation_ = static_cast<PlotRotation>(std::clamp<std::int64_t>(tag.integer(), 0, 3));
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbPlotSettings::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {1, 2, 4, 40, 41, 42, 43, 44, 45, 70, 73, 142, 143};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbPlotSettings", kCodes);
    out.text(1, name_);
    out.text(2, plotter_);
    out.text(4, media_);
    out.real(40, margins_.left);
    out.real(41, margins_.bottom);
    out.real(42, margins_.right);
    out.real(43, margins_.top);
    out.real(44, paperWidth_);
    out.real(45, paperHeight_);
    out.real(142, paperUnits_);
    out.real(143, drawingUnits_);
    out.flags(70, modelType_ ? kModelType : 0, kModelType);
    out.integer(73, rotation_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(const ACHAR*& name) const {
    name = look(layoutName_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(ACHAR*& name) const {
    name = acutNewString(look(layoutName_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
    if (name == nullptr || *name == L'\0') return Acad::eInvalidInput;
    return change(layoutName_, name);
}

Acad::ErrorStatus AcDbLayout::getLimits(AcGePoint2d& min, AcGePoint2d& max) const {
    min = look(limitsMin_);
    max = limitsMax_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getExtents(AcGePoint3d& min, AcGePoint3d& max) const {
    min = look(extentsMin_);
    max = extentsMax_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbPlotSettings::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbLayout"))
        if (!readPoint(tag)) readField(*filer, tag);
    return Acad::eOk;
}

bool AcDbLayout::readPoint(const DxfTag& tag) {
    switch (tag.code < 10 || tag.code >= 40 ? 0 : tag.code % 10 + 10) {
    case 10:
        if (tag.code < 30) setCoordinate(limitsMin_, tag);
        return true;
    case 11:
        if (tag.code < 30) setCoordinate(limitsMax_, tag);
        return true;
    case 12:
        setCoordinate(insertionBase_, tag);
        return true;
    case 13:
        setCoordinate(ucsOrigin_, tag);
        return true;
    case 14:
        setCoordinate(extentsMin_, tag);
        return true;
    case 15:
        setCoordinate(extentsMax_, tag);
        return true;
    case 16:
        setCoordinate(ucsX_, tag);
        return true;
    case 17:
        setCoordinate(ucsY_, tag);
        return true;
    default:
        return false;
    }
}

void AcDbLayout::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 1:
        layoutName_ = filer.text(tag);
        break;
    case 70:
        flags_ = static_cast<int>(tag.integer());
        break;
    case 71:
        tabOrder_ = static_cast<int>(tag.integer());
        break;
    case 76:
        orthographic_ = static_cast<short>(tag.integer());
        break;
    case 146:
        elevation_ = tag.real();
        break;
    case 330:
        block_ = filer.objectId(tag);
        break;
    case 331:
        viewport_ = filer.objectId(tag);
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbLayout::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbPlotSettings::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {1,  10, 20, 11, 21, 12, 22,  32,  13, 23,
                                              33, 14, 24, 34, 15, 25, 35,  16,  26, 36,
                                              17, 27, 37, 70, 71, 76, 146, 330, 331};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbLayout", kCodes);
    out.text(1, layoutName_);
    out.integer(70, flags_);
    out.integer(71, tabOrder_);
    out.point(10, limitsMin_);
    out.point(11, limitsMax_);
    out.point(12, insertionBase_);
    out.point(14, extentsMin_);
    out.point(15, extentsMax_);
    out.real(146, elevation_);
    out.point(13, ucsOrigin_);
    out.point(16, ucsX_);
    out.point(17, ucsY_);
    out.integer(76, orthographic_);
    out.handle(330, block_);
    if (!viewport_.isNull() && !viewport_.isErased()) out.handle(331, viewport_);
    return Acad::eOk;
}
