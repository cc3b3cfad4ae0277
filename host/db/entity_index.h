// The entities of one block by place, so that picks need not walk all of them.
#pragma once

#include <unordered_map>
#include <vector>

#include "db/box_tree.h"
#include "db/object_id.h"

class AcDbBlockTableRecord;
class AcDbEntity;

namespace headless {

/// Boxes of a block's entities. Changes are only noted as they happen, and worked in when the next
/// question is asked. Erased entities and those that occupy no place are in no answer.
class EntityIndex {
public:
    /// Indexes all entities that the block holds now.
    explicit EntityIndex(const AcDbBlockTableRecord& block);

    /// Entities whose boxes have a point in common with `box`, and all without bounds (rays), the
    /// newest first.
    std::vector<AcDbObjectId> find(const Extents3d& box);

    /// The entity's box will be looked at again.
    void noteChange(AcDbStub& entity) { changed_.push_back(&entity); }

private:
    enum class Place { none, box, everywhere };
    static Place placeOf(const AcDbEntity& entity, Extents3d& box);

    void build();
    void update();
    void updateSlot(std::uint32_t slot);
    std::uint32_t slotOf(AcDbStub& entity);

    const AcDbBlockTableRecord& block_;
    BoxTree tree_;
    std::vector<std::uint32_t> stamps_; // By slot, the place in the block's list. An item of the
                                        // tree with another stamp is what was there before.
    std::vector<std::uint32_t> boundless_;
    std::vector<AcDbStub*> changed_;
    std::unordered_map<AcDbStub*, std::uint32_t> slots_; // Made at the first change.
};

} // namespace headless
