// The parts of AcUtSymTbl about the order in which a block draws its entities.
#include <memory>
#include <set>

#include <dbdict.h>
#include <dbents.h>
#include <dbsymtb.h>
#include <sorttab.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"

namespace {

constexpr const wchar_t* kSortentsKey = L"ACAD_SORTENTS";

/// The block's extension dictionary, made when there is none; null when it cannot be made.
AcDbObjectId extensionDictionaryOf(AcDbBlockTableRecord& block) {
    if (block.extensionDictionary().isNull() && block.upgradeOpen() == Acad::eOk)
        block.createExtensionDictionary();
    return block.extensionDictionary();
}

/// A new table under the dictionary's key, open for writing; null when the dictionary refuses.
AcDbObject* addSortents(AcDbDictionary& dictionary, AcDbObjectId blockId) {
    if (dictionary.upgradeOpen() != Acad::eOk) return nullptr;
    auto table = std::make_unique<AcDbSortentsTable>();
    AcDbObjectId id;
    if (dictionary.setAt(kSortentsKey, table.get(), id) != Acad::eOk) table.reset();
    if (table != nullptr) table->setBlockId(blockId);
    dictionary.downgradeOpen();
    return table.release();
}

AcDbSortentsTable* findOrAddSortents(AcDbObjectId dictionaryId, AcDbObjectId blockId,
                                     AcDb::OpenMode mode) {
    AcDbDictionary* dictionary = nullptr;
    if (acdbOpenObject(dictionary, dictionaryId, AcDb::kForRead) != Acad::eOk) return nullptr;
    const Closing closing(dictionary);
    AcDbObject* object = nullptr;
    if (dictionary->getAt(kSortentsKey, object, AcDb::kForWrite) != Acad::eOk)
        object = addSortents(*dictionary, blockId);

    auto* table = AcDbSortentsTable::cast(object);
    if (table == nullptr) {
        if (object != nullptr) object->close();
        return nullptr;
    }
    if (mode == AcDb::kForRead) table->downgradeOpen();
    return table;
}

} // namespace

AcDbSortentsTable* AcUtSymTbl::getSortentsTable(AcDbEntity* ent, const AcDb::OpenMode& mode) {
    if (ent == nullptr) return nullptr;
    const AcDbObjectId blockId = ent->ownerId();
    AcDbObjectId dictionaryId;
    {
        AcDbBlockTableRecord* block = nullptr;
        if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return nullptr;
        const Closing closing(block);
        AcDbSortentsTable* table = nullptr;
        if (block->getSortentsTable(table, mode, false) == Acad::eOk && table != nullptr)
            return table;
        dictionaryId = extensionDictionaryOf(*block);
    }
    return dictionaryId.isValid() ? findOrAddSortents(dictionaryId, blockId, mode) : nullptr;
}

AcDbSortentsTable* AcUtSymTbl::getSortentsTable(const AcDbObjectIdArray& ids,
                                                const AcDb::OpenMode& mode) {
    if (ids.isEmpty()) return nullptr;
    AcDbEntity* first = nullptr;
    if (acdbOpenObject(first, ids[0], AcDb::kForRead) != Acad::eOk) return nullptr;
    const Closing closing(first);
    return getSortentsTable(first, mode);
}

Acad::ErrorStatus AcUtSymTbl::getRelativeDrawOrder(const AcDbObjectIdArray& ids,
                                                   AcDbObjectIdArray& ordered,
                                                   unsigned char honorSortentsMask) {
    AcDbSortentsTable* table = getSortentsTable(ids, AcDb::kForRead);
    if (table == nullptr) return Acad::eOk;
    AcDbObjectIdArray all;
    const Acad::ErrorStatus status = table->getRelativeDrawOrder(all, honorSortentsMask);
    if (status != Acad::eOk || all.isEmpty()) {
        table->close();
        return status;
    }
    const std::set<AcDbObjectId> wanted(ids.asArrayPtr(), ids.asArrayPtr() + ids.length());
    for (int i = 0; i < all.length(); ++i) {
        if (wanted.contains(all[i])) ordered.append(all[i]);
    }
    return table->close();
}
