// Takes out of drawing texts what is there for the drawing only: tabs, highlight marks, formatting.
#pragma once

#include <afxwin.h>

namespace String {

/// Turns every run of tabs and spaces into one space and trims white space at both ends.
AFX_EXT_API void ReplaceTab(CString& s);

/// Removes the highlight marks "^C" of table texts pair by pair, keeping what they enclose; a mark
/// without a partner stays. Line ends (CR LF) become spaces, and both ends are trimmed.
AFX_EXT_API void RemoveTCHTextCtrlMark(CString& s);

/// Reduces the contents of an MText to plain text: takes out the codes \f \F \p \C \H \W \T with
/// their values, unescaped braces, and line ends; \P becomes a space. Other codes stay. A code
/// without a closing ";" stays with everything after it of the same kind.
AFX_EXT_API void ParseMText(CString& s);

/// Replaces the characters from `start` up to but not including `end`. A negative start counts as
/// 0, an end beyond the text as its end. False, and the text untouched, when start is after end.
AFX_EXT_API bool ReplaceString(CString& s, int start, int end, CString replacement);

} // namespace String
