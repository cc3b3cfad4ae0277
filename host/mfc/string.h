// CString: MFC's text class.
//
// Both widths are instances of one template; CString is the wide one. An object is a single pointer
// to its characters. Wide and narrow text meet in the session's ANSI code page.
#pragma once

#include <cstdarg>
#include <initializer_list>
#include <string>
#include <utility>

#include "mfc/simple_string.h"
#include "win/bstr.h"
#include "win/format.h"

template <class CharT>
class CStringT : public CSimpleStringT<CharT> {
    using Base = CSimpleStringT<CharT>;

public:
    using Base::GetLength;
    using Base::GetString;
    using typename Base::PCXSTR;
    using typename Base::PCYSTR;
    using typename Base::PXSTR;
    using typename Base::XCHAR;
    using typename Base::YCHAR;

    CStringT() noexcept = default;
    CStringT(const CStringT&) = default;
    CStringT(CStringT&&) noexcept = default;
    CStringT(const Base& text) : Base(text) {}
    /// Text, or the string resource of a MAKEINTRESOURCE number.
    CStringT(PCXSTR text);
    CStringT(PCYSTR text);
    CStringT(PCXSTR text, int length) : Base(text, length) {}
    CStringT(PCYSTR text, int length);
    explicit CStringT(XCHAR character, int count = 1);
    explicit CStringT(YCHAR character, int count = 1);
    explicit CStringT(const unsigned char* text);

    CStringT& operator=(const CStringT&) = default;
    CStringT& operator=(CStringT&&) noexcept = default;
    CStringT& operator=(PCXSTR text);
    CStringT& operator=(PCYSTR text);
    CStringT& operator=(XCHAR character);
    CStringT& operator=(YCHAR character);

    CStringT& operator+=(const Base& text);
    CStringT& operator+=(PCXSTR text);
    CStringT& operator+=(PCYSTR text);
    CStringT& operator+=(XCHAR character);
    CStringT& operator+=(YCHAR character);

    // Order. Up to the first NUL, by code, by the small letters, by the order of the C run time.
    [[nodiscard]] int Compare(PCXSTR other) const;
    [[nodiscard]] int CompareNoCase(PCXSTR other) const;

    // Parts. Positions and counts are clamped to the text.
    [[nodiscard]] CStringT Mid(int first) const;
    [[nodiscard]] CStringT Mid(int first, int count) const;
    [[nodiscard]] CStringT Left(int count) const;
    [[nodiscard]] CStringT Right(int count) const;
    /// The leading characters that are in the set, or that are not.
    [[nodiscard]] CStringT SpanIncluding(PCXSTR set) const;
    [[nodiscard]] CStringT SpanExcluding(PCXSTR set) const;
    /// The next piece between separators, from `start` on, which moves behind it; empty with
    /// `start` -1 when there is none.
    [[nodiscard]] CStringT Tokenize(PCXSTR separators, int& start) const;

    // Searching. The position, or -1.
    [[nodiscard]] int Find(XCHAR character, int start = 0) const noexcept;
    [[nodiscard]] int Find(PCXSTR text, int start = 0) const noexcept;
    [[nodiscard]] int ReverseFind(XCHAR character) const noexcept;
    [[nodiscard]] int FindOneOf(PCXSTR set) const noexcept;

    // Changing. The count of replacements and removals, or the new length.
    int Replace(XCHAR old, XCHAR replacement);
    int Replace(PCXSTR old, PCXSTR replacement);
    int Remove(XCHAR character);
    int Insert(int index, XCHAR character);
    int Insert(int index, PCXSTR text);
    int Delete(int index, int count = 1);

    CStringT& Trim();
    CStringT& Trim(XCHAR character);
    CStringT& Trim(PCXSTR set);
    CStringT& TrimLeft();
    CStringT& TrimLeft(XCHAR character);
    CStringT& TrimLeft(PCXSTR set);
    CStringT& TrimRight();
    CStringT& TrimRight(XCHAR character);
    CStringT& TrimRight(PCXSTR set);

    CStringT& MakeUpper();
    CStringT& MakeLower();
    CStringT& MakeReverse();

    /// printf into this string. A CString may be passed for %s as it is.
    template <class... Values>
    void Format(PCXSTR format, const Values&... values) {
        *this = formatted(format, {headless::FormatValue(passed(values))...});
    }
    template <class... Values>
    void Format(UINT formatId, const Values&... values) {
        Format(fromResource(formatId).GetString(), values...);
    }
    template <class... Values>
    void AppendFormat(PCXSTR format, const Values&... values) {
        *this += formatted(format, {headless::FormatValue(passed(values))...});
    }
    void FormatV(PCXSTR format, std::va_list list);
    void AppendFormatV(PCXSTR format, std::va_list list);

    /// The text as a BSTR, which the caller frees.
    [[nodiscard]] BSTR AllocSysString() const;
    /// Replaces the text of a BSTR.
    BSTR SetSysString(BSTR* string) const;

