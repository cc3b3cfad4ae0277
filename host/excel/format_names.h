// The numbers by which automation names kinds of lines, patterns, alignments, and file kinds.
#pragma once

#include <optional>

#include "excel/cell_format.h"
#include "win/types.h"

namespace headless::excel {

constexpr LONG kXlNone = -4142;
constexpr LONG kXlAutomatic = -4105;

// The number of a value, and the value of a number (nothing for one that is none).

[[nodiscard]] LONG numberOf(Horizontal horizontal);
[[nodiscard]] LONG numberOf(Vertical vertical);
[[nodiscard]] LONG numberOf(Underline underline);
[[nodiscard]] LONG numberOf(Pattern pattern);
[[nodiscard]] std::optional<Horizontal> horizontalOf(LONG number);
[[nodiscard]] std::optional<Vertical> verticalOf(LONG number);
[[nodiscard]] std::optional<Underline> underlineOf(LONG number);
[[nodiscard]] std::optional<Pattern> patternOf(LONG number);

/// Lines have a kind and a weight to automation, one style in files.
struct LineKind {
    LONG style = kXlNone;
    LONG weight = 2; ///< Thin.

    bool operator==(const LineKind&) const = default;
};
[[nodiscard]] LineKind kindOf(LineStyle style);
/// The style of a kind; with another weight when there is none of that weight.
[[nodiscard]] std::optional<LineStyle> styleOf(const LineKind& kind);

/// A colour of the application's palette, 1 to 56; nothing outside.
[[nodiscard]] Color paletteColor(LONG index);
/// The palette's number of exactly that colour; none or automatic without one.
[[nodiscard]] LONG paletteIndex(const Color& color);

} // namespace headless::excel
