#include "text/glob.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "text/conversions.h"

namespace {

using Byte = unsigned char;
using Fold = std::array<Byte, 256>;

Fold makeFold(bool nocase) {
    Fold fold{};
    for (int c = 0; c < 256; ++c)
        fold[static_cast<std::size_t>(c)] = static_cast<Byte>(nocase ? std::tolower(c) : c);
    return fold;
}

const Byte* asBytes(char const* s) { return reinterpret_cast<const Byte*>(s); }

// What one element of a pattern says about one byte of the text.
struct Element {
    bool matches;
    const Byte* next; // behind the element in the pattern
};

// `p` stands behind the opening bracket, `c` is folded.
Element matchSet(const Byte* p, Byte c, const Fold& fold) {
    const bool negated = *p == '^';
    if (negated) ++p;
    bool found = false;
    for (; *p != 0 && *p != ']'; ++p) {
        if (*p == '\\' && p[1] != 0) {
            ++p;
            found |= fold[*p] == c;
        } else if (p[1] == '-' && p[2] != 0) {
            const auto [low, high] = std::minmax(fold[*p], fold[p[2]]);
            found |= low <= c && c <= high;
            p += 2;
        } else {
            found |= fold[*p] == c;
        }
    }
    return {found != negated, *p == 0 ? p : p + 1};
}

Element matchElement(const Byte* p, Byte c, const Fold& fold) {
    if (*p == '?') return {true, p + 1};
    if (*p == '[') return matchSet(p + 1, fold[c], fold);
    if (*p == '\\' && p[1] != 0) ++p;
    return {fold[*p] == fold[c], p + 1};
}

const Byte* skipStars(const Byte* p) {
    while (*p == '*')
        ++p;
    return p;
}

// Every element but the star takes exactly one byte. So when an element fails, only the place that
// the last star reaches needs to move on: whatever an earlier star could take instead, the last one
// can take as well. That keeps patterns such as *a*a*a*b from exploding.
bool matches(const Byte* p, const Byte* t, const Fold& fold) {
    const Byte* afterStar = nullptr;
    const Byte* starReaches = nullptr;
    while (*t != 0) {
        if (*p == '*') {
            afterStar = p = skipStars(p);
            starReaches = t;
            if (*p == 0) return true;
            continue;
        }
        if (*p != 0) {
            const auto [fits, next] = matchElement(p, *t, fold);
            if (fits) {
                p = next;
                ++t;
                continue;
            }
        }
        if (afterStar == nullptr) return false;
        p = afterStar;
        t = ++starReaches;
    }
    return *skipStars(p) == 0;
}

} // namespace

namespace String {

int stringmatch(char const* pattern, char const* text, int nocase) {
    static const Fold exact = makeFold(false);
    static const Fold folded = makeFold(true);
    if (pattern == nullptr || text == nullptr) return 0;
    return matches(asBytes(pattern), asBytes(text), nocase != 0 ? folded : exact) ? 1 : 0;
}

bool StringMatch(wchar_t const* pattern, wchar_t const* text, bool nocase) {
    return stringmatch(ToString(pattern, false).c_str(), ToString(text, false).c_str(),
                       nocase ? 1 : 0) != 0;
}

} // namespace String
