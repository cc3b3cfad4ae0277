// Texts cut into pieces.
#pragma once

#include <vector>

#include <afxwin.h>

class AFX_EXT_CLASS CZelStr {
public:
    /// The pieces between occurrences of the separator, one more than there are of it; a piece may
    /// be empty. An empty separator cuts nothing.
    static std::vector<CString> StrToAry(const CString& text, const CString& separator);
};
