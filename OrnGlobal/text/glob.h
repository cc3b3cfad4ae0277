// Wildcard matching of file and layer names.
#pragma once

#include <afxwin.h>

namespace String {

/// Matches bytes against a pattern: `*` any run, `?` one byte, `[a-c]` one of a set, `[^...]` one
/// of none, `\` takes the next byte as it is. A set left open ends with the pattern. With `nocase`
/// both sides go through tolower. Takes time linear in text times pattern, whatever the pattern.
/// @return 1 for a match of the whole text, 0 otherwise.
AFX_EXT_API int stringmatch(char const* pattern, char const* text, int nocase);

/// As above for wide texts, both narrowed to the OEM code page first.
AFX_EXT_API bool StringMatch(wchar_t const* pattern, wchar_t const* text, bool nocase);

} // namespace String
