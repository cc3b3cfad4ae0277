#include "win/code_page.h"

#include <gtest/gtest.h>

#include <string>

#include <windows.h>

#include "fnv.h"
#include "win/state.h"

using headless::decode;
using headless::encode;

namespace {

constexpr unsigned kGbk = 936;

TEST(CodePage936, WholeTableIsWindows) {
    // Checksums over Windows' own table: 23,940 pairs, and all 65,536 units with their best fits.
    Fnv pairs;
    for (unsigned lead = 0x81; lead <= 0xFE; ++lead) {
        for (unsigned trail = 0x40; trail <= 0xFE; ++trail) {
            if (trail == 0x7F) continue;
            const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
            const std::wstring text = decode({bytes, 2}, kGbk);
            ASSERT_EQ(text.size(), 1U);
            pairs.add16(static_cast<unsigned>(text[0]));
        }
    }
    EXPECT_EQ(pairs.value(), 0x7E34DBCA8ADB9989U);

    Fnv units;
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const auto character = static_cast<wchar_t>(unit);
        headless::ConversionReport report;
        const std::string bytes = encode({&character, 1}, kGbk, {}, report);
        units.add(static_cast<unsigned>(bytes.size()));
        units.add(report.lossy ? 1 : 0);
        units.add(static_cast<unsigned char>(bytes[0]));
        units.add(bytes.size() > 1 ? static_cast<unsigned char>(bytes[1]) : 0);
    }
    EXPECT_EQ(units.value(), 0xB2E14E099FD9A08AU);
}

