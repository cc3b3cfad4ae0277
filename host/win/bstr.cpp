#include "win/bstr.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace {

std::atomic<std::size_t> liveStrings = 0;

// The count sits right before the text, which begins on a 16-byte boundary as malloc gives it.
constexpr std::size_t kHeaderSize = 16;

char* blockOf(BSTR string) { return reinterpret_cast<char*>(string) - kHeaderSize; }
char* countOf(BSTR string) { return reinterpret_cast<char*>(string) - sizeof(DWORD); }

BSTR allocate(const void* bytes, std::size_t byteCount) {
    auto* block = static_cast<char*>(std::malloc(kHeaderSize + byteCount + 2 * sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    const BSTR string = reinterpret_cast<BSTR>(block + kHeaderSize);
    const auto count = static_cast<DWORD>(byteCount);
    std::memcpy(countOf(string), &count, sizeof count);
    auto* text = block + kHeaderSize;
    std::memset(text, 0, byteCount + 2 * sizeof(OLECHAR));
    if (bytes != nullptr) std::memcpy(text, bytes, byteCount);
    ++liveStrings;
    return string;
}

} // namespace

BSTR SysAllocString(const OLECHAR* text) {
    return text == nullptr ? nullptr : allocate(text, std::wcslen(text) * sizeof(OLECHAR));
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    return allocate(text, length * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(LPCSTR bytes, UINT byteCount) { return allocate(bytes, byteCount); }

BOOL SysReAllocString(BSTR* string, const OLECHAR* text) {
    const std::size_t length = text == nullptr ? 0 : std::wcslen(text);
    return SysReAllocStringLen(string, text, static_cast<UINT>(length));
}

BOOL SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length) {
    const BSTR replacement = SysAllocStringLen(text, length);
    if (replacement == nullptr) return FALSE;
    SysFreeString(*string);
    *string = replacement;
    return TRUE;
}

void SysFreeString(BSTR string) {
    if (string == nullptr) return;
    std::free(blockOf(string));
    --liveStrings;
}

UINT SysStringByteLen(BSTR string) {
    if (string == nullptr) return 0;
    DWORD count = 0;
    std::memcpy(&count, countOf(string), sizeof count);
    return count;
}

UINT SysStringLen(BSTR string) {
    return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

namespace headless {

std::size_t liveBstrCount() { return liveStrings; }

} // namespace headless
