// The buffer below CString: counted, shared until written to, a single pointer wide.
#pragma once

#include <type_traits>

#include "win/types.h"

namespace headless {

/// What stands before a string's characters.
struct StringHeader;

} // namespace headless

/// Owner of a NUL-terminated text. Copies share one buffer and part when one of them is written to;
/// the count is atomic, so copies may live in different threads.
///
/// @tparam CharT  wchar_t or char.
template <class CharT>
class CSimpleStringT {
public:
    using XCHAR = CharT;
    using PXSTR = CharT*;
    using PCXSTR = const CharT*;
    using YCHAR = std::conditional_t<std::is_same_v<CharT, wchar_t>, char, wchar_t>;
    using PCYSTR = const YCHAR*;

    CSimpleStringT() noexcept;
    CSimpleStringT(const CSimpleStringT& other);
    CSimpleStringT(CSimpleStringT&& other) noexcept;
    CSimpleStringT(PCXSTR text);
    CSimpleStringT(PCXSTR text, int length);
    ~CSimpleStringT();
    CSimpleStringT& operator=(const CSimpleStringT& other);
    CSimpleStringT& operator=(CSimpleStringT&& other) noexcept;

    [[nodiscard]] int GetLength() const noexcept;
    [[nodiscard]] bool IsEmpty() const noexcept { return GetLength() == 0; }
    /// Characters the buffer holds without growing.
    [[nodiscard]] int GetAllocLength() const noexcept;
    [[nodiscard]] PCXSTR GetString() const noexcept { return chars_; }
    operator PCXSTR() const noexcept { return chars_; }

    /// The character at `index`; the NUL at the end may be read. Beyond: CInvalidArgException.
    [[nodiscard]] XCHAR GetAt(int index) const;
    [[nodiscard]] XCHAR operator[](int index) const { return GetAt(index); }
    /// Replaces a character of the text; elsewhere CInvalidArgException.
    void SetAt(int index, XCHAR character);

    void Empty() noexcept;
    void SetString(PCXSTR text);
    void SetString(PCXSTR text, int length);
    void Append(PCXSTR text);
    void Append(PCXSTR text, int length);
    void Append(const CSimpleStringT& text);
    void AppendChar(XCHAR character);
    void Truncate(int length);
    void Preallocate(int length);
    /// Gives back what the buffer holds beyond the text.
    void FreeExtra();

    /// The buffer for writing, with room for `minLength` characters and the NUL. The caller ends
    /// with ReleaseBuffer() and uses nothing else of the string before.
    PXSTR GetBuffer();
    PXSTR GetBuffer(int minLength);
    PXSTR GetBufferSetLength(int length);
    /// Ends writing: the text ends at `newLength`, or at its first NUL for -1.
    void ReleaseBuffer(int newLength = -1);
    void ReleaseBufferSetLength(int newLength);
    /// Keeps the buffer from being shared until UnlockBuffer().
    PXSTR LockBuffer();
    void UnlockBuffer();

    static int StringLength(PCXSTR text) noexcept;
    static void CopyChars(XCHAR* to, const XCHAR* from, int count) noexcept;

    friend void swap(CSimpleStringT& a, CSimpleStringT& b) noexcept {
        CharT* const chars = a.chars_;
        a.chars_ = b.chars_;
        b.chars_ = chars;
    }

private:
    [[nodiscard]] headless::StringHeader& header() const noexcept;
    static CharT* allocate(int capacity);
    static CharT* share(const CSimpleStringT& other);
    void release() noexcept;
    void reallocate(int capacity);
    void setLength(int length);

    CharT* chars_;
};

extern template class CSimpleStringT<wchar_t>;
extern template class CSimpleStringT<char>;

using CSimpleString = CSimpleStringT<TCHAR>;
