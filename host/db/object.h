// The root of everything that lives in a drawing database.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "db/object_id.h"
#include "db/open_mode.h"
#include "rx/array.h"
#include "rx/object.h"

class AcDbDxfFiler;
class AcDbIdMapping;
struct resbuf;

/// Pointers of several kinds; what a pointer means is told by who hands the array out.
using AcDbVoidPtrArray = AcArray<void*>;

namespace headless {

class ObjectData; // Extended data, reactors and what erasing takes along; see object_data.h.
struct ObjectExtras;
class ObjectState; // Copies of what an object is; see object_state.h.
class Residence;   // Puts objects into databases and takes them out; see residence.h.
class UndoJournal; // Notes states before they change; see undo_journal.h.

/// The number of the undo step at work in the process; an object that bears it was noted already.
extern std::uint32_t currentUndoStep;
/// Notes the object's state for undo, if its database records it.
void noteForUndo(AcDbObject& object);

/// Tells the session that a member was called on an object that is not open for it, see
/// DbState::openViolation. `needed` is "reading" or "writing".
void reportOpenViolation(const AcDbObject& object, const char* needed);

/// How an object refers to another: it owns it, it cannot be without it, or it merely knows it.
enum class ReferenceKind { kOwner, kHardPointer, kSoftPointer };
/// May put another id in place.
using ReferenceVisitor = std::function<void(AcDbObjectId& id, ReferenceKind kind)>;

/// Where an object's record stands in the file it was read from: untouched objects are written
/// back from there, and rarely needed parts (extended data) are read from there when asked for.
struct SourceSpan {
    std::uint64_t offset = 0;
    std::uint32_t length = 0; // 0: the object was not read from a file
    bool plain = false;       // it is known to hold neither extended data nor groups in braces
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

    /// A new object of the same class that is in no database: without owner, reactors and extension
    /// dictionary, but with the extended data, and with copies of its own of vertices and
    /// attributes. It keeps the place of the original's record in the file: groups that its class
    /// does not model are those of the original. The caller owns it.
    AcRxObject* clone() const override;
    /// Clones a resident object with what it owns into a block, table or dictionary of its drawing,
    /// as AcDbDatabase::deepCloneObjects does with many. Null and eOk when the mapping tells of a
    /// clone already, or the table has a record of that name.
    /// @param clone      open for writing; the caller closes it. Null after a refusal.
    /// @param isPrimary  false for an owner that itself refers to what it owns: it does not list
    /// the
    ///                   clone, whose references wait for the next primary call with the mapping.
    /// Errors: eNullObjectPointer without an owner, eNotInDatabase, eWrongDatabase; else as there.
    Acad::ErrorStatus deepClone(AcDbObject* owner, AcDbObject*& clone, AcDbIdMapping& mapping,
                                Adesk::Boolean isPrimary = true) const;
    /// The same into another drawing, as AcDbDatabase::wblockCloneObjects; records of a name that
    /// is there are dealt with as the mapping says.
    /// @param owner  an owner there, or the drawing: entities go to its model space, records to
    ///               their table, others to the dictionary under the same keys.
    Acad::ErrorStatus wblockClone(AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& mapping,
                                  Adesk::Boolean isPrimary = true) const;

    AcDbObjectId objectId() const { return AcDbObjectId(stub_); }
    AcDbObjectId id() const { return objectId(); }
    AcDbObjectId ownerId() const { return ownerId_; }
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    AcDbDatabase* database() const { return stub_ == nullptr ? nullptr : stub_->database; }
    void getAcDbHandle(AcDbHandle& handle) const { handle = objectId().handle(); }

    /// Gives an opened object back. eNullObjectId for an object that is in no database,
    /// eInvalidOpenState for one that nobody has open.
    Acad::ErrorStatus close();
    /// Closes after undoing nothing: changes stay, as there is no transaction to roll back.
    Acad::ErrorStatus cancel() { return close(); }
    /// Turns the only reader into the writer. eHadMultipleReaders, eWasOpenForWrite,
    /// eWasOpenForNotify, eOnLockedLayer, eNotOpenForRead; eNotInDatabase when it is in none.
    Acad::ErrorStatus upgradeOpen();
    /// Turns the writer into a reader. eWasNotOpenForWrite.
    Acad::ErrorStatus downgradeOpen();
    /// Makes an object that is open for notification writable. `wasWritable` tells whether it was
    /// before.
    Acad::ErrorStatus upgradeFromNotify(bool& wasWritable);
    Acad::ErrorStatus downgradeToNotify(bool wasWritable);

    /// Erases, or with false brings back, together with what it owns: its extension dictionary,
    /// and for a dictionary that owns its entries those. Owned objects that somebody has open stay;
    /// what was erased before stays erased when the rest is brought back. eWasErased and
    /// eWasNotErased when there is nothing to do; eCannotBeErasedByCaller for what every drawing
    /// must have, eNotInDatabase.
    Acad::ErrorStatus erase(bool erasing = true);
    bool isErased() const { return stub_ != nullptr && stub_->erased; }

    bool isReadEnabled() const {
        return stub_ == nullptr || stub_->readers != 0 || stub_->openForWrite ||
               stub_->openForNotify;
    }
    bool isWriteEnabled() const { return stub_ == nullptr || stub_->openForWrite; }
    /// True when it was changed since it was opened for writing.
    bool isModified() const { return (flags_ & kModified) != 0; }
    bool isNewObject() const { return stub_ == nullptr || (flags_ & kNew) != 0; }

    AcDbObjectId extensionDictionary() const { return extensionDictionary_; }
    /// eAlreadyInDb when there is one already.
    Acad::ErrorStatus createExtensionDictionary();
    /// eContainerNotEmpty unless the dictionary is empty.
    Acad::ErrorStatus releaseExtensionDictionary();

