// Whole text files, in the host's text mode: characters in the system's code page, lines ending in
// CR LF on disk.
#pragma once

#include <afxwin.h>

namespace String {

/// Writes the text over whatever the file held. False when the file cannot be created or written.
AFX_EXT_API bool WriteStringToFile(CString path, CString text);

/// The file's lines joined without anything between them, as its readers expect one-line contents;
/// empty when the file cannot be read.
AFX_EXT_API CString ReadFile(CString path);

} // namespace String
