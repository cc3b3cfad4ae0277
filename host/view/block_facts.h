// What pictures ask of blocks that hold more than anybody can draw.
#pragma once

#include <unordered_map>

#include "db/extents.h"
#include "db/object_id.h"

namespace headless {

/// What references within references show deeper than that is left out: far beyond any drawing that
/// people make, and well within the stack.
inline constexpr std::size_t kDeepestReference = 128;

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
    std::size_t depth_ = 0; // of the blocks being counted
    std::unordered_map<AcDbStub*, AcDbExtents> boxes_;
};

} // namespace headless