TEST(Decode, BadAndUnusualBytes) {
    using namespace std::string_literals;
    const struct {
        const char* name;
        unsigned page;
        std::string bytes;
        std::wstring text;
        bool invalid;
    } cases[] = {
        {"two characters", 936, "\xD6\xD0\xCE\xC4", L"中文", false},
        {"a trail byte that looks like a backslash", 936, "\x81\x5C", L"乗", false},
        {"euro sign", 936, "A\x80"s + "B", L"A€B", false},
        {"FF is private, and only leniently text", 936, "\xFF", L"\uF8F5", true},
        {"lead byte at the end", 936, "A\xD6", L"A?", true},
        {"a bad trail byte is lost with its lead byte", 936, "\xD6\x39"s + "A", L"?A", true},
        {"so is a CR", 936, "\xD6\r\n", L"?\n", true},
        {"a NUL is not", 936, "\xD6\0A"s, L"?\0A"s, true},
        {"euro sign after a pair", 936, "\xD6\xD0\x80\xCE\xC4", L"中€文", false},
        {"four-byte codes are unknown", 936, "\x81\x30\x81\x30", L"??", true},
        {"undefined codes of 1252 are controls", 1252, "\x80\x81\x9F", L"€\u0081Ÿ", false},
        {"controls and DEL keep their place in 437", 437, "\x01\x1A\x7F\xE1", L"\x01\x1A\x7Fß",
         false},
        {"Greek capitals of 737", 737, "\x80\x81", L"ΑΒ", false},
        {"Japanese", 932, "\x93\xFA\x96\x7B\xB1\\~", L"日本ｱ\\~", false},
        {"Korean", 949, "\xC1\xDF", L"중", false},
        {"traditional Chinese", 950, "\xA4\xA4", L"中", false},
        {"Cyrillic", 1251, "\xCF\xEB\xE0\xED", L"План", false},
        {"Latin 1", 28591, "\xE9", L"é", false},
        {"not installed: ASCII stays", 12345, "A\xE9", L"A\uFFFD", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        headless::ConversionReport report;
        EXPECT_EQ(decode(c.bytes, c.page, report), c.text);
        EXPECT_EQ(report.invalid, c.invalid);
        EXPECT_EQ(decode(c.bytes, c.page), c.text);
    }
}

TEST(Encode, WhatThePageLacks) {
    const struct {
        const char* name;
        unsigned page;
        std::wstring text;
        std::string bytes;
        bool lossy;
    } cases[] = {
        {"round trip", 936, L"中A文",
         "\xD6\xD0"
         "A\xCE\xC4",
         false},
        {"euro sign is one byte", 936, L"€", "\x80", false},
        {"best fit is no loss", 936, L"¢£¥", "\xA1\xE9\xA1\xEA\xA3\xA4", false},
        {"characters that other converters drop", 936, L"a\u200B\uFEFFb", "a??b", true},
        {"half-width arrow", 936, L"\uFFE9", "?", true},
        {"beyond the basic plane there are two units", 936, L"\U0001F600", "??", true},
        {"lone surrogate", 936, std::wstring(1, wchar_t(0xD83D)), "?", true},
        {"no character at all", 936, std::wstring(1, wchar_t(-7)), "??", true},
        {"NUL", 936, std::wstring(L"a\0b", 3), std::string("a\0b", 3), false},
        {"dashes of 1252", 1252, L"—–€", "\x97\x96\x80", false},
        {"Chinese in 1252", 1252, L"中", "?", true},
        {"Greek capitals of 737", 737, L"ΑΒ", "\x80\x81", false},
        {"not installed: ASCII stays", 12345, L"Aé", "A?", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        headless::ConversionReport report;
        EXPECT_EQ(encode(c.text, c.page, {}, report), c.bytes);
        EXPECT_EQ(report.lossy, c.lossy);
    }
}

TEST(Utf8, BrokenPiecesBecomeReplacements) {
    const struct {
        const char* name;
        std::string bytes;
        std::wstring text;
        bool valid;
    } cases[] = {
        {"each length", "A\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80", L"Aé中\U0001F600", true},
        {"edges of the ranges", "\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF",
         L"\uD7FF\uE000\U0010FFFF", true},
        {"lone continuation",
         "A\x80"
         "B",
         L"A\uFFFD"
         L"B",
         false},
        {"overlong", "\xC0\x80", L"\uFFFD\uFFFD", false},
        {"overlong of three", "\xE0\x80\x80", L"\uFFFD\uFFFD\uFFFD", false},
        {"surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD", false},
        {"beyond the last code point", "\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD", false},
        {"end inside a sequence", "\xE4\xB8", L"\uFFFD", false},
        {"letter inside a sequence stays",
         "\xE4"
         "A",
         L"\uFFFD"
         L"A",
         false},
        {"text of another page", "\xD6\xD0\xCE\xC4", L"\uFFFD\uFFFD\uFFFD\uFFFD", false},
        {"no such first byte", "\xF8\xFF", L"\uFFFD\uFFFD", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(headless::fromUtf8(c.bytes), c.text);
        EXPECT_EQ(headless::isUtf8(c.bytes), c.valid);
        if (c.valid) {
            EXPECT_EQ(headless::toUtf8(c.text), c.bytes);
        }
    }
    const std::wstring noText{wchar_t(0xD83D), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(-1)};
    EXPECT_EQ(headless::toUtf8(noText), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CodePageNumber, NamesInDrawings) {
    const struct {
        const char* name;
        std::optional<unsigned> page;
    } cases[] = {
        {"ANSI_936", 936},    {"ansi_1251", 1251}, {"dos850", 850},
        {"DOS932", 932},      {"johab", 1361},     {"GBK", 936},
        {"big5", 950},        {"ascii", 1252},     {"UTF-8", 65001},
        {"iso8859-1", 28591}, {"8859_5", 28595},   {"mac-roman", 10000},
        {"ANSI_", {}},        {"ANSI_936x", {}},   {"", {}},
        {"klingon", {}},      {"dos-1", {}},       {"ANSI_99999999999", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(headless::codePageNumber(c.name), c.page) << c.name;
}

TEST(CodePages, AnsiAndOemAreTheSessions) {
    EXPECT_EQ(GetACP(), 936U);
    EXPECT_EQ(GetOEMCP(), 936U);
    {
        headless::WinState session;
        session.ansiCodePage = 1252;
        session.oemCodePage = 437;
        EXPECT_EQ(encode(L"é", CP_ACP), "\xE9");
        EXPECT_EQ(encode(L"é", CP_OEMCP), "\x82");
        EXPECT_EQ(decode("\xE9", CP_ACP), L"é");
        EXPECT_FALSE(IsDBCSLeadByte(0xD6));
        headless::WinState inner;
        EXPECT_EQ(GetACP(), 936U) << "a session begins afresh";
    }
    EXPECT_EQ(encode(L"é", CP_ACP), "\xA8\xA6");
    EXPECT_TRUE(IsDBCSLeadByte(0x81));
    EXPECT_FALSE(IsDBCSLeadByte(0x80));
    EXPECT_FALSE(IsDBCSLeadByte(0xFF));
}

// ---- the calls

TEST(MultiByteToWideChar, ResultsAndErrors) {
    const struct {
        const char* name;
        UINT page;
        DWORD flags;
        std::string bytes;
        int byteCount, capacity, result;
        std::wstring stored;
        DWORD error;
    } cases[] = {
        {"counted", 936, 0, "\xD6\xD0", 2, 8, 1, L"中", 0},
        {"the NUL counts with length -1", 65001, 0, "\xE4\xB8\xAD", -1, 8, 2, {L"中\0", 2}, 0},
        {"length query", 936, 0, "\xD6\xD0\xCE\xC4", 4, 0, 2, L"", 0},
        {"what fits is stored", 936, 0, "ab", 2, 1, 0, L"a", ERROR_INSUFFICIENT_BUFFER},
        {"strict: the lenient result is stored", 936, 8, "\xD6", 1, 8, 0, L"?",
         ERROR_NO_UNICODE_TRANSLATION},
        {"strict refuses FF", 936, 8, "\xFF", 1, 8, 0, L"\uF8F5", ERROR_NO_UNICODE_TRANSLATION},
        {"strict takes the euro sign", 936, 8, "\x80", 1, 8, 1, L"€", 0},
        {"strict UTF-8", 65001, 8, "A\x80", 2, 8, 0, L"A\uFFFD", ERROR_NO_UNICODE_TRANSLATION},
        {"a supplementary character is one here", 65001, 0, "\xF0\x9F\x98\x80", 4, 8, 1,
         L"\U0001F600", 0},
        {"precomposed is the default", 936, 1, "\xD6\xD0", 2, 8, 1, L"中", 0},
        {"UTF-8 has no such flag", 65001, 1, "a", 1, 8, 0, L"", ERROR_INVALID_FLAGS},
        {"unknown flag", 936, 0x8000, "a", 1, 8, 0, L"", ERROR_INVALID_FLAGS},
        {"length 0", 936, 0, "a", 0, 8, 0, L"", ERROR_INVALID_PARAMETER},
        {"length below -1", 936, 0, "a", -2, 8, 0, L"", ERROR_INVALID_PARAMETER},
        {"unknown page", 12345, 0, "a", 1, 8, 0, L"", ERROR_INVALID_PARAMETER},
        {"OEM page", CP_OEMCP, 0, "\xD6\xD0", 2, 8, 1, L"中", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        wchar_t buffer[8] = {};
        SetLastError(0);
        EXPECT_EQ(
            MultiByteToWideChar(c.page, c.flags, c.bytes.c_str(), c.byteCount, buffer, c.capacity),
            c.result);
        EXPECT_EQ(std::wstring(buffer, c.stored.size()), c.stored);
        EXPECT_EQ(buffer[c.stored.size()], 0);
        EXPECT_EQ(GetLastError(), c.error);
    }
    EXPECT_EQ(MultiByteToWideChar(936, 0, nullptr, 1, nullptr, 0), 0);
    EXPECT_EQ(MultiByteToWideChar(936, 0, "a", 1, nullptr, 1), 0);
}

TEST(WideCharToMultiByte, ResultsAndErrors) {
    constexpr DWORD kNoBestFit = WC_NO_BEST_FIT_CHARS;
    const std::wstring lone(1, wchar_t(0xD83D));
    const struct {
        const char* name;
        UINT page;
        DWORD flags;
        std::wstring text;
        int length, capacity;
        const char* defaultChar;
        int result;
        std::string stored;
        BOOL usedDefault;
        DWORD error;
    } cases[] = {
        {"counted", 936, 0, L"中文", 2, 16, nullptr, 4, "\xD6\xD0\xCE\xC4", FALSE, 0},
        {"the NUL counts with length -1",
         936,
         0,
         L"中",
         -1,
         16,
         nullptr,
         3,
         {"\xD6\xD0\0", 3},
         FALSE,
         0},
        {"length query", 936, 0, L"中文", 2, 0, nullptr, 4, "", FALSE, 0},
        {"whole characters that fit are stored", 936, 0, L"中文", 2, 3, nullptr, 0, "\xD6\xD0",
         FALSE, ERROR_INSUFFICIENT_BUFFER},
        {"also in UTF-8", 65001, 0, L"中文", 2, 5, nullptr, 0, "\xE4\xB8\xAD", FALSE,
         ERROR_INSUFFICIENT_BUFFER},
        {"without best fits", 936, kNoBestFit, L"é©·×", 4, 16, nullptr, 7,
         "\xA8\xA6?\xA1\xA4\xA1\xC1", TRUE, 0},
        {"no-break space has only a best fit", 936, kNoBestFit, L"\u00A0", 1, 16, nullptr, 1, "?",
         TRUE, 0},
        {"default of one byte, twice for two units", 936, 0, L"A\U0001F600B", 3, 16, "*", 4, "A**B",
         TRUE, 0},
        {"default of two bytes", 936, kNoBestFit, L"AàÀ", 3, 16, "\xA1\xF6", 5, "A\xA8\xA4\xA1\xF6",
         TRUE, 0},
        {"composed before conversion", 936, WC_COMPOSITECHECK, L"a\u0301", 2, 16, nullptr, 2,
         "\xA8\xA2", FALSE, 0},
        {"composed in 1252", 1252, WC_COMPOSITECHECK | WC_DEFAULTCHAR, L"e\u0301", 2, 16, nullptr,
         1, "\xE9", FALSE, 0},
        {"no text in strict UTF-8", 65001, WC_ERR_INVALID_CHARS, lone, 1, 16, nullptr, 0,
         "\xEF\xBF\xBD", FALSE, ERROR_NO_UNICODE_TRANSLATION},
        {"no text in UTF-8", 65001, 0, lone, 1, 16, nullptr, 3, "\xEF\xBF\xBD", FALSE, 0},
        {"strictness has no meaning in 936", 936, WC_ERR_INVALID_CHARS, lone, 1, 16, nullptr, 1,
         "?", TRUE, 0},
        {"unknown flag", 936, 0x8000, L"a", 1, 16, nullptr, 0, "", -1, ERROR_INVALID_FLAGS},
        {"UTF-8 has no best fits", 65001, kNoBestFit, L"a", 1, 16, nullptr, 0, "", -1,
         ERROR_INVALID_FLAGS},
        {"length 0", 936, 0, L"a", 0, 16, nullptr, 0, "", -1, ERROR_INVALID_PARAMETER},
        {"unknown page", 12345, 0, L"a", 1, 16, nullptr, 0, "", -1, ERROR_INVALID_PARAMETER},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        char buffer[16] = {};
        BOOL usedDefault = -1;
        SetLastError(0);
        EXPECT_EQ(WideCharToMultiByte(c.page, c.flags, c.text.c_str(), c.length, buffer, c.capacity,
                                      c.defaultChar, &usedDefault),
                  c.result);
        EXPECT_EQ(std::string(buffer, c.stored.size()), c.stored);
        EXPECT_EQ(buffer[c.stored.size()], 0);
        EXPECT_EQ(usedDefault, c.usedDefault);
        EXPECT_EQ(GetLastError(), c.error);
    }
}

TEST(IsValidCodePage, KnowsRealPagesOnly) {
    for (const UINT page : {936U, 1252U, 437U, 850U, 874U, 932U, 949U, 950U, 65001U})
        EXPECT_TRUE(IsValidCodePage(page)) << page;
    for (const UINT page : {0U, 1U, 12345U})
        EXPECT_FALSE(IsValidCodePage(page)) << page;
}

} // namespace
