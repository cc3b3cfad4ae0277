#include "db/deep_clone.h"

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/dxf_code.h"
#include "db/mleader.h"
#include "db/object_data.h"
#include "db/object_state.h"
#include "db/opaque.h"
#include "db/residence.h"
#include "db/sub_d_mesh.h"
#include "db/subentities.h"
#include "db/table_entity.h"

namespace headless {
namespace {

/// Dictionaries of damaged files nest in rings.
constexpr int kDeepest = 8;

/// True for what another drawing cannot get: most of it stands in a record of this one's file only.
bool livesInFile(const AcDbObject& object) {
    return OpaqueObject::cast(&object) != nullptr || OpaqueEntity::cast(&object) != nullptr ||
           AcDbTable::cast(&object) != nullptr || AcDbMLeader::cast(&object) != nullptr ||
           AcDbSubDMesh::cast(&object) != nullptr;
}

/// A block that has no name of its own gets another number from the table.
void freeAnonymousName(AcDbObject& clone) {
    auto* const block = AcDbBlockTableRecord::cast(&clone);
    if (block == nullptr || block->isSpace() || !block->nameOf().starts_with(L'*')) return;
    block->setName(block->nameOf().substr(0, 2).c_str());
}

/// "$0$NAME", "$1$NAME" and so on, the first that the table does not have.
std::wstring mangledName(const AcDbSymbolTable& table, const std::wstring& name) {
    std::wstring mangled;
    int number = 0;
    do {
        mangled = L"$" + std::to_wstring(number++) + L"$" + name;
    } while (!table.findRecord(mangled).isNull());
    return mangled;
}

std::vector<const AcDbEntity*> partsOf(const AcDbObject& owner) {
    std::vector<const AcDbEntity*> parts;
    if (const auto* const holder = dynamic_cast<const SubentityOwner*>(&owner))
        const_cast<SubentityOwner*>(holder)->subentities().forEach<AcDbEntity>(
            [&](const AcDbEntity& part) { parts.push_back(&part); });
    return parts;
}

} // namespace

DeepCloner::DeepCloner(AcDbIdMapping& mapping) : mapping_(mapping) {
    mapping.origDb(from_);
    mapping.destDb(to_);
}

Acad::ErrorStatus DeepCloner::checkSource(AcDbObjectId source) const {
    const AcDbObject* const object = Residence::peek(source);
    if (object == nullptr) return Acad::eNullObjectId;
    if (object->isErased()) return Acad::eWasErased;
    if (source.database() != from_) return Acad::eWrongDatabase;
    return isForeign() && livesInFile(*object) ? Acad::eNotApplicable : Acad::eOk;
}

Acad::ErrorStatus DeepCloner::check(AcDbObjectId source, AcDbObjectId owner) const {
    if (const auto status = checkSource(source); status != Acad::eOk) return status;
    if (!owner.isNull() && owner.database() != to_) return Acad::eWrongDatabase;
    const AcDbObject* const object = Residence::peek(source);
    const AcDbObject* const holder = Residence::peek(owner);
    if (AcDbBlockTableRecord::cast(holder) != nullptr)
        return AcDbEntity::cast(object) != nullptr ? Acad::eOk : Acad::eNotAnEntity;
    if (const auto* const table = AcDbSymbolTable::cast(holder))
        return object->isKindOf(table->recordClass()) ? Acad::eOk : Acad::eWrongObjectType;
    const bool named = AcDbDictionary::cast(holder) != nullptr &&
                       AcDbEntity::cast(object) == nullptr &&
                       AcDbSymbolTableRecord::cast(object) == nullptr;
    return named ? Acad::eOk : Acad::eWrongObjectType;
}

Acad::ErrorStatus DeepCloner::clone(AcDbObjectId source, AcDbObjectId owner) {
    if (!mapping_.find(source).isNull()) return Acad::eOk;
    const AcDbObject& object = *Residence::peek(source);
    const auto* const record = AcDbSymbolTableRecord::cast(&object);
    const Acad::ErrorStatus status = record != nullptr
                                         ? bringRecord(*record, true)
                                         : enter(ObjectState::cloneOf(object), object, owner, true);
    cloneQueued();
    return status;
}

Acad::ErrorStatus DeepCloner::cloneOwned(AcDbObjectId source, AcDbObjectId owner) {
    if (!mapping_.find(source).isNull()) return Acad::eOk;
    const bool entered = enterOwned(ObjectState::cloneOf(*Residence::peek(source)),
                                    {source, owner, Owned::Place::kEntry});
    cloneQueued();
    return entered ? Acad::eOk : Acad::eNotApplicable;
}

AcDbObjectId DeepCloner::placeFor(const AcDbObject& source) const {
    if (AcDbEntity::cast(&source) != nullptr) return to_->modelSpaceId();
    if (AcDbSymbolTableRecord::cast(&source) == nullptr) return counterpart(source.ownerId(), 0);
    const AcDbSymbolTable* const table = DrawingRoots::table(*to_, source.isA());
    return table == nullptr ? AcDbObjectId() : table->objectId();
}

Acad::ErrorStatus DeepCloner::enter(std::unique_ptr<AcDbObject> clone, const AcDbObject& source,
                                    AcDbObjectId owner, bool primary) {
    if (clone == nullptr) return Acad::eNotApplicable;
    AcDbObjectId id;
    Acad::ErrorStatus status = Acad::eOk;
    if (auto* const record = AcDbSymbolTableRecord::cast(clone.get())) {
        AcDbSmartObjectPointer<AcDbSymbolTable> table(owner, AcDb::kForWrite);
        status = table.openStatus() == Acad::eOk ? table->add(id, record) : table.openStatus();
    } else if (auto* const entity = AcDbEntity::cast(clone.get())) {
        AcDbSmartObjectPointer<AcDbBlockTableRecord> block(owner, AcDb::kForWrite);
        status = block.openStatus() == Acad::eOk ? block->appendAcDbEntity(id, entity)
                                                 : block.openStatus();
    } else {
        const auto* const from = Residence::peek<AcDbDictionary>(source.ownerId());
        const std::wstring_view key = from == nullptr ? L"" : from->keyOf(source.objectId());
        AcDbSmartObjectPointer<AcDbDictionary> dictionary(owner, AcDb::kForWrite);
        status = dictionary.openStatus();
        if (status == Acad::eOk) {
            const bool isFree = !key.empty() && dictionary->find(key).isNull();
            status = dictionary->setAt(isFree ? std::wstring(key).c_str() : L"*", clone.get(), id);
        }
    }
    if (status != Acad::eOk) return status;
    note(source, id, primary);
    return clone.release()->close();
}

bool DeepCloner::enterOwned(std::unique_ptr<AcDbObject> clone, const Owned& owned) {
    const AcDbObject& source = *Residence::peek(owned.source);
    if (owned.place == Owned::Place::kBlock)
        return enter(std::move(clone), source, owned.owner, false) == Acad::eOk;
    if (clone == nullptr || Residence::enter(*to_, *clone, owned.owner) != Acad::eOk) return false;
    AcDbObject& entered = *clone.release();
    if (owned.place == Owned::Place::kExtension)
        Residence::setExtensionDictionary(*Residence::peek(owned.owner), entered.objectId());
    note(source, entered.objectId(), false);
    return entered.close() == Acad::eOk;
}

void DeepCloner::note(const AcDbObject& source, AcDbObjectId clone, bool primary) {
    mapping_.assign({source.objectId(), clone, true, primary, false});
    const auto originals = partsOf(source);
    const auto copies = partsOf(*Residence::peek(clone));
    for (std::size_t i = 0; i < std::min(originals.size(), copies.size()); ++i) {
        mapping_.assign({originals[i]->objectId(), copies[i]->objectId(), true, false, false});
        queueOwned(*originals[i], copies[i]->objectId());
    }
    queueOwned(source, clone);
}

void DeepCloner::queueOwned(const AcDbObject& source, AcDbObjectId clone) {
    if (!source.extensionDictionary().isNull())
        queue_.push_back({source.extensionDictionary(), clone, Owned::Place::kExtension});
    if (const auto* const dictionary = AcDbDictionary::cast(&source)) {
        for (const auto& entry : dictionary->entries())
            queue_.push_back({entry.id, clone, Owned::Place::kEntry});
    }
    if (const auto* const block = AcDbBlockTableRecord::cast(&source)) {
        for (auto id = block->entityIds().rbegin(); id != block->entityIds().rend(); ++id)
            queue_.push_back({*id, clone, Owned::Place::kBlock});
    }
}

void DeepCloner::cloneQueued() {
    while (!queue_.empty()) {
        const Owned owned = queue_.back();
        queue_.pop_back();
        const AcDbObject* const source = Residence::peek(owned.source);
        if (source == nullptr || source->isErased() || !mapping_.find(owned.source).isNull())
            continue;
        if (isForeign() && livesInFile(*source)) continue;
        enterOwned(ObjectState::cloneOf(*source), owned);
    }
}

void DeepCloner::translate() {
    // Bringing things along makes more pairs.
    for (std::size_t i = mapping_.translated(); i < mapping_.pairs().size(); ++i) {
        const AcDbIdPair pair = mapping_.pairs()[i];
        AcDbObject* const clone = Residence::peek(pair.value());
        if (!isForeign() || !pair.isCloned() || clone == nullptr) continue;
        clone->forEachReference([&](AcDbObjectId& id, ReferenceKind kind) {
            if (kind == ReferenceKind::kHardPointer) bringAlong(id);
        });
        cloneQueued();
    }
    for (std::size_t i = mapping_.translated(); i < mapping_.pairs().size(); ++i) {
        AcDbIdPair pair = mapping_.pairs()[i];
        if (!pair.isCloned() || Residence::peek(pair.value()) == nullptr) continue;
        translate(pair);
        pair.setOwnerXlated(true);
        mapping_.assign(pair);
    }
    mapping_.setTranslated(mapping_.pairs().size());
}

void DeepCloner::translate(const AcDbIdPair& pair) {
    AcDbObject& clone = *Residence::peek(pair.value());
    ObjectData::markChanged(clone);
    clone.forEachReference([&](AcDbObjectId& id, ReferenceKind kind) {
        if (id.isNull()) return;
        const AcDbObjectId mapped = mapping_.find(id);
        if (!mapped.isNull())
            id = mapped;
        else if (id.database() != to_ || kind == ReferenceKind::kOwner)
            id.setNull();
    });
    auto* const entity = AcDbEntity::cast(&clone);
    if (entity != nullptr && entity->layerId().isNull()) {
        AcDbEntityPointer opened(pair.value(), AcDb::kForWrite, false, true);
        if (opened.openStatus() == Acad::eOk) opened->setLayer(to_->layerZero());
    }
    if (const AcDbObject* const source = Residence::peek(pair.key())) translateData(*source, clone);
}

/// Handles in extended data, and the reactors that were cloned too.
void DeepCloner::translateData(const AcDbObject& source, AcDbObject& clone) {
    DataItems items = ObjectData::xdata(clone);
    bool changed = false;
    for (DataItem& item : items) {
        constexpr int kHandle = 1005;
        auto* const text = std::get_if<std::wstring>(&item.value);
        if (text == nullptr) continue;
        if (item.code == kHandle) {
            AcDbObjectId id(Residence::find(*from_, AcDbHandle(text->c_str())));
            const AcDbObjectId mapped = mapping_.find(id);
            if (mapped.isNull() && !isForeign()) continue;
            ACHAR digits[17];
            mapped.handle().getIntoAsciiBuffer(digits);
            *text = digits;
            changed = true;
        } else if (item.code == AcDb::kDxfRegAppName && isForeign()) {
            registerApplication(*text);
        }
    }
    if (changed) ObjectData::setXdata(clone, std::move(items));
    for (const AcDbObjectId reactor : ObjectData::reactors(source)) {
        const AcDbObjectId mapped = mapping_.find(reactor);
        if (!mapped.isNull()) ObjectData::addReactor(clone, mapped);
    }
}

void DeepCloner::registerApplication(const std::wstring& name) {
    AcDbSmartObjectPointer<AcDbRegAppTable> table(to_->regAppTableId(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || !table->findRecord(name).isNull()) return;
    auto record = std::make_unique<AcDbRegAppTableRecord>();
    record->setName(name.c_str());
    if (table->add(record.get()) == Acad::eOk) record.release()->close();
}

void DeepCloner::bringAlong(AcDbObjectId id) {
    const AcDbObject* const object = Residence::peek(id);
    if (object == nullptr || object->isErased() || id.database() != from_) return;
    if (!mapping_.find(id).isNull() || livesInFile(*object)) return;
    if (const auto* const record = AcDbSymbolTableRecord::cast(object))
        bringRecord(*record, false);
    else
        bringEntry(*object);
}

Acad::ErrorStatus DeepCloner::bringRecord(const AcDbSymbolTableRecord& record, bool primary) {
    AcDbSymbolTable* const table = DrawingRoots::table(*to_, record.isA());
    if (table == nullptr) return Acad::eWrongObjectType;
    auto clone = ObjectState::cloneOf(record);
    freeAnonymousName(*clone);
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    const bool isSpace = block != nullptr && block->isSpace();
    const bool isAnonymous = block != nullptr && !isSpace && block->nameOf().starts_with(L'*');
    const AcDbObjectId existing = isAnonymous ? AcDbObjectId() : table->findRecord(record.nameOf());
    if (existing.isNull()) return enter(std::move(clone), record, table->objectId(), primary);
    const AcDb::DuplicateRecordCloning duplicates = mapping_.duplicateRecordCloning();
    const bool mayDiffer = isForeign() && !isSpace;
    if (mayDiffer && duplicates == AcDb::kDrcReplace) {
        replaceRecord(record, existing);
    } else if (mayDiffer && duplicates == AcDb::kDrcMangleName) {
        static_cast<AcDbSymbolTableRecord&>(*clone).setName(
            mangledName(*table, record.nameOf()).c_str());
        return enter(std::move(clone), record, table->objectId(), primary);
    } else {
        mapping_.assign({record.objectId(), existing, false});
    }
    return Acad::eOk;
}

void DeepCloner::replaceRecord(const AcDbSymbolTableRecord& record, AcDbObjectId existing) {
    AcDbObject& replaced = *Residence::peek(existing);
    ObjectData::markChanged(replaced);
    const AcDbObjectId owner = replaced.ownerId();
    const AcDbObjectId extension = replaced.extensionDictionary();
    const SourceSpan source = Residence::source(replaced);
    const auto clone = ObjectState::cloneOf(record);
    ObjectState::restore(replaced, *clone);
    ObjectData::dropForeignSource(replaced);
    Residence::setSource(replaced, source);
    Residence::setOwner(replaced, owner);
    Residence::setExtensionDictionary(replaced, extension);
    if (const auto* const block = AcDbBlockTableRecord::cast(&replaced)) {
        for (const AcDbObjectId id : block->entityIds()) {
            AcDbEntityPointer entity(id, AcDb::kForWrite, false, true);
            if (entity.openStatus() == Acad::eOk) entity->erase();
        }
    }
    note(record, existing, false);
}

void DeepCloner::bringEntry(const AcDbObject& object) {
    const auto* const from = Residence::peek<AcDbDictionary>(object.ownerId());
    if (from == nullptr) return;
    const AcDbObjectId dictionary = counterpart(object.ownerId(), 0);
    const auto* const entries = Residence::peek<AcDbDictionary>(dictionary);
    if (entries == nullptr) return;
    const AcDbObjectId existing = entries->find(from->keyOf(object.objectId()));
    if (existing.isNull())
        enter(ObjectState::cloneOf(object), object, dictionary, false);
    else
        mapping_.assign({object.objectId(), existing, false});
}

/// The dictionary that stands in the other drawing under the same keys from the root on.
AcDbObjectId DeepCloner::counterpart(AcDbObjectId dictionary, int depth) const {
    if (dictionary == from_->namedObjectsDictionaryId()) return to_->namedObjectsDictionaryId();
    const AcDbObject* const object = Residence::peek(dictionary);
    if (object == nullptr || depth == kDeepest) return {};
    const auto* const parent = Residence::peek<AcDbDictionary>(object->ownerId());
    const auto* const other =
        Residence::peek<AcDbDictionary>(counterpart(object->ownerId(), depth + 1));
    if (parent == nullptr || other == nullptr) return {};
    return other->find(parent->keyOf(dictionary));
}

} // namespace headless

namespace {

Acad::ErrorStatus cloneInto(AcDbDatabase& from, const AcDbObjectIdArray& ids, AcDbObjectId owner,
                            AcDbIdMapping& mapping, AcDb::DuplicateRecordCloning duplicates,
                            bool deferTranslation) {
    if (owner.isNull()) return Acad::eNullObjectId;
    mapping.begin(from, *owner.database(), duplicates);
    headless::DeepCloner cloner(mapping);
    for (const AcDbObjectId id : ids) {
        if (const auto status = cloner.check(id, owner); status != Acad::eOk) return status;
    }
    Acad::ErrorStatus status = Acad::eOk;
    for (const AcDbObjectId id : ids) {
        status = cloner.clone(id, owner);
        if (status != Acad::eOk) break;
    }
    if (!deferTranslation) cloner.translate();
    return status;
}

/// One object into an owner, or where such objects stand in a drawing when the owner is null.
Acad::ErrorStatus cloneOne(const AcDbObject& source, AcDbDatabase& to, const AcDbObject* owner,
                           AcDbObject*& clone, AcDbIdMapping& mapping, bool isPrimary) {
    const AcDbObjectId id = source.objectId();
    if (!mapping.find(id).isNull()) return Acad::eOk;
    mapping.begin(*source.database(), to, mapping.duplicateRecordCloning());
    headless::DeepCloner cloner(mapping);
    const AcDbObjectId place = owner != nullptr ? owner->objectId() : cloner.placeFor(source);
    Acad::ErrorStatus status = isPrimary ? cloner.check(id, place) : cloner.checkSource(id);
    if (status != Acad::eOk) return status;
    status = isPrimary ? cloner.clone(id, place) : cloner.cloneOwned(id, place);
    if (isPrimary) cloner.translate();
    AcDbIdPair pair(id, {}, false);
    if (status != Acad::eOk || !mapping.compute(pair) || !pair.isCloned()) return status;
    return acdbOpenAcDbObject(clone, pair.value(), AcDb::kForWrite, false, true);
}

} // namespace

Acad::ErrorStatus AcDbObject::deepClone(AcDbObject* owner, AcDbObject*& clone,
                                        AcDbIdMapping& mapping, Adesk::Boolean isPrimary) const {
    assertReadEnabled();
    clone = nullptr;
    if (owner == nullptr) return Acad::eNullObjectPointer;
    if (database() == nullptr || owner->database() == nullptr) return Acad::eNotInDatabase;
    if (owner->database() != database()) return Acad::eWrongDatabase;
    return cloneOne(*this, *database(), owner, clone, mapping, isPrimary);
}

Acad::ErrorStatus AcDbObject::wblockClone(AcRxObject* owner, AcDbObject*& clone,
                                          AcDbIdMapping& mapping, Adesk::Boolean isPrimary) const {
    assertReadEnabled();
    clone = nullptr;
    const AcDbObject* const holder = AcDbObject::cast(owner);
    AcDbDatabase* const to = holder != nullptr ? holder->database() : AcDbDatabase::cast(owner);
    if (owner == nullptr) return Acad::eNullObjectPointer;
    if (database() == nullptr || to == nullptr) return Acad::eNotInDatabase;
    if (to == database()) return Acad::eWrongDatabase;
    return cloneOne(*this, *to, holder, clone, mapping, isPrimary);
}

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& ids,
                                                 const AcDbObjectId& owner, AcDbIdMapping& mapping,
                                                 bool deferTranslation) {
    if (!owner.isNull() && owner.database() != this) return Acad::eWrongDatabase;
    return cloneInto(*this, ids, owner, mapping, AcDb::kDrcNotApplicable, deferTranslation);
}

Acad::ErrorStatus AcDbDatabase::wblockCloneObjects(const AcDbObjectIdArray& ids,
                                                   const AcDbObjectId& owner,
                                                   AcDbIdMapping& mapping,
                                                   AcDb::DuplicateRecordCloning duplicates,
                                                   bool deferTranslation) {
    if (!owner.isNull() && owner.database() == this) return Acad::eWrongDatabase;
    return cloneInto(*this, ids, owner, mapping, duplicates, deferTranslation);
}
