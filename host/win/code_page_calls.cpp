#include "win/code_page_calls.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include <unicode/normalizer2.h>

#include "win/code_page.h"
#include "win/constants.h"
#include "win/last_error.h"
#include "win/state.h"

using headless::ConversionReport;

namespace {

int fail(DWORD error) {
    SetLastError(error);
    return 0;
}

/// The error of arguments that no conversion accepts; 0 when they are fine.
DWORD argumentError(UINT codePage, const void* from, int length, const void* to, int capacity) {
    const bool badBuffers = from == nullptr || capacity < 0 || (to == nullptr && capacity > 0) ||
                            (from == to && capacity > 0);
    if (badBuffers || length == 0 || length < -1) return ERROR_INVALID_PARAMETER;
    return headless::codePageInstalled(codePage) ? 0 : ERROR_INVALID_PARAMETER;
}

/// Stores a result as far as it fits, never a part of a character: `whole` tells how many of the
/// first n elements may stand alone.
template <class Text, class Whole>
int deliver(const Text& result, typename Text::value_type* to, int capacity, Whole whole) {
    const auto length = static_cast<int>(result.size());
    if (capacity == 0) return length;
    const int stored = length <= capacity ? length : whole(capacity);
    std::copy_n(result.begin(), stored, to);
    return length <= capacity ? length : fail(ERROR_INSUFFICIENT_BUFFER);
}

/// The first `limit` bytes of text in the page, less a character that they cut in two.
int wholeCharacters(std::string_view bytes, UINT codePage, int limit) {
    if (headless::resolvedCodePage(codePage) == CP_UTF8) {
        auto end = static_cast<std::size_t>(limit);
        while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U)
            --end;
        return static_cast<int>(end);
    }
    int end = 0;
    while (end < limit) {
        const auto byte = static_cast<BYTE>(bytes[static_cast<std::size_t>(end)]);
        const int size = headless::isLeadByte(codePage, byte) ? 2 : 1;
        if (end + size > limit) break;
        end += size;
    }
    return end;
}

/// Letters followed by their marks joined into one character, where there is such a character.
std::wstring composed(std::wstring_view text) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(error);
    std::wstring result;
    for (const wchar_t character : text) {
        const UChar32 pair = result.empty() || U_FAILURE(error)
                                 ? U_SENTINEL
                                 : normalizer->composePair(static_cast<UChar32>(result.back()),
                                                           static_cast<UChar32>(character));
        if (pair >= 0) {
            result.back() = static_cast<wchar_t>(pair);
        } else {
            result.push_back(character);
        }
    }
    return result;
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCCH bytes, int byteCount, LPWSTR text,
                        int capacity) {
    if (const DWORD error = argumentError(codePage, bytes, byteCount, text, capacity)) {
        return fail(error);
    }
    const bool isUtf8 = headless::resolvedCodePage(codePage) == CP_UTF8;
    const DWORD known = MB_ERR_INVALID_CHARS | (isUtf8 ? 0 : MB_PRECOMPOSED);
    if ((flags & ~known) != 0) return fail(ERROR_INVALID_FLAGS);

    const auto size = byteCount < 0 ? std::strlen(bytes) + 1 : static_cast<std::size_t>(byteCount);
    ConversionReport report;
    const std::wstring result = headless::decode({bytes, size}, codePage, report);
    const int delivered = deliver(result, text, capacity, [](int limit) { return limit; });
    const bool refused = report.invalid && (flags & MB_ERR_INVALID_CHARS) != 0;
    return refused && delivered != 0 ? fail(ERROR_NO_UNICODE_TRANSLATION) : delivered;
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes,
                        int capacity, LPCCH defaultChar, LPBOOL usedDefault) {
    if (const DWORD error = argumentError(codePage, text, length, bytes, capacity)) {
        return fail(error);
    }
    const bool isUtf8 = headless::resolvedCodePage(codePage) == CP_UTF8;
    const DWORD known =
        isUtf8 ? WC_ERR_INVALID_CHARS
               : WC_NO_BEST_FIT_CHARS | WC_COMPOSITECHECK | WC_DEFAULTCHAR | WC_ERR_INVALID_CHARS;
    if ((flags & ~known) != 0) return fail(ERROR_INVALID_FLAGS);

    headless::EncodeOptions options;
    options.bestFit = (flags & WC_NO_BEST_FIT_CHARS) == 0;
    if (defaultChar != nullptr) {
        const auto first = static_cast<BYTE>(defaultChar[0]);
        options.defaultText = {defaultChar, headless::isLeadByte(codePage, first) ? 2U : 1U};
    }
    const auto size = length < 0 ? std::wcslen(text) + 1 : static_cast<std::size_t>(length);
    const std::wstring_view source(text, size);
    ConversionReport report;
    const std::string result = (flags & WC_COMPOSITECHECK) != 0
                                   ? headless::encode(composed(source), codePage, options, report)
                                   : headless::encode(source, codePage, options, report);
    if (usedDefault != nullptr) *usedDefault = report.lossy ? TRUE : FALSE;

    const int delivered = deliver(result, bytes, capacity, [&result, codePage](int limit) {
        return wholeCharacters(result, codePage, limit);
    });
    const bool refused = isUtf8 && report.invalid && (flags & WC_ERR_INVALID_CHARS) != 0;
    return refused && delivered != 0 ? fail(ERROR_NO_UNICODE_TRANSLATION) : delivered;
}

UINT GetACP() { return headless::WinState::current().ansiCodePage; }
UINT GetOEMCP() { return headless::WinState::current().oemCodePage; }
BOOL IsValidCodePage(UINT codePage) {
    return codePage > CP_OEMCP && headless::codePageInstalled(codePage) ? TRUE : FALSE;
}
BOOL IsDBCSLeadByte(BYTE byte) { return IsDBCSLeadByteEx(CP_ACP, byte); }
BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte) {
    return headless::isLeadByte(codePage, byte) ? TRUE : FALSE;
}
