// Automation's strings: a byte count stands before the text, a NUL after it.
#pragma once

#include "win/types.h"

typedef WCHAR OLECHAR;
typedef OLECHAR* BSTR;
typedef const OLECHAR* LPCOLESTR;
typedef OLECHAR* LPOLESTR;

/// A copy of `text`; null for null.
BSTR SysAllocString(const OLECHAR* text);
/// `length` characters of `text`, or as many NULs when `text` is null.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// `byteCount` bytes; SysStringLen() counts whole characters of them.
BSTR SysAllocStringByteLen(LPCSTR bytes, UINT byteCount);
/// Replaces what `string` holds; `text` may be a part of the old text. FALSE without memory.
BOOL SysReAllocString(BSTR* string, const OLECHAR* text);
BOOL SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length);
/// Frees a string; null is fine.
void SysFreeString(BSTR string);
/// Characters without the NUL; 0 for null.
UINT SysStringLen(BSTR string);
UINT SysStringByteLen(BSTR string);

namespace headless {

/// Strings allocated and not freed in this process.
[[nodiscard]] std::size_t liveBstrCount();

} // namespace headless
