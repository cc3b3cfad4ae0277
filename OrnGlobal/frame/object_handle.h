// Database objects opened for the length of a scope. Inside the library and its neighbours only.
#pragma once

#include <dbmain.h>

/// A database object open while the handle is in scope; T's constness follows the open mode.
///
///     const ReadHandle<AcDbPolyline> polyline(id);
///     if (!polyline) return polyline.status();
template <class T, AcDb::OpenMode kMode>
class ObjectHandle {
public:
    explicit ObjectHandle(AcDbObjectId id) : status_(acdbOpenAcDbObject(object_, id, kMode)) {
        if (status_ != Acad::eOk) return;
        typed_ = T::cast(object_);
        if (typed_ == nullptr) status_ = Acad::eNotThatKindOfClass;
    }
    ~ObjectHandle() {
        if (object_ != nullptr) object_->close();
    }
    ObjectHandle(const ObjectHandle&) = delete;
    ObjectHandle& operator=(const ObjectHandle&) = delete;

    /// eNotThatKindOfClass when the object is of another class than T.
    [[nodiscard]] Acad::ErrorStatus status() const noexcept { return status_; }
    explicit operator bool() const noexcept { return typed_ != nullptr; }
    T* operator->() const noexcept { return typed_; }
    T& operator*() const noexcept { return *typed_; }
    T* get() const noexcept { return typed_; }

private:
    AcDbObject* object_ = nullptr; // Held apart from typed_: an object of another kind closes too.
    T* typed_ = nullptr;
    Acad::ErrorStatus status_;
};

template <class T>
using ReadHandle = ObjectHandle<const T, AcDb::kForRead>;
template <class T>
using WriteHandle = ObjectHandle<T, AcDb::kForWrite>;

/// Closes an object that someone else opened, when the scope ends.
template <class T>
class Closing {
public:
    explicit Closing(T* object) noexcept : object_(object) {}
    ~Closing() {
        if (object_ != nullptr) object_->close();
    }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;

    /// Leaves the object open after all, and gives it.
    T* release() noexcept {
        T* object = object_;
        object_ = nullptr;
        return object;
    }

private:
    T* object_;
};
