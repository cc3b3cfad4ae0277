// The parts of AcUtSymTbl about entities: putting them into the current space, and their layers.
#include <adslib.h>
#include <dbents.h>
#include <dbsymtb.h>

#include "OrnCore/zel_dwg.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/ac_ut_ui.h"
#include "frame/object_handle.h"

namespace {

/// True when the entity was appended; it then stays open for writing.
bool append(AcDbEntity* ent, AcDbDatabase* db) {
    return CZelDwg::AddEntity(ent, db, 1, 1).isValid();
}

bool askLayer(const AcDbEntity* ent, bool printMsg,
              bool (AcDbLayerTableRecord::*question)() const) {
    if (ent == nullptr) return false;
    const ReadHandle<AcDbObject> object(ent->layerId());
    if (!object) {
        AcUtUi::rxErrorMsg(object.status());
        return false;
    }
    const auto* layer = AcDbLayerTableRecord::cast(object.get());
    const bool answer = layer != nullptr && (layer->*question)();
    if (answer && printMsg) acutPrintf(L"\nSelected entity is on a locked layer.");
    return answer;
}

} // namespace

// The answers of the four functions below are opposite to what they tell: callers rely on them.

Acad::ErrorStatus AcUtSymTbl::addToCurrentSpace(AcDbEntity* ent) {
    return addToCurrentSpace(ent, nullptr);
}

Acad::ErrorStatus AcUtSymTbl::addToCurrentSpace(AcDbEntity* ent, AcDbDatabase* db) {
    return append(ent, db) ? Acad::eInvalidInput : Acad::eOk;
}

Acad::ErrorStatus AcUtSymTbl::addToCurrentSpaceAndClose(AcDbEntity* ent) {
    return addToCurrentSpaceAndClose(ent, nullptr);
}

Acad::ErrorStatus AcUtSymTbl::addToCurrentSpaceAndClose(AcDbEntity* ent, AcDbDatabase* db) {
    if (append(ent, db)) {
        delete ent;
        return Acad::eInvalidInput;
    }
    if (ent != nullptr) ent->close();
    return Acad::eOk;
}

bool AcUtSymTbl::isOnLockedLayer(AcDbEntity* ent, bool printMsg) {
    return askLayer(ent, printMsg, &AcDbLayerTableRecord::isLocked);
}

bool AcUtSymTbl::isOnLockedLayer(AcDbObjectId& id, bool printMsg) {
    AcDbEntity* ent = nullptr;
    if (acdbOpenObject(ent, id, AcDb::kForRead) != Acad::eOk) return true;
    const Closing closing(ent);
    return isOnLockedLayer(ent, printMsg);
}

bool AcUtSymTbl::isOffLayer(AcDbEntity* ent, bool printMsg) {
    return askLayer(ent, printMsg, &AcDbLayerTableRecord::isOff);
}
