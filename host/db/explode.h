// What entities are taken apart into.
#pragma once

#include "db/entity.h"

namespace headless {

/// Adds a new entity with the whole's layer, colour and so on.
template <class T>
T& addPart(NewEntities& parts, const AcDbEntity& whole, std::unique_ptr<T> part) {
    T& added = *part;
    parts.push_back(std::move(part));
    added.copyProperties(whole);
    return added;
}

/// Adds copies of a block's entities under a transform. Circles and arcs become ellipses where they
/// must; curves, dimensions and multileaders that cannot be transformed are taken apart. What
/// refuses even so refuses the whole; what was added by then stays.
Acad::ErrorStatus addBlockContents(NewEntities& parts, AcDbObjectId block,
                                   const AcGeMatrix3d& transform);

} // namespace headless
