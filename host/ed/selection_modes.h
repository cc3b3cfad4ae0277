// What the modes of acedSSGet mean.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "ed/geometric_selection.h"
#include "ed/selection_gesture.h"

namespace headless {

class EntityFilter;

/// The entities that a mode selects, the newest first where it makes no order.
///
/// @param mode    one that acedSSGet names, in capitals.
/// @param point1, point2  an ads_point each, or a chain of result buffers that hold points; user
///                coordinates.
/// @return        nothing for another mode, for missing points and for fewer than a mode needs.
[[nodiscard]] std::optional<std::vector<AcDbObjectId>>
selectByMode(const AcDbDatabase& db, std::wstring_view mode, const void* point1, const void* point2,
             const EntityFilter& filter);

/// The gesture that such a mode stands for in the current view; null for one without a place and
/// when points are missing.
[[nodiscard]] SelectedBy gestureOfMode(const AcDbDatabase& db, std::wstring_view mode,
                                       const void* point1, const void* point2);

/// What a user could select of the current space: not what is invisible or on a layer that is off,
/// frozen, locked or hidden. The newest first.
[[nodiscard]] std::vector<AcDbObjectId> selectableInSpace(const AcDbDatabase& db,
                                                          const EntityFilter& filter);

} // namespace headless
