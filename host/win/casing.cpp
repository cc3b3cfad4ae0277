#include "win/casing.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <iterator>

#include <unicode/uchar.h>

#include "win/constants.h"
#include "win/last_error.h"

namespace headless {
namespace {

// Letters that Unicode maps and Windows leaves alone, because the way back would lead elsewhere.
constexpr std::uint16_t kOwnCapitals[] = {
    0x00B5, 0x0131, 0x017F, 0x01C5, 0x01C8, 0x01CB, 0x01F2, 0x0345, 0x03C2,
    0x03D0, 0x03D1, 0x03D5, 0x03D6, 0x03F0, 0x03F1, 0x03F5, 0x1C80, 0x1C81,
    0x1C82, 0x1C83, 0x1C84, 0x1C85, 0x1C86, 0x1C87, 0x1C88, 0x1E9B, 0x1FBE,
};
constexpr std::uint16_t kOwnSmalls[] = {
    0x0130, 0x01C5, 0x01C8, 0x01CB, 0x01F2, 0x03F4, 0x1E9E, 0x2126, 0x212A, 0x212B,
};

using CaseMap = UChar32 (*)(UChar32);

template <std::size_t N>
wchar_t mapped(wchar_t character, CaseMap map, const std::uint16_t (&exceptions)[N]) noexcept {
    const auto value = static_cast<std::uint32_t>(character);
    if (value > 0xFFFF) return character;
    const auto other = static_cast<wchar_t>(map(static_cast<UChar32>(value)));
    if (other == character) return character;
    const bool isException =
        std::binary_search(std::begin(exceptions), std::end(exceptions), value);
    return isException ? character : other;
}

} // namespace

/// Order of two texts of small letters, one of which may end first.
template <class Iterator, class Fold>
static int compareFolded(Iterator left, Iterator leftEnd, Iterator right, Iterator rightEnd,
                         Fold fold) {
    for (; left != leftEnd && right != rightEnd; ++left, ++right) {
        const auto a = fold(*left);
        const auto b = fold(*right);
        if (a != b) return a < b ? -1 : 1;
    }
    return static_cast<int>(right == rightEnd) - static_cast<int>(left == leftEnd);
}

wchar_t upper(wchar_t character) noexcept {
    if (static_cast<std::uint32_t>(character) < 0x80) {
        return character >= L'a' && character <= L'z' ? character - L'a' + L'A' : character;
    }
    return mapped(character, &u_toupper, kOwnCapitals);
}

wchar_t lower(wchar_t character) noexcept {
    if (static_cast<std::uint32_t>(character) < 0x80) {
        return character >= L'A' && character <= L'Z' ? character - L'A' + L'a' : character;
    }
    return mapped(character, &u_tolower, kOwnSmalls);
}

std::wstring upperCased(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), &upper);
    return result;
}

std::wstring lowerCased(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), &lower);
    return result;
}

bool equalNoCase(std::wstring_view left, std::wstring_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return a == b || upper(a) == upper(b); });
}

std::size_t hashNoCase(std::wstring_view text) noexcept {
    // FNV-1a over the capitals.
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const wchar_t character : text) {
        hash = (hash ^ static_cast<std::uint32_t>(upper(character))) * 0x100000001B3U;
    }
    return hash;
}

int compareNoCase(std::wstring_view left, std::wstring_view right) noexcept {
    return compareFolded(left.begin(), left.end(), right.begin(), right.end(), &lower);
}

} // namespace headless

LPWSTR CharUpperW(LPWSTR text) { return _wcsupr(text); }
LPWSTR CharLowerW(LPWSTR text) { return _wcslwr(text); }

DWORD CharUpperBuffW(LPWSTR text, DWORD length) {
    std::transform(text, text + length, text, &headless::upper);
    return length;
}

DWORD CharLowerBuffW(LPWSTR text, DWORD length) {
    std::transform(text, text + length, text, &headless::lower);
    return length;
}

wchar_t* _wcsupr(wchar_t* text) {
    CharUpperBuffW(text, static_cast<DWORD>(std::wcslen(text)));
    return text;
}

wchar_t* _wcslwr(wchar_t* text) {
    CharLowerBuffW(text, static_cast<DWORD>(std::wcslen(text)));
    return text;
}

int _wcsicmp(const wchar_t* left, const wchar_t* right) {
    return headless::compareNoCase(left, right);
}

int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t count) {
    return headless::compareNoCase({left, wcsnlen(left, count)}, {right, wcsnlen(right, count)});
}

int _stricmp(const char* left, const char* right) {
    return _strnicmp(left, right, std::max(std::strlen(left), std::strlen(right)));
}

int _strnicmp(const char* left, const char* right, std::size_t count) {
    // Bytes have no case beyond ASCII: in a two-byte page they need not be letters at all.
    const auto fold = [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : static_cast<unsigned char>(byte);
    };
    return headless::compareFolded(left, left + strnlen(left, count), right,
                                   right + strnlen(right, count), fold);
}

int CompareStringOrdinal(LPCWCH left, int leftLength, LPCWCH right, int rightLength,
                         BOOL ignoreCase) {
    if (left == nullptr || right == nullptr || leftLength < -1 || rightLength < -1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto view = [](LPCWCH text, int length) {
        return length < 0 ? std::wstring_view(text)
                          : std::wstring_view(text, static_cast<std::size_t>(length));
    };
    const std::wstring_view a = view(left, leftLength);
    const std::wstring_view b = view(right, rightLength);
    const auto fold = [ignoreCase](wchar_t character) {
        return ignoreCase != FALSE ? headless::upper(character) : character;
    };
    return CSTR_EQUAL + headless::compareFolded(a.begin(), a.end(), b.begin(), b.end(), fold);
}
