#include "mfc/simple_string.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <limits>
#include <string>

#include "mfc/exception.h"

namespace headless {

struct StringHeader {
    /// Owners, or -1 while one owner has locked the buffer.
    std::atomic<int> owners;
    int length;
    int capacity;
    int reserved; // Keeps the characters on a pointer's boundary.
};

} // namespace headless

namespace {

using headless::StringHeader;

/// The text all empty strings share; it is never counted, so it is no meeting point of threads.
template <class CharT>
struct EmptyText {
    StringHeader header{1, 0, 0, 0};
    CharT end = 0;
};

template <class CharT>
constinit EmptyText<CharT> emptyText;

template <class CharT>
bool isShared(const StringHeader& header) {
    return &header == &emptyText<CharT>.header || header.owners.load() > 1;
}

} // namespace

template <class CharT>
StringHeader& CSimpleStringT<CharT>::header() const noexcept {
    return *reinterpret_cast<StringHeader*>(reinterpret_cast<char*>(chars_) - sizeof(StringHeader));
}

template <class CharT>
CharT* CSimpleStringT<CharT>::allocate(int capacity) {
    const auto room = (static_cast<std::size_t>(capacity) + 1) * sizeof(CharT);
    void* block = std::malloc(sizeof(StringHeader) + room);
    if (block == nullptr) AfxThrowMemoryException();
    auto* header = new (block) StringHeader{1, 0, capacity, 0};
    auto* chars = reinterpret_cast<CharT*>(header + 1);
    *chars = 0;
    return chars;
}

template <class CharT>
CharT* CSimpleStringT<CharT>::share(const CSimpleStringT& other) {
    StringHeader& header = other.header();
    if (&header == &emptyText<CharT>.header) return other.chars_;
    if (header.owners.load() > 0) {
        header.owners.fetch_add(1);
        return other.chars_;
    }
    CharT* copy = allocate(header.length);
    CopyChars(copy, other.chars_, header.length + 1);
    auto* copied = reinterpret_cast<StringHeader*>(copy) - 1;
    copied->length = header.length;
    return copy;
}

template <class CharT>
void CSimpleStringT<CharT>::release() noexcept {
    StringHeader& old = header();
    chars_ = &emptyText<CharT>.end;
    if (&old == &emptyText<CharT>.header) return;
    if (old.owners.load() > 0 && old.owners.fetch_sub(1) > 1) return;
    old.~StringHeader();
    std::free(&old);
}

template <class CharT>
CSimpleStringT<CharT>::CSimpleStringT() noexcept : chars_(&emptyText<CharT>.end) {
    static_assert(offsetof(EmptyText<CharT>, end) == sizeof(StringHeader));
}

template <class CharT>
CSimpleStringT<CharT>::CSimpleStringT(const CSimpleStringT& other) : chars_(share(other)) {}

template <class CharT>
CSimpleStringT<CharT>::CSimpleStringT(CSimpleStringT&& other) noexcept : CSimpleStringT() {
    swap(*this, other);
}

template <class CharT>
CSimpleStringT<CharT>::CSimpleStringT(PCXSTR text) : CSimpleStringT() {
    SetString(text);
}

template <class CharT>
CSimpleStringT<CharT>::CSimpleStringT(PCXSTR text, int length) : CSimpleStringT() {
    SetString(text, length);
}

template <class CharT>
CSimpleStringT<CharT>::~CSimpleStringT() {
    release();
}

template <class CharT>
CSimpleStringT<CharT>& CSimpleStringT<CharT>::operator=(const CSimpleStringT& other) {
    if (chars_ == other.chars_) return *this;
    if (header().owners.load() < 0) {
        // A locked buffer stays where it is; its text changes.
        SetString(other.chars_, other.GetLength());
        return *this;
    }
    CharT* shared = share(other);
    release();
    chars_ = shared;
    return *this;
}

template <class CharT>
CSimpleStringT<CharT>& CSimpleStringT<CharT>::operator=(CSimpleStringT&& other) noexcept {
    swap(*this, other);
    return *this;
}

template <class CharT>
int CSimpleStringT<CharT>::GetLength() const noexcept {
    return header().length;
}

template <class CharT>
int CSimpleStringT<CharT>::GetAllocLength() const noexcept {
    return header().capacity;
}

template <class CharT>
CharT CSimpleStringT<CharT>::GetAt(int index) const {
    if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
    return chars_[index];
}

template <class CharT>
void CSimpleStringT<CharT>::SetAt(int index, XCHAR character) {
    if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
    GetBuffer()[index] = character;
}

template <class CharT>
void CSimpleStringT<CharT>::Empty() noexcept {
    if (header().owners.load() < 0) {
        setLength(0);
    } else {
        release();
    }
}

template <class CharT>
void CSimpleStringT<CharT>::SetString(PCXSTR text) {
    SetString(text, StringLength(text));
}

