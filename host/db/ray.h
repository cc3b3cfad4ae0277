// Half lines.
#pragma once

#include "db/endless_line.h"

/// A line from its base point on without end.
class AcDbRay : public headless::EndlessLine {
public:
    ACRX_DECLARE_MEMBERS(AcDbRay);

    AcDbRay() = default;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    double firstParam() const override { return 0.0; }
};
