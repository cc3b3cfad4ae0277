#include "text/cleanup.h"

#include <algorithm>

namespace {

// Removes what a code such as \H and its value up to ";" say. The same piece often stands many
// times in a text, so all its occurrences go at once.
void removeCode(CString& s, const wchar_t* code) {
    for (int begin = s.Find(code); begin >= 0; begin = s.Find(code)) {
        const int end = s.Find(L';', begin);
        if (end < 0) return;
        s.Replace(s.Mid(begin, end - begin + 1), L"");
    }
}

void removeUnescaped(CString& s, wchar_t brace) {
    CString kept;
    kept.Preallocate(s.GetLength());
    // "Escaped" looks at what is left of the text, as a brace that went takes no part any more.
    for (int i = 0; i < s.GetLength(); ++i) {
        const bool escaped = !kept.IsEmpty() && kept[kept.GetLength() - 1] == L'\\';
        if (s[i] != brace || escaped) kept += s[i];
    }
    s = kept;
}

// The text without the first pair of marks; false when no pair is left.
bool removeMarkPair(CString& s, const CString& mark) {
    const int first = s.Find(mark);
    if (first < 0) return false;
    const int second = s.Find(mark, first + 1);
    if (second < 0) return false;
    const int inside = first + mark.GetLength();
    s = s.Left(first) + s.Mid(inside, second - inside) + s.Mid(second + mark.GetLength());
    return true;
}

} // namespace

namespace String {

void ReplaceTab(CString& s) {
    s.Replace(L"\t", L"  ");
    while (s.Replace(L"  ", L" ") > 0) {
    }
    s.Trim();
}

void RemoveTCHTextCtrlMark(CString& s) {
    while (removeMarkPair(s, L"^C")) {
    }
    while (s.Replace(L"\r\n", L" ") > 0) {
    }
    s.Trim();
}

void ParseMText(CString& s) {
    for (const wchar_t* code : {L"\\f", L"\\F", L"\\p", L"\\C", L"\\H", L"\\W", L"\\T"})
        removeCode(s, code);
    removeUnescaped(s, L'{');
    removeUnescaped(s, L'}');
    s.Replace(L"\\{", L"{");
    s.Replace(L"\\}", L"}");
    s.Replace(L"\\P", L" ");
    s.Replace(L"\r\n", L" ");
    s.Remove(L'\r');
    s.Remove(L'\n');
}

bool ReplaceString(CString& s, int start, int end, CString replacement) {
    start = std::max(start, 0);
    if (start > end) return false;
    s = s.Left(start) + replacement + s.Right(s.GetLength() - end);
    return true;
}

} // namespace String
