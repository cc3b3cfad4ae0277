// The parts of AcUtSymTbl that make blocks of entities and put references to them into a drawing.
#include <adslib.h>
#include <dbents.h>
#include <dbsymtb.h>
#include <sorttab.h>

#include "blocks/entity_clone.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/current_space.h"
#include "frame/object_handle.h"

namespace {

/// Which of a block's entities are drawn last, and which first.
struct DrawnOrder {
    AcDbObjectIdArray top;
    AcDbObjectIdArray bottom;

    bool isEmpty() const { return top.isEmpty() && bottom.isEmpty(); }
};

/// Copies an entity into a block and erases it unless it is to be kept. Whatever cannot be opened
/// or copied is passed over; a copy that the block refuses costs the entity all the same.
/// @return  the copy's id, or null.
AcDbObjectId takeInto(AcDbBlockTableRecord& block, const AcDbObjectId& source, bool keep) {
    if (!source.isValid()) return AcDbObjectId::kNull;
    const WriteHandle<AcDbEntity> entity(source);
    if (!entity) return AcDbObjectId::kNull;
    std::unique_ptr<AcDbEntity> copy = blocks::cloneOf(*entity);
    if (copy == nullptr) return AcDbObjectId::kNull;
    const AcDbObjectId id = blocks::appendAndClose(block, std::move(copy));
    if (!keep) entity->erase();
    return id;
}

/// @param sources  what is to be drawn last and first, by the entities that are copied.
DrawnOrder fillBlock(AcDbBlockTableRecord& block, const AcDbObjectIdArray& entities,
                     const DrawnOrder& sources, bool keep) {
    DrawnOrder copies;
    for (int i = 0; i < entities.length(); ++i) {
        const AcDbObjectId copy = takeInto(block, entities[i], keep);
        if (copy.isNull()) continue;
        if (sources.top.contains(entities[i]))
            copies.top.append(copy);
        else if (sources.bottom.contains(entities[i]))
            copies.bottom.append(copy);
    }
    return copies;
}

void arrange(AcDbBlockTableRecord& block, const DrawnOrder& order) {
    AcDbSortentsTable* table = nullptr;
    if (order.isEmpty() || block.getSortentsTable(table, AcDb::kForWrite, true) != Acad::eOk)
        return;
    table->moveToTop(order.top);
    table->moveToBottom(order.bottom);
    table->close();
}

/// Appends an entity to the current space and closes it. The entity stays the caller's when the
/// space cannot be opened, which is printed, and is deleted when the space refuses it.
AcDbObjectId appendToCurrentSpace(AcDbDatabase& db, std::unique_ptr<AcDbEntity>& entity) {
    const AcDbObjectId spaceId = frame::currentSpaceOf(db, L"\n块表打开错误。");
    if (spaceId.isNull()) return spaceId;
    const WriteHandle<AcDbBlockTableRecord> space(spaceId);
    if (!space) {
        acutPrintf(L"\n块记录打开错误。");
        return AcDbObjectId::kNull;
    }
    return blocks::appendAndClose(*space, std::move(entity));
}

} // namespace

Acad::ErrorStatus AcUtSymTbl::DefineBlock(AcDbObjectId& blockId, const AcDbObjectIdArray& entities,
                                          const AcDbObjectIdArray& top,
                                          const AcDbObjectIdArray& bottom, CString prefix,
                                          CString suffix, const AcGePoint3d& base, const bool& keep,
                                          const AcDbObjectId& /*layer*/, AcDbDatabase* db) {
    if (db == nullptr) return Acad::eInvalidInput;
    auto made = std::make_unique<AcDbBlockTableRecord>();
    {
        AcDbBlockTable* table = nullptr;
        const Acad::ErrorStatus status = db->getBlockTable(table, AcDb::kForWrite);
        if (status != Acad::eOk) return status;
        const Closing closing(table);
        made->setName(prefix + suffix);
        made->setOrigin(base);
        // Unchecked: callers see to it that the name is new. A refused block takes no entity, and
        // its being closed fails.
        table->add(blockId, made.get());
    }
    arrange(*made, fillBlock(*made, entities, {top, bottom}, keep));
    const Acad::ErrorStatus closed = made->close();
    if (closed == Acad::eOk) made.release();
    return closed;
}

Acad::ErrorStatus AcUtSymTbl::AddBolckReference(AcDbObjectId& referenceId,
                                                const AcDbObjectId& block,
                                                const AcGePoint3d& position,
                                                const AcDbObjectId& layer, AcDbDatabase* db) {
    if (db == nullptr || block.isNull() || !block.isValid()) return Acad::eInvalidInput;
    std::unique_ptr<AcDbEntity> reference = std::make_unique<AcDbBlockReference>(position, block);
    reference->setLayer(layer, true, false);
    referenceId = appendToCurrentSpace(*db, reference);
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSymTbl::InsertBolckReference(AcDbObjectId& referenceId,
                                                   const AcDbObjectIdArray& entities,
                                                   CString prefix, CString suffix,
                                                   const AcGePoint3d& base, const bool& keep,
                                                   const AcDbObjectId& layer, AcDbDatabase* db) {
    if (prefix.IsEmpty()) return Acad::eInvalidInput;
    AcDbObjectId block;
    const AcDbObjectIdArray none;
    DefineBlock(block, entities, none, none, prefix, suffix, base, keep, layer, db);
    return AddBolckReference(referenceId, block, base, layer, db);
}
