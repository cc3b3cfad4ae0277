// How a cell looks. Numbers are those of workbook files; colours are 0x00BBGGRR, none is automatic.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace headless::excel {

using Color = std::optional<std::uint32_t>;

enum class Underline : std::uint8_t {
    kNone,
    kSingle,
    kDouble,
    kSingleAccounting,
    kDoubleAccounting
};
enum class Script : std::uint8_t { kNormal, kSuperscript, kSubscript };

struct Font {
    std::string name = "Calibri";
    double size = 11.0; ///< Points.
    bool bold = false;
    bool italic = false;
    bool strikeout = false;
    Underline underline = Underline::kNone;
    Script script = Script::kNormal;
    Color color;

    bool operator==(const Font&) const = default;
};

/// In the order in which fill patterns are numbered in files.
enum class Pattern : std::uint8_t {
    kNone,
    kSolid,
    kMediumGray,
    kDarkGray,
    kLightGray,
    kDarkHorizontal,
    kDarkVertical,
    kDarkDown,
    kDarkUp,
    kDarkGrid,
    kDarkTrellis,
    kLightHorizontal,
    kLightVertical,
    kLightDown,
    kLightUp,
    kLightGrid,
    kLightTrellis,
    kGray125,
    kGray0625
};

struct Fill {
    Pattern pattern = Pattern::kNone;
    Color color;        ///< Of a solid fill, of the ground under a pattern.
    Color patternColor; ///< Of the pattern's strokes.

    bool operator==(const Fill&) const = default;
};

/// In the order in which line styles are numbered in files.
enum class LineStyle : std::uint8_t {
    kNone,
    kThin,
    kMedium,
    kDashed,
    kDotted,
    kThick,
    kDouble,
    kHair,
    kMediumDashed,
    kDashDot,
    kMediumDashDot,
    kDashDotDot,
    kMediumDashDotDot,
    kSlantDashDot
};

struct BorderLine {
    LineStyle style = LineStyle::kNone;
    Color color;

    bool operator==(const BorderLine&) const = default;
};

struct Borders {
    BorderLine left;
    BorderLine right;
    BorderLine top;
    BorderLine bottom;
    BorderLine diagonal;
    bool diagonalUp = false;
    bool diagonalDown = false;

    bool operator==(const Borders&) const = default;
};

enum class Horizontal : std::uint8_t {
    kGeneral,
    kLeft,
    kCenter,
    kRight,
    kFill,
    kJustify,
    kCenterAcross,
    kDistributed
};
enum class Vertical : std::uint8_t { kBottom, kTop, kCenter, kJustify, kDistributed };

/// Letters upright one below the other.
constexpr int kStackedText = 255;

struct Alignment {
    Horizontal horizontal = Horizontal::kGeneral;
    Vertical vertical = Vertical::kBottom;
    int indent = 0;
    int rotation = 0; ///< Degrees counter-clockwise, -90 to 90, or kStackedText.
    bool wrap = false;
    bool shrink = false;

    bool operator==(const Alignment&) const = default;
};

struct CellFormat {
    std::string numberFormat = "General";
    Font font;
    Fill fill;
    Borders borders;
    Alignment alignment;
    bool locked = true;
    bool formulaHidden = false;
    int style = 0; ///< Of Workbook::styles.

    bool operator==(const CellFormat&) const = default;
};

} // namespace headless::excel
