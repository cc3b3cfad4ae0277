// White space as the C run time knows it.
#pragma once

namespace headless {

/// True for the blanks of Unicode, U+00A0 and U+3000 among them, and for TAB to CR.
[[nodiscard]] constexpr bool isSpace(wchar_t character) noexcept {
    if (character < 0x80) return character == L' ' || (character >= L'\t' && character <= L'\r');
    switch (character) {
    case 0x0085:
    case 0x00A0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202F:
    case 0x205F:
    case 0x3000:
        return true;
    default:
        return character >= 0x2000 && character <= 0x200A;
    }
}

} // namespace headless
