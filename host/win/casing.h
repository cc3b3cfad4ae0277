// Letter case as the system and its C run time know it.
//
// The maps are simple and one to one, and know the basic plane only. Differences from Unicode's
// maps are deliberate: sharp s, dotless and dotted i, final sigma and some symbols equal only
// themselves, as in Windows' own file and symbol names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "win/types.h"

LPWSTR CharUpperW(LPWSTR text);
LPWSTR CharLowerW(LPWSTR text);
DWORD CharUpperBuffW(LPWSTR text, DWORD length);
DWORD CharLowerBuffW(LPWSTR text, DWORD length);

constexpr int CSTR_LESS_THAN = 1;
constexpr int CSTR_EQUAL = 2;
constexpr int CSTR_GREATER_THAN = 3;

/// Order by code; length -1 means up to the NUL. Returns 0 on a bad argument, else CSTR_...
int CompareStringOrdinal(LPCWCH left, int leftLength, LPCWCH right, int rightLength,
                         BOOL ignoreCase);

// The C run time: the host sets its locale to the system's, so all letters count, not ASCII's only.
int _wcsicmp(const wchar_t* left, const wchar_t* right);
int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t count);
wchar_t* _wcsupr(wchar_t* text);
wchar_t* _wcslwr(wchar_t* text);
int _stricmp(const char* left, const char* right);
int _strnicmp(const char* left, const char* right, std::size_t count);

namespace headless {

/// The capital of a letter; any other character itself.
[[nodiscard]] wchar_t upper(wchar_t character) noexcept;
/// The small form of a letter; any other character itself.
[[nodiscard]] wchar_t lower(wchar_t character) noexcept;

[[nodiscard]] std::wstring upperCased(std::wstring_view text);
[[nodiscard]] std::wstring lowerCased(std::wstring_view text);

/// Equality of symbol names.
[[nodiscard]] bool equalNoCase(std::wstring_view left, std::wstring_view right) noexcept;
/// A hash that names equal by equalNoCase() share.
[[nodiscard]] std::size_t hashNoCase(std::wstring_view text) noexcept;
/// Negative, zero, positive by the order of the small letters, as _wcsicmp does.
[[nodiscard]] int compareNoCase(std::wstring_view left, std::wstring_view right) noexcept;

/// For unordered containers keyed by names; take std::wstring_view as well.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view name) const noexcept { return hashNoCase(name); }
};
struct NameEqual {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
        return equalNoCase(left, right);
    }
};

} // namespace headless
