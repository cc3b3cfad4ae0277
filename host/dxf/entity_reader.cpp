#include "dxf/entity_reader.h"

#include <algorithm>
#include <array>

#include "db/block_table.h"
#include "db/opaque.h"
#include "db/record_class.h"
#include "db/residence.h"
#include "db/subentities.h"
#include "db/vertex.h"

namespace headless {
namespace {

bool isPart(std::string_view name) {
    return name == "VERTEX" || name == "ATTRIB" || name == "SEQEND";
}

bool mayHaveParts(std::string_view name) { return name == "POLYLINE" || name == "INSERT"; }

bool promisesAttributes(std::span<const DxfTag> tags) {
    return std::any_of(tags.begin(), tags.end(),
                       [](const DxfTag& tag) { return tag.code == 66 && tag.integer() != 0; });
}

/// Kinds whose records tell among several classes.
bool isAmbiguous(std::string_view name) {
    constexpr std::array<std::string_view, 5> kShared = {"POLYLINE", "VERTEX", "INSERT",
                                                         "DIMENSION", "ATTRIB"};
    return std::find(kShared.begin(), kShared.end(), name) != kShared.end();
}

SubentityOwner* partsOwner(AcDbObjectId id) {
    return dynamic_cast<SubentityOwner*>(Residence::peek(id));
}

} // namespace

void EntityReader::read(const RecordParts& parts, AcDbBlockTableRecord& block) {
    if (isPart(parts.record.name)) {
        readPart(parts);
    } else {
        endSequence();
        readEntity(parts, block);
    }
}

void EntityReader::endSequence() {
    if (partsPromised_) {
        context_.report.add(ownerPlace_, owner_.handle(), "its parts end without SEQEND");
    }
    owner_.setNull();
    partsPromised_ = false;
}

AcRxClass* EntityReader::classOf(const RecordParts& parts) {
    const std::string_view name = parts.record.name;
    if (name == lastName_) return lastClass_;
    AcRxClass* const found = classOfRecord(name, DxfRecord(parts.own));
    if (!isAmbiguous(name)) {
        lastName_ = name;
        lastClass_ = found;
    }
    return found;
}

std::unique_ptr<AcDbEntity> EntityReader::make(const RecordParts& parts) {
    AcRxClass* const kind = classOf(parts);
    if (kind == nullptr) return std::make_unique<OpaqueEntity>(parts.record.name);
    if (!kind->isDerivedFrom(AcDbEntity::desc())) return nullptr;
    return std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(kind->create()));
}

void EntityReader::readEntity(const RecordParts& parts, AcDbBlockTableRecord& block) {
    std::unique_ptr<AcDbEntity> entity = make(parts);
    if (entity == nullptr) {
        context_.leaveOut(parts, "it is no entity");
        return;
    }
    if (!context_.fill(*entity, parts)) return;
    const AcDbObjectId id = Residence::admitEntity(block, std::move(entity), parts.handle);
    context_.settleHandle(id, parts);
    if (!mayHaveParts(parts.record.name)) return;
    owner_ = id;
    ownerPlace_ = parts.record.place;
    partsPromised_ = parts.record.name == "POLYLINE" || promisesAttributes(parts.own);
}

/// The vertices of old files do not always say of what kind they are: then it follows from whose
/// they are.
std::unique_ptr<AcDbEntity> EntityReader::makePart(const RecordParts& parts) {
    const SubentityOwner* const owner = partsOwner(owner_);
    std::unique_ptr<AcDbEntity> part = make(parts);
    if (owner == nullptr || part == nullptr) return nullptr;
    if (owner->takesSubentity(*part)) return part;
    if (parts.record.name != "VERTEX") return nullptr;
    for (AcRxClass* const kind : {AcDb2dVertex::desc(), AcDb3dPolylineVertex::desc(),
                                  AcDbPolygonMeshVertex::desc(), AcDbPolyFaceMeshVertex::desc()}) {
        part.reset(AcDbEntity::cast(kind->create()));
        if (part != nullptr && owner->takesSubentity(*part)) return part;
    }
    return nullptr;
}

void EntityReader::readPart(const RecordParts& parts) {
    std::unique_ptr<AcDbEntity> part = makePart(parts);
    if (part == nullptr) {
        context_.leaveOut(parts, "it belongs to no entity before it");
        return;
    }
    const bool last = parts.record.name == "SEQEND";
    if (context_.fill(*part, parts)) {
        const AcDbEntity* const kept = part.get();
        partsOwner(owner_)->subentities().admit(*Residence::peek<AcDbEntity>(owner_),
                                                std::move(part), parts.handle);
        context_.settleHandle(kept->objectId(), parts);
    }
    if (!last) return;
    partsPromised_ = false;
    endSequence();
}

} // namespace headless
