#include "dxf/part_updates.h"

#include <algorithm>

#include "db/entity.h"
#include "db/opaque.h"
#include "db/residence.h"
#include "db/subentities.h"

namespace headless {
namespace {

SubentityOwner* asOwner(AcDbObject* object) { return dynamic_cast<SubentityOwner*>(object); }

bool isInFile(const AcDbObject& object) {
    return static_cast<AcDbStub*>(object.objectId())->inFile;
}

bool hadParts(AcDbEntity& owner) {
    const Subentities& all = asOwner(&owner)->subentities();
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all.at(at) != nullptr && isInFile(*all.at(at))) return true;
    }
    return false;
}

std::uint64_t endOf(const AcDbObject& object) {
    const SourceSpan span = Residence::source(object);
    return span.offset + span.length;
}

} // namespace

PartUpdates::PartUpdates(const DrawingChanges& changes, DrawingEdits& edits, RecordWriter& writer,
                         std::function<std::uint64_t()> newHandle)
    : changes_(changes), edits_(edits), writer_(writer), newHandle_(std::move(newHandle)) {}

std::vector<AcDbEntity*> PartUpdates::partsOf(AcDbEntity& owner) const {
    std::vector<AcDbEntity*> parts;
    const Subentities& all = asOwner(&owner)->subentities();
    for (std::size_t at = 0; at < all.size(); ++at) {
        AcDbEntity* const part = all.at(at);
        if (part != nullptr && !part->isErased()) parts.push_back(part);
    }
    return parts;
}

void PartUpdates::updateAll() {
    std::unordered_set<const AcDbObject*> known;
    const auto take = [&](AcDbObject* object) {
        auto* const owner = asOwner(object) == nullptr ? nullptr : AcDbEntity::cast(object);
        if (owner != nullptr && isInFile(*owner) && known.insert(owner).second) update(*owner);
    };
    for (AcDbObject* const object : changes_.changedOwners())
        take(object);
    for (AcDbObject* const object : changes_.added())
        take(Residence::peek(object->ownerId()));
}

void PartUpdates::update(AcDbEntity& owner) {
    const std::vector<AcDbEntity*> parts = partsOf(owner);
    std::uint64_t last = 0;
    bool inOrder = true;
    for (const AcDbEntity* const part : parts) {
        if (!isInFile(*part)) continue;
        inOrder = inOrder && Residence::source(*part).offset > last;
        last = Residence::source(*part).offset;
    }
    const std::uint64_t place = inOrder ? insertParts(owner, parts) : moveParts(owner, parts);
    updateEnd(owner, !parts.empty(), place);
}

/// Writes all parts anew behind their owner: their order changed.
std::uint64_t PartUpdates::moveParts(const AcDbEntity& owner,
                                     const std::vector<AcDbEntity*>& parts) {
    for (const AcDbEntity* const part : parts) {
        writer_.write(*part);
        done_.insert(part);
        if (isInFile(*part)) edits_.remove(Residence::source(*part).offset, endOf(*part));
    }
    edits_.insert(endOf(owner), edits_.takeText());
    return endOf(owner);
}

std::uint64_t PartUpdates::insertParts(const AcDbEntity& owner,
                                       const std::vector<AcDbEntity*>& parts) {
    std::uint64_t place = endOf(owner);
    for (const AcDbEntity* const part : parts) {
        if (isInFile(*part)) {
            place = endOf(*part);
            continue;
        }
        writer_.write(*part);
        edits_.insert(place, edits_.takeText());
        ++added_;
    }
    return place;
}

void PartUpdates::updateEnd(AcDbEntity& owner, bool anyParts, std::uint64_t place) {
    const AcDbObjectId id = asOwner(&owner)->subentities().endId();
    const AcDbObject* const end = Residence::peek(id);
    const bool stated = end != nullptr && isInFile(*end);
    if (anyParts && !stated) {
        writeEnd(owner);
        edits_.insert(place, edits_.takeText());
    } else if (!anyParts && stated && hadParts(owner) && dxfName(owner) == "INSERT") {
        edits_.remove(Residence::source(*end).offset, endOf(*end));
    }
}

void PartUpdates::writeEnd(AcDbEntity& owner) {
    const AcDbObject* const end = Residence::peek(asOwner(&owner)->subentities().endId());
    if (end != nullptr && end->ownerId() == owner.objectId())
        writer_.write(*end);
    else
        writer_.writeSequenceEnd(owner, newHandle_());
}

void PartUpdates::writeAll(AcDbEntity& owner) {
    if (asOwner(&owner) == nullptr) return;
    const std::vector<AcDbEntity*> parts = partsOf(owner);
    for (const AcDbEntity* const part : parts)
        writer_.write(*part);
    added_ += parts.size();
    if (!parts.empty() || dxfName(owner) == "POLYLINE") writeEnd(owner);
}

void PartUpdates::moveAway(AcDbEntity& owner, std::unordered_set<const AcDbObject*>& apart) {
    const auto takeOut = [&](const AcDbObject* object) {
        if (object == nullptr) return;
        apart.insert(object);
        // What is gone was taken out already.
        if (isInFile(*object) && !changes_.isGone(object->objectId()))
            edits_.remove(Residence::source(*object).offset, endOf(*object));
    };
    takeOut(&owner);
    if (SubentityOwner* const holder = asOwner(&owner)) {
        const Subentities& all = holder->subentities();
        for (std::size_t at = 0; at < all.size(); ++at) {
            const AcDbEntity* const part = all.at(at);
            takeOut(part);
            if (part != nullptr && isInFile(*part) && !part->isErased()) --added_;
        }
        takeOut(Residence::peek(all.endId()));
    }
    writer_.write(owner);
    writeAll(owner);
}

} // namespace headless
