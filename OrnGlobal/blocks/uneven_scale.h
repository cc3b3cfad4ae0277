// Entities under transforms that do not keep circles round.
#pragma once

#include "blocks/clip_entity.h"

namespace blocks {

/// An entity under a transform. Where its kind cannot take an uneven scale it becomes others that
/// can: circles and arcs turn into ellipses, polylines with arcs into lines and elliptical arcs.
/// Empty for kinds that cannot be moved so at all.
///
/// @param entity  in no drawing.
[[nodiscard]] NewEntities transformed(std::unique_ptr<AcDbEntity> entity,
                                      const AcGeMatrix3d& transform);

} // namespace blocks
