// The clips of block references as clips of a canvas.
#pragma once

#include "ge/matrix3d.h"
#include "view/canvas.h"
#include "view/sheet_map.h"

namespace headless {

struct ClipRegion;

/// Lets the canvas show only what a reference's clip leaves of its contents, until the canvas's
/// state is given back.
///
/// @param blockToWorld  takes the contents to the drawing's coordinates.
void clipTo(Canvas& canvas, const SheetMap& map, const ClipRegion& clip,
            const AcGeMatrix3d& blockToWorld);

} // namespace headless
