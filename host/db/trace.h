// Wide straight strokes of old drawings.
#pragma once

#include "db/solid.h"

class AcDbTrace : public headless::FlatQuad {
public:
    ACRX_DECLARE_MEMBERS(AcDbTrace);

    AcDbTrace() = default;
    AcDbTrace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
              const AcGePoint3d& pt3)
        : FlatQuad({pt0, pt1, pt2, pt3}) {}

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};
