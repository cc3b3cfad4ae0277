#include "win/crt.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "win/bstr.h"

namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

TEST(Wtoi, TakesTheNumberAtTheFront) {
    const struct {
        const wchar_t* text;
        int value, error;
    } cases[] = {
        {L"0", 0, 0},
        {L"-5", -5, 0},
        {L"  42", 42, 0},
        {L"12abc", 12, 0},
        {L"", 0, 0},
        {L"-", 0, 0},
        {L"--5", 0, 0},
        {L"- 5", 0, 0},
        {L"+7", 7, 0},
        {L"0x1f", 0, 0},
        {L"1e3", 1, 0},
        {L"00012", 12, 0},
        {L"１２", 12, 0},
        {L"\u00A0\u30005", 5, 0},
        {L"5中", 5, 0},
        {L"2147483647", kMax, 0},
        {L"-2147483648", kMin, 0},
        {L"2147483648", kMax, ERANGE},
        {L"-2147483649", kMin, ERANGE},
        {L"4294967297", kMax, ERANGE},
        {L"-9999999999", kMin, ERANGE},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        errno = 0;
        EXPECT_EQ(_wtoi(c.text), c.value);
        EXPECT_EQ(errno, c.error);
    }
    EXPECT_EQ(_wtoi(nullptr), 0);
    EXPECT_EQ(_wtoi64(L"9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(_wtoi64(L"-9223372036854775809"), std::numeric_limits<std::int64_t>::min());
}

TEST(Wtof, TakesTheNumberAtTheFront) {
    const struct {
        const wchar_t* text;
        double value;
    } cases[] = {
        {L"-2.25", -2.25},
        {L".5", 0.5},
        {L"-.5", -0.5},
        {L".", 0},
        {L"1e+5", 1e5},
        {L"1e", 1},
        {L"1e-", 1},
        {L"1d5", 1e5},
        {L"1D-2", 0.01},
        {L"1f5", 1},
        {L"1.2.3", 1.2},
        {L"1 000", 1},
        {L"0x1F", 0},
        {L"inf", 0},
        {L"nan", 0},
        {L"1,5", 1},
        {L"\u30001", 1},
        {L"１", 0},
        {L"+-1", 0},
        {L"1中", 1},
        {L"0.30000000000000004", 0.30000000000000004},
        {L"1e400", std::numeric_limits<double>::infinity()},
        {L"2.4e-324", 0},
        {L"", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(_wtof(c.text), c.value) << c.text;
}

TEST(Itow, Bases) {
    wchar_t text[40];
    EXPECT_STREQ(_itow(-255, text, 10), L"-255");
    EXPECT_STREQ(_itow(kMin, text, 10), L"-2147483648");
    EXPECT_STREQ(_itow(-1, text, 16), L"ffffffff");
    EXPECT_STREQ(_itow(5, text, 2), L"101");
    EXPECT_EQ(_itow_s(1234, text, 4, 10), ERANGE);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(_itow_s(123, text, 4, 10), 0);
    EXPECT_STREQ(text, L"123");
    EXPECT_EQ(_itow_s(1, text, 4, 37), EINVAL);
}

TEST(BoundedCopies, NeverPassTheEnd) {
    wchar_t to[4] = L"xyz";
    EXPECT_EQ(wcscpy_s(to, L"abc"), 0);
    EXPECT_STREQ(to, L"abc");
    EXPECT_EQ(wcscpy_s(to, L"abcd"), ERANGE);
    EXPECT_STREQ(to, L"");
    EXPECT_EQ(wcscpy_s(to, static_cast<const wchar_t*>(nullptr)), EINVAL);
    EXPECT_EQ(wcscpy_s(nullptr, 4, L"a"), EINVAL);

    EXPECT_EQ(wcscpy_s(to, L"a"), 0);
    EXPECT_EQ(wcscat_s(to, L"bc"), 0);
    EXPECT_STREQ(to, L"abc");
    EXPECT_EQ(wcscat_s(to, L"d"), ERANGE);
    EXPECT_STREQ(to, L"");

    EXPECT_EQ(wcsncpy_s(to, 4, L"abcdef", 2), 0);
    EXPECT_STREQ(to, L"ab");
    EXPECT_EQ(wcsncpy_s(to, 4, L"abcdef", _TRUNCATE), STRUNCATE);
    EXPECT_STREQ(to, L"abc");
    EXPECT_EQ(wcsncpy_s(to, 4, L"abcdef", 4), ERANGE);
    EXPECT_STREQ(to, L"");

    wchar_t* copy = _wcsdup(L"中");
    EXPECT_STREQ(copy, L"中");
    std::free(copy);
    EXPECT_EQ(_wcsdup(nullptr), nullptr);
}

TEST(Bstr, CountsBytesAndItself) {
    const std::size_t before = headless::liveBstrCount();
    BSTR text = SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(SysStringLen(text), 3U);
    EXPECT_EQ(SysStringByteLen(text), 3 * sizeof(wchar_t));
    EXPECT_EQ(text[1], 0);
    EXPECT_EQ(text[3], 0);
    std::uint32_t count = 0;
    std::memcpy(&count, reinterpret_cast<char*>(text) - 4, sizeof count);
    EXPECT_EQ(count, SysStringByteLen(text)) << "the count stands right before the text";

    EXPECT_TRUE(SysReAllocString(&text, text + 2)) << "from a part of itself";
    EXPECT_STREQ(text, L"b");
    BSTR bytes = SysAllocStringByteLen("abc", 3);
    EXPECT_EQ(SysStringByteLen(bytes), 3U);
    EXPECT_EQ(SysStringLen(bytes), 0U);
    BSTR blank = SysAllocStringLen(nullptr, 2);
    EXPECT_EQ(std::wstring(blank, 3), std::wstring(3, L'\0'));

    EXPECT_EQ(headless::liveBstrCount(), before + 3);
    for (BSTR string : {text, bytes, blank, BSTR{}})
        SysFreeString(string);
    EXPECT_EQ(headless::liveBstrCount(), before);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0U);
}

} // namespace
