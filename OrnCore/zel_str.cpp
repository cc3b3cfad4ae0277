#include "OrnCore/zel_str.h"

std::vector<CString> CZelStr::StrToAry(const CString& text, const CString& separator) {
    std::vector<CString> pieces;
    int begin = 0;
    if (!separator.IsEmpty()) {
        for (int end = text.Find(separator); end >= 0; end = text.Find(separator, begin)) {
            pieces.push_back(text.Mid(begin, end - begin));
            begin = end + separator.GetLength();
        }
    }
    pieces.push_back(text.Mid(begin));
    return pieces;
}
