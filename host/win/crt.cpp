#include "win/crt.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include <unicode/uchar.h>

#include "win/format.h"
#include "win/text_space.h"

namespace {

/// The value of a decimal digit of any script, -1 for anything else.
int digitOf(wchar_t character) { return u_charDigitValue(static_cast<UChar32>(character)); }

template <class Integer>
Integer parseInteger(const wchar_t* text) {
    if (text == nullptr) return 0;
    while (headless::isSpace(*text))
        ++text;
    const bool negative = *text == L'-';
    if (*text == L'-' || *text == L'+') ++text;

    using Limits = std::numeric_limits<Integer>;
    Integer value = 0; // Below zero all along: the range reaches one further there.
    for (int digit = digitOf(*text); digit >= 0; digit = digitOf(*++text)) {
        const bool overflows = value < Limits::min() / 10 || value * 10 < Limits::min() + digit;
        if (overflows) {
            errno = ERANGE;
            return negative ? Limits::min() : Limits::max();
        }
        value = static_cast<Integer>(value * 10 - digit);
    }
    if (negative) return value;
    if (value == Limits::min()) {
        errno = ERANGE;
        return Limits::max();
    }
    return static_cast<Integer>(-value);
}

/// The longest number in C's notation at the front, with D also marking the exponent.
std::string numberAt(const wchar_t* text) {
    std::string number;
    const auto takeDigits = [&] {
        const std::size_t before = number.size();
        while (*text >= L'0' && *text <= L'9')
            number.push_back(static_cast<char>(*text++));
        return number.size() - before;
    };
    if (*text == L'-' || *text == L'+') number.push_back(static_cast<char>(*text++));
    std::size_t digits = takeDigits();
    if (*text == L'.') {
        number.push_back('.');
        ++text;
        digits += takeDigits();
    }
    if (digits == 0) return "0";
    if (std::wcschr(L"eEdD", *text) == nullptr || *text == 0) return number;
    const std::size_t mantissa = number.size();
    number.push_back('e');
    ++text;
    if (*text == L'-' || *text == L'+') number.push_back(static_cast<char>(*text++));
    if (takeDigits() == 0) number.resize(mantissa);
    return number;
}

template <class CharT>
errno_t copyBounded(CharT* to, std::size_t capacity, const CharT* from, std::size_t length) {
    if (to == nullptr || capacity == 0) return EINVAL;
    if (from == nullptr || length >= capacity) {
        *to = 0;
        return from == nullptr ? EINVAL : ERANGE;
    }
    std::char_traits<CharT>::move(to, from, length);
    to[length] = 0;
    return 0;
}

template <class CharT>
std::size_t lengthOf(const CharT* text, std::size_t limit = _TRUNCATE) {
    std::size_t length = 0;
    while (text != nullptr && length < limit && text[length] != 0)
        ++length;
    return length;
}

template <class CharT>
errno_t copyPart(CharT* to, std::size_t capacity, const CharT* from, std::size_t count) {
    const std::size_t length = lengthOf(from, count);
    if (count != _TRUNCATE || to == nullptr || capacity == 0 || length < capacity) {
        return copyBounded(to, capacity, from, length);
    }
    copyBounded(to, capacity, from, capacity - 1);
    return STRUNCATE;
}

template <class CharT>
errno_t appendBounded(CharT* to, std::size_t capacity, const CharT* from) {
    if (to == nullptr || capacity == 0) return EINVAL;
    const std::size_t used = lengthOf(to, capacity);
    if (used == capacity) {
        *to = 0;
        return EINVAL;
    }
    const errno_t error = copyBounded(to + used, capacity - used, from, lengthOf(from));
    if (error != 0) *to = 0;
    return error;
}

template <class CharT>
int deliver(const std::basic_string<CharT>& text, CharT* to, std::size_t capacity) {
    return copyBounded(to, capacity, text.c_str(), text.size()) == 0 ? static_cast<int>(text.size())
                                                                     : -1;
}

/// Digits of a value, least first, in a base from 2 to 36; empty for another base.
std::string inBase(int value, int base) {
    if (base < 2 || base > 36) return {};
    std::string digits;
    const bool negative = value < 0 && base == 10;
    auto rest = static_cast<std::uint32_t>(value);
    if (negative) rest = 0 - rest;
    do {
        digits.push_back(
            "0123456789abcdefghijklmnopqrstuvwxyz"[rest % static_cast<unsigned>(base)]);
        rest /= static_cast<std::uint32_t>(base);
    } while (rest != 0);
    if (negative) digits.push_back('-');
    std::reverse(digits.begin(), digits.end());
    return digits;
}

} // namespace

