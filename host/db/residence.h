// The way into databases and out of them: how objects become resident, and what is known of
// residents whether or not they are open. For the host's own parts; commands use open.h.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "db/object.h"

class AcDbBlockTableRecord;
class AcDbEntity;
class AcDbSymbolTable;
class AcDbSymbolTableRecord;

namespace headless {

/// An object that somebody opened and did not close.
struct OpenObject {
    AcDbObjectId id;
    const AcRxClass* kind;
    AcDb::OpenMode mode;
    int readers;
};

class Residence {
public:
    /// The stub of that handle; null when nothing is known of the handle.
    static AcDbStub* find(const AcDbDatabase& db, Adesk::UInt64 handle);
    /// The stub of that handle, made empty when nothing is known of it yet: ids of objects that are
    /// read later, and handles of records that are no objects here (block begins and ends).
    /// Opening an announced object that never came answers eNullObjectPointer. Null for handle 0.
    static AcDbStub* announce(AcDbDatabase& db, Adesk::UInt64 handle);
    /// Gives each of two objects of one database the other's handle; ids stay what they are.
    static void exchangeHandles(AcDbObjectId a, AcDbObjectId b);
    /// A handle for a record that is no object here.
    static Adesk::UInt64 reserveHandle(AcDbDatabase& db);
    /// New objects take handles from `seed` on; a smaller value than now changes nothing.
    static void raiseHandleSeed(AcDbDatabase& db, Adesk::UInt64 seed);

    /// Makes an object read from a file resident, closed and unchanged.
    /// @param owner   null keeps the owner that the object's own record names.
    /// @param handle  0 takes the next free one, and so does a handle that another object has: the
    ///                answer's handle() tells.
    static AcDbObjectId admit(AcDbDatabase& db, std::unique_ptr<AcDbObject> object,
                              AcDbObjectId owner = {}, Adesk::UInt64 handle = 0);
    /// As above, as a table's last record. Its name may be one the table has or that setName would
    /// refuse, as files hold such; the first record of a name is the one found by it.
    static AcDbObjectId admitRecord(AcDbSymbolTable& table,
                                    std::unique_ptr<AcDbSymbolTableRecord> record,
                                    Adesk::UInt64 handle = 0);
    /// As above, as a block's last entity.
    static AcDbObjectId admitEntity(AcDbBlockTableRecord& block, std::unique_ptr<AcDbEntity> entity,
                                    Adesk::UInt64 handle = 0);
    /// Makes a program's new object resident, open for writing. eAlreadyInDb when it is resident.
    static Acad::ErrorStatus enter(AcDbDatabase& db, AcDbObject& object, AcDbObjectId owner);

    static void setSource(AcDbObject& object, SourceSpan source) {
        object.source_ = source;
        if (object.stub_ != nullptr) object.stub_->inFile = source.length != 0;
    }
    static SourceSpan source(const AcDbObject& object) { return object.source_; }
    /// True when the object was changed since it was read, or never was in a file.
    static bool isChanged(const AcDbObject& object);
    /// True when that was more than what AcDbEntity writes of itself: layer, colour and the like.
    static bool isReshaped(const AcDbObject& object);
    /// What saving the drawing has to do about the object's record.
    enum class Record : std::uint8_t {
        kAsRead,
        kChanged,
        kNew,    // made by a program; its source span, if any, is the record it was cloned from
        kImplied // added to complete what was read, and not changed since
    };
    static Record record(const AcDbObject& object);
    /// Where the records of deleted objects stand.
    static const std::vector<SourceSpan>& deletedRecords(const AcDbDatabase& db);
    static void setExtensionDictionary(AcDbObject& object, AcDbObjectId dictionary) {
        object.extensionDictionary_ = dictionary;
    }
    static void setOwner(AcDbObject& object, AcDbObjectId owner);

    /// The object behind the id however it is open, erased or not; null when nothing is there.
    static AcDbObject* peek(AcDbObjectId id) {
        const AcDbStub* const stub = id;
        return stub == nullptr ? nullptr : stub->object;
    }
    /// The same, null also when it is of another class.
    template <class T>
    static T* peek(AcDbObjectId id) {
        return T::cast(peek(id));
    }

    /// Ids of all objects in the order of their first mention, erased ones too.
    static std::vector<AcDbObjectId> residents(const AcDbDatabase& db);
    static std::vector<OpenObject> openObjects(const AcDbDatabase& db);
    static std::size_t openCount(const AcDbDatabase& db);

private:
    friend class ::AcDbObject;

    static AcDbStub* vacantStub(AcDbDatabase& db, Adesk::UInt64 handle);
    static void occupy(AcDbStub& stub, AcDbObject& object, AcDbObjectId owner);
    /// Called when a resident object is destroyed.
    static void vacate(AcDbStub& stub);
};

} // namespace headless
