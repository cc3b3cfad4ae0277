// Where the letters of multiline text stand.
#pragma once

#include <vector>

#include "db/mtext_parser.h"
#include "ge/point2d.h"

namespace headless {

/// Letters of fractions are that much smaller than those around them.
inline constexpr double kFractionHeight = 0.7;

/// A piece of one line. Lengths in drawing units; x along the lines, y up, from the upper left
/// corner of the text's box.
struct PlacedRun {
    MTextRun run;
    AcGePoint2d origin; // where the base line begins
    double width;
};

struct MTextLayout {
    std::vector<PlacedRun> runs; // in reading order
    double width = 0.0;          // of the longest line
    double height = 0.0;         // from the first line's capitals to the last base line
};

struct MTextFrame {
    double width = 0.0;       // lines break where they would exceed it; 0 for no breaking
    double lineSpacing = 1.0; // times the usual distance of base lines
    double alignment = 0.0;   // 0 lines begin below each other, 0.5 centred, 1 they end so
    double height = 0.0;      // of paragraphs without letters
};

/// Breaks lines at blanks and behind square letters; a word longer than a line goes beyond it.
[[nodiscard]] MTextLayout layOut(const std::vector<MTextParagraph>& paragraphs,
                                 const MTextFrame& frame);

} // namespace headless
