// Symbol tables, the current space and the drawing order, in one call each.
//
// Host failures are printed by this layer where a function says so; callers do not print them
// again. A null database means the working one. Objects that a function opens are closed when it
// returns, except those it gives to the caller.
#pragma once

#include <set>

#include <acestext.h>
#include <afxwin.h>
#include <dbidar.h>
#include <dbmain.h>
#include <gepnt3d.h>

class AcDbBlockTableRecord;
class AcDbDatabase;
class AcDbEntity;
class AcDbSortentsTable;
class AcDbSymbolTable;
class AcDbSymbolTableRecord;
class AcRxClass;

class AFX_EXT_CLASS AcUtSymTbl {
public:
    // Tables. A table is named by the class of its records, exactly: derived classes name none.

    /// Opens a table; the caller closes it. Null, and a message, for a class that names no table
    /// and when the host refuses.
    static AcDbSymbolTable* openSymbolTable(AcRxClass* recordClass, AcDb::OpenMode mode,
                                            AcDbDatabase* db);
    static bool symbolExists(AcRxClass* recordClass, const wchar_t* name, AcDbDatabase* db);
    /// eInvalidInput when the table cannot be opened, else what the table says of the name.
    static Acad::ErrorStatus nameToSymbolId(AcRxClass* recordClass, const wchar_t* name,
                                            AcDbObjectId& id, AcDbDatabase* db);
    /// The name is "AcDbObjectId::kNull" for a null id, which gives eNullObjectId. Any other
    /// failure is printed, gives eInvalidInput and leaves the name.
    static Acad::ErrorStatus symbolIdToName(const AcDbObjectId& id, CString& name);
    static Acad::ErrorStatus mlineStyleIdToName(const AcDbObjectId& id, CString& name);
    /// The name of a record of any table; empty, without a message, when it is no such record or
    /// cannot be opened.
    static CString GetStyleName(const AcDbObjectId& id);
    /// Appends the ids of all records that are not erased, hidden layers too.
    static Acad::ErrorStatus collectSymbolIds(AcRxClass* recordClass, AcDbObjectIdArray& ids,
                                              AcDbDatabase* db);
    /// Adds a record to a table open for writing, which stays open. The record is closed, or
    /// deleted when the table refuses it.
    static Acad::ErrorStatus addNewSymbolAndClose(AcDbSymbolTable* table,
                                                  AcDbSymbolTableRecord* record);
    /// A layer with the continuous linetype; eOk when it exists already.
    static Acad::ErrorStatus addNewLayer(const wchar_t* name, AcDbDatabase* db);

    // Block definitions.

    /// A definition without entities: a new one, or the existing one of that name emptied. With a
    /// `block`, it stays open for writing. A failure is printed and leaves `block` null.
    static Acad::ErrorStatus defineNewBlock(const wchar_t* name, AcDbBlockTableRecord*& block,
                                            AcDbObjectId& id, AcDbDatabase* db);
    static Acad::ErrorStatus defineNewBlock(const wchar_t* name, AcDbBlockTableRecord*& block,
                                            AcDbDatabase* db);
    static Acad::ErrorStatus defineNewBlock(const wchar_t* name, AcDbObjectId& id,
                                            AcDbDatabase* db);
    /// As above with a name that the host makes up.
    static Acad::ErrorStatus defineNewAnonymousBlock(AcDbBlockTableRecord*& block, AcDbObjectId& id,
                                                     AcDbDatabase* db);
    static Acad::ErrorStatus defineNewAnonymousBlock(AcDbBlockTableRecord*& block,
                                                     AcDbDatabase* db);
    static Acad::ErrorStatus defineNewAnonymousBlock(AcDbObjectId& id, AcDbDatabase* db);
    /// Opens a definition; the caller closes it. Failures are printed, but not a missing name
    /// (eKeyNotFound).
    static Acad::ErrorStatus openBlockDef(const wchar_t* name, AcDbBlockTableRecord*& block,
                                          AcDb::OpenMode mode, AcDbDatabase* db);
    static AcDbBlockTableRecord* openCurrentSpaceBlock(AcDb::OpenMode mode, AcDbDatabase* db);
    static bool BlockIsEmpty(AcDbBlockTableRecord* block);

