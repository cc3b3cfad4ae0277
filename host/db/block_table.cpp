#include "db/block_table.h"

#include <algorithm>
#include <cwctype>
#include <unordered_set>

#include "db/attribute.h"
#include "db/block_memory.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/dxf_fields.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/fault_hook.h"
#include "db/named_fields.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "db/sortents_table.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, "BLOCK_RECORD")
ACRX_CONS_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, 0)

using headless::DrawingVersion;
using headless::DxfTag;
using headless::Residence;
namespace field = headless::field;

namespace {

/// Bits of a block's begin.
struct BeginFlags {
    static constexpr std::uint32_t kAnonymous = 1;
    static constexpr std::uint32_t kAttributes = 2;
    static constexpr std::uint32_t kExternal = 4;
    static constexpr std::uint32_t kOverlay = 8;
    static constexpr std::uint32_t kAll = 15;
};

/// True when an object outside of the block cannot be without it: a reference, a dimension, a
/// dimension style. What is erased, or stands in an erased block, needs nothing.
bool isNeeded(const AcDbBlockTableRecord& block) {
    if (block.database() == nullptr) return false;
    const AcDbObjectId self = block.objectId();
    bool needed = false;
    const headless::ReferenceVisitor look = [&](AcDbObjectId& id, headless::ReferenceKind kind) {
        needed = needed || (kind == headless::ReferenceKind::kHardPointer && id == self);
    };
    for (const AcDbObjectId id : Residence::residents(*block.database())) {
        auto* const object = Residence::peek<AcDbObject>(id);
        if (object == nullptr || object->isErased()) continue;
        const AcDbObjectId owner = object->ownerId();
        if (owner == self || owner.isErased()) continue;
        object->forEachReference(look);
        if (needed) return true;
    }
    return false;
}

/// Has what opening an entity and asking for its box looks at brought near.
void prefetch(AcDbStub* entity) {
    const auto* const object = reinterpret_cast<const char*>(entity->object);
    __builtin_prefetch(object);
    __builtin_prefetch(object + 64);
}

} // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    assertWriteEnabled();
    if (entity == nullptr) return Acad::eNullEntityPointer;
    if (database() == nullptr) return Acad::eMustFirstAddBlockToDb;
    if (!entity->objectId().isNull()) return Acad::eAlreadyInDb;
    if (headless::FaultHook::fails("appendAcDbEntity")) return Acad::eOutOfMemory;
    if (entity->layerId().isNull() && !database()->clayer().isNull())
        entity->setLayer(database()->clayer(), true, true);
    if (const auto status = Residence::enter(*database(), *entity, objectId()); status != Acad::eOk)
        return status;
    entities_.push_back(entity->objectId());
    id = entity->objectId();
    return Acad::eOk;
}

