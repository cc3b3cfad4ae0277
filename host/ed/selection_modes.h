// What the modes of acedSSGet that go by place mean.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "ed/geometric_selection.h"

namespace headless {

/// @param mode    "W", "C": window and crossing box by two corners; "WP", "CP", "F": by a chain of
///                result buffers that hold points; "": what the pick box at a point holds, the
///                newest alone. In capitals.
/// @param point1, point2  an ads_point each, or the chain; user coordinates.
/// @return        nothing for another mode, for missing points and for fewer than a mode needs.
[[nodiscard]] std::optional<std::vector<AcDbObjectId>>
selectByMode(const AcDbDatabase& db, std::wstring_view mode, const void* point1, const void* point2,
             const Accepts& accepts);

} // namespace headless
