// How much room letters take.
#pragma once

#include <string>
#include <string_view>

namespace headless {

/// The letters that a single line of text shows: control codes are resolved ("%%d" a degree sign,
/// "%%p" plus-minus, "%%c" a diameter, "%%065" the letter of that number) or dropped (underline,
/// overline, strike-through).
[[nodiscard]] std::wstring shownText(std::wstring_view text);

/// Width of a letter, in multiples of the text height: 1 for those that fill a square, such as Han,
/// 0.6 for others.
[[nodiscard]] double letterWidth(wchar_t letter);

/// Width of a line of shown text, in multiples of the text height.
[[nodiscard]] double textWidth(std::wstring_view shown);

/// How far letters reach below the base line, in multiples of the text height.
inline constexpr double kTextDescent = 1.0 / 3.0;

} // namespace headless
