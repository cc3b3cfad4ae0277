// How much room letters take.
#pragma once

#include <string>
#include <string_view>

#include "db/font.h"
#include "db/object_id.h"

namespace headless {

/// The letters that a single line of text shows: control codes are resolved ("%%d" a degree sign,
/// "%%p" plus-minus, "%%c" a diameter, "%%065" the letter of that number) or dropped (underline,
/// overline, strike-through).
[[nodiscard]] std::wstring shownText(std::wstring_view text);

/// The font of a text style; of none the font for styles that name nothing.
/// @param style  a text style, open or not.
[[nodiscard]] const TextFont& fontOfStyle(AcDbObjectId style);
/// What that style asks for.
[[nodiscard]] FontRequest fontRequestOf(AcDbObjectId style);

/// How far letters reach below the base line, in multiples of the text height.
inline constexpr double kTextDescent = 1.0 / 3.0;

} // namespace headless
