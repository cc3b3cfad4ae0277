// The clips of block references as clips of a canvas.
#pragma once

#include "ge/matrix3d.h"
#include "view/canvas.h"
#include "view/sheet_map.h"

class AcDbBlockReference;

namespace headless {

/// Lets the canvas show only what the reference's clip leaves of its contents, until the canvas's
/// state is given back. Changes nothing for a reference without a clip, or with one switched off.
///
/// @param reference     open for reading.
/// @param blockToWorld  takes the contents to the drawing's coordinates.
void clipTo(Canvas& canvas, const SheetMap& map, const AcDbBlockReference& reference,
            const AcGeMatrix3d& blockToWorld);

} // namespace headless