template <class CharT>
void CSimpleStringT<CharT>::SetString(PCXSTR text, int length) {
    if (length <= 0) return Empty();
    if (text == nullptr) AfxThrowInvalidArgException();
    // The text may be a part of this string.
    const bool isOwn = text >= chars_ && text <= chars_ + GetLength();
    const std::ptrdiff_t offset = text - chars_;
    CharT* buffer = GetBuffer(length);
    std::char_traits<CharT>::move(buffer, isOwn ? buffer + offset : text,
                                  static_cast<std::size_t>(length));
    setLength(length);
}

template <class CharT>
void CSimpleStringT<CharT>::Append(PCXSTR text) {
    Append(text, StringLength(text));
}

template <class CharT>
void CSimpleStringT<CharT>::Append(PCXSTR text, int length) {
    if (length <= 0 || text == nullptr) return;
    const int oldLength = GetLength();
    if (length > std::numeric_limits<int>::max() - oldLength) AfxThrowMemoryException();
    const bool isOwn = text >= chars_ && text <= chars_ + oldLength;
    const std::ptrdiff_t offset = text - chars_;
    CharT* buffer = GetBuffer(oldLength + length);
    CopyChars(buffer + oldLength, isOwn ? buffer + offset : text, length);
    setLength(oldLength + length);
}

template <class CharT>
void CSimpleStringT<CharT>::Append(const CSimpleStringT& text) {
    Append(text.chars_, text.GetLength());
}

template <class CharT>
void CSimpleStringT<CharT>::AppendChar(XCHAR character) {
    Append(&character, 1);
}

template <class CharT>
void CSimpleStringT<CharT>::Truncate(int length) {
    if (length < GetLength()) ReleaseBufferSetLength(length);
}

template <class CharT>
void CSimpleStringT<CharT>::Preallocate(int length) {
    GetBuffer(length);
}

template <class CharT>
void CSimpleStringT<CharT>::FreeExtra() {
    const StringHeader& current = header();
    if (current.length < current.capacity && current.owners.load() == 1) reallocate(current.length);
}

template <class CharT>
CharT* CSimpleStringT<CharT>::GetBuffer() {
    return GetBuffer(GetLength());
}

template <class CharT>
CharT* CSimpleStringT<CharT>::GetBuffer(int minLength) {
    const StringHeader& current = header();
    const int needed = std::max(minLength, current.length);
    if (current.capacity < needed) {
        // Growing by halves keeps a text put together piece by piece linear in its length.
        const int half = std::min(current.capacity / 2, std::numeric_limits<int>::max() - needed);
        reallocate(std::max(needed, current.capacity + half));
    } else if (isShared<CharT>(current)) {
        reallocate(needed);
    }
    return chars_;
}

template <class CharT>
CharT* CSimpleStringT<CharT>::GetBufferSetLength(int length) {
    CharT* buffer = GetBuffer(length);
    ReleaseBufferSetLength(length);
    return buffer;
}

template <class CharT>
void CSimpleStringT<CharT>::ReleaseBuffer(int newLength) {
    if (newLength < 0) {
        const CharT* end = std::find(chars_, chars_ + GetAllocLength(), CharT(0));
        newLength = static_cast<int>(end - chars_);
    }
    ReleaseBufferSetLength(newLength);
}

template <class CharT>
void CSimpleStringT<CharT>::ReleaseBufferSetLength(int newLength) {
    if (newLength < 0 || newLength > GetAllocLength()) AfxThrowInvalidArgException();
    GetBuffer();
    setLength(newLength);
}

template <class CharT>
CharT* CSimpleStringT<CharT>::LockBuffer() {
    GetBuffer();
    if (isShared<CharT>(header())) reallocate(0);
    header().owners.store(-1);
    return chars_;
}

template <class CharT>
void CSimpleStringT<CharT>::UnlockBuffer() {
    if (header().owners.load() < 0) header().owners.store(1);
}

/// A buffer of this string alone with the text so far.
template <class CharT>
void CSimpleStringT<CharT>::reallocate(int capacity) {
    const int length = GetLength();
    const bool isLocked = header().owners.load() < 0;
    CharT* fresh = allocate(std::max(capacity, length));
    CopyChars(fresh, chars_, length);
    release();
    chars_ = fresh;
    setLength(length);
    if (isLocked) header().owners.store(-1);
}

template <class CharT>
void CSimpleStringT<CharT>::setLength(int length) {
    if (&header() == &emptyText<CharT>.header) return; // It has one length only.
    header().length = length;
    chars_[length] = 0;
}

template <class CharT>
int CSimpleStringT<CharT>::StringLength(PCXSTR text) noexcept {
    return text == nullptr ? 0 : static_cast<int>(std::char_traits<CharT>::length(text));
}

template <class CharT>
void CSimpleStringT<CharT>::CopyChars(XCHAR* to, const XCHAR* from, int count) noexcept {
    std::char_traits<CharT>::copy(to, from, static_cast<std::size_t>(count));
}

template class CSimpleStringT<wchar_t>;
template class CSimpleStringT<char>;
