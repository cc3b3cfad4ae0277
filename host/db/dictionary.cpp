#include "db/dictionary.h"

#include <algorithm>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "rx/ac_string.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbDictionaryWithDefault, AcDbDictionary, "ACDBDICTIONARYWDFLT")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDictionaryIterator, AcRxObject)

using headless::DxfTag;
using headless::Residence;

namespace {

bool isPresent(AcDbObjectId id) { return id.isResident() && !id.isErased(); }

} // namespace

AcDbObjectId AcDbDictionary::find(std::wstring_view key) const {
    const auto found = byKey_.find(key);
    if (found == byKey_.end() || !isPresent(entries_[found->second].id)) return {};
    return entries_[found->second].id;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* key, AcDbObjectId& id) const {
    assertReadEnabled();
    if (key == nullptr) return Acad::eInvalidInput;
    const AcDbObjectId found = find(key);
    if (found.isNull()) return Acad::eKeyNotFound;
    id = found;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* key, AcDbObject*& object,
                                        AcDb::OpenMode mode) const {
    return getAt<AcDbObject>(key, object, mode);
}

bool AcDbDictionary::has(const ACHAR* key) const {
    assertReadEnabled();
    return key != nullptr && !find(key).isNull();
}

bool AcDbDictionary::has(AcDbObjectId id) const {
    assertReadEnabled();
    return isPresent(id) && entryOf(id) != nullptr;
}

