// How entities came into a selection set.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "db/database.h"

namespace headless {

/// What a user or a program did to select.
struct SelectionGesture {
    /// Numbers as acedSSNameX tells them; what selects without a place has no gesture.
    enum class Kind : short { kPick = 1, kWindow = 2, kCrossing = 3, kFence = 4 };

    Kind kind;
    std::vector<AcGePoint3d> points; // world: the one picked, the corners of an outline, a chain
    AcGeVector3d sight;              // towards the eye, of unit length
};

/// One gesture selects many entities; null for what needed no place.
using SelectedBy = std::shared_ptr<const SelectionGesture>;

} // namespace headless