    /// The extended data of one application, or with null of all: for each the code 1001 with its
    /// name and then its values, in a chain that the caller frees with acutRelRb. Null when there
    /// is none. Layers (1003) and handles (1005) are texts.
    virtual resbuf* xData(const ACHAR* regappName = nullptr) const;
    /// Replaces the extended data of the applications that the chain names; one without values
    /// loses what it had. Nothing is changed by a refusal:
    /// eInvalidResBuf for a chain that does not begin with an application, for other codes than
    /// 1000 to 1005, 1010 to 1013, 1040 to 1042, 1070 and 1071, and for braces (1002) that do not
    /// match; eRegappIdNotFound for an application that is not registered in the object's (else
    /// the working) database, eNoDatabase when there is none; eOutOfRange for texts of more than
    /// 255 characters, chunks of more than 127 bytes and when all data of the object together would
    /// take more than 16383 bytes (see acdbXdSize).
    virtual Acad::ErrorStatus setXData(const resbuf* xdata);

    /// Objects in the drawing that depend on this one; they stay noted in files. eNullObjectId,
    /// eDuplicateKey for one that is noted already.
    Acad::ErrorStatus addPersistentReactor(AcDbObjectId reactor);
    /// eKeyNotFound.
    Acad::ErrorStatus removePersistentReactor(AcDbObjectId reactor);
    bool hasPersistentReactor(AcDbObjectId reactor) const;
    /// Null when there are none. Pointers are what acdbIsPersistentReactor and
    /// acdbPersistentReactorObjectId take; the array lives as long as the object is open.
    const AcDbVoidPtrArray* reactors() const;

    /// Fills the object from its record; each class reads its own subclass after its parent's.
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    /// Gives the object's groups to a filer that writes, whether or not it is open; each class its
    /// own subclass after its parent's. See headless::DxfOutput for what stands in them.
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;

    /// Shows the ids among the members to the visitor, whether or not the object is open, those of
    /// the owner, the extension dictionary and the reactors left out. Only clones may be changed
    /// that way.
    virtual void forEachReference(const headless::ReferenceVisitor& /*visit*/) {}

    /// Report a violation when the object is not open accordingly, see reportOpenViolation.
    void assertReadEnabled() const {
        if (!isReadEnabled()) [[unlikely]]
            headless::reportOpenViolation(*this, "reading");
    }
    /// Also notes the old state for undo, marks the object as changed and drops what was computed
    /// from the old state.
    void assertWriteEnabled(bool /*autoUndo*/ = true, bool recordModified = true) {
        beginChange(recordModified ? kModified | kChanged | kReshaped : 0);
    }

protected:
    AcDbObject();
    /// Takes the other's state over and keeps its own identity: its place in a database and how it
    /// is open. Classes assign their members by default; see beside_state.h for those that are no
    /// state.
    AcDbObject& operator=(const AcDbObject& other);

    /// Called on a clone: takes over what the original left in its file or holds in other objects.
    virtual void becomeIndependent(const AcDbObject& /*original*/) {}
    /// Called before the object takes over another state of its own.
    virtual void beforeRestore(const AcDbObject& /*state*/) {}
    /// Called by erase() before the state changes; anything but eOk refuses.
    virtual Acad::ErrorStatus subErase(bool /*erasing*/) { return Acad::eOk; }
    /// Adds the objects that are erased together with this one.
    virtual void listHardOwned(std::vector<AcDbObjectId>& ids) const;
    /// Called by close() of a writer before the object is given back.
    virtual Acad::ErrorStatus subClose() { return Acad::eOk; }
    /// Called before every change: classes drop what they derived from the old state.
    virtual void beforeChange() {}
    /// As assertWriteEnabled, before a change of what AcDbEntity writes of itself and nothing else:
    /// saving then leaves the rest of the record alone.
    void assertLooksWriteEnabled() { beginChange(kModified | kChanged); }

    /// A member of an object open for reading.
    template <class T>
    const T& look(const T& member) const {
        assertReadEnabled();
        return member;
    }
    /// Gives a member of an object open for writing another value.
    template <class T, class Value>
    Acad::ErrorStatus change(T& member, Value&& value) {
        assertWriteEnabled();
        member = std::forward<Value>(value);
        return Acad::eOk;
    }

private:
    friend class headless::ObjectData;
    friend class headless::ObjectState;
    friend class headless::Residence;
    friend class headless::UndoJournal;

    Acad::ErrorStatus eraseAlone(bool erasing);
    void beginChange(std::uint32_t marks) {
        if (!isWriteEnabled()) [[unlikely]]
            headless::reportOpenViolation(*this, "writing");
        if (undoStep_ != headless::currentUndoStep) [[unlikely]]
            headless::noteForUndo(*this);
        flags_ |= marks;
        beforeChange();
    }

    static constexpr std::uint32_t kModified = 1U << 0; // since it was opened
    static constexpr std::uint32_t kChanged = 1U << 1;  // since it was read
    static constexpr std::uint32_t kNew = 1U << 2;
    static constexpr std::uint32_t kReshaped = 1U << 3; // changed in more than its looks

    AcDbStub* stub_ = nullptr;
    AcDbObjectId ownerId_;
    AcDbObjectId extensionDictionary_;
    headless::SourceSpan source_;
    std::uint32_t flags_ = 0;
    std::uint32_t undoStep_ = 0; // The last step in which it was noted.
    // Few objects have any: made at the first change, or by reactors().
    mutable std::unique_ptr<headless::ObjectExtras> extras_;
};
