// Win32's calls for modules and their resources.
#pragma once

#include "win/types.h"

// The loader calls it by this name, so it is visible even in a module that hides what it does not
// export.
extern "C" __attribute__((visibility("default"))) BOOL WINAPI DllMain(HINSTANCE instance,
                                                                      DWORD reason,
                                                                      LPVOID reserved);

/// Loads a module and calls its entry point. Null and the last error on failure:
/// ERROR_MOD_NOT_FOUND or ERROR_DLL_INIT_FAILED.
HMODULE LoadLibraryW(LPCWSTR name);
BOOL FreeLibrary(HMODULE module);
/// A module of the process by name; the program for null.
HMODULE GetModuleHandleW(LPCWSTR name);
/// Writes the module's path, cut to the buffer with a NUL at its end, and returns the characters
/// written; a cut path sets ERROR_INSUFFICIENT_BUFFER and returns `capacity`.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD capacity);
/// An export of the very module.
FARPROC GetProcAddress(HMODULE module, LPCSTR name);
/// Writes a string resource, cut to the buffer, and returns its length; 0 when there is none. With
/// `capacity` 0 `text` takes a pointer to the resource itself.
int LoadStringW(HINSTANCE module, UINT id, LPWSTR text, int capacity);

inline HMODULE LoadLibrary(LPCWSTR name) { return LoadLibraryW(name); }
inline HMODULE GetModuleHandle(LPCWSTR name) { return GetModuleHandleW(name); }
inline DWORD GetModuleFileName(HMODULE module, LPWSTR path, DWORD capacity) {
    return GetModuleFileNameW(module, path, capacity);
}
inline int LoadString(HINSTANCE module, UINT id, LPWSTR text, int capacity) {
    return LoadStringW(module, id, text, capacity);
}

inline LPCWSTR MAKEINTRESOURCEW(WORD id) {
    return reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(id));
}
inline LPCWSTR MAKEINTRESOURCE(WORD id) { return MAKEINTRESOURCEW(id); }
inline bool IS_INTRESOURCE(const void* name) {
    return (reinterpret_cast<ULONG_PTR>(name) >> 16) == 0;
}
