// What pictures ask of blocks that hold more than anybody can draw.
#pragma once

#include <unordered_map>

#include "db/extents.h"
#include "db/object_id.h"

namespace headless {

/// Each is found out once for a picture, whether or not blocks are open.
class BlockFacts {
public:
    /// How many entities a block shows, those of its references at any depth and the references
    /// themselves; not exact where a block holds itself. A block within a block within a block may
    /// hold more than there are atoms.
    [[nodiscard]] double partsOf(AcDbObjectId block);
    /// The box of a block's contents in its own coordinates; empty when there is none or it has no
    /// bounds.
    [[nodiscard]] const AcDbExtents& boxOf(AcDbObjectId block);

private:
    std::unordered_map<AcDbStub*, double> parts_;
    std::unordered_map<AcDbStub*, AcDbExtents> boxes_;
};

} // namespace headless
