// Names as keys of dictionaries in drawings, which do not allow every character.
#pragma once

#include <afxwin.h>

namespace Common {

/// Puts a word such as "orn(斜杠)orn" in the place of each character that a key must not hold:
/// < > / \ " : ; ? | , = and `. The others stay.
AFX_EXT_API void FixRecordKey(CString& key);
/// The same as a copy, for constants and temporary texts. It does not take the text by value, since
/// a call with a variable could then mean either.
AFX_EXT_API CString FixRecordKey(const CString& key);

/// Puts the characters back in the place of their words.
AFX_EXT_API void RecoverRecordKey(CString& key);

} // namespace Common
