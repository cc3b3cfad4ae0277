#include "table/shown_text.h"

#include <algorithm>

namespace table {
namespace {

struct Code {
    wchar_t letter;
    const wchar_t* shows;
};
constexpr Code kCodes[] = {{L'c', L"Ø"}, {L'd', L"°"}, {L'p', L"±"}, {L'%', L"%"},
                           {L'u', L""},  {L'o', L""},  {L'k', L""}};

constexpr int kDigits = 3;

/// The character of three digits that begin there; 0 when there are none, or none of ASCII's.
wchar_t numbered(const CString& text, int at) {
    int code = 0;
    for (int i = at; i < at + kDigits; ++i) {
        const wchar_t digit = i < text.GetLength() ? text[i] : L' ';
        if (digit < L'0' || digit > L'9') return 0;
        code = code * 10 + (digit - L'0');
    }
    constexpr int kPrintable = 32;
    constexpr int kBeyond = 127;
    return code >= kPrintable && code < kBeyond ? static_cast<wchar_t>(code) : L'\0';
}

} // namespace

CString shownText(const CString& text) {
    CString shown;
    for (int at = 0; at < text.GetLength(); ++at) {
        const bool isCode = at + 2 < text.GetLength() && text[at] == L'%' && text[at + 1] == L'%';
        const wchar_t letter = isCode ? text[at + 2] : L'\0';
        const auto* const code = std::ranges::find_if(kCodes, [letter](const Code& known) {
            return known.letter == letter || (letter >= L'A' && known.letter == letter + 32);
        });
        if (isCode && code != std::end(kCodes)) {
            shown += code->shows;
            at += 2;
        } else if (const wchar_t named = isCode ? numbered(text, at + 2) : L'\0'; named != 0) {
            shown += named;
            at += 1 + kDigits;
        } else {
            shown += text[at];
        }
    }
    return shown;
}

} // namespace table
