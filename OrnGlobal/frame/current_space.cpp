#include "frame/current_space.h"

#include <adslib.h>
#include <dbsymtb.h>

#include "frame/object_handle.h"
#include "frame/working_database.h"

AcDbObjectId frame::currentSpaceOf(AcDbDatabase& db, const wchar_t* refusal) {
    const AcDbObjectId current = db.currentSpaceId();
    if (!current.isNull() && current.isValid()) return current;

    AcDbBlockTable* table = nullptr;
    if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) {
        acutPrintf(L"%s", refusal);
        return AcDbObjectId::kNull;
    }
    const Closing closing(table);
    AcDbObjectId modelSpace;
    if (table->getAt(ACDB_MODEL_SPACE, modelSpace) != Acad::eOk) return AcDbObjectId::kNull;
    return modelSpace;
}

AcDbObjectId Common::CurrentSpaceId(AcDbDatabase* db) {
    db = frame::orWorking(db);
    return db == nullptr ? AcDbObjectId::kNull : frame::currentSpaceOf(*db, L"\n块表打开错误！");
}
