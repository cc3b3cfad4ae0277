// Forgetting what was computed from objects when those change.
//
// A stub that is `watched` has something computed from its object: a box that depends on other
// objects, an entry in an index, the boxes of references to a block. Changes of an object, of its
// parts and of what a block holds come here before they happen.
#pragma once

#include "db/object_id.h"

namespace headless {

/// Called before the object changes, is deleted, or comes to its owner: tells whoever computed
/// something from it or from its owners.
void noteChange(const AcDbObject& object);

class ChangeWatch {
public:
    /// Ends the watch of one object: what was computed from it is forgotten.
    static void forget(AcDbStub& stub);
};

} // namespace headless
