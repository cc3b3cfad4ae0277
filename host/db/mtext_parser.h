// The inline codes of multiline text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/color.h"
#include "db/font.h"

namespace headless {

/// How a stretch of multiline text is to look.
struct MTextFormat {
    double height = 0.0; // drawing units
    double widthFactor = 1.0;
    double oblique = 0.0;  // lean to the right, radians
    double tracking = 1.0; // times the usual room between letters
    FontRequest font;
    std::optional<AcCmEntityColor> color; // empty: the text's own
    bool underlined = false;
    bool overlined = false;
    bool struckThrough = false;

    friend bool operator==(const MTextFormat&, const MTextFormat&) = default;
};

/// Letters of one look, or a fraction: two texts above each other.
struct MTextRun {
    std::wstring text; // of a fraction the upper part
    std::wstring lower;
    wchar_t bar = 0; // what parts a fraction: / or #, or ^ for none drawn; 0 for ordinary letters
    MTextFormat format;

    bool isFraction() const { return bar != 0; }
};

using MTextParagraph = std::vector<MTextRun>;

/// The paragraphs of contents, one at least. Codes that no one knows are kept as letters.
[[nodiscard]] std::vector<MTextParagraph> parseMText(std::wstring_view contents,
                                                     const MTextFormat& format);

/// The text of contents without the inline codes: "\P" parts paragraphs and becomes a line
/// feed, "\~" a blank, a stacked fraction "\S1/2;" reads 1/2.
[[nodiscard]] std::wstring plainMText(std::wstring_view contents);

} // namespace headless
