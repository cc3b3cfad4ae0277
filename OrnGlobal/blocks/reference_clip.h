// The clip of a block reference, as the drawing keeps it.
#pragma once

#include <optional>

#include <dbents.h>

#include "blocks/clip_boundary.h"

namespace blocks {

/// Asked in the block's own coordinates. Nothing for a reference that is not clipped, or whose clip
/// is switched off.
/// @param reference  open for reading.
[[nodiscard]] std::optional<ClipBoundary> clipOf(const AcDbBlockReference& reference);

} // namespace blocks
