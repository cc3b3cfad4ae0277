// The line that traits ask for, in pixels.
#pragma once

#include <vector>

#include "view/traits.h"

namespace headless {

struct Pen {
    PictureColor color;
    double width;               // pixels
    std::vector<double> dashes; // pixels on and off by turns; empty for a solid line
    bool clearsGaps = false;    // Paper shows between the dashes, whatever was drawn there.
};

struct PenScale {
    double pixelsPerUnit;       // of the drawing, for linetypes
    double pixelsPerMillimetre; // of the paper, for lineweights
    double linetypeScale;       // of the whole drawing
};

[[nodiscard]] Pen penOf(const Traits& traits, const PenScale& scale);

/// What highlighted things are drawn with: dashes of the sheet's own, to be seen on top of the same
/// line drawn solid, too.
[[nodiscard]] Pen highlighted(Pen pen);

} // namespace headless
