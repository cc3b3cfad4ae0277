// Dictionaries: objects by name, below the drawing's root dictionary or below any single object.
//
// Keys compare without regard to case. An erased, deleted or never read object's entry is treated
// as absent; it answers again once the object is brought back.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/object.h"
#include "db/open.h"
#include "win/casing.h"

class AcDbDictionaryIterator;
class AcString;

namespace headless {
class DrawingRoots;
} // namespace headless

namespace AcDb {
enum DictIterOrder { kDictSorted, kDictCollated };
enum DuplicateRecordCloning {
    kDrcNotApplicable = 0,
    kDrcIgnore = 1,
    kDrcReplace = 2,
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4,
    kDrcUnmangleName = 5
};
} // namespace AcDb

class AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary);

    AcDbDictionary() = default;

    /// eKeyNotFound when nothing is there.
    virtual Acad::ErrorStatus getAt(const ACHAR* key, AcDbObjectId& id) const;
    virtual Acad::ErrorStatus getAt(const ACHAR* key, AcDbObject*& object,
                                    AcDb::OpenMode mode) const;
    template <class T>
    Acad::ErrorStatus getAt(const ACHAR* key, T*& object,
                            AcDb::OpenMode mode = AcDb::kForRead) const {
        object = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus status = getAt(key, id);
        return status == Acad::eOk ? acdbOpenObject(object, id, mode) : status;
    }
    bool has(const ACHAR* key) const;
    bool has(AcDbObjectId id) const;
    /// The key of an object: a copy that the caller frees, or a text of the dictionary's own.
    Acad::ErrorStatus nameAt(AcDbObjectId id, ACHAR*& name) const;
    Acad::ErrorStatus nameAt(AcDbObjectId id, AcString& name) const;
    Adesk::UInt32 numEntries() const;

    /// Takes a new object over, or enters one that is resident. A new one, and one without an
    /// owner, becomes owned by the dictionary; a new one stays open for writing. An entry of that
    /// key is replaced and its object erased; the key "*" stands for a free one of the kind "*A1".
    /// Refusals: eNullObjectPointer, eInvalidKey for an empty key, eNotInDatabase,
    /// eWrongDatabase for a resident of another one.
    Acad::ErrorStatus setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id);
    /// Takes the entry out; the object stays as it is. eKeyNotFound.
    Acad::ErrorStatus remove(const ACHAR* key);
    Acad::ErrorStatus remove(const ACHAR* key, AcDbObjectId& id);
    Acad::ErrorStatus remove(AcDbObjectId id);
    /// Gives an entry another key. False when the old one is absent or the new one is taken.
    bool setName(const ACHAR* oldKey, const ACHAR* newKey);

    /// The caller deletes it. Sorted goes by key, collated in the order of entry.
    AcDbDictionaryIterator* newIterator(AcDb::DictIterOrder order = AcDb::kDictSorted) const;

    /// True when the dictionary owns its objects rather than merely naming them.
    bool isTreatElementsAsHard() const { return look(hard_); }
    Acad::ErrorStatus setTreatElementsAsHard(bool hard) { return change(hard_, hard); }
    AcDb::DuplicateRecordCloning mergeStyle() const { return look(mergeStyle_); }
    void setMergeStyle(AcDb::DuplicateRecordCloning style) { change(mergeStyle_, style); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    struct Entry {
        std::wstring key;
        AcDbObjectId id;
    };
    /// All entries in the order of entry, those of absent objects too.
    const std::vector<Entry>& entries() const { return entries_; }
    /// The object of that key whether or not the dictionary is open; null when absent.
    AcDbObjectId find(std::wstring_view key) const;
    /// An object's key whether or not the dictionary is open; empty when it has none here.
    std::wstring_view keyOf(AcDbObjectId id) const;
    /// A key that no entry has: "*A1", "*A2" and so on.
    std::wstring freeAnonymousKey() const;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    /// Its entries too, if it owns them.
    void listHardOwned(std::vector<AcDbObjectId>& ids) const override;

private:
    friend class headless::DrawingRoots;

    const Entry* entryOf(AcDbObjectId id) const;
    void insert(std::wstring key, AcDbObjectId id);
    void drop(std::size_t index);

    std::vector<Entry> entries_;
    std::unordered_map<std::wstring, std::size_t, headless::NameHash, headless::NameEqual> byKey_;
    AcDb::DuplicateRecordCloning mergeStyle_ = AcDb::kDrcIgnore;
    bool hard_ = false;
};

/// A dictionary that answers a default object for keys it does not hold.
class AcDbDictionaryWithDefault : public AcDbDictionary {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionaryWithDefault);

    AcDbDictionaryWithDefault() = default;

    using AcDbDictionary::getAt;
    Acad::ErrorStatus getAt(const ACHAR* key, AcDbObjectId& id) const override;
    Acad::ErrorStatus getAt(const ACHAR* key, AcDbObject*& object,
                            AcDb::OpenMode mode) const override;

    AcDbObjectId defaultId() const { return look(defaultId_); }
    Acad::ErrorStatus setDefaultId(AcDbObjectId id) { return change(defaultId_, id); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

private:
    AcDbObjectId defaultId_;
};

/// Walks over the entries that were there when it was made.
class AcDbDictionaryIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionaryIterator);

    AcDbDictionaryIterator(const AcDbDictionary& dictionary, AcDb::DictIterOrder order);

    /// Empty beyond the last entry.
    const ACHAR* name() const;
    bool name(AcString& name) const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    bool done() const { return position_ >= entries_.size(); }
    /// False when it has gone beyond the last entry.
    bool next();
    /// False, staying where it is, when no entry has that key.
    bool setPosition(const ACHAR* key);
    bool setPosition(AcDbObjectId id);

private:
    std::vector<AcDbDictionary::Entry> entries_;
    std::size_t position_ = 0;
};
