// The parts of CZelDwg that reach into a drawing.
#include "OrnCore/zel_dwg.h"

#include <adslib.h>
#include <dbapserv.h>
#include <dbents.h>
#include <dbmain.h>
#include <dbsymtb.h>

#include "OrnCore/named_records.h"

namespace {

Acad::ErrorStatus appendTo(AcDbObjectId spaceId, AcDbEntity& entity, AcDbObjectId& id) {
    AcDbBlockTableRecord* space = nullptr;
    const Acad::ErrorStatus status = acdbOpenObject(space, spaceId, AcDb::kForWrite);
    if (status != Acad::eOk) return status;
    const Acad::ErrorStatus appended = space->appendAcDbEntity(id, &entity);
    space->close();
    return appended;
}

Acad::ErrorStatus addToCurrentSpace(AcDbEntity* entity, AcDbDatabase* db, AcDbObjectId& id) {
    if (entity == nullptr) return Acad::eNullEntityPointer;
    if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return Acad::eNoDatabase;
    return appendTo(db->currentSpaceId(), *entity, id);
}

} // namespace

AcDbObjectId CZelDwg::AddEntity(AcDbEntity* ent, AcDbDatabase* db, int keepOpen, int report) {
    AcDbObjectId id;
    const Acad::ErrorStatus status = addToCurrentSpace(ent, db, id);
    if (status != Acad::eOk) {
        if (report != 0) acutPrintf(L"\nARX ERROR: %s", acadErrorStatusText(status));
        return AcDbObjectId::kNull;
    }
    if (keepOpen == 0) ent->close();
    return id;
}

AcDbObjectId CZelDwg::AddLayer(const CString& name, int color, const CString& linetype,
                               int makeCurrent) {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return AcDbObjectId::kNull;
    const AcDbObjectId id = orncore::findOrAdd<AcDbLayerTable, AcDbLayerTableRecord>(
        db->layerTableId(), name, [&](AcDbLayerTableRecord& record) {
            AcCmColor layerColor;
            layerColor.setColorIndex(color);
            record.setColor(layerColor);
            record.setLinetypeObjectId(orncore::linetypeOrContinuous(*db, linetype));
        });
    if (makeCurrent != 0 && !id.isNull()) db->setClayer(id);
    return id;
}

AcDbExtents CZelDwg::GetGeomExtents(const AcDbObjectId& id) {
    AcDbExtents extents;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return extents;
    if (entity->getGeomExtents(extents) != Acad::eOk) extents = AcDbExtents();
    entity->close();
    return extents;
}
