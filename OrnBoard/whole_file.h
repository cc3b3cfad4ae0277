// Files written whole or not at all. Inside the module only.
#pragma once

#include <functional>
#include <string>

#include <afxwin.h>

namespace board {

/// Makes the file of the path that it is given; what is wrong, in words, or empty.
using FileMaker = std::function<CString(const CString& path)>;

/// Makes a file, or puts a new one in the place of the old.
///
/// @param make  is given a path beside the file's with the same ending.
/// @return      what is wrong, in words with the path; empty when it was done. When it was not, the
///              file is as it was, and nothing lies beside it.
[[nodiscard]] CString writeWhole(const CString& path, const FileMaker& make);
/// As above for a file of these bytes.
[[nodiscard]] CString writeWhole(const CString& path, const std::string& bytes);

} // namespace board