int _wtoi(const wchar_t* text) { return parseInteger<int>(text); }
long _wtol(const wchar_t* text) { return parseInteger<int>(text); }
std::int64_t _wtoi64(const wchar_t* text) { return parseInteger<std::int64_t>(text); }

double _wtof(const wchar_t* text) {
    if (text == nullptr) return 0;
    while (headless::isSpace(*text))
        ++text;
    return std::strtod(numberAt(text).c_str(), nullptr);
}

wchar_t* _itow(int value, wchar_t* text, int base) {
    const std::string digits = inBase(value, base);
    std::copy(digits.begin(), digits.end(), text);
    text[digits.size()] = 0;
    return text;
}

errno_t _itow_s(int value, wchar_t* text, std::size_t capacity, int base) {
    const std::string digits = inBase(value, base);
    const std::wstring wide(digits.begin(), digits.end());
    const errno_t error = copyBounded(text, capacity, wide.c_str(), wide.size());
    return error == 0 && digits.empty() ? EINVAL : error;
}

char* _itoa(int value, char* text, int base) {
    return std::strcpy(text, inBase(value, base).c_str());
}

errno_t wcscpy_s(wchar_t* to, std::size_t capacity, const wchar_t* from) {
    return copyBounded(to, capacity, from, lengthOf(from));
}

errno_t wcscat_s(wchar_t* to, std::size_t capacity, const wchar_t* from) {
    return appendBounded(to, capacity, from);
}

errno_t wcsncpy_s(wchar_t* to, std::size_t capacity, const wchar_t* from, std::size_t count) {
    return copyPart(to, capacity, from, count);
}

errno_t strcpy_s(char* to, std::size_t capacity, const char* from) {
    return copyBounded(to, capacity, from, lengthOf(from));
}

errno_t strcat_s(char* to, std::size_t capacity, const char* from) {
    return appendBounded(to, capacity, from);
}

errno_t strncpy_s(char* to, std::size_t capacity, const char* from, std::size_t count) {
    return copyPart(to, capacity, from, count);
}

wchar_t* _wcsdup(const wchar_t* text) {
    if (text == nullptr) return nullptr;
    const std::size_t size = (lengthOf(text) + 1) * sizeof(wchar_t);
    void* copy = std::malloc(size);
    return copy == nullptr ? nullptr : static_cast<wchar_t*>(std::memcpy(copy, text, size));
}

char* _strdup(const char* text) { return text == nullptr ? nullptr : ::strdup(text); }

int vswprintf_s(wchar_t* to, std::size_t capacity, const wchar_t* format, std::va_list list) {
    return deliver(headless::formatText(format, list), to, capacity);
}

int swprintf_s(wchar_t* to, std::size_t capacity, const wchar_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int length = vswprintf_s(to, capacity, format, list);
    va_end(list);
    return length;
}

int _vsnwprintf(wchar_t* to, std::size_t count, const wchar_t* format, std::va_list list) {
    const std::wstring text = headless::formatText(format, list);
    if (to == nullptr) return count == 0 ? static_cast<int>(text.size()) : -1;
    std::copy_n(text.begin(), std::min(text.size(), count), to);
    if (text.size() < count) to[text.size()] = 0;
    return text.size() <= count ? static_cast<int>(text.size()) : -1;
}

int _snwprintf(wchar_t* to, std::size_t count, const wchar_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int length = _vsnwprintf(to, count, format, list);
    va_end(list);
    return length;
}

int _snwprintf_s(wchar_t* to, std::size_t capacity, std::size_t count, const wchar_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const std::wstring text = headless::formatText(format, list);
    va_end(list);
    if (to == nullptr || capacity == 0) return -1;
    const std::size_t kept = std::min({text.size(), count, capacity - 1});
    copyBounded(to, capacity, text.c_str(), kept);
    return kept == text.size() ? static_cast<int>(kept) : -1;
}

int _scwprintf(const wchar_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const std::wstring text = headless::formatText(format, list);
    va_end(list);
    return static_cast<int>(text.size());
}

int sprintf_s(char* to, std::size_t capacity, const char* format, ...) {
    std::va_list list;
    va_start(list, format);
    const std::string text = headless::formatText(format, list);
    va_end(list);
    return deliver(text, to, capacity);
}
