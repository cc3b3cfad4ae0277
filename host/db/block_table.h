// Blocks: the definitions that hold a drawing's entities, the two spaces among them.
#pragma once

#include <memory>
#include <span>

#include "db/change_watch.h"
#include "db/id_array.h"
#include "db/symbol_table.h"
#include "ge/point3d.h"

class AcDbBlockTableRecordIterator;
class AcDbEntity;
class AcDbSortentsTable;

namespace headless {

class BlockMemory;

/// Units of a block's or a drawing's coordinates, as files number them.
enum class DrawingUnits : short { kUndefined = 0, kInches = 1, kFeet = 2, kMillimeters = 4 };

} // namespace headless

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);

    AcDbBlockTableRecord() = default;

    /// Takes the entity over as the block's last; it stays open for writing and the caller closes
    /// it. An entity without a layer gets the database's current one. Refusals: eNullEntityPointer,
    /// eMustFirstAddBlockToDb while the block is in no database, eAlreadyInDb.
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);

    /// An iterator over the entities in the order they were added; the caller deletes it. It stands
    /// on no erased entity with `skipDeleted`, and never on a deleted one.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    /// Opens the table of the block's draw order. eKeyNotFound when there is none and none is to be
    /// made; made only from a block open for writing unless its extension dictionary exists.
    Acad::ErrorStatus getSortentsTable(AcDbSortentsTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead,
                                       bool createIfNecessary = false);
    /// Ids of the references to this block that are not erased, wherever they stand.
    /// @param directOnly  false also gives the references to blocks that hold such references.
    Acad::ErrorStatus getBlockReferenceIds(AcDbObjectIdArray& ids, bool directOnly = true,
                                           bool forceValidity = false) const;

    AcGePoint3d origin() const { return look(origin_); }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin) { return change(origin_, origin); }
    /// A copy that the caller frees with acutDelString.
    Acad::ErrorStatus comments(ACHAR*& comments) const;
    Acad::ErrorStatus comments(const ACHAR*& comments) const;
    Acad::ErrorStatus setComments(const ACHAR* comments);
    /// The file of an external reference, else empty.
    Acad::ErrorStatus pathName(ACHAR*& path) const;
    Acad::ErrorStatus pathName(const ACHAR*& path) const;
    Acad::ErrorStatus setPathName(const ACHAR* path);

    bool isAnonymous() const { return look(anonymous_); }
    /// True for model space and every paper space.
    bool isLayout() const;
    bool isFromExternalReference() const { return look(external_); }
    bool isFromOverlayReference() const { return look(overlay_); }
    bool hasAttributeDefinitions() const;

    AcDbObjectId getLayoutId() const { return look(layoutId_); }
    /// The same whether or not the block is open.
    AcDbObjectId layoutOf() const { return layoutId_; }
    Acad::ErrorStatus setLayoutId(AcDbObjectId layout) { return change(layoutId_, layout); }
    bool explodable() const { return look(explodable_); }
    Acad::ErrorStatus setExplodable(bool explodable) { return change(explodable_, explodable); }
    short blockInsertUnits() const { return look(insertUnits_); }
    Acad::ErrorStatus setBlockInsertUnits(short units) { return change(insertUnits_, units); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    /// Reads the block's begin from its own record: base point, path, comment, flags.
    Acad::ErrorStatus readBegin(AcDbDxfFiler& filer);
    /// The groups of the block's begin and end, which are records of their own.
    /// @param withAttributes  whether the begin says that references get attributes.
    Acad::ErrorStatus writeBegin(AcDbDxfFiler& filer, bool withAttributes) const;
    Acad::ErrorStatus writeEnd(AcDbDxfFiler& filer) const;
    /// Where the block's begin and end stand in the file, if it was read from one.
    void setEnds(headless::SourceSpan begin, headless::SourceSpan end);
    headless::SourceSpan beginSource() const { return begin_; }
    headless::SourceSpan endSource() const { return end_; }

    /// All entities ever added, in order, erased and deleted ones too; valid until one is added.
    std::span<const AcDbObjectId> entityIds() const { return entities_; }
    /// isLayout() whether or not the block is open.
    bool isSpace() const;
    /// True for definitions of attributes that references have a value of their own for, whether or
    /// not the block is open.
    bool hasVariableAttributes() const;
    /// False for external drawings too, whether or not the block is open.
    bool mayBeExploded() const { return explodable_ && !external_; }
    /// The origin whether or not the block is open.
    const AcGePoint3d& originOf() const { return origin_; }
    /// What was computed from the contents, made when first asked for.
    headless::BlockMemory& memory() const;
    /// The same, null while there is none.
    headless::BlockMemory* memoryIfAny() const { return memory_.get(); }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    void beforeChange() override { headless::noteChange(*this); }

private:
    friend class AcDbBlockTable;
    friend class headless::Residence;

    std::uint32_t beginFlags(bool withAttributes) const;

    headless::Lasting<std::vector<AcDbObjectId>> entities_;
    mutable headless::Lasting<std::shared_ptr<headless::BlockMemory>> memory_;
    AcGePoint3d origin_;
    AcDbObjectId layoutId_;
    std::wstring comments_;
    std::wstring path_;
    headless::SourceSpan begin_;
    headless::SourceSpan end_;
    short insertUnits_ = 0;
    bool anonymous_ = false;
    bool external_ = false;
    bool overlay_ = false;
    bool explodable_ = true;
};

class AcDbBlockTableRecordIterator {
public:
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& block, bool atBeginning,
                                 bool skipDeleted);

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const { return position_ < 0 || position_ >= std::ssize(block_.entityIds()); }
    void step(bool forwards = true, bool skipDeleted = true) {
        skipsDeleted_ = skipDeleted;
        if (done()) return;
        position_ += forwards ? 1 : -1;
        settle(forwards);
    }
    /// eIteratorDone beyond the last entity.
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const {
        if (done()) return Acad::eIteratorDone;
        id = block_.entityIds()[static_cast<std::size_t>(position_)];
        return Acad::eOk;
    }
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    /// eNotInBlock, staying where it is, for an entity of another block.
    Acad::ErrorStatus seek(AcDbObjectId id);
    Acad::ErrorStatus seek(const AcDbEntity* entity);
    const AcDbBlockTableRecord* blockTableRecord() const { return &block_; }

private:
    void settle(bool forwards);

    const AcDbBlockTableRecord& block_;
    std::ptrdiff_t position_ = 0;
    bool skipsDeleted_;
};

class AcDbBlockTableIterator : public headless::SymbolTableIteratorOf<AcDbBlockTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbBlockTable
    : public headless::SymbolTableOf<AcDbBlockTableRecord, AcDbBlockTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable);

protected:
    /// Numbers a record whose name begins with * and a letter, such as *U: *U1, *U2, ...
    void completeName(AcDbSymbolTableRecord& record) override;

private:
    headless::Lasting<std::unordered_map<std::wstring, int>> anonymousCounts_;
};

inline constexpr const ACHAR* ACDB_MODEL_SPACE = L"*Model_Space";
inline constexpr const ACHAR* ACDB_PAPER_SPACE = L"*Paper_Space";
