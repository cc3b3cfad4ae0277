// Construction lines.
#pragma once

#include <limits>

#include "db/endless_line.h"

/// A line through its base point, endless both ways.
class AcDbXline : public headless::EndlessLine {
public:
    ACRX_DECLARE_MEMBERS(AcDbXline);

    AcDbXline() = default;

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    double firstParam() const override { return -std::numeric_limits<double>::infinity(); }
};
