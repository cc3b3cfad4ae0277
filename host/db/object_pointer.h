// Scopes that hold an object open.
#pragma once

#include "db/open.h"

/// Closes what it opened, and deletes what it created if it never reached a database.
template <class T>
class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                               bool openErased = false, bool openOnLockedLayer = false) {
        open(id, mode, openErased, openOnLockedLayer);
    }
    ~AcDbObjectPointer() { close(); }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                           bool openErased = false, bool openOnLockedLayer = false) {
        close();
        return status_ = acdbOpenObject(object_, id, mode, openErased, openOnLockedLayer);
    }
    Acad::ErrorStatus openStatus() const { return status_; }

    Acad::ErrorStatus create() {
        close();
        object_ = new T;
        return status_ = Acad::eOk;
    }
    /// Takes over an object that the caller has open.
    Acad::ErrorStatus acquire(T*& object) {
        close();
        object_ = object;
        object = nullptr;
        return status_ = Acad::eOk;
    }
    /// Leaves closing to the caller.
    Acad::ErrorStatus release(T*& object) {
        object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        return Acad::eOk;
    }
    Acad::ErrorStatus close() {
        if (object_ == nullptr) return Acad::eNullObjectPointer;
        T* const object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        if (!object->objectId().isNull()) return object->close();
        delete object;
        return Acad::eOk;
    }

    T* object() const { return object_; }
    T* operator->() const { return object_; }
    operator T*() const { return object_; }

private:
    T* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
};

/// Also works on an object that is open already: it upgrades a single reader for as long as it
/// lives, and uses a writer's object, leaving it open.
template <class T>
class AcDbSmartObjectPointer {
public:
    AcDbSmartObjectPointer() = default;
    explicit AcDbSmartObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                    bool openErased = false, bool openOnLockedLayer = false) {
        open(id, mode, openErased, openOnLockedLayer);
    }
    ~AcDbSmartObjectPointer() { close(); }
    AcDbSmartObjectPointer(const AcDbSmartObjectPointer&) = delete;
    AcDbSmartObjectPointer& operator=(const AcDbSmartObjectPointer&) = delete;

    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                           bool openErased = false, bool openOnLockedLayer = false) {
        close();
        status_ = acdbOpenObject(object_, id, mode, openErased, openOnLockedLayer);
        if (status_ == Acad::eOk) {
            ending_ = Ending::kClose;
        } else if (status_ == Acad::eWasOpenForWrite || status_ == Acad::eWasOpenForRead) {
            borrow(id);
        }
        return status_;
    }
    Acad::ErrorStatus openStatus() const { return status_; }

    Acad::ErrorStatus close() {
        if (object_ == nullptr) return Acad::eNullObjectPointer;
        T* const object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        if (ending_ == Ending::kClose) return object->close();
        if (ending_ == Ending::kDowngrade) return object->downgradeOpen();
        return Acad::eOk;
    }

    T* object() const { return object_; }
    T* operator->() const { return object_; }
    operator T*() const { return object_; }

private:
    enum class Ending { kLeave, kClose, kDowngrade };

    void borrow(AcDbObjectId id) {
        T* const object = T::cast(static_cast<AcDbStub*>(id)->object);
        if (object == nullptr) {
            status_ = Acad::eNotThatKindOfClass;
            return;
        }
        ending_ = Ending::kLeave;
        if (status_ == Acad::eWasOpenForRead) {
            const Acad::ErrorStatus upgraded = object->upgradeOpen();
            if (upgraded != Acad::eOk) {
                status_ = upgraded;
                return;
            }
            ending_ = Ending::kDowngrade;
        }
        status_ = Acad::eOk;
        object_ = object;
    }

    T* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
    Ending ending_ = Ending::kLeave;
};

using AcDbEntityPointer = AcDbObjectPointer<AcDbEntity>;
