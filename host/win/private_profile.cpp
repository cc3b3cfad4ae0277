#include "win/private_profile.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "win/constants.h"
#include "win/last_error.h"
#include "win/state.h"

namespace {

using headless::ProfileText;

std::wstring_view orEmpty(LPCWSTR text) { return text == nullptr ? std::wstring_view() : text; }

std::wstring_view fileName(LPCWSTR file) { return file == nullptr ? L"win.ini" : file; }

/// The text of a file, with the last error set; null when it cannot be read.
const ProfileText* read(LPCWSTR file) {
    DWORD error = ERROR_SUCCESS;
    const ProfileText* const text =
        headless::WinState::current().profiles.read(fileName(file), error);
    SetLastError(error);
    return text;
}

BOOL change(LPCWSTR file, const std::function<bool(ProfileText&)>& edit) {
    const DWORD error = headless::WinState::current().profiles.change(fileName(file), edit);
    SetLastError(error);
    return error == ERROR_SUCCESS ? TRUE : FALSE;
}

BOOL refuseMissingSection() {
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
}

std::wstring_view withoutQuotes(std::wstring_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == L'"' || value.front() == L'\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::wstring_view defaultValue(LPCWSTR text) {
    std::wstring_view value = orEmpty(text);
    value = value.substr(0, value.find_last_not_of(L' ') + 1);
    return withoutQuotes(value);
}

DWORD copyValue(std::wstring_view value, LPWSTR text, DWORD capacity) {
    const std::size_t length = std::min<std::size_t>(value.size(), capacity - 1);
    std::copy_n(value.begin(), length, text);
    text[length] = L'\0';
    return static_cast<DWORD>(length);
}

DWORD copyList(std::wstring_view list, LPWSTR texts, DWORD capacity) {
    const bool fits = list.size() < capacity;
    const std::size_t length = fits ? list.size() : std::max<DWORD>(capacity, 2) - 2;
    std::copy_n(list.begin(), length, texts);
    // A whole text has its own NUL already.
    const std::size_t missing = fits && length > 0 ? 1 : 2;
    std::fill_n(texts + length, std::min(missing, capacity - length), L'\0');
    return static_cast<DWORD>(length);
}

/// The pieces of a list, up to its empty one.
std::vector<std::wstring_view> pieces(LPCWSTR list) {
    std::vector<std::wstring_view> found;
    for (std::wstring_view piece = list; !piece.empty(); piece = list) {
        found.push_back(piece);
        list += piece.size() + 1;
    }
    return found;
}

std::optional<UINT> digitValue(wchar_t digit, UINT base) {
    UINT value = base;
    if (digit >= L'0' && digit <= L'9') value = static_cast<UINT>(digit - L'0');
    if (digit >= L'a' && digit <= L'f') value = static_cast<UINT>(digit - L'a') + 10;
    if (digit >= L'A' && digit <= L'F') value = static_cast<UINT>(digit - L'A') + 10;
    return value < base ? std::optional(value) : std::nullopt;
}

/// The number a text begins with, in 32 bits that wrap around.
UINT parseNumber(std::wstring_view text) {
    constexpr UINT kDecimal = 10;
    constexpr UINT kHexadecimal = 16;
    text.remove_prefix(std::min(text.find_first_not_of(L" \t"), text.size()));
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+')) text.remove_prefix(1);
    const bool hexadecimal = text.starts_with(L"0x");
    if (hexadecimal) text.remove_prefix(2);
    const UINT base = hexadecimal ? kHexadecimal : kDecimal;
    UINT number = 0;
    for (const wchar_t character : text) {
        const std::optional<UINT> digit = digitValue(character, base);
        if (!digit) break;
        number = number * base + *digit;
    }
    return negative ? 0 - number : number;
}

} // namespace

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR text,
                               DWORD capacity, LPCWSTR file) {
    if (text == nullptr || capacity == 0) return 0;
    const ProfileText* const profile = read(file);
    if (profile == nullptr) return copyValue(defaultValue(defaultText), text, capacity);
    if (section == nullptr) return copyList(profile->sectionNames(), text, capacity);
    if (key == nullptr) {
        if (const auto names = profile->keyNames(section)) return copyList(*names, text, capacity);
    } else if (const auto value = profile->value(section, key)) {
        return copyValue(withoutQuotes(*value), text, capacity);
    }
    return copyValue(defaultValue(defaultText), text, capacity);
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR file) {
    const ProfileText* const profile = read(file);
    std::wstring_view text;
    if (profile != nullptr && section != nullptr && key != nullptr) {
        text = withoutQuotes(profile->value(section, key).value_or(std::wstring_view()));
    }
    return text.empty() ? static_cast<UINT>(defaultValue) : parseNumber(text);
}

DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR lines, DWORD capacity, LPCWSTR file) {
    if (lines == nullptr || capacity == 0) return 0;
    const ProfileText* const profile = section == nullptr ? nullptr : read(file);
    const auto list = profile == nullptr ? std::nullopt : profile->lines(section);
    return copyList(list.value_or(std::wstring()), lines, capacity);
}

DWORD GetPrivateProfileSectionNamesW(LPWSTR names, DWORD capacity, LPCWSTR file) {
    if (names == nullptr || capacity == 0) return 0;
    const ProfileText* const profile = read(file);
    return copyList(profile == nullptr ? std::wstring() : profile->sectionNames(), names, capacity);
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) {
    if (section == nullptr && key == nullptr && value == nullptr) {
        headless::WinState::current().profiles.flush();
        SetLastError(ERROR_SUCCESS);
        return FALSE;
    }
    if (section == nullptr) return refuseMissingSection();
    return change(file, [=](ProfileText& text) {
        if (key == nullptr) return text.removeSection(section);
        if (value == nullptr) return text.removeKey(section, key);
        return text.setValue(section, key, value);
    });
}

BOOL WritePrivateProfileSectionW(LPCWSTR section, LPCWSTR lines, LPCWSTR file) {
    if (section == nullptr) return refuseMissingSection();
    return change(file, [=](ProfileText& text) {
        return lines == nullptr ? text.removeSection(section)
                                : text.setLines(section, pieces(lines));
    });
}
