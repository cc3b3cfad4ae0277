// Layouts: the sheets of a drawing, each with a paper space and how it is plotted; the model is
// one.
#pragma once

#include <string>

#include "db/object.h"
#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

namespace headless {

struct DxfTag;

} // namespace headless

/// How something is plotted. Lengths of paper in millimetres.
class AcDbPlotSettings : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbPlotSettings);

    enum PlotRotation { k0degrees, k90degrees, k180degrees, k270degrees };

    AcDbPlotSettings() = default;

    // Texts good until the settings change.
    Acad::ErrorStatus getPlotSettingsName(const ACHAR*& name) const;
    Acad::ErrorStatus setPlotSettingsName(const ACHAR* name);
    /// The plotter and the name of its paper.
    Acad::ErrorStatus getPlotCfgName(const ACHAR*& name) const;
    Acad::ErrorStatus getCanonicalMediaName(const ACHAR*& name) const;

    Acad::ErrorStatus getPlotPaperSize(double& width, double& height) const;
    /// Left, bottom, right, top: what the plotter cannot reach.
    Acad::ErrorStatus getPlotPaperMargins(double& left, double& bottom, double& right,
                                          double& top) const;
    PlotRotation plotRotation() const { return look(rotation_); }
    /// So many units of paper for so many of the drawing.
    Acad::ErrorStatus getCustomPrintScale(double& paper, double& drawing) const;
    /// True for settings of the model rather than of a sheet.
    bool modelType() const { return look(modelType_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    struct Margins {
        double left = 0.0;
        double bottom = 0.0;
        double right = 0.0;
        double top = 0.0;
    };

    std::wstring name_;
    std::wstring plotter_;
    std::wstring media_;
    Margins margins_;
    double paperWidth_ = 0.0;
    double paperHeight_ = 0.0;
    double paperUnits_ = 1.0;
    double drawingUnits_ = 1.0;
    PlotRotation rotation_ = k0degrees;
    bool modelType_ = false;
};

/// A sheet, or the model, under its name. Its entities are those of its block table record.
class AcDbLayout : public AcDbPlotSettings {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayout);

    AcDbLayout() = default;

    /// A text of the layout's own, or a copy that the caller frees with acutDelString.
    Acad::ErrorStatus getLayoutName(const ACHAR*& name) const;
    Acad::ErrorStatus getLayoutName(ACHAR*& name) const;
    /// eInvalidInput for an empty name.
    Acad::ErrorStatus setLayoutName(const ACHAR* name);
    /// The place of its tab; the model's is 0.
    int getTabOrder() const { return look(tabOrder_); }
    void setTabOrder(int order) { change(tabOrder_, order); }
    AcDbObjectId getBlockTableRecordId() const { return look(block_); }
    virtual Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId block) {
        return change(block_, block);
    }
    Acad::ErrorStatus getLimits(AcGePoint2d& min, AcGePoint2d& max) const;
    /// As the file says; least beyond greatest for a sheet without entities.
    Acad::ErrorStatus getExtents(AcGePoint3d& min, AcGePoint3d& max) const;
    /// The viewport that was last worked in; null when there is none.
    AcDbObjectId activeViewportId() const { return look(viewport_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    /// The name and the block whether or not the layout is open.
    const std::wstring& nameOf() const { return layoutName_; }
    AcDbObjectId blockOf() const { return block_; }

private:
    std::wstring layoutName_;
    AcDbObjectId block_;
    AcDbObjectId viewport_;
    AcGePoint2d limitsMin_;
    AcGePoint2d limitsMax_{420.0, 297.0};
    AcGePoint3d extentsMin_{1e20, 1e20, 1e20};
    AcGePoint3d extentsMax_{-1e20, -1e20, -1e20};
    AcGePoint3d insertionBase_;
    AcGePoint3d ucsOrigin_;
    AcGeVector3d ucsX_ = AcGeVector3d::kXAxis;
    AcGeVector3d ucsY_ = AcGeVector3d::kYAxis;
    double elevation_ = 0.0;
    int flags_ = 1; // linetypes scale with the sheet; 2: limits are checked
    int tabOrder_ = 0;
    short orthographic_ = 0; // which side the coordinate system is of, 0 none
};
