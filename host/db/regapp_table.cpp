#include "db/regapp_table.h"

#include "db/dxf_output.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID")
ACRX_CONS_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable, 0)

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2, 70};
    beginFields(*filer, "AcDbRegAppTableRecord", kCodes);
    filer->output().flags(70, 0, 0);
    return Acad::eOk;
}
