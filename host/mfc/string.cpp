#include "mfc/string.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

#include "mfc/exception.h"
#include "mfc/resource.h"
#include "win/casing.h"
#include "win/code_page.h"
#include "win/text_space.h"

namespace {

template <class CharT>
std::basic_string_view<CharT> viewOf(const CharT* text) {
    return text == nullptr ? std::basic_string_view<CharT>() : std::basic_string_view<CharT>(text);
}

template <class CharT>
std::basic_string_view<CharT> viewOf(const CSimpleStringT<CharT>& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

std::string converted(std::wstring_view text) { return headless::encode(text, 0); }
std::wstring converted(std::string_view text) { return headless::decode(text, 0); }

template <class CharT>
int position(std::basic_string_view<CharT> text, std::size_t found) {
    return found == text.npos ? -1 : static_cast<int>(found);
}

bool isSpace(wchar_t character) { return headless::isSpace(character); }
bool isSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

template <class CharT>
bool isIn(const CharT* set, CharT character) {
    return viewOf(set).find(character) != std::basic_string_view<CharT>::npos;
}

int compareNoCase(const wchar_t* a, const wchar_t* b) { return _wcsicmp(a, b); }
int compareNoCase(const char* a, const char* b) { return _stricmp(a, b); }

void setText(CSimpleStringT<wchar_t>& to, const std::wstring& text) {
    to.SetString(text.data(), static_cast<int>(text.size()));
}
void setText(CSimpleStringT<char>& to, const std::string& text) {
    to.SetString(text.data(), static_cast<int>(text.size()));
}

/// A resource number stands in the place of a text by MAKEINTRESOURCE.
bool isResourceNumber(const void* text) {
    const auto value = reinterpret_cast<std::uintptr_t>(text);
    return value != 0 && value <= 0xFFFF;
}

} // namespace

// ---- making and assigning

template <class CharT>
CStringT<CharT>::CStringT(PCXSTR text) {
    if (isResourceNumber(text)) {
        LoadString(static_cast<UINT>(reinterpret_cast<std::uintptr_t>(text)));
    } else {
        this->SetString(text);
    }
}

template <class CharT>
CStringT<CharT>::CStringT(PCYSTR text) {
    *this = text;
}

template <class CharT>
CStringT<CharT>::CStringT(PCYSTR text, int length) {
    if (length <= 0) return;
    if (text == nullptr) AfxThrowInvalidArgException();
    setText(*this, converted({text, static_cast<std::size_t>(length)}));
}

template <class CharT>
CStringT<CharT>::CStringT(XCHAR character, int count) {
    if (count <= 0) return;
    std::fill_n(this->GetBuffer(count), count, character);
    this->ReleaseBufferSetLength(count);
}

template <class CharT>
CStringT<CharT>::CStringT(YCHAR character, int count) {
    if (count <= 0) return;
    setText(*this, converted(std::basic_string<YCHAR>(static_cast<std::size_t>(count), character)));
}

template <class CharT>
CStringT<CharT>::CStringT(const unsigned char* text)
    : CStringT(reinterpret_cast<const char*>(text)) {}

template <class CharT>
CStringT<CharT>::CStringT(const CStringT& first, PCXSTR second, int length) {
    this->GetBuffer(first.GetLength() + length);
    this->Append(first);
    this->Append(second, length);
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator=(PCXSTR text) {
    this->SetString(text);
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator=(PCYSTR text) {
    setText(*this, converted(viewOf(text)));
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator=(XCHAR character) {
    this->SetString(&character, 1);
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator=(YCHAR character) {
    return *this = CStringT(character);
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator+=(const Base& text) {
    this->Append(text);
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator+=(PCXSTR text) {
    this->Append(text);
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator+=(PCYSTR text) {
    return *this += CStringT(text);
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator+=(XCHAR character) {
    this->AppendChar(character);
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::operator+=(YCHAR character) {
    return *this += CStringT(character);
}

// ---- order

template <class CharT>
int CStringT<CharT>::Compare(PCXSTR other) const {
    return viewOf(GetString()).compare(viewOf(other));
}

template <class CharT>
int CStringT<CharT>::CompareNoCase(PCXSTR other) const {
    const XCHAR empty = 0;
    return compareNoCase(GetString(), other == nullptr ? &empty : other);
}

// ---- parts

template <class CharT>
CStringT<CharT> CStringT<CharT>::Mid(int first) const {
    return Mid(first, GetLength());
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::Mid(int first, int count) const {
    const int length = GetLength();
    first = std::clamp(first, 0, length);
    count = std::clamp(count, 0, length - first);
    return count == length ? *this : CStringT(GetString() + first, count);
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::Left(int count) const {
    return Mid(0, count);
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::Right(int count) const {
    count = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - count, count);
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::SpanIncluding(PCXSTR set) const {
    const int end =
        position(viewOf<CharT>(*this), viewOf<CharT>(*this).find_first_not_of(viewOf(set)));
    return end < 0 ? *this : Left(end);
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::SpanExcluding(PCXSTR set) const {
    const int end = FindOneOf(set);
    return end < 0 ? *this : Left(end);
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::Tokenize(PCXSTR separators, int& start) const {
    if (start < 0) AfxThrowInvalidArgException();
    const auto text = viewOf<CharT>(*this);
    const auto set = viewOf(separators);
    const auto from = static_cast<std::size_t>(start);
    if (set.empty() && from < text.size()) return Mid(start);
    const std::size_t first = set.empty() ? text.npos : text.find_first_not_of(set, from);
    if (first == text.npos) {
        start = -1;
        return {};
    }
    const std::size_t last = std::min(text.find_first_of(set, first), text.size());
    start = static_cast<int>(last) + 1;
    return Mid(static_cast<int>(first), static_cast<int>(last - first));
}

// ---- searching

template <class CharT>
int CStringT<CharT>::Find(XCHAR character, int start) const noexcept {
    if (start < 0 || start >= GetLength()) return -1;
    const auto text = viewOf<CharT>(*this);
    return position(text, text.find(character, static_cast<std::size_t>(start)));
}

template <class CharT>
int CStringT<CharT>::Find(PCXSTR text, int start) const noexcept {
    if (text == nullptr || start < 0 || start > GetLength()) return -1;
    const auto own = viewOf<CharT>(*this);
    return position(own, own.find(text, static_cast<std::size_t>(start)));
}

template <class CharT>
int CStringT<CharT>::ReverseFind(XCHAR character) const noexcept {
    const auto text = viewOf<CharT>(*this);
    return position(text, text.rfind(character));
}

template <class CharT>
int CStringT<CharT>::FindOneOf(PCXSTR set) const noexcept {
    const auto text = viewOf<CharT>(*this);
    return position(text, text.find_first_of(viewOf(set)));
}

// ---- changing

template <class CharT>
int CStringT<CharT>::Replace(XCHAR old, XCHAR replacement) {
    const auto text = viewOf<CharT>(*this);
    const auto count = static_cast<int>(std::count(text.begin(), text.end(), old));
    if (old == replacement || count == 0) return 0;
    CharT* buffer = this->GetBuffer();
    std::replace(buffer, buffer + GetLength(), old, replacement);
    return count;
}

template <class CharT>
int CStringT<CharT>::Replace(PCXSTR old, PCXSTR replacement) {
    const auto sought = viewOf(old);
    const auto put = viewOf(replacement);
    const auto text = viewOf<CharT>(*this);
    if (sought.empty() || text.find(sought) == text.npos) return 0;

    std::basic_string<CharT> result;
    result.reserve(text.size());
    int count = 0;
    std::size_t from = 0;
    for (std::size_t hit = 0; (hit = text.find(sought, from)) != text.npos; ++count) {
        result.append(text, from, hit - from).append(put);
        from = hit + sought.size();
    }
    result.append(text, from);
    setText(*this, result);
    return count;
}

template <class CharT>
int CStringT<CharT>::Remove(XCHAR character) {
    const auto text = viewOf<CharT>(*this);
    if (text.find(character) == text.npos) return 0;
    CharT* buffer = this->GetBuffer();
    const int length = GetLength();
    CharT* end = std::remove(buffer, buffer + length, character);
    this->ReleaseBufferSetLength(static_cast<int>(end - buffer));
    return length - GetLength();
}

template <class CharT>
int CStringT<CharT>::Insert(int index, XCHAR character) {
    const XCHAR text[] = {character, 0};
    return Insert(index, text);
}

template <class CharT>
int CStringT<CharT>::Insert(int index, PCXSTR text) {
    const auto inserted = viewOf(text);
    if (inserted.empty()) return GetLength();
    std::basic_string<CharT> result(viewOf<CharT>(*this));
    const int at = std::clamp(index, 0, GetLength());
    result.insert(static_cast<std::size_t>(at), inserted);
    setText(*this, result);
    return GetLength();
}

template <class CharT>
int CStringT<CharT>::Delete(int index, int count) {
    const int length = GetLength();
    index = std::max(index, 0);
    if (index >= length || count <= 0) return length;
    count = std::min(count, length - index);
    CharT* buffer = this->GetBuffer();
    std::copy(buffer + index + count, buffer + length, buffer + index);
    this->ReleaseBufferSetLength(length - count);
    return GetLength();
}

template <class CharT>
template <class Predicate>
CStringT<CharT>& CStringT<CharT>::trimLeftWhile(Predicate isTrimmed) {
    const auto text = viewOf<CharT>(*this);
    const auto first = std::find_if_not(text.begin(), text.end(), isTrimmed);
    Delete(0, static_cast<int>(first - text.begin()));
    return *this;
}

template <class CharT>
template <class Predicate>
CStringT<CharT>& CStringT<CharT>::trimRightWhile(Predicate isTrimmed) {
    const auto text = viewOf<CharT>(*this);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isTrimmed);
    this->Truncate(static_cast<int>(text.rend() - last));
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::Trim() {
    return TrimRight().TrimLeft();
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::Trim(XCHAR character) {
    return TrimRight(character).TrimLeft(character);
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::Trim(PCXSTR set) {
    return TrimRight(set).TrimLeft(set);
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimLeft() {
    return trimLeftWhile([](XCHAR c) { return isSpace(c); });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimLeft(XCHAR character) {
    return trimLeftWhile([character](XCHAR c) { return c == character; });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimLeft(PCXSTR set) {
    return trimLeftWhile([set](XCHAR c) { return isIn(set, c); });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimRight() {
    return trimRightWhile([](XCHAR c) { return isSpace(c); });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimRight(XCHAR character) {
    return trimRightWhile([character](XCHAR c) { return c == character; });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::TrimRight(PCXSTR set) {
    return trimRightWhile([set](XCHAR c) { return isIn(set, c); });
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::MakeUpper() {
    CharT* buffer = this->GetBuffer();
    std::transform(buffer, buffer + GetLength(), buffer,
                   [](XCHAR c) { return static_cast<XCHAR>(headless::upper(c)); });
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::MakeLower() {
    CharT* buffer = this->GetBuffer();
    std::transform(buffer, buffer + GetLength(), buffer,
                   [](XCHAR c) { return static_cast<XCHAR>(headless::lower(c)); });
    return *this;
}

template <class CharT>
CStringT<CharT>& CStringT<CharT>::MakeReverse() {
    CharT* buffer = this->GetBuffer();
    std::reverse(buffer, buffer + GetLength());
    return *this;
}

// ---- formatting

template <class CharT>
CStringT<CharT> CStringT<CharT>::formatted(PCXSTR format,
                                           std::initializer_list<headless::FormatValue> values) {
    if (format == nullptr) AfxThrowInvalidArgException();
    headless::ValueArguments arguments({values.begin(), values.size()});
    CStringT result;
    setText(result, headless::formatText(format, arguments));
    return result;
}

template <class CharT>
CStringT<CharT> CStringT<CharT>::fromResource(UINT id) {
    CStringT text;
    if (text.LoadString(id) == FALSE) AfxThrowInvalidArgException();
    return text;
}

template <class CharT>
void CStringT<CharT>::FormatV(PCXSTR format, std::va_list list) {
    if (format == nullptr) AfxThrowInvalidArgException();
    setText(*this, headless::formatText(format, list));
}

template <class CharT>
void CStringT<CharT>::AppendFormatV(PCXSTR format, std::va_list list) {
    CStringT text;
    text.FormatV(format, list);
    this->Append(text);
}

// ---- the system's strings

template <class CharT>
BSTR CStringT<CharT>::AllocSysString() const {
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        return SysAllocStringLen(GetString(), static_cast<UINT>(GetLength()));
    } else {
        const std::wstring text = converted(viewOf<CharT>(*this));
        return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
}

template <class CharT>
BSTR CStringT<CharT>::SetSysString(BSTR* string) const {
    const BSTR replacement = AllocSysString();
    SysFreeString(*string);
    *string = replacement;
    return replacement;
}

template <class CharT>
BOOL CStringT<CharT>::LoadString(UINT id) {
    const std::optional<std::wstring> text = headless::findResourceString(id);
    if (text) *this = text->c_str();
    return text ? TRUE : FALSE;
}

template <class CharT>
BOOL CStringT<CharT>::LoadString(HINSTANCE module, UINT id) {
    const std::optional<std::wstring> text = headless::resourceString(module, id);
    if (text) *this = text->c_str();
    return text ? TRUE : FALSE;
}

template class CStringT<wchar_t>;
template class CStringT<char>;
