// Ids, entity names and handles. Vertices are read in geometry/, texts in text/.
#include "frame/ac_ut_db.h"

#include <dbmain.h>

#include "frame/ac_ut_ui.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

Acad::ErrorStatus AcUtDb::objIdToEname(const AcDbObjectId& id, ads_name ename) {
    ads_name name;
    const Acad::ErrorStatus status = acdbGetAdsName(name, id);
    if (status == Acad::eOk) {
        ename[0] = name[0];
        ename[1] = name[1];
    }
    return status;
}

Acad::ErrorStatus AcUtDb::enameToObjId(ads_name ename, AcDbObjectId& id) {
    const Acad::ErrorStatus status = acdbGetObjectId(id, ename);
    AcUtUi::rxErrorMsg(status);
    return status;
}

Acad::ErrorStatus AcUtDb::handleStrToObjId(AcDbDatabase* db, const wchar_t* handle,
                                           AcDbObjectId& id, bool speak) {
    db = frame::orWorking(db);
    if (db == nullptr || handle == nullptr) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = db->getAcDbObjectId(id, false, AcDbHandle(handle));
    if (status == Acad::eOk) return Acad::eOk;
    if (speak) {
        acutPrintf(L"\nERROR: Could not translate handle to objectId (%s)",
                   acadErrorStatusText(status));
    }
    return Acad::eInvalidInput;
}

const wchar_t* AcUtDb::objIdToHandleStr(const AcDbObjectId& id, CString& str) {
    str.Empty();
    if (const ReadHandle<AcDbObject> object(id); object) {
        AcDbHandle handle;
        object->getAcDbHandle(handle);
        ACHAR buffer[256];
        handle.getIntoAsciiBuffer(buffer);
        str = buffer;
    }
    return str;
}
