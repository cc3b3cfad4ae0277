// Which entities of a drawing are shown highlighted.
//
// A set beside the database: few entities are highlighted at a time, so that none has room for it.
#pragma once

#include <unordered_set>

#include "db/object_id.h"

namespace headless {

class HighlightSet {
public:
    void add(AcDbObjectId entity) { ids_.insert(entity); }
    void remove(AcDbObjectId entity) { ids_.erase(entity); }
    bool contains(AcDbObjectId entity) const { return ids_.contains(entity); }
    /// How many entities show highlighted; erased ones show no more.
    std::size_t shown() const;

private:
    std::unordered_set<AcDbObjectId> ids_;
};

} // namespace headless
