#include "db/group.h"

#include <algorithm>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/entity.h"
#include "db/named_fields.h"
#include "db/object_data.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "rx/ac_string.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbGroup, AcDbObject, "GROUP")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbGroupIterator, AcRxObject)

using headless::DxfTag;
using headless::ObjectData;
using headless::Residence;
namespace field = headless::field;

namespace {

bool isPresent(AcDbObjectId id) { return id.isResident() && !id.isErased(); }

void addReactor(AcDbObjectId member, AcDbObjectId group) {
    AcDbObject* const object = Residence::peek(member);
    if (object == nullptr) return;
    const auto ids = ObjectData::reactors(*object);
    if (std::find(ids.begin(), ids.end(), group) == ids.end())
        ObjectData::addReactor(*object, group);
}

void removeReactor(AcDbObjectId member, AcDbObjectId group) {
    if (AcDbObject* const object = Residence::peek(member))
        ObjectData::removeReactor(*object, group);
}

AcDbObjectIdArray arrayOf(AcDbObjectId id) {
    AcDbObjectIdArray ids;
    ids.append(id);
    return ids;
}

} // namespace

AcDbGroup::AcDbGroup(const ACHAR* description, bool selectable)
    : description_(description == nullptr ? L"" : description), selectable_(selectable) {}

AcDbDictionary* AcDbGroup::dictionary() const {
    if (auto* const owner = Residence::peek<AcDbDictionary>(ownerId())) return owner;
    // Old files do not tell the owner.
    return database() == nullptr ? nullptr
                                 : Residence::peek<AcDbDictionary>(database()->groupDictionaryId());
}

ACHAR* AcDbGroup::name() const {
    AcString name;
    getName(name);
    return acutNewString(name);
}

Acad::ErrorStatus AcDbGroup::getName(AcString& name) const {
    assertReadEnabled();
    const AcDbDictionary* const owner = dictionary();
    name = owner == nullptr ? L"" : std::wstring(owner->keyOf(objectId())).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::rename(const ACHAR* name, bool anonymous) {
    AcDbDictionary* const owner = dictionary();
    if (owner == nullptr || owner->keyOf(objectId()).empty()) return Acad::eNotInDatabase;
    const std::wstring old(owner->keyOf(objectId()));
    AcDbSmartObjectPointer<AcDbDictionary> names(owner->objectId(), AcDb::kForWrite);
    if (names.openStatus() != Acad::eOk) return names.openStatus();
    if (!names->setName(old.c_str(), name)) return Acad::eDuplicateKey;
    return change(anonymous_, anonymous);
}

Acad::ErrorStatus AcDbGroup::setName(const ACHAR* name) {
    assertWriteEnabled(true, false);
    if (name == nullptr || *name == L'\0') return Acad::eInvalidKey;
    return rename(name, *name == L'*');
}

Acad::ErrorStatus AcDbGroup::setAnonymous() {
    assertWriteEnabled(true, false);
    if (anonymous_) return Acad::eOk;
    const AcDbDictionary* const owner = dictionary();
    return owner == nullptr ? Acad::eNotInDatabase
                            : rename(owner->freeAnonymousKey().c_str(), true);
}

Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* description) {
    return description == nullptr ? Acad::eInvalidInput : change(description_, description);
}

Adesk::UInt32 AcDbGroup::numEntities() const {
    return static_cast<Adesk::UInt32>(
        std::count_if(look(members_).begin(), members_.end(), isPresent));
}

bool AcDbGroup::contains(AcDbObjectId id) const {
    return std::find(members_.begin(), members_.end(), id) != members_.end();
}

bool AcDbGroup::has(const AcDbEntity* entity) const {
    assertReadEnabled();
    return entity != nullptr && isPresent(entity->objectId()) && contains(entity->objectId());
}

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
    assertReadEnabled();
    ids.setLogicalLength(0);
    for (const AcDbObjectId id : members_) {
        if (isPresent(id)) ids.append(id);
    }
    return static_cast<Adesk::UInt32>(ids.length());
}

AcDbGroupIterator* AcDbGroup::newIterator() const {
    AcDbObjectIdArray ids;
    allEntityIds(ids);
    return new AcDbGroupIterator(std::move(ids));
}

Acad::ErrorStatus AcDbGroup::getIndex(AcDbObjectId id, Adesk::UInt32& index) const {
    AcDbObjectIdArray ids;
    allEntityIds(ids);
    const int found = ids.find(id);
    if (found < 0) return Acad::eInvalidInput;
    index = static_cast<Adesk::UInt32>(found);
    return Acad::eOk;
}

AcDbGroup::Position AcDbGroup::place(Adesk::UInt32 index) {
    auto at = members_.begin();
    for (; at != members_.end(); ++at) {
        if (!isPresent(*at)) continue;
        if (index == 0) break;
        --index;
    }
    return at;
}

