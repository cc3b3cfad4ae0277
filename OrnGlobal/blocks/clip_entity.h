// What a clip leaves of an entity.
#pragma once

#include <memory>
#include <vector>

#include <dbents.h>

#include "blocks/clip_boundary.h"

namespace blocks {

using NewEntities = std::vector<std::unique_ptr<AcDbEntity>>;

/// Curves are cut where they cross the boundary; what remains of them are curves of their own. All
/// else stays whole when some of its box is shown: texts, hatches, references and so on.
///
/// @param entity  in no drawing, in the coordinates that the clip is asked in.
[[nodiscard]] NewEntities shownParts(std::unique_ptr<AcDbEntity> entity, const ClipBoundary& clip);

} // namespace blocks
