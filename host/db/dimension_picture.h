// The blocks that draw dimensions: what a transform makes of them.
#pragma once

#include "db/explode.h"

namespace headless {

/// Adds copies of the entities that draw a dimension under a transform. Where that mirrors, texts
/// stay in their boxes but are not mirrored, nor upside down as seen against the normal.
/// @param normal  of the dimension afterwards
/// Errors: as addBlockContents.
Acad::ErrorStatus addPicture(NewEntities& parts, AcDbObjectId block, const AcGeMatrix3d& transform,
                             const AcGeVector3d& normal);

/// Makes an anonymous block of the entities. Errors: as opening the block table, which then has no
/// new block.
Acad::ErrorStatus makePictureBlock(AcDbDatabase& db, NewEntities parts, AcDbObjectId& block);

} // namespace headless
