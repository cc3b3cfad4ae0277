#include "db/object.h"

#include "db/database.h"
#include "db/dictionary.h"
#include "db/dxf_filer.h"
#include "db/fault_hook.h"
#include "db/layer_lock.h"
#include "db/object_data.h"
#include "db/object_state.h"
#include "db/open.h"
#include "db/residence.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcRxObject)

AcDbObject::AcDbObject() = default;

AcDbObject& AcDbObject::operator=(const AcDbObject& other) {
    if (this == &other) return *this;
    ownerId_ = other.ownerId_;
    extensionDictionary_ = other.extensionDictionary_;
    source_ = other.source_;
    constexpr std::uint32_t kOfState = kChanged | kReshaped;
    flags_ = (flags_ & ~kOfState) | (other.flags_ & kOfState);
    extras_ = other.extras_ == nullptr ? nullptr
                                       : std::make_unique<headless::ObjectExtras>(*other.extras_);
    return *this;
}

AcRxObject* AcDbObject::clone() const {
    assertReadEnabled();
    return headless::ObjectState::cloneOf(*this).release();
}

AcDbObject::~AcDbObject() {
    if (stub_ != nullptr) headless::Residence::vacate(*stub_);
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) { return change(ownerId_, owner); }

Acad::ErrorStatus AcDbObject::close() {
    if (stub_ == nullptr) return Acad::eNullObjectId;
    // Notification is the latest opener that can be: nobody else opens the object meanwhile.
    if (stub_->openForNotify) {
        stub_->openForNotify = false;
    } else if (stub_->openForWrite) {
        const Acad::ErrorStatus status = subClose();
        stub_->openForWrite = false;
        flags_ &= ~(kModified | kNew);
        return status;
    } else if (stub_->readers > 0) {
        --stub_->readers;
    } else {
        return Acad::eInvalidOpenState;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    if (stub_->openForNotify) return Acad::eWasOpenForNotify;
    if (stub_->openForWrite) return Acad::eWasOpenForWrite;
    if (stub_->readers == 0) return Acad::eNotOpenForRead;
    if (stub_->readers > 1) return Acad::eHadMultipleReaders;
    if (headless::isOnLockedLayer(*this)) return Acad::eOnLockedLayer;
    if (headless::FaultHook::fails("upgradeOpen")) return Acad::eHadMultipleReaders;
    stub_->readers = 0;
    stub_->openForWrite = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    if (!stub_->openForWrite) return Acad::eWasNotOpenForWrite;
    const Acad::ErrorStatus status = subClose();
    flags_ &= ~(kModified | kNew);
    stub_->openForWrite = false;
    stub_->readers = 1;
    return status;
}

Acad::ErrorStatus AcDbObject::upgradeFromNotify(bool& wasWritable) {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    if (!stub_->openForNotify) return Acad::eInvalidOpenState;
    if (stub_->readers > 0) return Acad::eHadMultipleReaders;
    wasWritable = stub_->openForWrite;
    stub_->openForWrite = true;
    stub_->openForNotify = false;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeToNotify(bool wasWritable) {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    if (!stub_->openForWrite) return Acad::eWasNotOpenForWrite;
    stub_->openForWrite = wasWritable;
    stub_->openForNotify = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    if (headless::FaultHook::fails("erase")) return Acad::eCannotBeErasedByCaller;
    const Acad::ErrorStatus status = eraseAlone(erasing);
    if (status != Acad::eOk) return status;
    if (erasing)
        headless::ObjectData::eraseOwned(*this);
    else
        headless::ObjectData::bringBackOwned(*this);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::eraseAlone(bool erasing) {
    assertWriteEnabled();
    if (stub_->erased == erasing) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
    if (const Acad::ErrorStatus status = subErase(erasing); status != Acad::eOk) return status;
    stub_->erased = erasing;
    return Acad::eOk;
}

void AcDbObject::listHardOwned(std::vector<AcDbObjectId>& ids) const {
    if (!extensionDictionary_.isNull()) ids.push_back(extensionDictionary_);
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (stub_ == nullptr) return Acad::eNotInDatabase;
    assertWriteEnabled();
    if (extensionDictionary_.isResident()) {
        if (!extensionDictionary_.isErased()) return Acad::eAlreadyInDb;
        AcDbObjectPointer<AcDbDictionary> erased(extensionDictionary_, AcDb::kForWrite, true);
        return erased.openStatus() == Acad::eOk ? erased->erase(false) : erased.openStatus();
    }
    auto* const dictionary = new AcDbDictionary;
    dictionary->setTreatElementsAsHard(true);
    headless::Residence::enter(*stub_->database, *dictionary, objectId());
    extensionDictionary_ = dictionary->objectId();
    return dictionary->close();
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    assertWriteEnabled();
    AcDbObjectPointer<AcDbDictionary> dictionary(extensionDictionary_, AcDb::kForWrite);
    if (dictionary.openStatus() != Acad::eOk) return dictionary.openStatus();
    if (dictionary->numEntries() != 0) return Acad::eContainerNotEmpty;
    extensionDictionary_.setNull();
    return dictionary->erase();
}

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    // The owner stands before the first subclass; the same code means other things further on.
    constexpr int kSubclassMarker = 100;
    constexpr int kOwner = 330;
    for (const headless::DxfTag& tag : filer->record().all()) {
        if (tag.code == kSubclassMarker) break;
        if (tag.code != kOwner) continue;
        ownerId_ = filer->objectId(tag);
        break;
    }
    return Acad::eOk;
}

// Handle and owner are put around the groups of every kind of object by whoever writes the file.
Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* /*filer*/) const { return Acad::eOk; }
