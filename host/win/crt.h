// Names that Microsoft's C run time adds to the C library: bounded copies, numbers, printf.
//
// The bounded copies leave an empty text and return an error when the text does not fit, instead of
// ending the program as Microsoft's do by default.
#pragma once

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>

using errno_t = int;

constexpr std::size_t _TRUNCATE = static_cast<std::size_t>(-1);
constexpr errno_t STRUNCATE = 80;

template <class T, std::size_t N>
constexpr std::size_t _countof(const T (&/*array*/)[N]) noexcept {
    return N;
}

// Numbers. Blanks of Unicode and digits of any script count in the wide integer forms; what is out
// of range becomes the nearest limit, with errno ERANGE.
int _wtoi(const wchar_t* text);
long _wtol(const wchar_t* text);
std::int64_t _wtoi64(const wchar_t* text);
double _wtof(const wchar_t* text);

/// Writes a value in base 2 to 36; a base other than 10 shows the bits.
wchar_t* _itow(int value, wchar_t* text, int base);
errno_t _itow_s(int value, wchar_t* text, std::size_t capacity, int base);
char* _itoa(int value, char* text, int base);

// Copies. 0, EINVAL for missing arguments, ERANGE for a text that does not fit; `count` may be
// _TRUNCATE, and STRUNCATE then says that the text was cut.
errno_t wcscpy_s(wchar_t* to, std::size_t capacity, const wchar_t* from);
errno_t wcscat_s(wchar_t* to, std::size_t capacity, const wchar_t* from);
errno_t wcsncpy_s(wchar_t* to, std::size_t capacity, const wchar_t* from, std::size_t count);
errno_t strcpy_s(char* to, std::size_t capacity, const char* from);
errno_t strcat_s(char* to, std::size_t capacity, const char* from);
errno_t strncpy_s(char* to, std::size_t capacity, const char* from, std::size_t count);

/// A copy to be freed with free().
wchar_t* _wcsdup(const wchar_t* text);
char* _strdup(const char* text);

// printf by the platform's rules. The _s forms return the length or -1 with an empty text when it
// does not fit; the _sn forms fill the buffer, without a NUL when there is no room for one, and
// return -1 then.
int swprintf_s(wchar_t* to, std::size_t capacity, const wchar_t* format, ...);
int vswprintf_s(wchar_t* to, std::size_t capacity, const wchar_t* format, std::va_list list);
int _snwprintf(wchar_t* to, std::size_t count, const wchar_t* format, ...);
int _vsnwprintf(wchar_t* to, std::size_t count, const wchar_t* format, std::va_list list);
/// As much as fits `capacity` and `count`, always with a NUL; -1 when the text was cut.
int _snwprintf_s(wchar_t* to, std::size_t capacity, std::size_t count, const wchar_t* format, ...);
/// The length the text would have.
int _scwprintf(const wchar_t* format, ...);
int sprintf_s(char* to, std::size_t capacity, const char* format, ...);

template <std::size_t N>
errno_t wcscpy_s(wchar_t (&to)[N], const wchar_t* from) {
    return wcscpy_s(to, N, from);
}
template <std::size_t N>
errno_t wcscat_s(wchar_t (&to)[N], const wchar_t* from) {
    return wcscat_s(to, N, from);
}
template <std::size_t N>
errno_t strcpy_s(char (&to)[N], const char* from) {
    return strcpy_s(to, N, from);
}
template <std::size_t N>
int swprintf_s(wchar_t (&to)[N], const wchar_t* format, ...) {
    std::va_list list;
    va_start(list, format);
    const int length = vswprintf_s(to, N, format, list);
    va_end(list);
    return length;
}
