#include <string>

#include <gtest/gtest.h>

#include "db/resbuf.h"
#include "ed/wildcard.h"

namespace {

TEST(Wildcard, FollowsTheDocumentedSigns) {
    const struct {
        const wchar_t *text, *pattern;
        bool matches;
    } cases[] = {
        {L"", L"", true},
        {L"", L"*", true},
        {L"a", L"", false},
        {L"LWPOLYLINE", L"LWPOLYLINE", true},
        {L"LWPOLYLINE", L"LWPOLY", false},
        {L"LWPOLYLINE", L"*LINE", true},
        {L"LINE", L"*POLY*", false},
        {L"wall", L"WALL", false},
        {L"A1", L"@#", true},
        {L"1A", L"@#", false},
        {L"墙1", L"@#", true},
        {L"a-b", L"a.b", true},
        {L"a1b", L"a.b", false},
        {L"ab", L"a.b", false},
        {L"axb", L"a?b", true},
        {L"B5", L"[ABC]5", true},
        {L"D5", L"[ABC]5", false},
        {L"D5", L"[~ABC]5", true},
        {L"B5", L"[~ABC]5", false},
        {L"m", L"[a-z]", true},
        {L"M", L"[a-z]", false},
        {L"-", L"[a-]", true},
        {L"]", L"[`]]", true},
        {L"a", L"[a", false},
        {L"[a", L"[a", true},
        {L"wall", L"~wall", false},
        {L"slab", L"~wall", true},
        {L"slab", L"wall,slab", true},
        {L"wall", L"~wall,w*", true},
        {L"a,b", L"a`,b", true},
        {L"a,b", L"[,]x,a?b", true},
        {L"a*b", L"a`*b", true},
        {L"axb", L"a`*b", false},
        {L"`", L"`", true},
        {L"abcbd", L"a*b?", true},
        {L"abcbde", L"a*b?", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(acutWcMatch(c.text, c.pattern), c.matches ? RTNORM : RTERROR)
            << testing::PrintToString(c.text) << " ~ " << testing::PrintToString(c.pattern);
    EXPECT_EQ(acutWcMatch(nullptr, L"*"), RTERROR);
    EXPECT_EQ(acutWcMatch(L"a", nullptr), RTERROR);
}

TEST(Wildcard, ManyStarsDoNotMultiplyTheWork) {
    std::wstring pattern;
    for (int i = 0; i < 200; ++i)
        pattern += L"*a";
    EXPECT_FALSE(headless::matchesWildcard(std::wstring(20000, L'a'), pattern + L"*b"));
}

} // namespace
