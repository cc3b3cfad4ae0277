// What was computed from a block's contents and is kept until they change.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <unordered_set>

#include "db/entity_index.h"
#include "db/extents.h"

namespace headless {

/// The first three columns of a transform, row by row.
using LinearPart = std::array<double, 9>;

class BlockMemory {
public:
    /// The box of the contents under a linear transform, when it is known.
    std::optional<AcDbExtents> box(const LinearPart& linear) const;
    void keepBox(AcDbStub& block, const LinearPart& linear, const AcDbExtents& box);

    /// True once the contents proved to be too much for exact boxes under every transform.
    bool isVast() const { return vast_; }
    void noteVast(AcDbStub& block);

    /// Notes an entity or a block whose box holds this block's contents.
    void addDependent(AcDbStub& block, AcDbStub& dependent);

    /// The index of the block's entities, built when first asked for.
    EntityIndex& index(const AcDbBlockTableRecord& block);
    EntityIndex* indexIfAny() { return index_.get(); }

    /// Forgets the boxes and gives up those that depend on them.
    std::unordered_set<AcDbStub*> forgetBoxes();

private:
    // Blocks are placed in a few ways each; where every reference is turned otherwise, keeping all
    // boxes would only cost room.
    static constexpr std::size_t kMostBoxes = 256;

    std::map<LinearPart, AcDbExtents> boxes_;
    std::unordered_set<AcDbStub*> dependents_;
    bool vast_ = false;
    std::unique_ptr<EntityIndex> index_;
};

} // namespace headless
