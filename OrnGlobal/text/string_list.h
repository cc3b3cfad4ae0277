// Lists of names as one text with separators and as a vector: the form in which layer lists travel.
#pragma once

#include <vector>

#include <afxwin.h>

namespace kelmor {

/// Cuts the text, upper-cased first when `upper` is not 0, at every occurrence of the separator.
/// Empty pieces, also the one after the last separator, are kept only when `keepEmpty` is not 0.
/// An empty separator cuts nothing.
AFX_EXT_API std::vector<CString> splitLongString(const CString& text, const CString& separator,
                                                 int upper, int keepEmpty);

/// Joins the items, leaving out empty ones when `skipEmpty` is not 0. The separator stands between
/// items only, so it is not written while the joined text is still empty.
AFX_EXT_API CString SplicingString(const std::vector<CString>& items, CString separator,
                                   int skipEmpty);

/// Removes from the list every item that equals one of `toRemove`, letter for letter. The last
/// argument is there for callers only.
AFX_EXT_API void DelStrByVecStr(std::vector<CString>& list, std::vector<CString> toRemove, int);

/// 1 when the text equals an item, 0 otherwise and for an empty text. When the last argument is 0
/// the case of letters makes no difference.
AFX_EXT_API int IsStrInVecString(const CString& text, const std::vector<CString>& list,
                                 int caseSensitive);

} // namespace kelmor
