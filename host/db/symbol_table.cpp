#include "db/symbol_table.h"

#include <algorithm>
#include <iterator>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/object_data.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "rx/ac_string.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)

using headless::Residence;

bool headless::isSymbolName(std::wstring_view name) {
    constexpr std::size_t kMaxLength = 255;
    constexpr wchar_t kFirstPrintable = L' ';
    if (name.starts_with(L'*')) name.remove_prefix(1);
    if (name.empty() || name.size() > kMaxLength) return false;
    return std::none_of(name.begin(), name.end(), [](wchar_t c) {
        return c < kFirstPrintable ||
               std::wstring_view(L"<>/\\\":;?*|,=`").find(c) != std::wstring_view::npos;
    });
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
    name = look(name_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
    name = acutNewString(look(name_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(AcString& name) const {
    name = look(name_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
    if (name == nullptr || !headless::isSymbolName(name)) return Acad::eInvalidInput;
    auto* const table = Residence::peek<AcDbSymbolTable>(ownerId());
    if (table != nullptr) {
        const AcDbObjectId other = table->findRecord(name);
        if (!other.isNull() && other != objectId()) return Acad::eDuplicateRecordName;
    }
    assertWriteEnabled();
    if (table != nullptr)
        table->rename(*this, name);
    else
        name_ = name;
    return Acad::eOk;
}

void AcDbSymbolTableRecord::beforeRestore(const AcDbObject& state) {
    auto* const table = Residence::peek<AcDbSymbolTable>(ownerId());
    const std::wstring& name = static_cast<const AcDbSymbolTableRecord&>(state).name_;
    if (table != nullptr && name != name_) table->rename(*this, name);
}

bool AcDbSymbolTableRecord::isDependent() const {
    return look(name_).find(L'|') != std::wstring::npos;
}

Acad::ErrorStatus AcDbSymbolTableRecord::subErase(bool erasing) {
    const auto* const table = Residence::peek<AcDbSymbolTable>(ownerId());
    const bool nameTaken = !erasing && table != nullptr && !table->findRecord(name_).isNull();
    return nameTaken ? Acad::eDuplicateRecordName : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    constexpr int kName = 2;
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    if (const headless::DxfTag* const name = filer->record().find(kName); name != nullptr)
        name_ = filer->text(*name);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status == Acad::eOk) filer->output().subclass("AcDbSymbolTableRecord", {});
    return status;
}

void AcDbSymbolTableRecord::beginFields(AcDbDxfFiler& filer, const char* marker,
                                        std::span<const std::int16_t> codes) const {
    constexpr int kName = 2;
    filer.output().subclass(marker, codes);
    filer.output().text(kName, name_);
}

Acad::ErrorStatus AcDbSymbolTable::lookUp(const ACHAR* name, AcDbObjectId& id, bool getErased,
                                          bool getHidden) const {
    assertReadEnabled();
    if (name == nullptr) return Acad::eInvalidInput;
    const auto named = byName_.find(std::wstring_view(name));
    if (named == byName_.end()) return Acad::eKeyNotFound;
    const auto answers = [&](AcDbObjectId candidate, bool erased) {
        const auto* const record = Residence::peek<AcDbSymbolTableRecord>(candidate);
        return record != nullptr && candidate.isErased() == erased &&
               (getHidden || isShown(*record));
    };
    for (const bool erased : {false, true}) {
        if (erased && !getErased) break;
        const auto found =
            std::find_if(named->second.begin(), named->second.end(),
                         [&](AcDbObjectId candidate) { return answers(candidate, erased); });
        if (found == named->second.end()) continue;
        id = *found;
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id,
                                         bool getErased) const {
    return lookUp(name, id, getErased, false);
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErased) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    AcDbObjectId id;
    return lookUp(name, id, false, false) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    assertReadEnabled();
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    return record != nullptr && !record->isErased() && record->ownerId() == objectId() &&
           isShown(*record);
}

AcDbObjectId AcDbSymbolTable::findRecord(std::wstring_view name) const {
    const auto named = byName_.find(name);
    if (named == byName_.end()) return {};
    const auto found =
        std::find_if(named->second.begin(), named->second.end(),
                     [](AcDbObjectId id) { return id.isResident() && !id.isErased(); });
    return found == named->second.end() ? AcDbObjectId() : *found;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    assertReadEnabled();
    iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    assertWriteEnabled();
    if (record == nullptr) return Acad::eNullObjectPointer;
    if (!record->isKindOf(recordClass())) return Acad::eWrongObjectType;
    if (database() == nullptr) return Acad::eNotInDatabase;
    if (!record->objectId().isNull()) return Acad::eAlreadyInDb;
    completeName(*record);
    if (const auto status = checkName(*record); status != Acad::eOk) return status;
    if (const auto status = Residence::enter(*database(), *record, objectId()); status != Acad::eOk)
        return status;
    append(*record);
    id = record->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::checkName(const AcDbSymbolTableRecord& record) const {
    if (record.name_.empty()) return Acad::eInvalidInput;
    return findRecord(record.name_).isNull() ? Acad::eOk : Acad::eDuplicateRecordName;
}

Acad::ErrorStatus AcDbSymbolTable::subErase(bool /*erasing*/) {
    return Acad::eCannotBeErasedByCaller;
}

void AcDbSymbolTable::append(AcDbSymbolTableRecord& record) {
    records_.push_back(record.objectId());
    byName_[record.name_].push_back(record.objectId());
}

void AcDbSymbolTable::rename(AcDbSymbolTableRecord& record, std::wstring name) {
    if (const auto named = byName_.find(record.name_); named != byName_.end()) {
        std::erase(named->second, record.objectId());
        if (named->second.empty()) byName_.erase(named);
    }
    std::vector<AcDbObjectId>& namesakes = byName_[name];
    namesakes.push_back(record.objectId());
    if (namesakes.size() > 1) sortByAge(namesakes);
    record.name_ = std::move(name);
    if (AcDbDatabase* const db = database()) db->forgetFixedRecords();
}

void AcDbSymbolTable::exchangeNames(AcDbSymbolTableRecord& a, AcDbSymbolTableRecord& b) {
    headless::ObjectData::markChanged(a);
    headless::ObjectData::markChanged(b);
    std::wstring name = a.name_;
    rename(a, b.name_);
    rename(b, std::move(name));
}

void AcDbSymbolTable::sortByAge(std::vector<AcDbObjectId>& namesakes) const {
    std::vector<AcDbObjectId> sorted;
    std::copy_if(records_.begin(), records_.end(), std::back_inserter(sorted),
                 [&](AcDbObjectId id) {
                     return std::find(namesakes.begin(), namesakes.end(), id) != namesakes.end();
                 });
    namesakes = std::move(sorted);
}

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning,
                                                 bool skipDeleted)
    : table_(table), skipsDeleted_(skipDeleted), startsAtBeginning_(atBeginning) {
    start(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    skipsDeleted_ = skipDeleted;
    startsAtBeginning_ = atBeginning;
    moved_ = false;
    position_ = atBeginning ? 0 : std::ssize(table_.recordIds()) - 1;
    settle(atBeginning);
}

bool AcDbSymbolTableIterator::done() const {
    return position_ < 0 || position_ >= std::ssize(table_.recordIds());
}

void AcDbSymbolTableIterator::step(bool forwards, bool skipDeleted) {
    skipsDeleted_ = skipDeleted;
    moved_ = true;
    if (done()) return;
    position_ += forwards ? 1 : -1;
    settle(forwards);
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eIteratorDone;
    id = table_.recordIds()[static_cast<std::size_t>(position_)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record,
                                                     AcDb::OpenMode mode, bool openErased) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getRecordId(id);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
    const auto& ids = table_.recordIds();
    const auto found = std::find(ids.begin(), ids.end(), id);
    if (found == ids.end()) return Acad::eKeyNotFound;
    moved_ = true;
    position_ = found - ids.begin();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(const AcDbSymbolTableRecord* record) {
    return record == nullptr ? Acad::eNullObjectPointer : seek(record->objectId());
}

void AcDbSymbolTableIterator::setSkipsHidden(bool skips) {
    skipsHidden_ = skips;
    if (!moved_) start(startsAtBeginning_, skipsDeleted_);
}

bool AcDbSymbolTableIterator::passesOver(AcDbObjectId id) const {
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    if (record == nullptr) return true;
    return (skipsDeleted_ && record->isErased()) || (skipsHidden_ && !table_.isShown(*record));
}

void AcDbSymbolTableIterator::settle(bool forwards) {
    while (!done() && passesOver(table_.recordIds()[static_cast<std::size_t>(position_)]))
        position_ += forwards ? 1 : -1;
}
