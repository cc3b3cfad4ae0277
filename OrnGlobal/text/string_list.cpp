#include "text/string_list.h"

#include <algorithm>

namespace {

bool equal(const CString& a, const CString& b, int caseSensitive) {
    return caseSensitive != 0 ? a == b : a.CompareNoCase(b) == 0;
}

bool contains(const std::vector<CString>& list, const CString& text, int caseSensitive) {
    return std::ranges::any_of(
        list, [&](const CString& item) { return equal(text, item, caseSensitive); });
}

} // namespace

namespace kelmor {

std::vector<CString> splitLongString(const CString& text, const CString& separator, int upper,
                                     int keepEmpty) {
    CString rest = text;
    if (upper != 0) rest.MakeUpper();

    std::vector<CString> pieces;
    const auto keep = [&](const CString& piece) {
        if (keepEmpty != 0 || !piece.IsEmpty()) pieces.push_back(piece);
    };
    int begin = 0;
    if (!separator.IsEmpty()) {
        for (int end = rest.Find(separator); end >= 0; end = rest.Find(separator, begin)) {
            keep(rest.Mid(begin, end - begin));
            begin = end + separator.GetLength();
        }
    }
    keep(rest.Mid(begin));
    return pieces;
}

CString SplicingString(const std::vector<CString>& items, CString separator, int skipEmpty) {
    CString joined;
    for (const CString& item : items) {
        if (skipEmpty != 0 && item.IsEmpty()) continue;
        if (!joined.IsEmpty()) joined += separator;
        joined += item;
    }
    return joined;
}

void DelStrByVecStr(std::vector<CString>& list, std::vector<CString> toRemove, int /*unused*/) {
    std::erase_if(list, [&](const CString& item) { return contains(toRemove, item, 1); });
}

int IsStrInVecString(const CString& text, const std::vector<CString>& list, int caseSensitive) {
    return !text.IsEmpty() && contains(list, text, caseSensitive) ? 1 : 0;
}

} // namespace kelmor
