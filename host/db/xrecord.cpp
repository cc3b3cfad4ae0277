#include "db/xrecord.h"

#include "db/dxf_filer.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD")

Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    constexpr int kMergeStyle = 280;
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    // It stands first; the same code further on is of the application's own data.
    const auto tags = filer->subclass("AcDbXrecord");
    if (!tags.empty() && tags.front().code == kMergeStyle)
        mergeStyle_ = static_cast<AcDb::DuplicateRecordCloning>(tags.front().integer());
    return Acad::eOk;
}
