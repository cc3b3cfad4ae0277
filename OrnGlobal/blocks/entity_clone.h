// Copies of entities that are in no drawing yet. Inside the library and its neighbours only.
#pragma once

#include <memory>

#include <dbents.h>
#include <dbsymtb.h>

namespace blocks {

/// A copy of an entity; null for a kind that cannot be copied.
/// @param entity  open for reading.
[[nodiscard]] inline std::unique_ptr<AcDbEntity> cloneOf(const AcDbEntity& entity) {
    std::unique_ptr<AcRxObject> copy(entity.clone());
    auto* const typed = AcDbEntity::cast(copy.get());
    if (typed != nullptr) copy.release();
    return std::unique_ptr<AcDbEntity>(typed);
}

/// Appends a new entity to a block and closes it; an entity that the block refuses is deleted.
/// @return  the entity's id, null when it was refused.
inline AcDbObjectId appendAndClose(AcDbBlockTableRecord& block,
                                   std::unique_ptr<AcDbEntity> entity) {
    AcDbObjectId id;
    if (entity == nullptr || block.appendAcDbEntity(id, entity.get()) != Acad::eOk)
        return AcDbObjectId::kNull;
    entity.release()->close();
    return id;
}

} // namespace blocks
