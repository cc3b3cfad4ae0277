#include "db/open.h"

#include "db/entity.h"
#include "db/fault_hook.h"
#include "db/layer_lock.h"
#include "db/layer_table.h"
#include "db/residence.h"

namespace {

constexpr int kMaxReaders = 256;

Acad::ErrorStatus refusal(const AcDbStub* stub, AcDb::OpenMode mode, bool openErased,
                          bool openOnLockedLayer) {
    if (stub == nullptr) return Acad::eNullObjectId;
    if (stub->permanentlyErased) return Acad::ePermanentlyErased;
    if (stub->object == nullptr) return Acad::eNullObjectPointer;
    if (stub->erased && !openErased) return Acad::eWasErased;
    if (stub->openForNotify) return Acad::eWasOpenForNotify;
    if (mode == AcDb::kForNotify) return Acad::eOk;
    if (stub->openForWrite) return Acad::eWasOpenForWrite;
    if (mode == AcDb::kForRead)
        return stub->readers < kMaxReaders ? Acad::eOk : Acad::eAtMaxReaders;
    if (stub->readers > 0) return Acad::eWasOpenForRead;
    if (!openOnLockedLayer && headless::isOnLockedLayer(*stub->object)) return Acad::eOnLockedLayer;
    return Acad::eOk;
}

} // namespace

bool headless::isOnLockedLayer(const AcDbObject& object) {
    const AcDbEntity* const entity = AcDbEntity::cast(&object);
    if (entity == nullptr) return false;
    const auto* const layer = Residence::peek<AcDbLayerTableRecord>(entity->layerId());
    return layer != nullptr && layer->locksEntities();
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErasedObject, bool openOnLockedLayer) {
    object = nullptr;
    AcDbStub* const stub = id;
    const Acad::ErrorStatus status = refusal(stub, mode, openErasedObject, openOnLockedLayer);
    if (status != Acad::eOk) return status;
    if (headless::FaultHook::fails("acdbOpenAcDbObject"))
        return mode == AcDb::kForRead ? Acad::eWasOpenForWrite : Acad::eWasOpenForRead;
    if (mode == AcDb::kForRead)
        ++stub->readers;
    else if (mode == AcDb::kForWrite)
        stub->openForWrite = true;
    else
        stub->openForNotify = true;
    object = stub->object;
    return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErasedEntity, bool openOnLockedLayer) {
    return acdbOpenObject(entity, id, mode, openErasedEntity, openOnLockedLayer);
}
