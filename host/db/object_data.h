// What few objects have besides their own values: extended data, persistent reactors, and the list
// of objects that were erased along with them.
//
// Extended data and reactors stay in the file they came from until they are changed; then they are
// kept with the object.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/data_item.h"
#include "db/object.h"

namespace headless {

/// A plain value: two objects with equal extras have equal data.
struct ObjectExtras {
    std::optional<DataItems> xdata;           // empty: as in the file
    std::optional<AcDbVoidPtrArray> reactors; // stubs; empty: as in the file
    std::vector<AcDbObjectId> erasedAlong;    // when the object was erased
    const void* sourceDatabase = nullptr;     // of a clone, the database that its source is of
    std::wstring colorName;                   // in a colour book
};

/// For the host's own parts; these look at objects however they are open.
class ObjectData {
public:
    /// The extended data of all applications in order: each begins with the code 1001.
    static DataItems xdata(const AcDbObject& object);
    /// The same when it was changed since it was read; else null.
    static const DataItems* ownXdata(const AcDbObject& object);
    /// Puts other extended data in place, unchecked.
    static void setXdata(AcDbObject& object, DataItems items);

    /// The persistent reactors in the order they were added, those of absent objects too.
    static std::vector<AcDbObjectId> reactors(const AcDbObject& object);
    /// True when they were asked for or changed since the object was read.
    static bool hasOwnReactors(const AcDbObject& object);
    static void addReactor(AcDbObject& object, AcDbObjectId reactor);
    /// False when it is none of them.
    static bool removeReactor(AcDbObject& object, AcDbObjectId reactor);

    /// Erases what an object that was just erased owns, and what that owns, and notes it; owned
    /// objects that are open or refuse stay.
    static void eraseOwned(AcDbObject& owner);
    /// Brings back what was erased along with the object.
    static void bringBackOwned(AcDbObject& owner);

    /// The name of an entity's colour in a colour book, as its file states it; empty for most.
    static std::wstring_view colorName(const AcDbObject& object);
    static void setColorName(AcDbObject& object, std::wstring_view name);

    /// Counts the object as changed, however it is open.
    static void markChanged(AcDbObject& object);

    /// Gives a clone the original's extended data and none of its reactors.
    static void detachClone(AcDbObject& clone, const AcDbObject& original);
    /// A clone that enters another database leaves its original's record behind.
    static void dropForeignSource(AcDbObject& object);

private:
    friend class ::AcDbObject;

    static ObjectExtras& extras(const AcDbObject& object);
    static AcDbVoidPtrArray& keptReactors(const AcDbObject& object);
};

} // namespace headless

/// True for all elements of AcDbObject::reactors(): reactors that only live in memory are none.
bool acdbIsPersistentReactor(void* reactor);
AcDbObjectId acdbPersistentReactorObjectId(void* reactor);
