#include "db/block_memory.h"

#include "db/block_table.h"
#include "db/entity.h"
#include "db/residence.h"

namespace headless {

std::optional<AcDbExtents> BlockMemory::box(const LinearPart& linear) const {
    const auto known = boxes_.find(linear);
    return known == boxes_.end() ? std::nullopt : std::optional(known->second);
}

void BlockMemory::keepBox(AcDbStub& block, const LinearPart& linear, const AcDbExtents& box) {
    block.watched = true;
    if (boxes_.size() < kMostBoxes) boxes_.emplace(linear, box);
}

void BlockMemory::noteVast(AcDbStub& block) {
    block.watched = true;
    vast_ = true;
}

void BlockMemory::addDependent(AcDbStub& block, AcDbStub& dependent) {
    block.watched = true;
    dependents_.insert(&dependent);
}

EntityIndex& BlockMemory::index(const AcDbBlockTableRecord& block) {
    if (index_ == nullptr) index_ = std::make_unique<EntityIndex>(block);
    return *index_;
}

std::unordered_set<AcDbStub*> BlockMemory::forgetBoxes() {
    boxes_.clear();
    vast_ = false;
    return std::exchange(dependents_, {});
}

void noteChange(const AcDbObject& object) {
    AcDbStub* const own = object.objectId();
    if (own != nullptr && own->watched) ChangeWatch::forget(*own);
    // What holds it: the block, or of a vertex or an attribute its entity and then the block.
    for (AcDbStub* owner = object.ownerId(); owner != nullptr && owner->object != nullptr;
         owner = owner->object->ownerId())
        if (owner->watched) ChangeWatch::forget(*owner);
}

void ChangeWatch::forget(AcDbStub& stub) {
    stub.watched = false;
    const AcDbObject& object = *stub.object;
    if (const auto* const block = AcDbBlockTableRecord::cast(&object)) {
        if (BlockMemory* const memory = block->memoryIfAny())
            for (AcDbStub* const dependent : memory->forgetBoxes())
                if (dependent->object != nullptr) noteChange(*dependent->object);
        return;
    }
    if (const auto* const entity = AcDbEntity::cast(&object)) entity->extents_.reset();
    const auto* const owner = Residence::peek<AcDbBlockTableRecord>(object.ownerId());
    if (owner == nullptr || owner->memoryIfAny() == nullptr) return;
    if (EntityIndex* const index = owner->memoryIfAny()->indexIfAny()) index->noteChange(stub);
}

} // namespace headless
