// What a clipped block reference shows, as a polygon.
#pragma once

#include <optional>
#include <vector>

#include "db/entity.h"

namespace headless {

/// The boundary of a reference's clip in the coordinates of its block's contents.
struct ClipRegion {
    std::vector<AcGePoint3d> boundary; // A closed polygon in one plane.
    bool hidesInside = false;          // Else it hides what lies outside.
};

/// The clip of a block reference that is switched on, whether or not the reference is open; nothing
/// when there is none, or somebody has it open for writing.
[[nodiscard]] std::optional<ClipRegion> clipRegionOf(const AcDbEntity& reference);

} // namespace headless
