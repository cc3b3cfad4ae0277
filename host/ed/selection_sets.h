// The selection sets that programs hold.
#pragma once

#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "db/resbuf.h"
#include "ed/selection_gesture.h"

namespace headless {

/// Entities in the order they were selected, each once. Those erased later stay in it.
class SelectionSet {
public:
    SelectionSet() = default;
    explicit SelectionSet(const std::vector<AcDbObjectId>& ids, const SelectedBy& gesture = {});

    const std::vector<AcDbObjectId>& ids() const { return ids_; }
    bool contains(AcDbObjectId id) const { return members_.contains(id); }
    /// How an entity of the set came into it first.
    const SelectedBy& gestureOf(AcDbObjectId id) const { return members_.at(id); }
    void add(AcDbObjectId id, const SelectedBy& gesture = {});
    /// False when it is none of them.
    bool remove(AcDbObjectId id);

private:
    std::vector<AcDbObjectId> ids_;
    std::unordered_map<AcDbObjectId, SelectedBy> members_;
};

/// The sets that are open, by names that no entity has and that are never given again.
class SelectionSets {
public:
    static constexpr std::size_t kMostOpen = 128;

    /// False, leaving `name`, when too many are open.
    bool open(SelectionSet set, ads_name& name);
    /// The set of that name, or null.
    SelectionSet* find(const ads_name& name);
    bool close(const ads_name& name);
    std::size_t openCount() const { return open_.size(); }

    std::vector<AcDbObjectId> previous; ///< What was selected last.
    std::vector<AcDbObjectId> implied;  ///< What was selected before the command began.

private:
    std::map<Adesk::IntDbId, SelectionSet> open_;
    Adesk::IntDbId last_ = 0;
};

} // namespace headless
