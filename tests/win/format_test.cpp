#include "win/format.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "win/crt.h"

namespace {

using headless::FormatValue;

std::wstring format(const wchar_t* pattern, std::initializer_list<FormatValue> values) {
    headless::ValueArguments arguments({values.begin(), values.size()});
    return headless::formatText(pattern, arguments);
}

TEST(Format, Integers) {
    const struct {
        const wchar_t* pattern;
        long long value;
        const wchar_t* text;
    } cases[] = {
        {L"%d", -7, L"-7"},
        {L"%i", 2147483648, L"-2147483648"},
        {L"%u", -7, L"4294967289"},
        {L"%x", 255, L"ff"},
        {L"%X", -1, L"FFFFFFFF"},
        {L"%#x", 255, L"0xff"},
        {L"%#x", 0, L"0"},
        {L"%#o", 8, L"010"},
        {L"%o", 8, L"10"},
        {L"%5d|", -42, L"  -42|"},
        {L"%-5d|", 42, L"42   |"},
        {L"%05d", -42, L"-0042"},
        {L"%-05d|", 42, L"42   |"},
        {L"%+d", 42, L"+42"},
        {L"% d", 42, L" 42"},
        {L"%.3d", 7, L"007"},
        {L"%8.3d", -7, L"    -007"},
        {L"%08.3d", 7, L"     007"},
        {L"%.0d", 0, L""},
        {L"%hd", 65537, L"1"},
        {L"%hhd", 300, L"300"},
        {L"%ld", -123456, L"-123456"},
        {L"%I64d", -9000000000, L"-9000000000"},
        {L"%I64x", -1, L"ffffffffffffffff"},
        {L"%I32d", 5, L"5"},
        {L"%lld", std::numeric_limits<long long>::min(), L"-9223372036854775808"},
        {L"%zu", 5, L"5"},
        {L"100%%|%d%%", 5, L"100%|5%"},
        {L"%5", 0, L""},
        {L"%y", 0, L"y"},
        {L"%c|", 20013, L"中|"},
        {L"%3c|", 65, L"  A|"},
        {L"%-3c|", 65, L"A  |"},
        {L"%hc", 65, L"A"},
        {L"%p", 0x1234ABCD, L"000000001234ABCD"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(format(c.pattern, {c.value}), c.text) << c.pattern;
}

TEST(Format, RealsAsTheReleaseTwentyRunTimePrintsThem) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const struct {
        const wchar_t* pattern;
        double value;
        const wchar_t* text;
    } cases[] = {
        {L"%f", 1.5, L"1.500000"},
        {L"%.2f", 2.675, L"2.67"},
        {L"%.2f", -0.001, L"-0.00"},
        {L"%10.2f|", 3.14159, L"      3.14|"},
        {L"%-10.2f|", 3.14159, L"3.14      |"},
        {L"%010.2f", -3.14159, L"-000003.14"},
        {L"%+.2f", 1, L"+1.00"},
        {L"%#.0f", 2, L"2."},
        {L"%.20f", 0.1, L"0.10000000000000000555"},
        // Exponents of three digits.
        {L"%e", 12345.678, L"1.234568e+004"},
        {L"%E", 1e-5, L"1.000000E-005"},
        {L"%e", 1e300, L"1.000000e+300"},
        {L"%g", 1e-5, L"1e-005"},
        {L"%g", 1e6, L"1e+006"},
        {L"%g", 123456, L"123456"},
        {L"%G", 1e20, L"1E+020"},
        {L"%#g", 1, L"1.00000"},
        {L"%a", 0.01, L"0x1.47ae147ae147bp-7"},
        {L"%a", 1, L"0x1.0000000000000p+0"},
        // Ties away from zero, where the C library rounds to even.
        {L"%0.2f", 0.125, L"0.13"},
        {L"%0.2f", -0.125, L"-0.13"},
        {L"%.0f", 2.5, L"3"},
        {L"%.0f", 0.5, L"1"},
        {L"%.1f", 0.25, L"0.3"},
        {L"%.1f", 0.35, L"0.3"},
        {L"%.2f", 0.375, L"0.38"},
        {L"%.0e", 2.5, L"3e+000"},
        {L"%.0e", 25, L"3e+001"},
        {L"%.2g", 1.25, L"1.3"},
        {L"%.1g", 0.5, L"0.5"},
        {L"%.1e", 1.25e10, L"1.3e+010"},
        // Just beside a tie nothing changes.
        {L"%.0f", 2.4999999999999996, L"2"},
        {L"%.2f", 0.12499999999999999, L"0.12"},
        // Infinity, cut and rounded like digits.
        {L"%f", kInfinity, L"1.#INF00"},
        {L"%.2f", -kInfinity, L"-1.#J"},
        {L"%.1f", kInfinity, L"1.$"},
        {L"%.0f", kInfinity, L"1"},
        {L"%g", kInfinity, L"1.#INF"},
        {L"%e", -kInfinity, L"-1.#INF00e+000"},
        {L"%010.2f", -kInfinity, L"-000001.#J"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(format(c.pattern, {c.value}), c.text) << c.pattern << " of " << c.value;
}

TEST(Format, Texts) {
    const wchar_t unended[] = {L'a', L'b', L'c'};
    const struct {
        const char* name;
        const wchar_t* pattern;
        FormatValue value;
        const wchar_t* text;
    } cases[] = {
        {"%s is wide", L"%s", L"中文", L"中文"},
        {"%ls and %ws too", L"%ls", L"中文", L"中文"},
        {"%S is narrow, in the ANSI page", L"%S", "\xD6\xD0", L"中"},
        {"%hs too", L"%hs", "abc", L"abc"},
        {"width", L"%10s|", L"中文", L"        中文|"},
        {"left", L"%-4s|", L"ab", L"ab  |"},
        {"precision", L"%.2s|", L"abc", L"ab|"},
        {"width and precision", L"%5.1s|", L"中文", L"    中|"},
        {"precision bounds what is read", L"%.3s", unended, L"abc"},
        {"null", L"%5s|", FormatValue(static_cast<const void*>(nullptr)), L"(null)|"},
        {"a number where a text should be", L"%s", 5, L"(null)"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(format(c.pattern, {c.value}), c.text) << c.name;

    EXPECT_EQ(format(L"%*d|%-*d|%.*f", {5, 42, 4, 7, 2, 3.14159}), L"   42|7   |3.14");
    EXPECT_EQ(format(L"%*d|", {-4, 7}), L"7   |") << "a negative width is left";
    EXPECT_EQ(format(L"%.*f", {-1, 0.5}), L"0.500000") << "a negative precision is none";
    EXPECT_EQ(format(L"%d %s", {}), L"0 (null)") << "missing values do no harm";
    EXPECT_EQ(format(L"%.1f", {3}), L"3.0") << "an integer where a real should be";
    EXPECT_EQ(format(L"%d", {1e300}), L"0");
    EXPECT_EQ(format(nullptr, {}), L"");
}

TEST(Format, FromArgumentLists) {
    wchar_t wide[64];
    EXPECT_EQ(swprintf_s(wide, L"%d %s %S %g %ld %I64d", 1, L"文", "n", 0.5, -2L, 1LL << 40), 26);
    EXPECT_STREQ(wide, L"1 文 n 0.5 -2 1099511627776");
    char narrow[16];
    EXPECT_EQ(sprintf_s(narrow, sizeof narrow, "%s|%S|%c", "a", L"中", 'x'), 6);
    EXPECT_STREQ(narrow, "a|\xD6\xD0|x");
    EXPECT_EQ(_scwprintf(L"%05d", 42), 5);
}

TEST(Format, ShortBuffers) {
    wchar_t text[4] = L"???";
    EXPECT_EQ(swprintf_s(text, 4, L"%d", 1234), -1);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(swprintf_s(text, 4, L"%d", 123), 3);

    wchar_t filled[5] = L"????";
    EXPECT_EQ(_snwprintf(filled, 3, L"%d", 12345), -1);
    EXPECT_STREQ(filled, L"123?") << "no NUL when there is no room for one";
    EXPECT_EQ(_snwprintf(filled, 3, L"%d", 678), 3);
    EXPECT_STREQ(filled, L"678?");
    EXPECT_EQ(_snwprintf(filled, 3, L"%d", 9), 1);
    EXPECT_STREQ(filled, L"9");

    EXPECT_EQ(_snwprintf_s(text, 4, _TRUNCATE, L"%d", 12345), -1);
    EXPECT_STREQ(text, L"123");
    EXPECT_EQ(_snwprintf_s(text, 4, 2, L"%d", 12345), -1);
    EXPECT_STREQ(text, L"12");
}

} // namespace
