#include "ed/selection_sets.h"

#include <algorithm>

namespace headless {
namespace {

// Names of entities have 0 there.
constexpr Adesk::IntDbId kSetMark = 1;

} // namespace

SelectionSet::SelectionSet(const std::vector<AcDbObjectId>& ids, const SelectedBy& gesture) {
    for (const AcDbObjectId id : ids)
        add(id, gesture);
}

void SelectionSet::add(AcDbObjectId id, const SelectedBy& gesture) {
    if (members_.emplace(id, gesture).second) ids_.push_back(id);
}

bool SelectionSet::remove(AcDbObjectId id) {
    if (members_.erase(id) == 0) return false;
    ids_.erase(std::ranges::find(ids_, id));
    return true;
}

bool SelectionSets::open(SelectionSet set, ads_name& name) {
    if (open_.size() >= kMostOpen) return false;
    open_.emplace(++last_, std::move(set));
    name[0] = last_;
    name[1] = kSetMark;
    return true;
}

SelectionSet* SelectionSets::find(const ads_name& name) {
    const auto at = name[1] == kSetMark ? open_.find(name[0]) : open_.end();
    return at == open_.end() ? nullptr : &at->second;
}

bool SelectionSets::close(const ads_name& name) {
    return name[1] == kSetMark && open_.erase(name[0]) != 0;
}

} // namespace headless
