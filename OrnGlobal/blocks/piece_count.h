// How many entities a block reference would be turned into, found out without making them. Inside
// the library only.
#pragma once

#include <map>
#include <unordered_map>
#include <utility>

#include <dbents.h>

#include "blocks/block_ref_exploder.h"

namespace blocks {

/// Counts what an exploder's settings choose, before any clip. Each block is walked once for every
/// layer that its references show: blocks within blocks can hold more entities than there are
/// atoms.
class PieceCount {
public:
    /// @param param  its layers in capitals; outlives the count.
    explicit PieceCount(const AcUtBlockRefExploderParam& param) : param_(param) {}

    [[nodiscard]] bool isChosen(AcDbObjectId layer);

    /// At least as many as a reference shows; 0 only where it shows nothing, infinitely many for
    /// references nested deeper than 500, for which there is no room on the stack.
    /// @param reference  open for reading.
    /// @param layer      its effective layer.
    [[nodiscard]] double in(const AcDbBlockReference& reference, AcDbObjectId layer);

private:
    double inBlock(AcDbObjectId block, AcDbObjectId layer);
    double ofEntity(const AcDbEntity& entity, AcDbObjectId referenceLayer);
    double ofAttributes(const AcDbBlockReference& reference, AcDbObjectId layer);

    const AcUtBlockRefExploderParam& param_;
    std::unordered_map<AcDbObjectId, bool> layers_;
    std::map<std::pair<AcDbObjectId, AcDbObjectId>, double> blocks_; // by block and layer
    int depth_ = 0;                                                  // of those being counted
};

/// The layer that an entity shows in a reference on that effective layer.
[[nodiscard]] AcDbObjectId effectiveLayer(const AcDbEntity& entity, AcDbObjectId referenceLayer);

} // namespace blocks
