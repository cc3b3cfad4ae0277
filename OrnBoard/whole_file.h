// Files written whole or not at all. Inside the module only.
#pragma once

#include <string>

#include <afxwin.h>

namespace board {

/// Why no file can be written there, in words with the path; empty when one can.
[[nodiscard]] CString whyNotWritten(const CString& path);

/// Makes a file of these bytes, or puts it in the place of the old one.
///
/// @return  what is wrong, in words with the path; empty when it was done. When it was not, the
///          file is as it was, and nothing lies beside it.
[[nodiscard]] CString writeWhole(const CString& path, const std::string& bytes);

} // namespace board
