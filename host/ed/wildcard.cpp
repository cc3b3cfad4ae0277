#include "ed/wildcard.h"

#include <clocale>
#include <cwctype>

#include "db/resbuf.h"

namespace headless {
namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Letters of all scripts, ideographs included, whatever the process's locale is.
bool isLetter(wchar_t c) {
    static const locale_t allScripts = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const auto letter = static_cast<std::wint_t>(c);
    return (allScripts != nullptr ? iswalpha_l(letter, allScripts) : std::iswalpha(letter)) != 0;
}

/// The pattern's end of the element that starts at `at`: one character, an escape or a bracket.
std::size_t elementEnd(std::wstring_view pattern, std::size_t at) {
    if (pattern[at] == L'`' && at + 1 < pattern.size()) return at + 2;
    if (pattern[at] != L'[') return at + 1;
    for (std::size_t i = at + 1; i < pattern.size(); ++i) {
        if (pattern[i] == L'`') {
            ++i;
        } else if (pattern[i] == L']') {
            return i + 1;
        }
    }
    return at + 1; // A bracket that is never closed stands for itself.
}

/// @param set  what stands between the brackets.
bool isInSet(std::wstring_view set, wchar_t c) {
    const bool negated = !set.empty() && set.front() == L'~';
    if (negated) set.remove_prefix(1);
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (set[i] == L'`' && i + 1 < set.size()) ++i;
        const wchar_t low = set[i];
        // A dash at either end is no range.
        if (i + 2 < set.size() && set[i + 1] == L'-') {
            i += 2;
            if (c >= low && c <= set[i]) return !negated;
        } else if (c == low) {
            return !negated;
        }
    }
    return negated;
}

bool matchesElement(std::wstring_view element, wchar_t c) {
    switch (element.front()) {
    case L'#':
        return isDigit(c);
    case L'@':
        return isLetter(c);
    case L'.':
        return !isDigit(c) && !isLetter(c);
    case L'?':
        return true;
    case L'`':
        return c == element.back();
    case L'[':
        if (element.size() > 1) return isInSet(element.substr(1, element.size() - 2), c);
        break;
    default:
        break;
    }
    return c == element.front();
}

/// One alternative without its leading `~`.
bool matchesPlain(std::wstring_view text, std::wstring_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t afterStar = std::wstring_view::npos;
    std::size_t starText = 0;
    while (t < text.size() || p < pattern.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            afterStar = ++p;
            starText = t;
            continue;
        }
        if (p < pattern.size() && t < text.size()) {
            const std::size_t end = elementEnd(pattern, p);
            if (matchesElement(pattern.substr(p, end - p), text[t])) {
                p = end;
                ++t;
                continue;
            }
        }
        // Only the last star needs another try: what it could not reach, no earlier one can.
        if (afterStar == std::wstring_view::npos || starText >= text.size()) return false;
        p = afterStar;
        t = ++starText;
    }
    return true;
}

bool matchesAlternative(std::wstring_view text, std::wstring_view pattern) {
    const bool negated = !pattern.empty() && pattern.front() == L'~';
    return matchesPlain(text, negated ? pattern.substr(1) : pattern) != negated;
}

} // namespace

bool matchesWildcard(std::wstring_view text, std::wstring_view pattern) {
    std::size_t start = 0;
    std::size_t i = 0;
    while (i < pattern.size()) {
        if (pattern[i] != L',') {
            i = elementEnd(pattern, i);
            continue;
        }
        if (matchesAlternative(text, pattern.substr(start, i - start))) return true;
        start = ++i;
    }
    return matchesAlternative(text, pattern.substr(start));
}

} // namespace headless

int acutWcMatch(const ACHAR* string, const ACHAR* pattern) {
    if (string == nullptr || pattern == nullptr) return RTERROR;
    return headless::matchesWildcard(string, pattern) ? RTNORM : RTERROR;
}
