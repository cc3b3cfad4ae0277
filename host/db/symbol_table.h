// Symbol tables: the named records of a drawing, and what all nine tables have in common.
//
// Names compare without regard to case and keep the order in which they were added. A table may
// hold several records of one name as long as all but one are erased.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/beside_state.h"
#include "db/object.h"
#include "db/open.h"
#include "win/casing.h"

class AcString;
class AcDbSymbolTable;
class AcDbSymbolTableIterator;

class AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);

    /// The text is valid until the record changes.
    Acad::ErrorStatus getName(const ACHAR*& name) const;
    /// A copy that the caller frees with acutDelString.
    Acad::ErrorStatus getName(ACHAR*& name) const;
    Acad::ErrorStatus getName(AcString& name) const;
    /// eInvalidInput for a name that the platform does not allow, eDuplicateRecordName when the
    /// record's table has another one of that name.
    Acad::ErrorStatus setName(const ACHAR* name);

    /// True for records that came with an external drawing; theirs is "drawing|name".
    bool isDependent() const;
    bool isResolved() const { return true; }
    bool isRenamable() const { return !isDependent(); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    /// The name whether or not the record is open.
    const std::wstring& nameOf() const { return name_; }

protected:
    AcDbSymbolTableRecord() = default;
    /// Begins the part of a record's own class, whose codes are to hold 2 and 70, with its name.
    void beginFields(AcDbDxfFiler& filer, const char* marker,
                     std::span<const std::int16_t> codes) const;
    /// Refuses to bring a record back when its name was given to another meanwhile.
    Acad::ErrorStatus subErase(bool erasing) override;
    /// Puts the name it had under the table's names again.
    void beforeRestore(const AcDbObject& state) override;

private:
    friend class AcDbSymbolTable;

    std::wstring name_;
};

class AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

    /// The id of the record of that name. eKeyNotFound; with `getErased` an erased record answers
    /// when there is no other.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErased = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErased = false) const;
    bool has(const ACHAR* name) const;
    /// True when the id is that of a record of this table that is not erased.
    bool has(AcDbObjectId id) const;

    /// An iterator at the first record, or the last; the caller deletes it. It stands on no erased
    /// record with `skipDeleted`, and never on a deleted one.
    virtual Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator,
                                          bool atBeginning = true, bool skipDeleted = true) const;

    /// Takes the record over; it stays open for writing and the caller closes it. Refusals:
    /// eNullObjectPointer, eWrongObjectType for another table's kind, eNotInDatabase while the
    /// table is in none, eAlreadyInDb, eInvalidInput for a nameless record, eDuplicateRecordName.
    virtual Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    virtual Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);

    /// The class of the table's records.
    virtual AcRxClass* recordClass() const = 0;

    /// All records ever added, in order, erased and deleted ones too.
    const std::vector<AcDbObjectId>& recordIds() const { return records_; }
    /// The record of that name that is not erased, else null; hidden ones too.
    AcDbObjectId findRecord(std::wstring_view name) const;
    /// Gives each of two records of the table the other's name, however they are open.
    void exchangeNames(AcDbSymbolTableRecord& a, AcDbSymbolTableRecord& b);

protected:
    AcDbSymbolTable() = default;
    Acad::ErrorStatus subErase(bool erasing) override;

    /// False for records that plain lookups and iterators do not show.
    virtual bool isShown(const AcDbSymbolTableRecord& /*record*/) const { return true; }
    /// Lets a table complete the record's name before it is added.
    virtual void completeName(AcDbSymbolTableRecord& /*record*/) {}
    static void assignName(AcDbSymbolTableRecord& record, std::wstring name) {
        record.name_ = std::move(name);
    }
    /// Refuses a record whose name does not do for this table, see add().
    virtual Acad::ErrorStatus checkName(const AcDbSymbolTableRecord& record) const;

    /// As getAt, with the choice to see hidden records.
    Acad::ErrorStatus lookUp(const ACHAR* name, AcDbObjectId& id, bool getErased,
                             bool getHidden) const;

private:
    friend class AcDbSymbolTableRecord;
    friend class AcDbSymbolTableIterator;
    friend class headless::Residence;

    void append(AcDbSymbolTableRecord& record);
    void rename(AcDbSymbolTableRecord& record, std::wstring name);
    void sortByAge(std::vector<AcDbObjectId>& namesakes) const;

    using NameIndex = std::unordered_map<std::wstring, std::vector<AcDbObjectId>,
                                         headless::NameHash, headless::NameEqual>;

    headless::Lasting<std::vector<AcDbObjectId>> records_;
    headless::Lasting<NameIndex> byName_; // All records of a name, the earliest first.
};

/// Walks over a table's records. It stays usable while records are added.
class AcDbSymbolTableIterator {
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);
    virtual ~AcDbSymbolTableIterator() = default;
    AcDbSymbolTableIterator(const AcDbSymbolTableIterator&) = delete;
    AcDbSymbolTableIterator& operator=(const AcDbSymbolTableIterator&) = delete;

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forwards = true, bool skipDeleted = true);
    /// eIteratorDone beyond the last record.
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record,
                                AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    /// eKeyNotFound, staying where it is, for a record of another table.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbSymbolTableRecord* record);

protected:
    /// Records that isShown() denies are passed over unless this says otherwise.
    void setSkipsHidden(bool skips);
    bool skipsHidden() const { return skipsHidden_; }

private:
    bool passesOver(AcDbObjectId id) const;
    void settle(bool forwards);

    const AcDbSymbolTable& table_;
    std::ptrdiff_t position_ = 0;
    bool skipsDeleted_;
    bool skipsHidden_ = true;
    bool startsAtBeginning_;
    bool moved_ = false;
};

namespace headless {

/// An iterator that opens records as their own class.
template <class Record>
class SymbolTableIteratorOf : public AcDbSymbolTableIterator {
public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    using AcDbSymbolTableIterator::getRecord;
    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus status = getRecordId(id);
        return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
    }
};

/// The members of a table that name its record class.
template <class Record, class Iterator>
class SymbolTableOf : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const ACHAR* name, Record*& record, AcDb::OpenMode mode,
                            bool openErased = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus status = getAt(name, id, openErased);
        return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
    }

    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const override {
        Iterator* made = nullptr;
        const Acad::ErrorStatus status = newIterator(made, atBeginning, skipDeleted);
        iterator = made;
        return status;
    }
    Acad::ErrorStatus newIterator(Iterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const {
        assertReadEnabled();
        iterator = new Iterator(*this, atBeginning, skipDeleted);
        return Acad::eOk;
    }

    AcRxClass* recordClass() const override { return Record::desc(); }
};

/// True for a name that a record may have: not empty, without <>/\":;?*|,=` and control characters;
/// a leading * stands for names that the platform made.
[[nodiscard]] bool isSymbolName(std::wstring_view name);

} // namespace headless
