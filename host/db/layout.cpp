#include "db/layout.h"

#include <algorithm>

#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/named_fields.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPlotSettings, AcDbObject, "PLOTSETTINGS")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbLayout, AcDbPlotSettings, "LAYOUT")

using headless::DxfTag;
namespace field = headless::field;

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
    const auto rotation = [this](const DxfTag& tag) {
        if (tag.code != 73) return false;
        rotation_ = static_cast<PlotRotation>(std::clamp<std::int64_t>(tag.integer(), 0, 3));
        return true;
    };
    field::read(*filer, filer->subclass("AcDbPlotSettings"), field::Text{1, name_},
                field::Text{2, plotter_}, field::Text{4, media_}, field::Real{40, margins_.left},
                field::Real{41, margins_.bottom}, field::Real{42, margins_.right},
                field::Real{43, margins_.top}, field::Real{44, paperWidth_},
                field::Real{45, paperHeight_}, field::Real{142, paperUnits_},
                field::Real{143, drawingUnits_}, field::Bit{70, kModelType, modelType_}, rotation);
    return Acad::eOk;
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
    field::read(*filer, filer->subclass("AcDbLayout"), field::Text{1, layoutName_},
                field::Integer{70, flags_}, field::Integer{71, tabOrder_},
                field::Point{10, limitsMin_}, field::Point{11, limitsMax_},
                field::Point{12, insertionBase_}, field::Point{13, ucsOrigin_},
                field::Point{14, extentsMin_}, field::Point{15, extentsMax_},
                field::Point{16, ucsX_}, field::Point{17, ucsY_}, field::Integer{76, orthographic_},
                field::Real{146, elevation_}, field::Id{330, block_}, field::Id{331, viewport_});
    return Acad::eOk;
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
