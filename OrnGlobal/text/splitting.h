// Texts cut at separators; pieces that are empty are dropped.
#pragma once

#include <string>
#include <vector>

#include <afxcoll.h>
#include <afxwin.h>

namespace String {

/// The non-empty runs between characters of `delimiters`, in order. Without delimiters the whole
/// text, if there is one, is the only piece.
AFX_EXT_API std::vector<std::string> Split(std::string const& s, std::string const& delimiters);

/// Replaces `out` with the non-empty pieces between separators; an empty text has none.
AFX_EXT_API void SplitString(CString const& s, wchar_t separator, CStringArray& out);

} // namespace String
