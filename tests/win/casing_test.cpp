#include "win/casing.h"

#include <gtest/gtest.h>

#include <string>
#include <unordered_set>

#include "fnv.h"

namespace {

TEST(Casing, WholeMapsAreWindows) {
    // Checksums over Windows' own maps, 1,163 pairs each way.
    Fnv upper;
    Fnv lower;
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        upper.add16(static_cast<unsigned>(headless::upper(static_cast<wchar_t>(unit))));
        lower.add16(static_cast<unsigned>(headless::lower(static_cast<wchar_t>(unit))));
    }
    EXPECT_EQ(upper.value(), 0xBE6A33E075111552U);
    EXPECT_EQ(lower.value(), 0x55695B5AAF52C90EU);
    EXPECT_EQ(headless::upper(L'\U00010428'), L'\U00010428') << "beyond the basic plane no case";
    EXPECT_EQ(headless::lower(wchar_t(-1)), wchar_t(-1));
}

TEST(EqualNoCase, SymbolNames) {
    const struct {
        const wchar_t *left, *right;
        bool equal;
    } cases[] = {
        {L"wall", L"WALL", true}, {L"Дом", L"дОМ", true}, {L"ÄÖÜ", L"äöü", true},
        {L"ａｂ", L"ＡＢ", true}, {L"ⅰⓐ", L"ⅠⒶ", true},   {L"ß", L"SS", false},
        {L"ß", L"ẞ", false},      {L"ı", L"I", false},    {L"İ", L"i", false},
        {L"ς", L"σ", false},      {L"µ", L"Μ", false},    {L"ａ", L"a", false},
        {L"墙", L"墙", true},     {L"a", L"ab", false},   {L"", L"", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(headless::equalNoCase(c.left, c.right), c.equal) << c.left << " " << c.right;
        if (c.equal) {
            EXPECT_EQ(headless::hashNoCase(c.left), headless::hashNoCase(c.right)) << c.left;
        }
    }
    std::unordered_set<std::wstring, headless::NameHash, headless::NameEqual> names{L"Wall"};
    EXPECT_TRUE(names.contains(std::wstring_view(L"WALL")));
}

TEST(Compare, OrderWithoutCase) {
    const struct {
        const wchar_t *left, *right;
        int runTime; ///< By small letters.
        int ordinal; ///< By capitals.
    } cases[] = {
        {L"abc", L"ABC", 0, 0}, {L"é", L"É", 0, 0},  {L"_", L"a", -1, 1}, {L"中", L"文", -1, -1},
        {L"", L"a", -1, -1},    {L"ab", L"A", 1, 1}, {L"ı", L"I", 1, 1},
    };
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.left << " " << c.right);
        EXPECT_EQ(sign(_wcsicmp(c.left, c.right)), c.runTime);
        EXPECT_EQ(sign(_wcsicmp(c.right, c.left)), -c.runTime);
        EXPECT_EQ(CompareStringOrdinal(c.left, -1, c.right, -1, TRUE) - CSTR_EQUAL, c.ordinal);
    }
    EXPECT_EQ(CompareStringOrdinal(L"a", -1, L"A", -1, FALSE), CSTR_GREATER_THAN);
    EXPECT_EQ(CompareStringOrdinal(L"ab", 1, L"Ac", 1, TRUE), CSTR_EQUAL);
    EXPECT_EQ(CompareStringOrdinal(nullptr, -1, L"a", -1, TRUE), 0);
    EXPECT_EQ(_wcsnicmp(L"abX", L"ABy", 2), 0);
    EXPECT_LT(_wcsnicmp(L"a", L"ABy", 2), 0);
    EXPECT_EQ(_stricmp("abC\xD6", "ABc\xD6"), 0);
    EXPECT_NE(_stricmp("\xE9", "\xC9"), 0) << "bytes have no case beyond ASCII";
}

TEST(Casing, TextsInPlace) {
    wchar_t text[] = L"Straße Ⅳ ключ";
    EXPECT_STREQ(CharUpperW(text), L"STRAßE Ⅳ КЛЮЧ");
    EXPECT_STREQ(_wcslwr(text), L"straße ⅳ ключ");
    EXPECT_EQ(CharUpperBuffW(text, 2), 2U);
    EXPECT_STREQ(text, L"STraße ⅳ ключ");
    EXPECT_EQ(headless::upperCased(L"a\0б"), headless::upperCased(L"A\0Б"));
}

} // namespace