    /// Makes a block of copies of entities, one by one in their order. Entities that cannot be
    /// opened for writing or copied are passed over.
    ///
    /// @param blockId  receives the new block; untouched when the drawing refuses its name. The
    ///                 entities are erased even then, so the name must be new.
    /// @param top      entities whose copies are drawn last; `bottom` first. The top wins.
    /// @param prefix   begins the block's name, `suffix` ends it.
    /// @param base     the block's base point.
    /// @param keep     false erases the entities.
    /// @param layer    takes no part.
    /// @param db       eInvalidInput for null.
    /// @return         what closing the new block gives.
    static Acad::ErrorStatus DefineBlock(AcDbObjectId& blockId, const AcDbObjectIdArray& entities,
                                         const AcDbObjectIdArray& top,
                                         const AcDbObjectIdArray& bottom, CString prefix,
                                         CString suffix, const AcGePoint3d& base, const bool& keep,
                                         const AcDbObjectId& layer, AcDbDatabase* db);
    /// Puts a reference to a block into the current space. eInvalidInput for no database and no
    /// valid block; else eOk, with a null `referenceId` when the space cannot be opened (which is
    /// printed) or refuses.
    static Acad::ErrorStatus AddBolckReference(AcDbObjectId& referenceId, const AcDbObjectId& block,
                                               const AcGePoint3d& position,
                                               const AcDbObjectId& layer, AcDbDatabase* db);
    /// Both: the entities become a block with its base point where they stand, and a reference to
    /// it takes their place. eInvalidInput for an empty prefix, else what the reference gives.
    static Acad::ErrorStatus InsertBolckReference(AcDbObjectId& referenceId,
                                                  const AcDbObjectIdArray& entities, CString prefix,
                                                  CString suffix, const AcGePoint3d& base,
                                                  const bool& keep, const AcDbObjectId& layer,
                                                  AcDbDatabase* db);

    /// Appends what a reference holds to the current space, references in it as references, and
    /// the new ids to `made`; the reference stays. See AcUtBlockReferenceExploder for more.
    static Acad::ErrorStatus explodeToCurrentSpace(const AcDbObjectId& reference,
                                                   AcDbObjectIdArray& made);

    /// The names of all blocks, the layouts' own among them.
    static std::set<CString> GetAllBlockName(AcDbDatabase* db);
    /// The names of all records of a table.
    static std::set<CString> RecordStyleNames(AcRxClass* recordClass, AcDbDatabase* db);

    // Entities.

    /// Appends an entity to the current space; it stays open. Answers eInvalidInput when it was
    /// appended and eOk when it was not: callers rely on this sense.
    static Acad::ErrorStatus addToCurrentSpace(AcDbEntity* ent);
    static Acad::ErrorStatus addToCurrentSpace(AcDbEntity* ent, AcDbDatabase* db);
    /// The same answers; the entity is deleted again when it was appended, and closed when it was
    /// not.
    static Acad::ErrorStatus addToCurrentSpaceAndClose(AcDbEntity* ent);
    static Acad::ErrorStatus addToCurrentSpaceAndClose(AcDbEntity* ent, AcDbDatabase* db);

    /// Tells the user so when it is true and `printMsg`.
    static bool isOnLockedLayer(AcDbEntity* ent, bool printMsg);
    /// An entity that cannot be opened counts as locked.
    static bool isOnLockedLayer(AcDbObjectId& id, bool printMsg);
    /// Tells the user in the words for a locked layer: callers show one message for both.
    static bool isOffLayer(AcDbEntity* ent, bool printMsg);

    // Drawing order.

    /// The table that orders the entities of the block that owns `ent`, made when there is none,
    /// open in `mode`; the caller closes it. Null on any failure.
    static AcDbSortentsTable* getSortentsTable(AcDbEntity* ent, const AcDb::OpenMode& mode);
    /// As above for the first of the ids.
    static AcDbSortentsTable* getSortentsTable(const AcDbObjectIdArray& ids,
                                               const AcDb::OpenMode& mode);
    /// Appends the ids in the order in which their block draws them; those of other blocks are
    /// left out. eOk with nothing appended when the first cannot be opened.
    /// @param honorSortentsMask  the host's flags of what drawing order is asked for.
    static Acad::ErrorStatus getRelativeDrawOrder(const AcDbObjectIdArray& ids,
                                                  AcDbObjectIdArray& ordered,
                                                  unsigned char honorSortentsMask);
};
