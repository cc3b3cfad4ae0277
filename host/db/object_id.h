// Names of database objects: ids for a running process, handles for files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "rx/error_status.h"
#include "rx/types.h"

class AcDbDatabase;
class AcDbObject;

/// A handle: the number by which a drawing file names an object; 0 is none.
class AcDbHandle {
public:
    AcDbHandle() = default;
    explicit AcDbHandle(Adesk::UInt64 value) : value_(value) {}
    AcDbHandle(Adesk::UInt32 low, Adesk::UInt32 high) : value_(Adesk::UInt64{high} << 32 | low) {}
    /// Reads hexadecimal digits up to the first other character; none gives the null handle.
    explicit AcDbHandle(const ACHAR* hexadecimal);
    explicit AcDbHandle(const char* hexadecimal);

    Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(value_); }
    Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(value_ >> 32); }
    bool isNull() const { return value_ == 0; }
    operator Adesk::UInt64() const { return value_; }

    /// Writes capital hexadecimal digits without leading zeros and a terminating zero.
    /// @param buffer  room for 17 characters.
    bool getIntoAsciiBuffer(ACHAR* buffer) const;
    /// As above, never writing more than `size` characters; false when they do not suffice.
    bool getIntoAsciiBuffer(ACHAR* buffer, std::size_t size) const;

private:
    Adesk::UInt64 value_ = 0;
};

/// What an id points to: the object's place in its database and how it is open. A stub lives as
/// long as its database, so an id of a deleted object can still be asked.
struct AcDbStub {
    AcDbObject* object = nullptr; // Null: announced by a reference, or deleted.
    AcDbDatabase* database = nullptr;
    Adesk::UInt64 handle = 0;
    std::uint16_t readers = 0;
    bool openForWrite = false;
    bool openForNotify = false;
    bool erased = false;
    bool permanentlyErased = false; // The object was deleted; the id never answers again.
    bool watched = false;           // Something was computed from the object, see change_watch.h.
    bool inFile = false; // The object was read from a file: its source span is a record of its own.
};

class AcDbObjectId {
public:
    AcDbObjectId() = default;
    AcDbObjectId(AcDbStub* stub) : stub_(stub) {}

    static const AcDbObjectId kNull;

    bool isNull() const { return stub_ == nullptr; }
    void setNull() { stub_ = nullptr; }
    /// True when the id belongs to a database, whatever became of the object.
    bool isValid() const { return stub_ != nullptr && stub_->database != nullptr; }
    bool isErased() const {
        return stub_ != nullptr && (stub_->erased || stub_->permanentlyErased);
    }
    bool isEffectivelyErased() const;
    /// True when an object stands behind the id in memory.
    bool isResident() const { return stub_ != nullptr && stub_->object != nullptr; }
    bool objectLeftOnDisk() const { return false; }

    AcDbHandle handle() const { return AcDbHandle(stub_ == nullptr ? 0 : stub_->handle); }
    AcDbDatabase* database() const { return stub_ == nullptr ? nullptr : stub_->database; }
    AcDbDatabase* originalDatabase() const { return database(); }
    /// The object's class, or null when nothing is behind the id.
    class AcRxClass* objectClass() const;

    Adesk::IntDbId asOldId() const { return reinterpret_cast<Adesk::IntDbId>(stub_); }
    void setFromOldId(Adesk::IntDbId oldId) { stub_ = reinterpret_cast<AcDbStub*>(oldId); }
    operator AcDbStub*() const { return stub_; }

    friend bool operator==(AcDbObjectId a, AcDbObjectId b) { return a.stub_ == b.stub_; }
    friend bool operator!=(AcDbObjectId a, AcDbObjectId b) { return a.stub_ != b.stub_; }
    friend bool operator<(AcDbObjectId a, AcDbObjectId b) {
        return std::less<>{}(a.stub_, b.stub_);
    }
    friend bool operator>(AcDbObjectId a, AcDbObjectId b) { return b < a; }
    friend bool operator<=(AcDbObjectId a, AcDbObjectId b) { return !(b < a); }
    friend bool operator>=(AcDbObjectId a, AcDbObjectId b) { return !(a < b); }

private:
    AcDbStub* stub_ = nullptr;
};

template <>
struct std::hash<AcDbObjectId> {
    std::size_t operator()(AcDbObjectId id) const noexcept {
        return std::hash<const void*>{}(static_cast<AcDbStub*>(id));
    }
};

using AcDbSoftPointerId = AcDbObjectId;
using AcDbHardPointerId = AcDbObjectId;
using AcDbSoftOwnershipId = AcDbObjectId;
using AcDbHardOwnershipId = AcDbObjectId;
