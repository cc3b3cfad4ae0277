#include "text/conversions.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iomanip>
#include <sstream>

#include <oleauto.h>
#include <windows.h>

namespace {

std::wstring widen(std::string const& bytes, UINT codePage) {
    if (bytes.empty()) return {};
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    if (length > 0) MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), length);
    return wide;
}

std::string narrow(std::wstring const& wide, UINT codePage) {
    if (wide.empty()) return {};
    const int size = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    if (length > 0)
        WideCharToMultiByte(codePage, 0, wide.data(), size, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

template <class Number>
std::string zeroFilled(Number value, int width) {
    std::ostringstream out;
    if (width > 0) out << std::setfill('0') << std::setw(width);
    out << value;
    return out.str();
}

std::string byteWise(std::string s, int (*change)(int)) {
    std::ranges::transform(s, s.begin(),
                           [change](unsigned char c) { return static_cast<char>(change(c)); });
    return s;
}

} // namespace

namespace String {

CString ToCString(std::string const& s, bool fromUtf8) {
    return widen(fromUtf8 ? FromUTF8(s) : s, CP_ACP).c_str();
}

// The OEM bytes go into ToUTF8, which takes them for ANSI: what is stored in this form was written
// so, and reading it back needs the same pair of pages.
std::string ToString(wchar_t const* s, bool toUtf8) {
    std::string bytes = narrow(ToWString(s), CP_OEMCP);
    return toUtf8 ? ToUTF8(bytes) : bytes;
}

std::string ToString(int value, int width) { return zeroFilled(value, width); }
std::string ToString(long value, int width) { return zeroFilled(value, width); }

std::string ToString(double value, int precision) {
    std::ostringstream out;
    if (precision >= 1) out << std::fixed << std::setprecision(precision);
    out << value;
    return out.str();
}

std::wstring ToWString(wchar_t const* s) { return s == nullptr ? std::wstring() : s; }

std::string ToUTF8(std::string const& s) { return narrow(widen(s, CP_ACP), CP_UTF8); }
std::string FromUTF8(std::string const& s) { return narrow(widen(s, CP_UTF8), CP_ACP); }

std::string ToUpper(std::string const& s) { return byteWise(s, std::toupper); }
std::string ToLower(std::string const& s) { return byteWise(s, std::tolower); }

int ToInt(std::string const& s) { return std::atoi(s.c_str()); }
double ToDouble(std::string const& s) { return std::atof(s.c_str()); }

bool LessNoCase(wchar_t const* a, wchar_t const* b) { return CString(a).CompareNoCase(b) < 0; }

CString LoadStringW(unsigned int id) {
    CString text;
    return text.LoadString(id) ? text : CString();
}

} // namespace String

CString BStrToCString(wchar_t* const bstr) {
    return String::ToCString(narrow(String::ToWString(bstr), CP_ACP), false);
}

wchar_t* CStringToBStr(CString s) { return s.AllocSysString(); }

CString IntToCString(int n) {
    CString text;
    text.Format(L"%d", n);
    return text;
}

CString MyFormat(int a, int b, CString sep) { return IntToCString(a) + sep + IntToCString(b); }
