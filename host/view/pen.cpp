#include "view/pen.h"

#include <algorithm>

namespace headless {
namespace {

/// What highlighted things are drawn with: dashes of the sheet's own, in pixels.
const LinePattern& highlightPattern() {
    static const LinePattern pattern{{5.0, -3.0}, {}, 8.0};
    return pattern;
}

} // namespace

Pen penOf(const Traits& traits, Looks& looks, const PenScale& scale, double stretch) {
    constexpr double kThinnest = 0.6;
    constexpr double kThinnestHighlight = 1.5;
    Pen pen{inkOnSheet(traits, scale.foreground),
            std::max(traits.lineWeight * scale.pixelsPerMillimetre, kThinnest), nullptr, 1.0};
    if (traits.isHighlighted) {
        pen.width = std::max(pen.width, kThinnestHighlight);
        pen.pattern = &highlightPattern();
        pen.clearsGaps = true;
        return pen;
    }
    pen.unit = scale.pixelsPerUnit * scale.linetypeScale * traits.linetypeScale * stretch;
    const LinePattern& pattern = looks.patternOf(traits.linetype);
    if (!looksSolid(pattern, pen.unit)) pen.pattern = &pattern;
    return pen;
}

} // namespace headless