Acad::ErrorStatus AcDbGroup::checkNew(const AcDbObjectIdArray& ids) const {
    if (database() == nullptr) return Acad::eNotInDatabase;
    for (int i = 0; i < ids.length(); ++i) {
        const AcDbObjectId id = ids[i];
        if (id.isNull()) return Acad::eNullObjectId;
        if (id.database() != database()) return Acad::eWrongDatabase;
        if (AcDbEntity::cast(Residence::peek(id)) == nullptr) return Acad::eNotAnEntity;
        if (contains(id) || ids.find(id) < i) return Acad::eDuplicateKey;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::insert(Position at, const AcDbObjectIdArray& ids) {
    if (const auto status = checkNew(ids); status != Acad::eOk) return status;
    assertWriteEnabled();
    members_.insert(at, ids.begin(), ids.end());
    for (const AcDbObjectId id : ids)
        addReactor(id, objectId());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) { return append(arrayOf(id)); }

Acad::ErrorStatus AcDbGroup::append(const AcDbObjectIdArray& ids) {
    return insert(members_.end(), ids);
}

Acad::ErrorStatus AcDbGroup::prepend(AcDbObjectId id) { return prepend(arrayOf(id)); }

Acad::ErrorStatus AcDbGroup::prepend(const AcDbObjectIdArray& ids) {
    return insert(members_.begin(), ids);
}

Acad::ErrorStatus AcDbGroup::insertAt(Adesk::UInt32 index, AcDbObjectId id) {
    return insertAt(index, arrayOf(id));
}

Acad::ErrorStatus AcDbGroup::insertAt(Adesk::UInt32 index, const AcDbObjectIdArray& ids) {
    return index > numEntities() ? Acad::eInvalidIndex : insert(place(index), ids);
}

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) { return remove(arrayOf(id)); }

Acad::ErrorStatus AcDbGroup::remove(const AcDbObjectIdArray& ids) {
    const bool all =
        std::all_of(ids.begin(), ids.end(), [this](AcDbObjectId id) { return contains(id); });
    if (!all) return Acad::eInvalidInput;
    assertWriteEnabled();
    for (const AcDbObjectId id : ids) {
        std::erase(members_, id);
        removeReactor(id, objectId());
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::removeAt(Adesk::UInt32 index) {
    const auto at = place(index);
    return at == members_.end() ? Acad::eInvalidIndex : remove(*at);
}

Acad::ErrorStatus AcDbGroup::replace(AcDbObjectId oldId, AcDbObjectId newId) {
    if (!contains(oldId)) return Acad::eInvalidInput;
    if (const auto status = checkNew(arrayOf(newId)); status != Acad::eOk) return status;
    assertWriteEnabled();
    std::replace(members_.begin(), members_.end(), oldId, newId);
    removeReactor(oldId, objectId());
    addReactor(newId, objectId());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::reverse() {
    assertWriteEnabled();
    std::reverse(members_.begin(), members_.end());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::clear() {
    assertWriteEnabled();
    for (const AcDbObjectId id : members_)
        removeReactor(id, objectId());
    members_.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::subErase(bool erasing) {
    for (const AcDbObjectId id : members_) {
        if (erasing)
            removeReactor(id, objectId());
        else
            addReactor(id, objectId());
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    const auto member = [&](const DxfTag& tag) {
        if (tag.code == 340) members_.push_back(filer->objectId(tag));
        return tag.code == 340;
    };
    field::read(*filer, filer->subclass("AcDbGroup"), member, field::Text{300, description_},
                field::Flag{70, anonymous_}, field::Flag{71, selectable_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {70, 71, 300, 340};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbGroup", kCodes);
    out.text(300, description_);
    out.integer(70, anonymous_ ? 1 : 0);
    out.integer(71, selectable_ ? 1 : 0);
    for (const AcDbObjectId member : members_)
        if (!member.isErased()) out.handle(340, member);
    return Acad::eOk;
}

bool AcDbGroupIterator::next() {
    if (!done()) ++position_;
    while (!done() && !isPresent(members_[position_]))
        ++position_;
    return !done();
}

AcDbObjectId AcDbGroupIterator::objectId() const {
    return done() ? AcDbObjectId() : members_[position_];
}

Acad::ErrorStatus AcDbGroupIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) const {
    object = nullptr;
    return done() ? Acad::eIteratorDone : acdbOpenAcDbObject(object, objectId(), mode);
}

void AcDbGroup::forEachReference(const headless::ReferenceVisitor& visit) {
    for (AcDbObjectId& member : members_)
        visit(member, headless::ReferenceKind::kSoftPointer);
    std::erase_if(members_, [](AcDbObjectId id) { return id.isNull(); });
}
