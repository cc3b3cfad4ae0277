#include "db/sortents_table.h"

#include <algorithm>
#include <unordered_set>

#include "db/block_table.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/residence.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSortentsTable, AcDbObject, "SORTENTSTABLE")

using headless::DxfTag;
using headless::Residence;

Adesk::UInt64 AcDbSortentsTable::sortHandleOf(AcDbObjectId id) const {
    const auto found = sortHandles_.find(id);
    return found == sortHandles_.end() ? Adesk::UInt64{id.handle()} : found->second;
}

/// The block's entities that are not erased in the order they are drawn.
std::vector<AcDbObjectId> AcDbSortentsTable::drawOrder() const {
    std::vector<AcDbObjectId> order;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(blockId_);
    if (block == nullptr) return order;
    for (const AcDbObjectId id : block->entityIds()) {
        if (id.isResident() && !id.isErased()) order.push_back(id);
    }
    std::stable_sort(order.begin(), order.end(), [this](AcDbObjectId a, AcDbObjectId b) {
        return sortHandleOf(a) < sortHandleOf(b);
    });
    return order;
}

bool AcDbSortentsTable::holds(AcDbObjectId id) const {
    const AcDbObject* const entity = Residence::peek(id);
    return entity != nullptr && !entity->isErased() && entity->ownerId() == blockId_;
}

/// Draws the entities in that order, sharing out among them the handles they were sorted by.
void AcDbSortentsTable::assign(const std::vector<AcDbObjectId>& order) {
    assertWriteEnabled();
    std::vector<Adesk::UInt64> handles;
    handles.reserve(order.size());
    for (const AcDbObjectId id : order)
        handles.push_back(sortHandleOf(id));
    std::sort(handles.begin(), handles.end());
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (handles[i] == order[i].handle())
            sortHandles_.erase(order[i]);
        else
            sortHandles_[order[i]] = handles[i];
    }
}

Acad::ErrorStatus AcDbSortentsTable::getFullDrawOrder(AcDbObjectIdArray& ids,
                                                      Adesk::UInt8 /*honorSortentsMask*/) const {
    assertReadEnabled();
    ids.removeAll();
    for (const AcDbObjectId id : drawOrder())
        ids.append(id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::getRelativeDrawOrder(AcDbObjectIdArray& ids,
                                                          Adesk::UInt8 honorSortentsMask) const {
    assertReadEnabled();
    if (ids.isEmpty()) return getFullDrawOrder(ids, honorSortentsMask);
    if (!std::all_of(ids.begin(), ids.end(), [this](AcDbObjectId id) { return holds(id); }))
        return Acad::eInvalidInput;
    std::stable_sort(ids.begin(), ids.end(), [this](AcDbObjectId a, AcDbObjectId b) {
        return sortHandleOf(a) < sortHandleOf(b);
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::setRelativeDrawOrder(const AcDbObjectIdArray& ids) {
    if (!std::all_of(ids.begin(), ids.end(), [this](AcDbObjectId id) { return holds(id); }))
        return Acad::eInvalidInput;
    assign({ids.begin(), ids.end()});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::firstEntityIsDrawnBeforeSecond(AcDbObjectId first,
                                                                    AcDbObjectId second,
                                                                    bool& drawnBefore) const {
    assertReadEnabled();
    if (!holds(first) || !holds(second)) return Acad::eInvalidInput;
    drawnBefore = sortHandleOf(first) < sortHandleOf(second);
    return Acad::eOk;
}

/// Moves the entities next to the target; a null target stands for all others.
Acad::ErrorStatus AcDbSortentsTable::place(const AcDbObjectIdArray& ids, AcDbObjectId target,
                                           bool above) {
    const std::unordered_set<AcDbObjectId> moving(ids.begin(), ids.end());
    if (!std::all_of(moving.begin(), moving.end(), [this](AcDbObjectId id) { return holds(id); }))
        return Acad::eInvalidInput;
    if (!target.isNull() && (!holds(target) || moving.contains(target))) return Acad::eInvalidInput;

    std::vector<AcDbObjectId> order = drawOrder();
    const auto rest = std::stable_partition(order.begin(), order.end(),
                                            [&](AcDbObjectId id) { return moving.contains(id); });
    const std::vector<AcDbObjectId> moved(order.begin(), rest);
    order.erase(order.begin(), rest);
    auto place = above ? order.end() : order.begin();
    if (!target.isNull()) {
        place = std::find(order.begin(), order.end(), target);
        if (above) ++place;
    }
    order.insert(place, moved.begin(), moved.end());
    assign(order);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::moveToTop(const AcDbObjectIdArray& ids) {
    return place(ids, {}, true);
}

Acad::ErrorStatus AcDbSortentsTable::moveToBottom(const AcDbObjectIdArray& ids) {
    return place(ids, {}, false);
}

Acad::ErrorStatus AcDbSortentsTable::moveAbove(const AcDbObjectIdArray& ids, AcDbObjectId target) {
    return target.isNull() ? Acad::eNullObjectId : place(ids, target, true);
}

Acad::ErrorStatus AcDbSortentsTable::moveBelow(const AcDbObjectIdArray& ids, AcDbObjectId target) {
    return target.isNull() ? Acad::eNullObjectId : place(ids, target, false);
}

Acad::ErrorStatus AcDbSortentsTable::swapOrder(AcDbObjectId first, AcDbObjectId second) {
    if (!holds(first) || !holds(second)) return Acad::eInvalidInput;
    const bool firstIsLower = sortHandleOf(first) < sortHandleOf(second);
    assign(firstIsLower ? std::vector{second, first} : std::vector{first, second});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::getSortHandle(AcDbObjectId id, AcDbHandle& handle) const {
    assertReadEnabled();
    if (!holds(id)) return Acad::eInvalidInput;
    handle = AcDbHandle(sortHandleOf(id));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    AcDbObjectId entity;
    for (const DxfTag& tag : filer->subclass("AcDbSortentsTable")) {
        switch (tag.code) {
        case 5:
            if (!entity.isNull()) sortHandles_[entity] = tag.handle();
            break;
        case 330:
            blockId_ = filer->objectId(tag);
            break;
        case 331:
            entity = filer->objectId(tag);
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {5, 330, 331};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbSortentsTable", kCodes);
    out.handle(330, blockId_);
    std::vector<std::pair<AcDbObjectId, Adesk::UInt64>> entries;
    for (const auto& entry : sortHandles_)
        if (!entry.first.isErased()) entries.push_back(entry);
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        return std::pair(a.second, Adesk::UInt64{a.first.handle()}) <
               std::pair(b.second, Adesk::UInt64{b.first.handle()});
    });
    for (const auto& [entity, handle] : entries) {
        out.handle(331, entity);
        out.handleNumber(5, handle);
    }
    return Acad::eOk;
}

void AcDbSortentsTable::forEachReference(const headless::ReferenceVisitor& visit) {
    visit(blockId_, headless::ReferenceKind::kSoftPointer);
    std::unordered_map<AcDbObjectId, Adesk::UInt64> visited;
    for (const auto& [entity, handle] : sortHandles_) {
        // The handle to be sorted by is that of another entity of the block.
        AcDbObjectId sorted = entity;
        AcDbObjectId place(Residence::find(*entity.database(), handle));
        visit(sorted, headless::ReferenceKind::kSoftPointer);
        visit(place, headless::ReferenceKind::kSoftPointer);
        if (!sorted.isNull()) visited[sorted] = place.isNull() ? handle : place.handle();
    }
    sortHandles_ = std::move(visited);
}
