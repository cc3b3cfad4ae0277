#include "text/string_list.h"

#include <algorithm>

#include "OrnCore/zel_str.h"

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
    CString whole = text;
    if (upper != 0) whole.MakeUpper();
    std::vector<CString> pieces = CZelStr::StrToAry(whole, separator);
    if (keepEmpty == 0) std::erase_if(pieces, [](const CString& piece) { return piece.IsEmpty(); });
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
