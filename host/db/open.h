// Opening objects by their ids.
//
// Refusals, in the order they are looked for:
//   eNullObjectId         the id is null
//   ePermanentlyErased    the object was deleted
//   eNullObjectPointer    the id is mentioned somewhere but its object never came
//   eWasErased            the object is erased and erased ones were not asked for
//   eWasOpenForNotify     it is open for notification
//   eWasOpenForWrite      it is open for writing
//   eWasOpenForRead       it is open for reading, and writing was asked for
//   eAtMaxReaders         256 readers have it open
//   eOnLockedLayer        an entity whose layer is locked, and writing was asked for
//   eNotThatKindOfClass   it is of another class; it is left closed
// Outputs are null after a refusal.
#pragma once

#include "db/object.h"

class AcDbEntity;

/// @param openOnLockedLayer  opens an entity for writing although its layer is locked.
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErasedObject = false, bool openOnLockedLayer = false);
/// The same for entities; eNotThatKindOfClass for other objects.
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErasedEntity = false, bool openOnLockedLayer = false);

/// Opens an object of the class T, or of one derived from it.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErasedObject = false, bool openOnLockedLayer = false) {
    object = nullptr;
    AcDbObject* opened = nullptr;
    const Acad::ErrorStatus status =
        acdbOpenAcDbObject(opened, id, mode, openErasedObject, openOnLockedLayer);
    if (status != Acad::eOk) return status;
    object = T::cast(opened);
    if (object != nullptr) return Acad::eOk;
    opened->close();
    return Acad::eNotThatKindOfClass;
}

#include "db/object_pointer.h"
