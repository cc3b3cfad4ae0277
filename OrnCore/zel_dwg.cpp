// The parts of CZelDwg that reach into a drawing.
#include "OrnCore/zel_dwg.h"

#include <memory>

#include <aced.h>
#include <adslib.h>
#include <dbapserv.h>
#include <dbents.h>
#include <dbmain.h>
#include <dbsymtb.h>

#include "OrnCore/named_records.h"
#include "OrnCore/text_info.h"

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

AcDbObjectId CZelDwg::AddLine(const AcGePoint3d& start, const AcGePoint3d& end,
                              const AcDbObjectId& layer, resbuf* xdata, AcDbDatabase* db) {
    auto fresh = std::make_unique<AcDbLine>(start, end);
    fresh->setDatabaseDefaults(db);
    if (!layer.isNull() && fresh->setLayer(layer) != Acad::eOk) return AcDbObjectId::kNull;
    const AcDbObjectId id = AddEntity(fresh.get(), db, 1, 0);
    if (id.isNull()) return id;
    AcDbLine* const line = fresh.release(); // the database's now
    const bool whole = xdata == nullptr || line->setXData(xdata) == Acad::eOk;
    if (!whole) line->erase();
    line->close();
    return whole ? id : AcDbObjectId::kNull;
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

double CZelDwg::GetTextWidth(const CString& text, const TextInfo& info) {
    if (text.IsEmpty() || !(info.height > 0.0)) return 0.0;
    AcDbText drawn(AcGePoint3d::kOrigin, text, info.style, info.height);
    if (info.widthFactor != 0.0) drawn.setWidthFactor(info.widthFactor);
    AcGePoint3dArray corners; // from the lower left one on
    if (drawn.getBoundingPoints(corners) != Acad::eOk || corners.length() < 2) return 0.0;
    return corners[0].distanceTo(corners[1]);
}

AcGePoint3d CZelDwg::TransUcs2Wcs(const AcGePoint3d& point) {
    const auto code = [](int system) {
        resbuf buffer{};
        buffer.restype = RTSHORT;
        buffer.resval.rint = static_cast<short>(system);
        return buffer;
    };
    const resbuf world = code(0);
    const resbuf user = code(1);
    const ads_point given = {point.x, point.y, point.z};
    ads_point moved;
    if (acedTrans(given, &user, &world, 0, moved) != RTNORM) return point;
    return {moved[0], moved[1], moved[2]};
}
