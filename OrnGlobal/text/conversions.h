// Text between the host's wide strings, narrow strings in the system code pages, and UTF-8.
//
// The ANSI code page (CP_ACP) and the OEM code page (CP_OEMCP) are the system's. Which of them a
// function speaks is part of its promise: ToCString widens ANSI bytes while ToString narrows to OEM
// bytes, and callers have stored both. A conversion that the system refuses gives an empty text.
#pragma once

#include <string>

#include <afxwin.h>

namespace String {

/// Widens ANSI bytes; with `fromUtf8` the bytes are UTF-8 and pass through the ANSI code page,
/// which loses what it cannot hold.
AFX_EXT_API CString ToCString(std::string const& s, bool fromUtf8);

/// Narrows to OEM bytes; with `toUtf8` those bytes, read as ANSI, are then turned into UTF-8.
/// A null pointer gives an empty text.
AFX_EXT_API std::string ToString(wchar_t const* s, bool toUtf8);

/// Decimal text, filled with zeros on the left up to `width` characters; the fill stands before a
/// minus sign. No fill for a width of 0 or less.
AFX_EXT_API std::string ToString(int value, int width);
AFX_EXT_API std::string ToString(long value, int width);

/// Exactly `precision` decimals when that is positive, else six significant digits.
AFX_EXT_API std::string ToString(double value, int precision);

/// A copy; a null pointer gives an empty text.
AFX_EXT_API std::wstring ToWString(wchar_t const* s);

/// ANSI bytes to UTF-8 and back, by way of UTF-16.
AFX_EXT_API std::string ToUTF8(std::string const& s);
AFX_EXT_API std::string FromUTF8(std::string const& s);

/// Byte by byte with the C run time, so that in its default locale only ASCII letters change.
AFX_EXT_API std::string ToUpper(std::string const& s);
AFX_EXT_API std::string ToLower(std::string const& s);

/// The number that the text begins with, 0 when there is none.
AFX_EXT_API int ToInt(std::string const& s);
AFX_EXT_API double ToDouble(std::string const& s);

/// Orders names for sorted containers, without regard to case.
AFX_EXT_API bool LessNoCase(wchar_t const* a, wchar_t const* b);

/// The text with that number in the current resource module; empty when there is none.
AFX_EXT_API CString LoadStringW(unsigned int id);

} // namespace String

/// The text of a BSTR as far as the ANSI code page can hold it; empty for a null BSTR.
AFX_EXT_API CString BStrToCString(wchar_t* const bstr);
/// A BSTR that the caller frees with SysFreeString.
AFX_EXT_API wchar_t* CStringToBStr(CString s);
AFX_EXT_API CString IntToCString(int n);
/// Two numbers with a separator between them: (3, 5, "x") gives "3x5".
AFX_EXT_API CString MyFormat(int a, int b, CString sep);
