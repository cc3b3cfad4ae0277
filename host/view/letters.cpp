#include "view/letters.h"

#include <cmath>
#include <cwctype>

#include "db/state.h"
#include "db/text_metrics.h"

namespace headless {
namespace {

// Where lines run beside letters, in multiples of their height above the base line.
constexpr double kUnder = -0.2;
constexpr double kThrough = 0.5;
constexpr double kOver = 1.2;

/// A line beside letters: its ends in multiples of the text height.
struct Rule {
    double from;
    double to;
    double height;
};

/// The lines that %%u, %%o and %%k switch on and off; each ends with the text at the latest.
std::vector<Rule> rulesOf(std::wstring_view text, const TextFont& font) {
    struct Switch {
        wchar_t code;
        double height;
        std::optional<double> from;
    };
    Switch switches[] = {{L'u', kUnder, {}}, {L'o', kOver, {}}, {L'k', kThrough, {}}};
    std::vector<Rule> rules;
    const auto reached = [&](std::size_t end) {
        return font.width(shownText(text.substr(0, end)));
    };
    for (std::size_t at = text.find(L"%%"); at != std::wstring_view::npos && at + 2 < text.size();
         at = text.find(L"%%", at + 3)) {
        for (Switch& line : switches) {
            if (static_cast<wchar_t>(std::towlower(static_cast<wint_t>(text[at + 2]))) != line.code)
                continue;
            if (line.from) rules.push_back({*line.from, reached(at), line.height});
            line.from = line.from ? std::nullopt : std::optional(reached(at));
        }
    }
    for (const Switch& line : switches)
        if (line.from) rules.push_back({*line.from, reached(text.size()), line.height});
    return rules;
}

} // namespace

/// Letters of multiline text of one look.
struct Letters::Run {
    AcGeMatrix3d toWorld;
    AcGePoint3d origin; // where the base line begins
    AcGeVector3d along; // of unit length, as up
    AcGeVector3d up;
    const TextFont& font;
    const MTextFormat& format;
    PictureColor color;

    TextFrame frame(const SheetMap& map, double shift, double rise, double width,
                    double height) const {
        const AcGeVector3d lean = along * std::tan(format.oblique);
        return {map(toWorld * (origin + along * shift + up * rise)),
                map(toWorld * (along * width)).asVector(),
                map(toWorld * ((up + lean) * height)).asVector()};
    }
};

void Letters::rule(const TextFrame& frame, double from, double to, double height,
                   const PictureColor& color) {
    constexpr double kThickness = 0.06;
    canvas_.moveTo(frame.origin + frame.along * from + frame.up * height);
    canvas_.lineTo(frame.origin + frame.along * to + frame.up * height);
    canvas_.stroke(color, frame.up.length() * kThickness);
}

void Letters::paint(const AcDbText& text, std::wstring_view shown, const AcGeMatrix3d& toWorld,
                    const PictureColor& color) {
    const std::wstring letters = shownText(shown);
    AcGePoint3dArray corners;
    if (letters.empty() || text.getBoundingPoints(corners) != Acad::eOk || corners.length() < 4)
        return;
    for (AcGePoint3d& corner : corners)
        corner.transformBy(toWorld);
    const TextFrame frame{map_(corners[0]), map_(corners[1]) - map_(corners[0]),
                          map_(corners[3]) - map_(corners[0])};
    const AcDbObjectId style = text.textStyle();
    const TextFont& font = fontOfStyle(style);
    painter_.paint(letters, font, fontRequestOf(style), frame, color);
    if (shown.find(L"%%") == std::wstring_view::npos) return;
    const double width = font.width(letters);
    for (const Rule& line : rulesOf(shown, font))
        if (width > 0.0) rule(frame, line.from / width, line.to / width, line.height, color);
}

void Letters::paint(std::wstring_view text, AcDbObjectId style, const AcGePoint2d& origin,
                    const AcGeVector2d& along, double height, const PictureColor& color) {
    const TextFont& font = fontOfStyle(style);
    painter_.paint(
        text, font, fontRequestOf(style),
        {origin, along * (font.width(text) * height), AcGeVector2d(along.y, -along.x) * height},
        color);
}

void Letters::paintFraction(const Run& run, const PlacedRun& placed) {
    constexpr double kBarThickness = 0.05;
    const double height = run.format.height * kFractionHeight;
    const auto widthOf = [&](std::wstring_view part) {
        return run.font.width(part) * height * run.format.widthFactor;
    };
    const auto part = [&](std::wstring_view letters, double shift, double rise) {
        painter_.paint(letters, run.font, run.format.font,
                       run.frame(map_, shift, rise, widthOf(letters), height), run.color);
    };
    const TextFrame frame = run.frame(map_, 0.0, 0.0, placed.width, run.format.height);
    const double upper = widthOf(placed.run.text);
    const double lower = widthOf(placed.run.lower);
    if (placed.run.bar == L'#') {
        part(placed.run.text, 0.0, height * 0.6);
        part(placed.run.lower, upper, -height * 0.2);
        const double share = placed.width > 0.0 ? upper / placed.width : 0.0;
        const double lean = placed.width > 0.0 ? height * 0.4 / placed.width : 0.0;
        canvas_.moveTo(frame.origin + frame.along * (share - lean) + frame.up * -0.1);
        canvas_.lineTo(frame.origin + frame.along * (share + lean) + frame.up * 1.1);
        canvas_.stroke(run.color, frame.up.length() * kBarThickness);
        return;
    }
    part(placed.run.text, (placed.width - upper) / 2.0, height * 0.9);
    part(placed.run.lower, (placed.width - lower) / 2.0, -height * 0.5);
    if (placed.run.bar == L'/') rule(frame, 0.0, 1.0, 0.5, run.color);
}

void Letters::paintRun(const Run& run, const PlacedRun& placed) {
    if (placed.run.isFraction()) return paintFraction(run, placed);
    const MTextFormat& format = run.format;
    const TextFrame frame = run.frame(map_, 0.0, 0.0, placed.width, format.height);
    painter_.paint(placed.run.text, run.font, format.font, frame, run.color);
    if (format.underlined) rule(frame, 0.0, 1.0, kUnder, run.color);
    if (format.overlined) rule(frame, 0.0, 1.0, kOver, run.color);
    if (format.struckThrough) rule(frame, 0.0, 1.0, kThrough, run.color);
}

void Letters::paint(const AcDbMText& text, const AcGeMatrix3d& toWorld, const PictureColor& color,
                    const std::function<PictureColor(const AcCmEntityColor&)>& colorOf) {
    const MTextLayout layout = text.layout();
    const AcGePoint3d corner = text.boxCorner(layout);
    const AcGeVector3d along = text.direction();
    const AcGeVector3d up = text.normal().crossProduct(along);
    FontLibrary& fonts = DbState::current().fonts();
    for (const PlacedRun& placed : layout.runs) {
        const MTextFormat& format = placed.run.format;
        const bool own = format.color && !format.color->isByLayer() && !format.color->isByBlock();
        paintRun({toWorld, corner + along * placed.origin.x + up * placed.origin.y, along, up,
                  fonts.find(format.font), format, own ? colorOf(*format.color) : color},
                 placed);
    }
}

} // namespace headless
