// Copies of object states: everything that an object is, but for its identity.
#pragma once

#include <memory>

#include "db/object.h"

namespace headless {

/// These look at objects however they are open, and say nothing to anyone about the change.
class ObjectState {
public:
    /// A nameless object in no database that holds the state; null when the class has no objects of
    /// its own. Parts with ids of their own are named by it, not copied.
    [[nodiscard]] static std::unique_ptr<AcDbObject> copyOf(const AcDbObject& object);
    /// Gives the object a state that copyOf told of it earlier. Names enter the table's index.
    static void restore(AcDbObject& object, const AcDbObject& state);
    /// See AcDbObject::clone.
    [[nodiscard]] static std::unique_ptr<AcDbObject> cloneOf(const AcDbObject& object);
};

} // namespace headless
