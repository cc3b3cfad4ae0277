#include "db/table_entity.h"

#include "db/dxf_output.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbTable, AcDbBlockReference, "ACAD_TABLE")

namespace field = headless::field;

AcGeVector3d AcDbTable::direction() const {
    assertReadEnabled();
    return placing() * AcGeVector3d::kXAxis;
}

Acad::ErrorStatus AcDbTable::dxfInFields(AcDbDxfFiler* filer) {
    // The cells use the reference's codes for values of their own.
    const auto status = readReference(*filer, filer->subclass("AcDbBlockReference"));
    if (status != Acad::eOk) return status;
    AcGeVector3d direction;
    field::read(*filer, filer->subclass("AcDbTable"), field::Point{11, direction});
    const AcGeVector3d local = headless::ocsMatrix(normal()).transpose() * direction;
    const AcGeVector2d flat(local.x, local.y);
    return flat.isZeroLength() ? Acad::eOk : setRotation(flat.angle());
}

Acad::ErrorStatus AcDbTable::dxfOutFields(AcDbDxfFiler* filer) const {
    const auto status = writeReference(*filer, "AcDbBlockReference");
    if (status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {11, 21, 31};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbTable", kCodes);
    out.point(11, placing() * AcGeVector3d::kXAxis);
    return Acad::eOk;
}
