// Win32's conversions between wide text and code pages.
#pragma once

#include "win/types.h"

constexpr UINT CP_ACP = 0;
constexpr UINT CP_OEMCP = 1;
constexpr UINT CP_UTF8 = 65001;

constexpr DWORD MB_PRECOMPOSED = 0x1;
constexpr DWORD MB_ERR_INVALID_CHARS = 0x8;
constexpr DWORD WC_NO_BEST_FIT_CHARS = 0x400;
constexpr DWORD WC_COMPOSITECHECK = 0x200;
constexpr DWORD WC_DEFAULTCHAR = 0x40;
constexpr DWORD WC_ERR_INVALID_CHARS = 0x80;

/// Widens `byteCount` bytes (-1: up to and including the NUL) and returns the characters written,
/// or with `capacity` 0 those needed. Returns 0 and sets the last error on failure:
/// ERROR_INVALID_PARAMETER for missing buffers, length 0 or an unknown page, ERROR_INVALID_FLAGS,
/// ERROR_INSUFFICIENT_BUFFER (what fits is stored), ERROR_NO_UNICODE_TRANSLATION for bad bytes
/// under MB_ERR_INVALID_CHARS (the lenient result is stored).
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCCH bytes, int byteCount, LPWSTR text,
                        int capacity);

/// Narrows `length` characters (-1: up to and including the NUL), with the same results and errors.
/// `defaultChar` is one character of the page for what the page lacks; `usedDefault` tells whether
/// it was needed. A UTF-8 conversion has no use for either.
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes,
                        int capacity, LPCCH defaultChar, LPBOOL usedDefault);

UINT GetACP();
UINT GetOEMCP();
BOOL IsValidCodePage(UINT codePage);
BOOL IsDBCSLeadByte(BYTE byte);
BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte);
