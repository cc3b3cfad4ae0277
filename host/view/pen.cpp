#include "view/pen.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "db/linetype_table.h"
#include "db/object_pointer.h"
#include "db/open.h"

namespace headless {
namespace {

/// Dashes and gaps (negative) of a linetype in drawing units.
std::vector<double> patternOf(AcDbObjectId linetype) {
    std::vector<double> pattern;
    AcDbLinetypeTableRecord* record = nullptr;
    if (acdbOpenObject(record, linetype, AcDb::kForRead) != Acad::eOk) return pattern;
    for (int i = 0; i < record->numDashes(); ++i)
        pattern.push_back(record->dashLengthAt(i));
    record->close();
    return pattern;
}

/// Neighbours of one kind are joined and a pattern that begins with a gap gets an empty dash, so
/// that dashes and gaps take turns. Dots are as long as the line is wide.
std::vector<double> takeTurns(const std::vector<double>& pattern, double scale, double width) {
    std::vector<double> turns;
    for (const double length : pattern) {
        const bool isGap = length < 0.0;
        const double pixels = isGap ? -length * scale : std::max(length * scale, width);
        if (turns.empty() && isGap) turns.push_back(0.0);
        const bool lastIsGap = turns.size() % 2 == 0;
        if (!turns.empty() && lastIsGap == isGap)
            turns.back() += pixels;
        else
            turns.push_back(pixels);
    }
    if (turns.size() % 2 != 0) turns.push_back(0.0);
    return turns;
}

std::vector<double> dashesOf(const Traits& traits, const PenScale& scale, double width) {
    // A pattern that short is a grey line, drawn at great cost.
    constexpr double kShortest = 2.0;
    const double unit = scale.pixelsPerUnit * scale.linetypeScale * traits.linetypeScale;
    std::vector<double> dashes = takeTurns(patternOf(traits.linetype), unit, width);
    const double length = std::accumulate(dashes.begin(), dashes.end(), 0.0);
    if (!(length >= kShortest) || !std::isfinite(length)) dashes.clear();
    return dashes;
}

} // namespace

Pen penOf(const Traits& traits, const PenScale& scale) {
    constexpr double kThinnest = 0.6;
    const double width = std::max(traits.lineWeight * scale.pixelsPerMillimetre, kThinnest);
    return {paperColor(traits), width, dashesOf(traits, scale, width)};
}

Pen highlighted(Pen pen) {
    constexpr double kDash = 5.0;
    constexpr double kGap = 3.0;
    pen.width = std::max(pen.width, 1.5);
    pen.dashes = {kDash, kGap};
    pen.clearsGaps = true;
    return pen;
}

} // namespace headless
