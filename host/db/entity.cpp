#include "db/entity.h"

#include "db/dxf_fields.h"
#include "db/geometry_sink.h"
#include "db/xdata.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

Acad::ErrorStatus AcDbEntity::changeNormal(AcGeVector3d& member, const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    return change(member, normal.normal());
}

Acad::ErrorStatus AcDbEntity::findExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    if (const auto status = subGetGeomExtents(box); status != Acad::eOk) return status;
    extents = box;
    if (keepsExtents()) {
        extents_.emplace(box);
    } else if (AcDbStub* const stub = objectId(); stub != nullptr) {
        stub->watched = true;
        extents_.emplace(box);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& transform) {
    assertWriteEnabled();
    const Acad::ErrorStatus status = subTransformBy(transform);
    if (status == Acad::eOk) headless::transformXdata(*this, transform);
    return status;
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& points) const {
    assertReadEnabled();
    return subGetGripPoints(points);
}

Acad::ErrorStatus AcDbEntity::getPlane(AcGePlane& /*plane*/, AcDb::Planarity& kind) const {
    kind = AcDb::kNonPlanar;
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return headless::extentsUnder(*this, AcGeMatrix3d::kIdentity, extents);
}

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d& /*transform*/) {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray& /*points*/) const {
    return Acad::eNotApplicable;
}

void AcDbEntity::subDescribe(headless::GeometrySink& /*sink*/) const {}
