// The line that traits ask for, in pixels.
#pragma once

#include "view/looks.h"

namespace headless {

struct Pen {
    PictureColor color;
    double width;               // pixels
    const LinePattern* pattern; // null for a solid line
    double unit;                // pixels to a unit of the pattern
    bool clearsGaps = false;    // Paper shows between the dashes, whatever was drawn there.
};

struct PenScale {
    double pixelsPerUnit;       // of the drawing, for linetypes
    double pixelsPerMillimetre; // of the paper, for lineweights
    double linetypeScale;       // of the whole drawing
    PictureColor foreground;
};

/// What is highlighted has dashes of the sheet's own, to be seen on top of the same line drawn
/// solid, too.
/// @param stretch  how much larger references make what the entity holds.
[[nodiscard]] Pen penOf(const Traits& traits, Looks& looks, const PenScale& scale, double stretch);

} // namespace headless
