// The lines of a hatch pattern over the area that is clipped to.
#pragma once

#include "db/hatch.h"
#include "view/canvas.h"
#include "view/pen.h"
#include "view/sheet_map.h"

namespace headless {

/// Strokes the pattern's families of lines wherever the canvas's clip is, with the pen's colour and
/// width. Lines closer than half a pixel are a tint instead.
void drawHatchPattern(Canvas& canvas, const SheetMap& map, const AcDbHatch& hatch,
                      const AcGeMatrix3d& toWorld, const Pen& pen);

} // namespace headless