const AcDbDictionary::Entry* AcDbDictionary::entryOf(AcDbObjectId id) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [id](const Entry& entry) { return entry.id == id; });
    return found == entries_.end() ? nullptr : &*found;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, ACHAR*& name) const {
    assertReadEnabled();
    const Entry* const entry = entryOf(id);
    if (entry == nullptr) return Acad::eKeyNotFound;
    name = acutNewString(entry->key.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, AcString& name) const {
    assertReadEnabled();
    const Entry* const entry = entryOf(id);
    if (entry == nullptr) return Acad::eKeyNotFound;
    name = entry->key.c_str();
    return Acad::eOk;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    assertReadEnabled();
    return static_cast<Adesk::UInt32>(std::count_if(
        entries_.begin(), entries_.end(), [](const Entry& entry) { return isPresent(entry.id); }));
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id) {
    assertWriteEnabled();
    if (object == nullptr) return Acad::eNullObjectPointer;
    if (key == nullptr || *key == L'\0') return Acad::eInvalidKey;
    if (database() == nullptr) return Acad::eNotInDatabase;
    if (object->database() == nullptr)
        Residence::enter(*database(), *object, objectId());
    else if (object->database() != database())
        return Acad::eWrongDatabase;
    if (object->ownerId().isNull()) Residence::setOwner(*object, objectId());

    const std::wstring_view wanted = key;
    std::wstring entered = wanted == L"*" ? freeAnonymousKey() : std::wstring(wanted);
    if (AcDbObject* const replaced = Residence::peek(find(entered));
        replaced != nullptr && replaced != object) {
        AcDbObjectPointer<AcDbObject> old(replaced->objectId(), AcDb::kForWrite);
        if (old.openStatus() == Acad::eOk) old->erase();
    }
    insert(std::move(entered), object->objectId());
    id = object->objectId();
    return Acad::eOk;
}

std::wstring AcDbDictionary::freeAnonymousKey() const {
    std::wstring key;
    std::size_t number = 0;
    do {
        key = L"*A" + std::to_wstring(++number);
    } while (byKey_.contains(key));
    return key;
}

std::wstring_view AcDbDictionary::keyOf(AcDbObjectId id) const {
    const Entry* const entry = entryOf(id);
    return entry == nullptr ? std::wstring_view() : entry->key;
}

void AcDbDictionary::insert(std::wstring key, AcDbObjectId id) {
    const auto [known, isNew] = byKey_.try_emplace(key, entries_.size());
    if (isNew)
        entries_.push_back({std::move(key), id});
    else
        entries_[known->second].id = id;
}

void AcDbDictionary::drop(std::size_t index) {
    byKey_.erase(entries_[index].key);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    for (auto& [key, position] : byKey_) {
        if (position > index) --position;
    }
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
    AcDbObjectId id;
    return remove(key, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key, AcDbObjectId& id) {
    assertWriteEnabled();
    if (key == nullptr || find(key).isNull()) return Acad::eKeyNotFound;
    const std::size_t index = byKey_.find(std::wstring_view(key))->second;
    id = entries_[index].id;
    drop(index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) {
    assertWriteEnabled();
    const Entry* const entry = entryOf(id);
    if (entry == nullptr) return Acad::eKeyNotFound;
    drop(static_cast<std::size_t>(entry - entries_.data()));
    return Acad::eOk;
}

bool AcDbDictionary::setName(const ACHAR* oldKey, const ACHAR* newKey) {
    assertWriteEnabled();
    if (oldKey == nullptr || newKey == nullptr || *newKey == L'\0') return false;
    const AcDbObjectId id = find(oldKey);
    if (id.isNull()) return false;
    const auto taken = byKey_.find(std::wstring_view(newKey));
    const std::size_t index = byKey_.find(std::wstring_view(oldKey))->second;
    if (taken != byKey_.end() && taken->second != index) {
        if (isPresent(entries_[taken->second].id)) return false;
        drop(taken->second);
    }
    const std::size_t renamed = byKey_.find(std::wstring_view(oldKey))->second;
    byKey_.erase(entries_[renamed].key);
    entries_[renamed].key = newKey;
    byKey_.emplace(newKey, renamed);
    return true;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator(AcDb::DictIterOrder order) const {
    assertReadEnabled();
    return new AcDbDictionaryIterator(*this, order);
}

Acad::ErrorStatus AcDbDictionary::subErase(bool erasing) {
    const bool isRoot = erasing && database()->namedObjectsDictionaryId() == objectId();
    return isRoot ? Acad::eCannotBeErasedByCaller : Acad::eOk;
}

void AcDbDictionary::listHardOwned(std::vector<AcDbObjectId>& ids) const {
    AcDbObject::listHardOwned(ids);
    if (!hard_) return;
    for (const Entry& entry : entries_)
        ids.push_back(entry.id);
}

Acad::ErrorStatus AcDbDictionary::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    const DxfTag* key = nullptr;
    for (const DxfTag& tag : filer->subclass("AcDbDictionary")) {
        switch (tag.code) {
        case 3:
            key = &tag;
            break;
        case 280:
            hard_ = tag.flag();
            break;
        case 281:
            mergeStyle_ = static_cast<AcDb::DuplicateRecordCloning>(tag.integer());
            break;
        case 350:
        case 360:
            if (key != nullptr) insert(filer->text(*key), filer->objectId(tag));
            key = nullptr;
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {3, 280, 281, 350, 360};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbDictionary", kCodes);
    if (out.since(headless::DrawingVersion::k2000)) {
        out.integer(280, hard_ ? 1 : 0, 0);
        out.integer(281, mergeStyle_);
    }
    for (const Entry& entry : entries_) {
        // An object that never came may be one that the file holds and nobody could read.
        if (entry.id.isErased()) continue;
        out.text(3, entry.key);
        out.handle(hard_ ? 360 : 350, entry.id);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::getAt(const ACHAR* key, AcDbObjectId& id) const {
    const Acad::ErrorStatus status = AcDbDictionary::getAt(key, id);
    if (status != Acad::eKeyNotFound || !isPresent(defaultId_)) return status;
    id = defaultId_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::getAt(const ACHAR* key, AcDbObject*& object,
                                                   AcDb::OpenMode mode) const {
    object = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(key, id);
    return status == Acad::eOk ? acdbOpenAcDbObject(object, id, mode) : status;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfInFields(AcDbDxfFiler* filer) {
    constexpr int kDefault = 340;
    if (const auto status = AcDbDictionary::dxfInFields(filer); status != Acad::eOk) return status;
    if (const DxfTag* const tag = filer->record().find(kDefault); tag != nullptr)
        defaultId_ = filer->objectId(*tag);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbDictionary::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {340};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbDictionaryWithDefault", kCodes);
    out.handle(340, defaultId_);
    return Acad::eOk;
}

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary& dictionary,
                                               AcDb::DictIterOrder order) {
    for (const auto& entry : dictionary.entries()) {
        if (isPresent(entry.id)) entries_.push_back(entry);
    }
    if (order != AcDb::kDictSorted) return;
    std::stable_sort(entries_.begin(), entries_.end(), [](const auto& a, const auto& b) {
        return headless::compareNoCase(a.key, b.key) < 0;
    });
}

const ACHAR* AcDbDictionaryIterator::name() const {
    return done() ? L"" : entries_[position_].key.c_str();
}

bool AcDbDictionaryIterator::name(AcString& name) const {
    if (done()) return false;
    name = entries_[position_].key.c_str();
    return true;
}

AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : entries_[position_].id;
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object,
                                                    AcDb::OpenMode mode) const {
    object = nullptr;
    return done() ? Acad::eIteratorDone : acdbOpenAcDbObject(object, objectId(), mode);
}

bool AcDbDictionaryIterator::next() {
    // An object erased during the walk is gone from the dictionary.
    if (!done()) ++position_;
    while (!done() && !isPresent(entries_[position_].id))
        ++position_;
    return !done();
}

bool AcDbDictionaryIterator::setPosition(const ACHAR* key) {
    if (key == nullptr) return false;
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        return headless::equalNoCase(entry.key, key);
    });
    if (found == entries_.end()) return false;
    position_ = static_cast<std::size_t>(found - entries_.begin());
    return true;
}

bool AcDbDictionaryIterator::setPosition(AcDbObjectId id) {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return entry.id == id; });
    if (found == entries_.end()) return false;
    position_ = static_cast<std::size_t>(found - entries_.begin());
    return true;
}

void AcDbDictionary::forEachReference(const headless::ReferenceVisitor& visit) {
    for (Entry& entry : entries_)
        visit(entry.id, headless::ReferenceKind::kOwner);
    for (std::size_t i = entries_.size(); i-- > 0;) {
        if (entries_[i].id.isNull()) drop(i);
    }
}

void AcDbDictionaryWithDefault::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbDictionary::forEachReference(visit);
    visit(defaultId_, headless::ReferenceKind::kHardPointer);
}