    /// Takes a string resource of the current resource module, or of the first extension module
    /// after it that has one, or of the module given; FALSE and unchanged when there is none.
    BOOL LoadString(UINT id);
    BOOL LoadString(HINSTANCE module, UINT id);

    friend CStringT operator+(const CStringT& a, const CStringT& b) {
        return CStringT(a, b.GetString(), b.GetLength());
    }
    friend CStringT operator+(const CStringT& a, PCXSTR b) {
        return CStringT(a, b, Base::StringLength(b));
    }
    friend CStringT operator+(PCXSTR a, const CStringT& b) { return CStringT(a) + b; }
    friend CStringT operator+(const CStringT& a, PCYSTR b) { return a + CStringT(b); }
    friend CStringT operator+(PCYSTR a, const CStringT& b) { return CStringT(a) + b; }
    friend CStringT operator+(const CStringT& a, XCHAR b) { return CStringT(a, &b, 1); }
    friend CStringT operator+(XCHAR a, const CStringT& b) { return CStringT(a) + b; }
    friend CStringT operator+(const CStringT& a, YCHAR b) { return a + CStringT(b); }
    friend CStringT operator+(YCHAR a, const CStringT& b) { return CStringT(a) + b; }

    friend bool operator==(const CStringT& a, const CStringT& b) { return a.Compare(b) == 0; }
    friend bool operator==(const CStringT& a, PCXSTR b) { return a.Compare(b) == 0; }
    friend bool operator==(PCXSTR a, const CStringT& b) { return b.Compare(a) == 0; }
    friend bool operator==(const CStringT& a, PCYSTR b) { return a == CStringT(b); }
    friend bool operator==(PCYSTR a, const CStringT& b) { return b == CStringT(a); }
    friend bool operator==(const CStringT& a, XCHAR b) { return a.isOnly(b); }
    friend bool operator==(XCHAR a, const CStringT& b) { return b.isOnly(a); }
    friend bool operator!=(const CStringT& a, const CStringT& b) { return !(a == b); }
    friend bool operator!=(const CStringT& a, PCXSTR b) { return !(a == b); }
    friend bool operator!=(PCXSTR a, const CStringT& b) { return !(a == b); }
    friend bool operator!=(const CStringT& a, PCYSTR b) { return !(a == b); }
    friend bool operator!=(PCYSTR a, const CStringT& b) { return !(a == b); }
    friend bool operator!=(const CStringT& a, XCHAR b) { return !(a == b); }
    friend bool operator!=(XCHAR a, const CStringT& b) { return !(a == b); }
    friend bool operator<(const CStringT& a, const CStringT& b) { return a.Compare(b) < 0; }
    friend bool operator<(const CStringT& a, PCXSTR b) { return a.Compare(b) < 0; }
    friend bool operator<(PCXSTR a, const CStringT& b) { return b.Compare(a) > 0; }
    friend bool operator>(const CStringT& a, const CStringT& b) { return a.Compare(b) > 0; }
    friend bool operator>(const CStringT& a, PCXSTR b) { return a.Compare(b) > 0; }
    friend bool operator>(PCXSTR a, const CStringT& b) { return b.Compare(a) < 0; }
    friend bool operator<=(const CStringT& a, const CStringT& b) { return a.Compare(b) <= 0; }
    friend bool operator<=(const CStringT& a, PCXSTR b) { return a.Compare(b) <= 0; }
    friend bool operator<=(PCXSTR a, const CStringT& b) { return b.Compare(a) >= 0; }
    friend bool operator>=(const CStringT& a, const CStringT& b) { return a.Compare(b) >= 0; }
    friend bool operator>=(const CStringT& a, PCXSTR b) { return a.Compare(b) >= 0; }
    friend bool operator>=(PCXSTR a, const CStringT& b) { return b.Compare(a) <= 0; }

private:
    /// One text after another.
    CStringT(const CStringT& first, PCXSTR second, int length);

    static const XCHAR* passed(const CStringT& text) { return text.GetString(); }
    static const YCHAR* passed(const CStringT<YCHAR>& text) { return text.GetString(); }
    template <class Value>
    static const Value& passed(const Value& value) {
        return value;
    }
    static CStringT formatted(PCXSTR format, std::initializer_list<headless::FormatValue> values);
    static CStringT fromResource(UINT id);

    [[nodiscard]] bool isOnly(XCHAR character) const {
        return GetLength() == 1 && *GetString() == character;
    }
    template <class Predicate>
    CStringT& trimLeftWhile(Predicate isTrimmed);
    template <class Predicate>
    CStringT& trimRightWhile(Predicate isTrimmed);
};

extern template class CStringT<wchar_t>;
extern template class CStringT<char>;

using CStringW = CStringT<wchar_t>;
using CStringA = CStringT<char>;
using CString = CStringT<TCHAR>;

// One pointer, so that a record holding strings has its size and layout whatever they hold.
static_assert(sizeof(CString) == sizeof(void*));

template <class CharT>
struct std::hash<CStringT<CharT>> {
    std::size_t operator()(const CStringT<CharT>& text) const noexcept {
        return std::hash<std::basic_string_view<CharT>>{}(text.GetString());
    }
};
