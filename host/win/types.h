// Win32's basic types and macros.
//
// LONG, DWORD and INT are 32 bits wide as on Windows, handles and LPARAM pointer-sized. wchar_t is
// whatever the compiler says: 32 bits here, so a TCHAR holds a whole code point.
#pragma once

#include <cstddef>
#include <cstdint>

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#define WINAPI
#define APIENTRY
#define CALLBACK
#define WINAPIV
#define STDMETHODCALLTYPE
#define VOID void
#define CONST const

#define __TEXT(quote) L##quote
#define TEXT(quote) __TEXT(quote)

typedef int BOOL;
typedef int INT;
typedef unsigned int UINT;
typedef std::int32_t LONG;
typedef std::uint32_t ULONG;
typedef std::uint32_t DWORD;
typedef short SHORT;
typedef unsigned short USHORT;
typedef std::uint16_t WORD;
typedef unsigned char BYTE;
typedef unsigned char UCHAR;
typedef unsigned char BOOLEAN;
typedef char CHAR;
typedef wchar_t WCHAR;
typedef wchar_t TCHAR;
typedef float FLOAT;
typedef double DOUBLE;
typedef long long LONGLONG;
typedef unsigned long long ULONGLONG;
typedef std::int64_t INT64;
typedef std::uint64_t UINT64;
typedef std::int32_t HRESULT;

typedef std::intptr_t INT_PTR;
typedef std::uintptr_t UINT_PTR;
typedef std::intptr_t LONG_PTR;
typedef std::uintptr_t ULONG_PTR;
typedef std::uintptr_t DWORD_PTR;
typedef std::size_t SIZE_T;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;

typedef void* PVOID;
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef BOOL* LPBOOL;
typedef BYTE* LPBYTE;
typedef DWORD* LPDWORD;
typedef LONG* LPLONG;
typedef CHAR* LPSTR;
typedef CHAR* PSTR;
typedef const CHAR* LPCSTR;
typedef const CHAR* LPCCH;
typedef const CHAR* PCSTR;
typedef WCHAR* LPWSTR;
typedef WCHAR* PWSTR;
typedef const WCHAR* LPCWSTR;
typedef const WCHAR* LPCWCH;
typedef const WCHAR* PCWSTR;
typedef TCHAR* LPTSTR;
typedef TCHAR* PTSTR;
typedef const TCHAR* LPCTSTR;
typedef const TCHAR* PCTSTR;

typedef void* HANDLE;
struct HINSTANCE__ {};
typedef HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
struct HWND__;
typedef HWND__* HWND;
typedef int (*FARPROC)();

typedef DWORD COLORREF;

struct POINT {
    LONG x;
    LONG y;
};
typedef POINT* LPPOINT;

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
typedef RECT* LPRECT;
typedef const RECT* LPCRECT;

struct tagMSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
typedef tagMSG MSG;
typedef MSG* LPMSG;

constexpr WORD LOWORD(DWORD_PTR value) { return static_cast<WORD>(value & 0xFFFFU); }
constexpr WORD HIWORD(DWORD_PTR value) { return static_cast<WORD>((value >> 16) & 0xFFFFU); }
constexpr BYTE LOBYTE(DWORD_PTR value) { return static_cast<BYTE>(value & 0xFFU); }
constexpr BYTE HIBYTE(DWORD_PTR value) { return static_cast<BYTE>((value >> 8) & 0xFFU); }
constexpr WORD MAKEWORD(DWORD_PTR low, DWORD_PTR high) {
    return static_cast<WORD>((low & 0xFFU) | ((high & 0xFFU) << 8));
}
constexpr LONG MAKELONG(DWORD_PTR low, DWORD_PTR high) {
    return static_cast<LONG>(static_cast<DWORD>((low & 0xFFFFU) | ((high & 0xFFFFU) << 16)));
}
constexpr LPARAM MAKELPARAM(DWORD_PTR low, DWORD_PTR high) { return MAKELONG(low, high); }
constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr BYTE GetRValue(COLORREF color) { return LOBYTE(color); }
constexpr BYTE GetGValue(COLORREF color) { return LOBYTE(color >> 8); }
constexpr BYTE GetBValue(COLORREF color) { return LOBYTE(color >> 16); }

constexpr BOOL SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr BOOL FAILED(HRESULT result) { return result < 0; }

constexpr int MAX_PATH = 260;
