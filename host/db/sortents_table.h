// The order in which a block's entities are drawn.
#pragma once

#include <unordered_map>
#include <vector>

#include "db/id_array.h"
#include "db/object.h"

/// Entities are drawn by their handles, least first, except those to which the table gives another
/// handle to be sorted by.
///
/// Entities that are not in the table's block, or erased, are refused with eInvalidInput.
class AcDbSortentsTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSortentsTable);

    AcDbSortentsTable() = default;

    AcDbObjectId blockId() const { return look(blockId_); }
    Acad::ErrorStatus setBlockId(AcDbObjectId block) { return change(blockId_, block); }

    /// All entities of the block that are not erased, those drawn first in front.
    Acad::ErrorStatus getFullDrawOrder(AcDbObjectIdArray& ids,
                                       Adesk::UInt8 honorSortentsMask = 0) const;
    /// Sorts `ids` by draw order; an empty array asks for all entities of the block.
    Acad::ErrorStatus getRelativeDrawOrder(AcDbObjectIdArray& ids,
                                           Adesk::UInt8 honorSortentsMask = 0) const;
    /// Makes the entities draw in the order of the array, in the places they hold together.
    Acad::ErrorStatus setRelativeDrawOrder(const AcDbObjectIdArray& ids);
    Acad::ErrorStatus firstEntityIsDrawnBeforeSecond(AcDbObjectId first, AcDbObjectId second,
                                                     bool& drawnBefore) const;

    // Move the entities together, keeping their order among themselves: drawn last (top), first
    // (bottom), just after the target (above) or just before it (below).
    Acad::ErrorStatus moveToTop(const AcDbObjectIdArray& ids);
    Acad::ErrorStatus moveToBottom(const AcDbObjectIdArray& ids);
    Acad::ErrorStatus moveAbove(const AcDbObjectIdArray& ids, AcDbObjectId target);
    Acad::ErrorStatus moveBelow(const AcDbObjectIdArray& ids, AcDbObjectId target);
    Acad::ErrorStatus swapOrder(AcDbObjectId first, AcDbObjectId second);

    /// The handle by which an entity is sorted.
    Acad::ErrorStatus getSortHandle(AcDbObjectId id, AcDbHandle& handle) const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    /// As getSortHandle, whether or not the table is open: the entity's own when it has no other.
    Adesk::UInt64 sortHandleOf(AcDbObjectId id) const;
    bool hasEntries() const { return !sortHandles_.empty(); }

private:
    std::vector<AcDbObjectId> drawOrder() const;
    bool holds(AcDbObjectId id) const;
    Acad::ErrorStatus place(const AcDbObjectIdArray& ids, AcDbObjectId target, bool above);
    void assign(const std::vector<AcDbObjectId>& order);

    AcDbObjectId blockId_;
    std::unordered_map<AcDbObjectId, Adesk::UInt64> sortHandles_;
};

namespace headless {

/// Key of a block's sort-entities table in its extension dictionary.
inline constexpr const ACHAR* kSortentsKey = L"ACAD_SORTENTS";

} // namespace headless
