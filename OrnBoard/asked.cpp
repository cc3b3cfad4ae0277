#include "asked.h"

#include <aced.h>
#include <adslib.h>
#include <geassign.h>

namespace board {

std::optional<CString> askedText(const wchar_t* prompt) {
    constexpr int kWithBlanks = 1;
    ACHAR text[512];
    if (acedGetString(kWithBlanks, prompt, text) != RTNORM) return std::nullopt;
    return CString(text);
}

std::optional<CString> askedKeyword(const wchar_t* prompt, const wchar_t* keywords) {
    acedInitGet(0, keywords);
    ACHAR keyword[64];
    const int answer = acedGetKword(prompt, keyword);
    if (answer == RTNONE) return CString(keywords).SpanExcluding(L" ");
    if (answer != RTNORM) return std::nullopt;
    return CString(keyword);
}

std::optional<AcGePoint3d> askedPoint(const wchar_t* prompt) {
    ads_point point;
    if (acedGetPoint(nullptr, prompt, point) != RTNORM) return std::nullopt;
    return asPnt3d(point);
}

} // namespace board
