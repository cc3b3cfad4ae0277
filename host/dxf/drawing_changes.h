// What became of a drawing since it was read.
#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "db/object.h"

class AcDbBlockTableRecord;

namespace headless {

class DrawingChanges {
public:
    explicit DrawingChanges(AcDbDatabase& db);

    /// Objects with a record in the file that may say something else by now, in no order.
    const std::vector<AcDbObject*>& changed() const { return changed_; }
    /// Those among them that are no entities.
    const std::vector<AcDbObject*>& changedBesideEntities() const { return besideEntities_; }
    /// Those among them that have parts: vertices, attributes, or a mark behind such.
    const std::vector<AcDbObject*>& changedOwners() const { return owners_; }
    /// Objects that programs made, those made first in front.
    const std::vector<AcDbObject*>& added() const { return added_; }
    /// Records of objects that are gone: of erased ones with all they own, and of deleted ones.
    const std::vector<SourceSpan>& removed() const { return removed_; }
    const std::vector<AcDbBlockTableRecord*>& removedBlocks() const { return removedBlocks_; }

    /// Blocks that got or lost attribute definitions.
    const std::unordered_set<AcDbStub*>& attributed() const { return attributed_; }

    /// Takes objects out of the lists: somebody else writes them.
    void setApart(const std::unordered_set<const AcDbObject*>& objects);

    bool anyGone() const { return anyGone_; }
    /// True for what is erased or deleted, or owned by what is.
    bool isGone(AcDbObjectId id) const;
    /// True for a block whose begin in the file is its own and not that of a block it was cloned
    /// from.
    bool beginsInFile(const AcDbBlockTableRecord& block) const;

private:
    void collect(AcDbDatabase& db);
    void noteChanged(AcDbObject& object);
    template <class Condition>
    void eraseChanged(Condition condition) {
        for (std::vector<AcDbObject*>* const list : {&changed_, &besideEntities_, &owners_})
            std::erase_if(*list, condition);
    }
    void collectGone(AcDbDatabase& db);
    /// Lists that name what is gone do so no longer.
    bool mayNameGone(const AcDbObject& object) const;
    void collectLists(AcDbDatabase& db);
    void claimBlocks(const AcDbDatabase& db);

    /// What the lists of changed objects want to know of a class.
    struct Kind {
        bool isEntity;
        bool mayHaveParts;
    };

    std::unordered_map<const AcRxClass*, Kind> kinds_;
    std::vector<AcDbObject*> changed_;
    std::vector<AcDbObject*> besideEntities_;
    std::vector<AcDbObject*> owners_;
    std::vector<AcDbObject*> added_;
    std::vector<SourceSpan> removed_;
    std::vector<AcDbBlockTableRecord*> removedBlocks_;
    std::unordered_map<std::uint64_t, const AcDbBlockTableRecord*> blockAt_; // offset of its begin
    std::unordered_set<AcDbStub*> attributed_;
    bool anyGone_ = false;
};

} // namespace headless
