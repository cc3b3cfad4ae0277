// What acedSSNameX tells of a selection set.
#pragma once

#include "db/data_item.h"
#include "ed/selection_sets.h"

namespace headless {

/// How one entity of the set was selected, or with a negative index all of them were; see
/// acedSSNameX. Nothing for an entity beyond the last.
[[nodiscard]] DataItems tellSelection(const SelectionSet& set, int index);

} // namespace headless
