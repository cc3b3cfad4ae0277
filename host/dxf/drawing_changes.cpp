#include "dxf/drawing_changes.h"

#include <algorithm>

#include "db/attribute.h"
#include "db/block_table.h"
#include "db/database.h"
#include "db/dictionary.h"
#include "db/group.h"
#include "db/residence.h"
#include "db/sequence_end.h"
#include "db/sortents_table.h"
#include "db/subentities.h"
#include "dxf/fetch_ahead.h"

namespace headless {
namespace {

bool hasParts(AcDbObject& object) {
    auto* const owner = dynamic_cast<SubentityOwner*>(&object);
    return owner != nullptr &&
           (owner->subentities().size() > 0 || !owner->subentities().endId().isNull());
}

} // namespace

DrawingChanges::DrawingChanges(AcDbDatabase& db) {
    claimBlocks(db);
    removed_ = Residence::deletedRecords(db);
    anyGone_ = !removed_.empty();
    collect(db);
    if (!anyGone_) return;
    collectGone(db);
    collectLists(db);
}

void DrawingChanges::claimBlocks(const AcDbDatabase& db) {
    const auto* const table = Residence::peek<AcDbBlockTable>(db.blockTableId());
    if (table == nullptr) return;
    for (const AcDbObjectId id : table->recordIds()) {
        const auto* const block = Residence::peek<AcDbBlockTableRecord>(id);
        // Clones come behind what they were made from.
        if (block != nullptr && block->beginSource().length != 0)
            blockAt_.emplace(block->beginSource().offset, block);
    }
}

bool DrawingChanges::beginsInFile(const AcDbBlockTableRecord& block) const {
    if (block.beginSource().length == 0) return false;
    const auto known = blockAt_.find(block.beginSource().offset);
    return known != blockAt_.end() && known->second == &block;
}

void DrawingChanges::collect(AcDbDatabase& db) {
    const std::vector<AcDbObjectId> ids = Residence::residents(db);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (i + kFetchedAhead < ids.size()) fetch(Residence::peek(ids[i + kFetchedAhead]));
        const AcDbObjectId id = ids[i];
        AcDbObject* const object = Residence::peek(id);
        anyGone_ = anyGone_ || id.isErased();
        const Residence::Record record = Residence::record(*object);
        if ((record == Residence::Record::kNew || id.isErased()) &&
            AcDbAttributeDefinition::cast(object) != nullptr)
            attributed_.insert(object->ownerId());
        if (record == Residence::Record::kAsRead || record == Residence::Record::kImplied) continue;
        if (record == Residence::Record::kChanged)
            noteChanged(*object);
        else
            added_.push_back(object);
    }
}

void DrawingChanges::setApart(const std::unordered_set<const AcDbObject*>& objects) {
    const auto isApart = [&](const AcDbObject* object) { return objects.contains(object); };
    eraseChanged(isApart);
    std::erase_if(added_, isApart);
}

/// All that is asked of an object is asked while it is at hand.
void DrawingChanges::noteChanged(AcDbObject& object) {
    changed_.push_back(&object);
    const auto [known, isNew] = kinds_.try_emplace(object.isA());
    Kind& kind = known->second;
    if (isNew)
        kind = {AcDbEntity::cast(&object) != nullptr,
                dynamic_cast<SubentityOwner*>(&object) != nullptr};
    if (!kind.isEntity) besideEntities_.push_back(&object);
    if (kind.mayHaveParts && hasParts(object)) owners_.push_back(&object);
}

bool DrawingChanges::isGone(AcDbObjectId id) const {
    // An owner's chain in a damaged file may run in a circle.
    constexpr int kDeepest = 64;
    if (!id.isResident()) return true;
    if (!anyGone_) return false;
    for (int depth = 0; depth < kDeepest && !id.isNull(); ++depth) {
        if (id.isErased()) return true;
        if (!id.isResident()) return false;
        id = Residence::peek(id)->ownerId();
    }
    return false;
}

void DrawingChanges::collectGone(AcDbDatabase& db) {
    for (const AcDbObjectId id : Residence::residents(db)) {
        AcDbObject* const object = Residence::peek(id);
        // The mark behind vertices or attributes stays as long as these need it.
        const bool mark = AcDbSequenceEnd::cast(object) != nullptr;
        if (!isGone(mark ? object->ownerId() : id)) continue;
        if (static_cast<AcDbStub*>(id)->inFile) removed_.push_back(Residence::source(*object));
        auto* const block = AcDbBlockTableRecord::cast(object);
        if (block != nullptr && beginsInFile(*block)) removedBlocks_.push_back(block);
    }
    const auto gone = [this](const AcDbObject* object) { return isGone(object->objectId()); };
    eraseChanged(gone);
    std::erase_if(added_, gone);
}

bool DrawingChanges::mayNameGone(const AcDbObject& object) const {
    const auto* const dictionary = AcDbDictionary::cast(&object);
    if (dictionary == nullptr)
        return AcDbGroup::cast(&object) != nullptr || AcDbSortentsTable::cast(&object) != nullptr;
    const auto& entries = dictionary->entries();
    return std::any_of(entries.begin(), entries.end(), [this](const AcDbDictionary::Entry& entry) {
        // Objects that never came are none that went.
        return entry.id.isErased() || (entry.id.isResident() && isGone(entry.id));
    });
}

void DrawingChanges::collectLists(AcDbDatabase& db) {
    for (const AcDbObjectId id : Residence::residents(db)) {
        AcDbObject* const object = Residence::peek(id);
        if (Residence::record(*object) == Residence::Record::kAsRead && mayNameGone(*object) &&
            !isGone(id))
            noteChanged(*object);
    }
}

} // namespace headless
