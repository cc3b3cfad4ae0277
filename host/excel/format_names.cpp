#include "excel/format_names.h"

#include <array>
#include <utility>

#include "excel/old_palette.h"

namespace headless::excel {
namespace {

template <class Value>
using Names = std::pair<Value, LONG>;

constexpr Names<Horizontal> kHorizontal[] = {
    {Horizontal::kGeneral, 1},      {Horizontal::kLeft, -4131},
    {Horizontal::kCenter, -4108},   {Horizontal::kRight, -4152},
    {Horizontal::kFill, 5},         {Horizontal::kJustify, -4130},
    {Horizontal::kCenterAcross, 7}, {Horizontal::kDistributed, -4117},
};
constexpr Names<Vertical> kVertical[] = {
    {Vertical::kBottom, -4107},  {Vertical::kTop, -4160},         {Vertical::kCenter, -4108},
    {Vertical::kJustify, -4130}, {Vertical::kDistributed, -4117},
};
constexpr Names<Underline> kUnderline[] = {
    {Underline::kNone, kXlNone},       {Underline::kSingle, 2},
    {Underline::kDouble, -4119},       {Underline::kSingleAccounting, 4},
    {Underline::kDoubleAccounting, 5},
};
constexpr Names<Pattern> kPattern[] = {
    {Pattern::kNone, kXlNone},       {Pattern::kSolid, 1},
    {Pattern::kMediumGray, -4125},   {Pattern::kDarkGray, -4126},
    {Pattern::kLightGray, -4124},    {Pattern::kDarkHorizontal, -4128},
    {Pattern::kDarkVertical, -4166}, {Pattern::kDarkDown, -4121},
    {Pattern::kDarkUp, -4162},       {Pattern::kDarkGrid, 9},
    {Pattern::kDarkTrellis, 10},     {Pattern::kLightHorizontal, 11},
    {Pattern::kLightVertical, 12},   {Pattern::kLightDown, 13},
    {Pattern::kLightUp, 14},         {Pattern::kLightGrid, 15},
    {Pattern::kLightTrellis, 16},    {Pattern::kGray125, 17},
    {Pattern::kGray0625, 18},        {Pattern::kNone, kXlAutomatic},
};

constexpr LONG kContinuous = 1;
constexpr LONG kHairline = 1;
constexpr LONG kThin = 2;
constexpr LONG kMedium = -4138;
constexpr LONG kThick = 4;

/// The best style of each kind comes first: it stands in for weights that the kind lacks.
constexpr std::pair<LineStyle, LineKind> kLines[] = {
    {LineStyle::kNone, {kXlNone, kThin}},         {LineStyle::kThin, {kContinuous, kThin}},
    {LineStyle::kHair, {kContinuous, kHairline}}, {LineStyle::kMedium, {kContinuous, kMedium}},
    {LineStyle::kThick, {kContinuous, kThick}},   {LineStyle::kDashed, {-4115, kThin}},
    {LineStyle::kMediumDashed, {-4115, kMedium}}, {LineStyle::kDotted, {-4118, kThin}},
    {LineStyle::kDouble, {-4119, kThick}},        {LineStyle::kDashDot, {4, kThin}},
    {LineStyle::kMediumDashDot, {4, kMedium}},    {LineStyle::kDashDotDot, {5, kThin}},
    {LineStyle::kMediumDashDotDot, {5, kMedium}}, {LineStyle::kSlantDashDot, {13, kMedium}},
};

template <class Value, std::size_t Count>
LONG numberIn(const Names<Value> (&names)[Count], Value value) {
    for (const auto& [known, number] : names) {
        if (known == value) return number;
    }
    return 0;
}

template <class Value, std::size_t Count>
std::optional<Value> valueIn(const Names<Value> (&names)[Count], LONG number) {
    for (const auto& [value, known] : names) {
        if (known == number) return value;
    }
    return std::nullopt;
}

} // namespace

LONG numberOf(Horizontal horizontal) { return numberIn(kHorizontal, horizontal); }
LONG numberOf(Vertical vertical) { return numberIn(kVertical, vertical); }
LONG numberOf(Underline underline) { return numberIn(kUnderline, underline); }
LONG numberOf(Pattern pattern) { return numberIn(kPattern, pattern); }
std::optional<Horizontal> horizontalOf(LONG number) { return valueIn(kHorizontal, number); }
std::optional<Vertical> verticalOf(LONG number) { return valueIn(kVertical, number); }
std::optional<Underline> underlineOf(LONG number) { return valueIn(kUnderline, number); }
std::optional<Pattern> patternOf(LONG number) { return valueIn(kPattern, number); }

LineKind kindOf(LineStyle style) {
    for (const auto& [known, kind] : kLines) {
        if (known == style) return kind;
    }
    return {};
}

std::optional<LineStyle> styleOf(const LineKind& kind) {
    std::optional<LineStyle> standIn;
    for (const auto& [style, known] : kLines) {
        if (known == kind) return style;
        if (known.style == kind.style && !standIn) standIn = style;
    }
    return standIn;
}

// The application's palette begins where the file's fixed colours end.
constexpr std::size_t kFirstOfPalette = 8;
constexpr LONG kPaletteSize = 56;

Color paletteColor(LONG index) {
    if (index < 1 || index > kPaletteSize) return std::nullopt;
    return swappedColor(kOldPalette[kFirstOfPalette + static_cast<std::size_t>(index) - 1]);
}

LONG paletteIndex(const Color& color) {
    if (!color) return kXlAutomatic;
    for (LONG index = 1; index <= kPaletteSize; ++index) {
        if (paletteColor(index) == color) return index;
    }
    return kXlNone;
}

} // namespace headless::excel
