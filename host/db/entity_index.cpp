#include "db/entity_index.h"

#include <algorithm>

#include "db/block_table.h"
#include "db/entity.h"
#include "db/residence.h"

namespace headless {

EntityIndex::EntityIndex(const AcDbBlockTableRecord& block) : block_(block) { build(); }

EntityIndex::Place EntityIndex::placeOf(const AcDbEntity& entity, Extents3d& box) {
    AcDbExtents extents;
    // Boxes that are cheap to find again are not kept twice.
    const bool once = entity.keepsExtents() && !entity.extents_;
    const auto status = once ? entity.subGetGeomExtents(extents) : entity.extentsOf(extents);
    if (status == Acad::eInvalidExtents) return Place::everywhere;
    if (status != Acad::eOk) return Place::none;
    box.min = extents.minPoint();
    box.max = extents.maxPoint();
    return Place::box;
}

void EntityIndex::build() {
    const std::span<const AcDbObjectId> ids = block_.entityIds();
    stamps_.assign(ids.size(), 0);
    boundless_.clear();
    changed_.clear();
    std::vector<BoxTree::Item> items;
    items.reserve(ids.size());
    for (std::uint32_t slot = 0; slot < ids.size(); ++slot) {
        const auto* const entity = Residence::peek<AcDbEntity>(ids[slot]);
        if (entity == nullptr) continue;
        static_cast<AcDbStub*>(ids[slot])->watched = true;
        Extents3d box;
        const Place place = entity->isErased() ? Place::none : placeOf(*entity, box);
        if (place == Place::box) items.push_back(BoxTree::item(box, slot, 0));
        if (place == Place::everywhere) boundless_.push_back(slot);
    }
    tree_ = BoxTree(items);
}

std::uint32_t EntityIndex::slotOf(AcDbStub& entity) {
    const std::span<const AcDbObjectId> ids = block_.entityIds();
    for (auto slot = static_cast<std::uint32_t>(slots_.size()); slot < ids.size(); ++slot)
        slots_.emplace(ids[slot], slot);
    const auto found = slots_.find(&entity);
    return found == slots_.end() ? static_cast<std::uint32_t>(ids.size()) : found->second;
}

void EntityIndex::updateSlot(std::uint32_t slot) {
    ++stamps_[slot];
    std::erase(boundless_, slot);
    const AcDbObjectId id = block_.entityIds()[slot];
    const auto* const entity = Residence::peek<AcDbEntity>(id);
    if (entity == nullptr) return;
    static_cast<AcDbStub*>(id)->watched = true;
    if (entity->isErased()) return;
    Extents3d box;
    const Place place = placeOf(*entity, box);
    if (place == Place::box) tree_.insert(BoxTree::item(box, slot, stamps_[slot]));
    if (place == Place::everywhere) boundless_.push_back(slot);
}

void EntityIndex::update() {
    const std::size_t total = block_.entityIds().size();
    const std::size_t fresh = total - stamps_.size();
    // One by one takes about ten times as long for each; and what was replaced stays in the tree.
    if (fresh + changed_.size() > total / 8 || tree_.size() > 2 * total + 64) {
        if (fresh + changed_.size() > 0) build();
        return;
    }
    std::vector<AcDbStub*> changed;
    changed.swap(changed_);
    std::sort(changed.begin(), changed.end());
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    for (AcDbStub* const entity : changed)
        if (const std::uint32_t slot = slotOf(*entity); slot < stamps_.size()) updateSlot(slot);
    while (stamps_.size() < total) {
        stamps_.push_back(0);
        updateSlot(static_cast<std::uint32_t>(stamps_.size() - 1));
    }
}

std::vector<AcDbObjectId> EntityIndex::find(const Extents3d& box) {
    update();
    std::vector<std::uint32_t> slots = boundless_;
    tree_.forEachIn(box, [&](const BoxTree::Item& item) {
        if (item.stamp == stamps_[item.slot]) slots.push_back(item.slot);
    });
    std::sort(slots.begin(), slots.end(), std::greater<>());
    std::vector<AcDbObjectId> ids;
    ids.reserve(slots.size());
    for (const std::uint32_t slot : slots)
        ids.push_back(block_.entityIds()[slot]);
    return ids;
}

} // namespace headless
