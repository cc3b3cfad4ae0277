// Win32's settings (INI) files; profile_text.h tells what a file says, profile_store.h when it is
// read and written.
//
// A file is UTF-16LE with a byte-order mark or text in the ANSI code page, and stays what it is. A
// name without a folder lies in the Windows folder, a null name means win.ini there. Every call
// sets the last error: ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND for a missing
// folder, ERROR_ACCESS_DENIED (a read-only file, a folder), ERROR_DISK_FULL,
// ERROR_NOT_ENOUGH_MEMORY.
//
// Texts that do not fit are cut: a value to `capacity` - 1 characters and a NUL, a list (texts with
// a NUL after each, and one more) to `capacity` - 2 and two NULs. The result is the number of
// characters without the last NUL; with `capacity` 0 nothing is touched and the result is 0.
#pragma once

#include "win/types.h"

/// Reads a value without one pair of equal quotes around it. The default stands in, treated alike
/// and without the spaces at its end, when the key, its section or the file is missing. A null key
/// reads the list of the section's keys, a null section the list of sections.
DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR text,
                               DWORD capacity, LPCWSTR file);

/// Reads a number: a sign, then digits or 0x and hexadecimal digits, up to anything else, as 32
/// bits. The default stands in for a missing or empty value; 0 for a text that is no number.
UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR file);

/// Reads the list of a section's lines, `key=value`, without its comments.
DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR lines, DWORD capacity, LPCWSTR file);

/// Reads the list of section names, as often as they stand in the file.
DWORD GetPrivateProfileSectionNamesW(LPWSTR names, DWORD capacity, LPCWSTR file);

/// Sets a value; a null value removes the key, a null key the section. A missing file is made.
/// Three nulls write out what is still on its way to the disk, with the result FALSE.
BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file);

/// Replaces the lines of a section by a list; a null list removes the section.
BOOL WritePrivateProfileSectionW(LPCWSTR section, LPCWSTR lines, LPCWSTR file);

inline DWORD GetPrivateProfileString(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR text,
                                     DWORD capacity, LPCWSTR file) {
    return GetPrivateProfileStringW(section, key, defaultText, text, capacity, file);
}
inline UINT GetPrivateProfileInt(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR file) {
    return GetPrivateProfileIntW(section, key, defaultValue, file);
}
inline DWORD GetPrivateProfileSection(LPCWSTR section, LPWSTR lines, DWORD capacity, LPCWSTR file) {
    return GetPrivateProfileSectionW(section, lines, capacity, file);
}
inline DWORD GetPrivateProfileSectionNames(LPWSTR names, DWORD capacity, LPCWSTR file) {
    return GetPrivateProfileSectionNamesW(names, capacity, file);
}
inline BOOL WritePrivateProfileString(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) {
    return WritePrivateProfileStringW(section, key, value, file);
}
inline BOOL WritePrivateProfileSection(LPCWSTR section, LPCWSTR lines, LPCWSTR file) {
    return WritePrivateProfileSectionW(section, lines, file);
}
