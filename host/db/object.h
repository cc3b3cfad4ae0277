// The root of everything that lives in a drawing database.
#pragma once

#include <cstdint>
#include <memory>

#include "db/object_id.h"
#include "db/open_mode.h"
#include "rx/object.h"

class AcDbDxfFiler;
struct resbuf;

namespace headless {

class Residence; // Puts objects into databases and takes them out; see residence.h.

/// Where an object's record stands in the file it was read from: untouched objects are written
/// back from there, and rarely needed parts (extended data) are read from there when asked for.
struct SourceSpan {
    std::uint64_t offset = 0;
    std::uint32_t length = 0; // 0: the object was not read from a file
};

} // namespace headless

/// An object of a drawing database.
///
/// A resident object is reached through its id with acdbOpenAcDbObject and given back with close().
/// Every member that looks asserts that the object is open, every member that changes asserts that
/// it is open for writing; a fresh object that is in no database yet may do both.
class AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);

    /// Deleting a resident object takes it out of its database: its id answers ePermanentlyErased.
    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    AcDbObjectId objectId() const { return AcDbObjectId(stub_); }
    AcDbObjectId id() const { return objectId(); }
    AcDbObjectId ownerId() const { return ownerId_; }
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    AcDbDatabase* database() const { return stub_ == nullptr ? nullptr : stub_->database; }
    void getAcDbHandle(AcDbHandle& handle) const { handle = objectId().handle(); }

    /// Gives an opened object back. eNullObjectId for an object that is in no database.
    Acad::ErrorStatus close();
    /// Closes after undoing nothing: changes stay, as there is no transaction to roll back.
    Acad::ErrorStatus cancel() { return close(); }
    Acad::ErrorStatus upgradeOpen();
    Acad::ErrorStatus downgradeOpen();
    /// Opened by several readers for a change that a lookup has to make.
    Acad::ErrorStatus upgradeFromNotify(bool& wasWritable);

    /// Erases, or with false brings back. eWasErased and eWasNotErased when there is nothing to do.
    Acad::ErrorStatus erase(bool erasing = true);
    bool isErased() const { return stub_ != nullptr && stub_->erased; }

    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isModified() const { return (flags_ & kModified) != 0; }
    bool isNewObject() const { return stub_ == nullptr || (flags_ & kNew) != 0; }

    AcDbObjectId extensionDictionary() const { return extensionDictionary_; }
    /// eAlreadyInDb when there is one already.
    Acad::ErrorStatus createExtensionDictionary();
    /// eContainerNotEmpty unless the dictionary is empty.
    Acad::ErrorStatus releaseExtensionDictionary();

    /// Fills the object from its record; each class reads its own subclass after its parent's.
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);

    /// Aborts the session's work with a clear message when the object is not open accordingly.
    void assertReadEnabled() const;
    /// Also marks the object as changed and drops what was computed from its old state.
    void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

protected:
    AcDbObject() = default;

    /// Called by erase() after the state has changed.
    virtual Acad::ErrorStatus subErase(bool /*erasing*/) { return Acad::eOk; }
    /// Called by close() of a writer before the object is given back.
    virtual Acad::ErrorStatus subClose() { return Acad::eOk; }
    /// Called before every change: classes drop what they derived from the old state.
    virtual void beforeChange() {}

private:
    friend class headless::Residence;

    static constexpr std::uint32_t kModified = 1U << 0;
    static constexpr std::uint32_t kNew = 1U << 1;

    AcDbStub* stub_ = nullptr;
    AcDbObjectId ownerId_;
    AcDbObjectId extensionDictionary_;
    headless::SourceSpan source_;
    std::uint32_t flags_ = 0;
};