headless::BlockMemory& AcDbBlockTableRecord::memory() const {
    if (memory_ == nullptr)
        static_cast<std::shared_ptr<headless::BlockMemory>&>(memory_) =
            std::make_shared<headless::BlockMemory>();
    return *memory_;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator,
                                                    bool atBeginning, bool skipDeleted) const {
    assertReadEnabled();
    iterator = new AcDbBlockTableRecordIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::getSortentsTable(AcDbSortentsTable*& table,
                                                         AcDb::OpenMode mode,
                                                         bool createIfNecessary) {
    table = nullptr;
    assertReadEnabled();
    const auto* const known = Residence::peek<AcDbDictionary>(extensionDictionary());
    const AcDbObjectId id = known == nullptr || known->isErased()
                                ? AcDbObjectId()
                                : known->find(headless::kSortentsKey);
    if (!id.isNull()) return acdbOpenObject(table, id, mode);
    if (!createIfNecessary) return Acad::eKeyNotFound;

    if (known == nullptr || known->isErased()) {
        if (const auto status = createExtensionDictionary(); status != Acad::eOk) return status;
    }
    AcDbObjectPointer<AcDbDictionary> dictionary(extensionDictionary(), AcDb::kForWrite);
    if (dictionary.openStatus() != Acad::eOk) return dictionary.openStatus();
    auto* const made = new AcDbSortentsTable;
    made->setBlockId(objectId());
    AcDbObjectId madeId;
    if (const auto status = dictionary->setAt(headless::kSortentsKey, made, madeId);
        status != Acad::eOk) {
        delete made;
        return status;
    }
    made->close();
    return acdbOpenObject(table, madeId, mode);
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(AcDbObjectIdArray& ids,
                                                             bool directOnly,
                                                             bool /*forceValidity*/) const {
    assertReadEnabled();
    const std::vector<AcDbObjectId> residents =
        database() == nullptr ? std::vector<AcDbObjectId>() : Residence::residents(*database());
    std::unordered_set<AcDbObjectId> wanted{objectId()};
    std::unordered_set<AcDbObjectId> found;
    bool more = true;
    while (more) {
        more = false;
        for (const AcDbObjectId id : residents) {
            const auto* const reference = Residence::peek<AcDbBlockReference>(id);
            if (reference == nullptr || reference->isErased()) continue;
            if (!wanted.contains(reference->blockOf()) || !found.insert(id).second) continue;
            ids.append(id);
            if (!directOnly) more = wanted.insert(reference->ownerId()).second || more;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::comments(ACHAR*& comments) const {
    comments = acutNewString(look(comments_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::comments(const ACHAR*& comments) const {
    comments = look(comments_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* comments) {
    return comments == nullptr ? Acad::eInvalidInput : change(comments_, comments);
}

Acad::ErrorStatus AcDbBlockTableRecord::pathName(ACHAR*& path) const {
    path = acutNewString(look(path_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::pathName(const ACHAR*& path) const {
    path = look(path_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setPathName(const ACHAR* path) {
    return path == nullptr ? Acad::eInvalidInput : change(path_, path);
}

bool AcDbBlockTableRecord::isLayout() const {
    assertReadEnabled();
    return isSpace();
}

bool AcDbBlockTableRecord::isSpace() const {
    // Further paper spaces are numbered: *Paper_Space0, *Paper_Space1, ...
    const std::wstring& name = nameOf();
    const std::wstring_view paper = ACDB_PAPER_SPACE;
    const std::wstring_view start = std::wstring_view(name).substr(0, paper.size());
    return headless::equalNoCase(name, ACDB_MODEL_SPACE) || headless::equalNoCase(start, paper);
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    assertReadEnabled();
    return std::any_of(entities_.begin(), entities_.end(), [](AcDbObjectId id) {
        const auto* const definition = Residence::peek<AcDbAttributeDefinition>(id);
        return definition != nullptr && !definition->isErased();
    });
}

bool AcDbBlockTableRecord::hasVariableAttributes() const {
    return std::any_of(entities_.begin(), entities_.end(), [](AcDbObjectId id) {
        const auto* const definition = Residence::peek<AcDbAttributeDefinition>(id);
        return definition != nullptr && !definition->isErased() &&
               !definition->isDrawnInReferences();
    });
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    anonymous_ = nameOf().starts_with(L'*') && !isSpace();
    field::read(*filer, filer->subclass("AcDbBlockTableRecord"), field::Integer{70, insertUnits_},
                field::Flag{280, explodable_}, field::Id{340, layoutId_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::readBegin(AcDbDxfFiler& filer) {
    const auto flags = [this](const DxfTag& tag) {
        if (tag.code != 70) return false;
        anonymous_ = (tag.integer() & BeginFlags::kAnonymous) != 0 && !isSpace();
        external_ = (tag.integer() & (BeginFlags::kExternal | BeginFlags::kOverlay)) != 0;
        overlay_ = (tag.integer() & BeginFlags::kOverlay) != 0;
        return true;
    };
    field::read(filer, filer.subclass("AcDbBlockBegin"), field::Text{1, path_},
                field::Text{4, comments_}, field::Point{10, origin_}, flags);
    return Acad::eOk;
}

void AcDbBlockTableRecord::setEnds(headless::SourceSpan begin, headless::SourceSpan end) {
    begin_ = begin;
    end_ = end;
}

Acad::ErrorStatus AcDbBlockTableRecord::subErase(bool erasing) {
    if (erasing && (isLayout() || isNeeded(*this))) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& block,
                                                           bool atBeginning, bool skipDeleted)
    : block_(block), skipsDeleted_(skipDeleted) {
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    skipsDeleted_ = skipDeleted;
    position_ = atBeginning ? 0 : std::ssize(block_.entityIds()) - 1;
    settle(atBeginning);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    entity = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getEntityId(id);
    return status == Acad::eOk ? acdbOpenAcDbEntity(entity, id, mode, openErased) : status;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    const auto ids = block_.entityIds();
    const auto found = std::find(ids.begin(), ids.end(), id);
    if (found == ids.end()) return Acad::eNotInBlock;
    position_ = found - ids.begin();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(const AcDbEntity* entity) {
    return entity == nullptr ? Acad::eNullObjectPointer : seek(entity->objectId());
}

void AcDbBlockTableRecordIterator::settle(bool forwards) {
    const auto ids = block_.entityIds();
    std::ptrdiff_t at = position_;
    // Whoever walks a large block waits for the memory of its entities more than anything.
    constexpr std::ptrdiff_t kAhead = 8;
    if (forwards && at + kAhead < std::ssize(ids))
        prefetch(ids[static_cast<std::size_t>(at + kAhead)]);
    for (; at >= 0 && at < std::ssize(ids); at += forwards ? 1 : -1) {
        const AcDbObjectId id = ids[static_cast<std::size_t>(at)];
        if (id.isResident() && !(skipsDeleted_ && id.isErased())) break;
    }
    position_ = at;
}

void AcDbBlockTable::completeName(AcDbSymbolTableRecord& record) {
    auto& block = static_cast<AcDbBlockTableRecord&>(record);
    const std::wstring kind = record.nameOf();
    if (kind.size() != 2 || kind[0] != L'*') return;
    int& count = anonymousCounts_[headless::upperCased(kind)];
    std::wstring name;
    do {
        name = kind + std::to_wstring(++count);
    } while (!findRecord(name).isNull());
    assignName(record, std::move(name));
    block.anonymous_ = true;
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2, 70, 280, 340};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbBlockTableRecord", kCodes);
    if (!out.since(DrawingVersion::k2000)) return Acad::eOk;
    out.handle(340, layoutId_);
    if (out.since(DrawingVersion::k2007) || insertUnits_ != 0) out.integer(70, insertUnits_);
    if (out.since(DrawingVersion::k2007) || !explodable_) out.integer(280, explodable_ ? 1 : 0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::writeBegin(AcDbDxfFiler& filer, bool withAttributes) const {
    static constexpr std::int16_t kCodes[] = {1, 2, 3, 4, 10, 20, 30, 70};
    headless::DxfOutput& out = filer.output();
    out.subclass("AcDbEntity", {});
    out.text(8, L"0");
    out.subclass("AcDbBlockBegin", kCodes);
    out.text(2, nameOf());
    out.flags(70, beginFlags(withAttributes), BeginFlags::kAll);
    out.point(10, origin_);
    if (out.since(DrawingVersion::kR13)) out.text(3, nameOf());
    out.text(1, path_);
    if (out.since(DrawingVersion::k2000)) out.text(4, comments_, L"");
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::writeEnd(AcDbDxfFiler& filer) const {
    headless::DxfOutput& out = filer.output();
    out.subclass("AcDbEntity", {});
    out.text(8, L"0");
    out.subclass("AcDbBlockEnd", {});
    return Acad::eOk;
}

std::uint32_t AcDbBlockTableRecord::beginFlags(bool withAttributes) const {
    std::uint32_t flags = anonymous_ ? BeginFlags::kAnonymous : 0;
    if (withAttributes) flags |= BeginFlags::kAttributes;
    if (overlay_) return flags | BeginFlags::kOverlay;
    return external_ ? flags | BeginFlags::kExternal : flags;
}

void AcDbBlockTableRecord::forEachReference(const headless::ReferenceVisitor& visit) {
    visit(layoutId_, headless::ReferenceKind::kSoftPointer);
}
