#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <afxwin.h>

#include "win/state.h"

namespace {

/// Runs `action` and tells whether it raised the exception, which it frees.
template <class Exception, class Action>
bool raises(Action action) {
    try {
        action();
    } catch (Exception* exception) {
        exception->Delete();
        return true;
    }
    return false;
}

TEST(CString, MakingAndConverting) {
    const wchar_t* const kNull = nullptr;
    const struct {
        const char* name;
        CString text;
        std::wstring expected;
    } cases[] = {
        {"empty", CString(), L""},
        {"from null", CString(kNull), L""},
        {"wide", CString(L"中文"), L"中文"},
        {"narrow, in the ANSI page", CString("\xD6\xD0"), L"中"},
        {"part", CString(L"中文字", 2), L"中文"},
        {"part with a NUL", CString(L"a\0b", 3), {L"a\0b", 3}},
        {"narrow part", CString("\xD6\xD0\xCE\xC4", 2), L"中"},
        {"repeated", CString(L'x', 3), L"xxx"},
        {"repeated narrow", CString('x', 2), L"xx"},
        {"repeated never", CString(L'x', -1), L""},
        {"from the other width", CString(CStringA("\xCE\xC4")), L"文"},
        {"narrow from wide", CString(CStringA(L"é中\U0001F600")), L"é中??"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(std::wstring(c.text.GetString(), static_cast<std::size_t>(c.text.GetLength())),
                  c.expected)
            << c.name;
    }

    CString text;
    text = "narrow";
    EXPECT_STREQ(text, L"narrow");
    text = L'x';
    text += 'y';
    text += "z";
    text += CString(L"!");
    EXPECT_STREQ(text, L"xyz!");
    EXPECT_STREQ(L"a" + text + "b" + L'c' + 'd' + L"e", L"axyz!bcde");
    EXPECT_STREQ(L'<' + text, L"<xyz!");

    headless::WinState session;
    session.ansiCodePage = 1252;
    EXPECT_STREQ(CString("\xE9"), L"é");
    EXPECT_STREQ(CT2A(L"é"), "\xE9");
    EXPECT_STREQ(CT2A(L"é", CP_UTF8), "\xC3\xA9");
    EXPECT_STREQ(CA2W("\xC3\xA9", CP_UTF8), L"é");
    EXPECT_EQ(LPSTR(CW2A(nullptr)), nullptr);
}

TEST(CString, SharesUntilWritten) {
    CString first = L"abc";
    CString second = first;
    EXPECT_EQ(first.GetString(), second.GetString());
    second.SetAt(1, L'X');
    EXPECT_STREQ(first, L"abc");
    EXPECT_STREQ(second, L"aXc");

    const CString third = first;
    first.MakeUpper();
    first += L"d";
    EXPECT_STREQ(third, L"abc");
    EXPECT_STREQ(first, L"ABCd");

    // A locked buffer is not shared.
    CString locked = L"lock";
    const wchar_t* const buffer = locked.LockBuffer();
    const CString copy = locked;
    EXPECT_NE(copy.GetString(), buffer);
    locked = L"new";
    EXPECT_EQ(locked.GetString(), buffer) << "it stays where it is";
    EXPECT_STREQ(copy, L"lock");
    locked.UnlockBuffer();
    EXPECT_EQ(CString(locked).GetString(), buffer);

    CString moved = std::move(first);
    EXPECT_STREQ(moved, L"ABCd");
    moved = moved.Left(2);
    EXPECT_STREQ(moved, L"AB");
}

TEST(CString, TakesPartsOfItself) {
    CString text = L"abcdef";
    text = text.GetString() + 2;
    EXPECT_STREQ(text, L"cdef");
    text += text;
    EXPECT_STREQ(text, L"cdefcdef");
    text.Append(text.GetString() + 6, 2);
    EXPECT_STREQ(text, L"cdefcdefef");
    text.Insert(2, text);
    EXPECT_STREQ(text, L"cdcdefcdefefefcdefef");
    text.Format(L"%s|%s", text.Left(2), text);
    EXPECT_STREQ(text, L"cd|cdcdefcdefefefcdefef");
}

TEST(CString, CopiesLiveInThreads) {
    const CString shared = L"shared by all";
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&shared] {
            for (int round = 0; round < 2000; ++round) {
                CString own = shared;
                const CString other = own;
                own += L"!";
                ASSERT_EQ(own.GetLength(), other.GetLength() + 1);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_STREQ(shared, L"shared by all");
}

TEST(CString, Buffers) {
    CString text = L"abc";
    wchar_t* buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, L"abc");
    wcscpy_s(buffer, 101, L"longer than before");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 18);
    text.GetBuffer(0);
    text.ReleaseBuffer(6);
    EXPECT_STREQ(text, L"longer");
    EXPECT_GE(text.GetAllocLength(), 100);
    text.FreeExtra();
    EXPECT_EQ(text.GetAllocLength(), 6);
    EXPECT_TRUE(raises<CInvalidArgException>([&] { text.ReleaseBuffer(7); }));

    wchar_t* sized = CString().GetBufferSetLength(3);
    EXPECT_NE(sized, nullptr);
    text.Truncate(2);
    EXPECT_STREQ(text, L"lo");
    text.Truncate(20);
    EXPECT_EQ(text.GetLength(), 2);
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
    text.GetBuffer();
    text.ReleaseBuffer();
    EXPECT_STREQ(text, L"");
}

TEST(CString, CharactersAndTheirBounds) {
    CString text = L"中b";
    EXPECT_EQ(text[0], L'中');
    EXPECT_EQ(text.GetAt(1), L'b');
    EXPECT_EQ(text[2], 0) << "the end may be read";
    EXPECT_TRUE(raises<CInvalidArgException>([&] { (void)text[3]; }));
    EXPECT_TRUE(raises<CInvalidArgException>([&] { (void)text.GetAt(-1); }));
    EXPECT_TRUE(raises<CInvalidArgException>([&] { text.SetAt(2, L'x'); }));
    EXPECT_TRUE(raises<CInvalidArgException>([&] { text.SetString(nullptr, 2); }));
}

TEST(CString, Comparing) {
    const CString wall = L"wall";
    EXPECT_TRUE(wall == L"wall" && L"wall" == wall && wall == CString("wall") && wall == "wall");
    EXPECT_TRUE(wall != L"Wall" && L"x" != wall && CString(L'a') == L'a');
    EXPECT_TRUE(wall < L"wallx" && L"a" < wall && wall > L"WALL" && wall <= wall && wall >= L"w");
    EXPECT_TRUE(CString(L"中") < CString(L"文"));
    EXPECT_EQ(wall.CompareNoCase(L"WALL"), 0);
    EXPECT_LT(wall.CompareNoCase(L"WALLS"), 0);
    EXPECT_EQ(CString(L"é").CompareNoCase(L"É"), 0);
    EXPECT_LT(CString(L"_").CompareNoCase(L"A"), 0) << "by the small letters";
    EXPECT_EQ(CStringA("Ab").CompareNoCase("aB"), 0);

    std::map<CString, int> numbers{{L"b", 2}, {L"a", 1}};
    EXPECT_EQ(numbers.begin()->second, 1);
    EXPECT_EQ(std::set<CString>({L"x", L"x", L"X"}).size(), 2U);
    EXPECT_EQ(std::hash<CString>{}(L"a"), std::hash<CString>{}(CString("a")));
}

TEST(CString, PartsAreClamped) {
    const CString text = L"abcdef";
    const struct {
        const char* name;
        CString part;
        const wchar_t* expected;
    } cases[] = {
        {"middle", text.Mid(2, 3), L"cde"},
        {"to the end", text.Mid(4), L"ef"},
        {"more than there is", text.Mid(4, 99), L"ef"},
        {"beyond the end", text.Mid(7, 1), L""},
        {"from before the start", text.Mid(-3, 2), L"ab"},
        {"a negative count", text.Mid(2, -1), L""},
        {"a count near the limit", text.Mid(1, 2147483647), L"bcdef"},
        {"left", text.Left(2), L"ab"},
        {"left of more", text.Left(9), L"abcdef"},
        {"left of less than nothing", text.Left(-1), L""},
        {"right", text.Right(2), L"ef"},
        {"right of more", text.Right(9), L"abcdef"},
        {"right of less than nothing", text.Right(-1), L""},
        {"leading members of a set", text.SpanIncluding(L"cab"), L"abc"},
        {"no leading member", text.SpanIncluding(L"x"), L""},
        {"all members", text.SpanIncluding(L"fedcba"), L"abcdef"},
        {"up to a member", text.SpanExcluding(L"xed"), L"abc"},
        {"no member", text.SpanExcluding(L"x"), L"abcdef"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(c.part, c.expected) << c.name;
}

TEST(CString, Searching) {
    const CString text = L"abcabc";
    const struct {
        const char* name;
        int found, expected;
    } cases[] = {
        {"character", text.Find(L'b'), 1},
        {"from a position", text.Find(L'b', 2), 4},
        {"at the position", text.Find(L'b', 1), 1},
        {"absent", text.Find(L'x'), -1},
        {"from the end", text.Find(L'a', 6), -1},
        {"from before the start", text.Find(L'a', -1), -1},
        {"text", text.Find(L"ca"), 2},
        {"text from a position", text.Find(L"abc", 1), 3},
        {"empty text", text.Find(L"", 4), 4},
        {"empty text at the end", text.Find(L"", 6), 6},
        {"text from beyond the end", text.Find(L"", 7), -1},
        {"last", text.ReverseFind(L'b'), 4},
        {"last absent", text.ReverseFind(L'x'), -1},
        {"one of", text.FindOneOf(L"xcb"), 1},
        {"none of", text.FindOneOf(L"x"), -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.found, c.expected) << c.name;
}

TEST(CString, Changing) {
    const struct {
        const char* name;
        const wchar_t* before;
        int (*change)(CString&);
        int result;
        const wchar_t* after;
    } cases[] = {
        {"replace characters", L"abab", [](CString& s) { return s.Replace(L'a', L'x'); }, 2,
         L"xbxb"},
        {"replace by the same", L"abab", [](CString& s) { return s.Replace(L'a', L'a'); }, 0,
         L"abab"},
        {"replace by longer", L"a-a", [](CString& s) { return s.Replace(L"a", L"aa"); }, 2,
         L"aa-aa"},
        {"replace by nothing", L"a--b--", [](CString& s) { return s.Replace(L"--", L""); }, 2,
         L"ab"},
        {"replace from the left", L"aaa", [](CString& s) { return s.Replace(L"aa", L"b"); }, 1,
         L"ba"},
        {"replace nothing", L"a", [](CString& s) { return s.Replace(L"", L"b"); }, 0, L"a"},
        {"remove", L"abcab", [](CString& s) { return s.Remove(L'a'); }, 2, L"bcb"},
        {"remove absent", L"abc", [](CString& s) { return s.Remove(L'A'); }, 0, L"abc"},
        {"insert", L"ac", [](CString& s) { return s.Insert(1, L"bb"); }, 4, L"abbc"},
        {"insert before the start", L"ac", [](CString& s) { return s.Insert(-5, L'x'); }, 3,
         L"xac"},
        {"insert beyond the end", L"ac", [](CString& s) { return s.Insert(9, L'x'); }, 3, L"acx"},
        {"delete", L"abcd", [](CString& s) { return s.Delete(1, 2); }, 2, L"ad"},
        {"delete one", L"abcd", [](CString& s) { return s.Delete(0); }, 3, L"bcd"},
        {"delete past the end", L"abcd", [](CString& s) { return s.Delete(2, 99); }, 2, L"ab"},
        {"delete beyond the end", L"abcd", [](CString& s) { return s.Delete(4); }, 4, L"abcd"},
        {"delete nothing", L"abcd", [](CString& s) { return s.Delete(1, -1); }, 4, L"abcd"},
    };
    for (const auto& c : cases) {
        CString text = c.before;
        const CString kept = text;
        EXPECT_EQ(c.change(text), c.result) << c.name;
        EXPECT_STREQ(text, c.after) << c.name;
        EXPECT_STREQ(kept, c.before) << c.name;
    }
}

TEST(CString, TrimmingAndCase) {
    CString text = L"\t\u3000\u00A0 a b \r\n\u2003";
    EXPECT_STREQ(CString(text).Trim(), L"a b") << "every blank of Unicode";
    EXPECT_STREQ(CString(text).TrimLeft(), L"a b \r\n\u2003");
    EXPECT_STREQ(CString(text).TrimRight(), L"\t\u3000\u00A0 a b");
    EXPECT_STREQ(CString(L" \t ").Trim(), L"");
    EXPECT_STREQ(CString(L"xxaxbxx").Trim(L'x'), L"axb");
    EXPECT_STREQ(CString(L"xyaxyx").Trim(L"yx"), L"a");
    EXPECT_STREQ(CString(L"007.500").TrimRight(L'0').TrimLeft(L"0"), L"7.5");
    EXPECT_STREQ(CStringA(" \xD6\xD0 ").Trim(), "\xD6\xD0");

    EXPECT_STREQ(CString(L"aБßｂ").MakeUpper(), L"AБßＢ");
    EXPECT_STREQ(CString(L"AБΣ").MakeLower(), L"aбσ");
    EXPECT_STREQ(CStringA("a\xD6\x7A").MakeUpper(), "A\xD6\x5A") << "byte by byte";
    EXPECT_STREQ(CString(L"abc").MakeReverse(), L"cba");
}

TEST(CString, Tokenizing) {
    const struct {
        const char* name;
        const wchar_t *text, *separators;
        std::vector<std::wstring> pieces;
    } cases[] = {
        {"separators in runs and at both ends", L",a;,b,", L",;", {L"a", L"b"}},
        {"one piece", L"abc", L",", {L"abc"}},
        {"separators only", L",,", L",", {}},
        {"empty", L"", L",", {}},
    };
    for (const auto& c : cases) {
        std::vector<std::wstring> pieces;
        const CString text = c.text;
        int start = 0;
        for (CString piece = text.Tokenize(c.separators, start); start != -1;
             piece = text.Tokenize(c.separators, start)) {
            pieces.emplace_back(piece.GetString());
        }
        EXPECT_EQ(pieces, c.pieces) << c.name;
    }
    int start = 1;
    EXPECT_STREQ(CString(L"abc").Tokenize(L"", start), L"bc");
    start = -1;
    EXPECT_TRUE(raises<CInvalidArgException>([&] { (void)CString(L"a").Tokenize(L",", start); }));
}

TEST(CString, Formatting) {
    CString text;
    const CString name = L"梁";
    text.Format(L"%s_%d_%.2f", name, 5, 2.5);
    EXPECT_STREQ(text, L"梁_5_2.50") << "a string may be passed as it is";
    text.AppendFormat(L"|%S|%s|%c", CStringA("narrow"), L"lit", L'中');
    EXPECT_STREQ(text, L"梁_5_2.50|narrow|lit|中");
    text.Format(L"%ld %u %I64d %x", LONG(-3), DWORD(4000000000U), -5LL, true);
    EXPECT_STREQ(text, L"-3 4000000000 -5 1") << "a 32-bit LONG for %ld";
    text.Format(L"%d%%");
    EXPECT_STREQ(text, L"0%");
    CStringA narrow;
    narrow.Format("%s %S", CStringA("a"), L"中");
    EXPECT_STREQ(narrow, "a \xD6\xD0");
    EXPECT_TRUE(raises<CInvalidArgException>([&] { text.Format(static_cast<LPCTSTR>(nullptr)); }));
}

TEST(CString, SystemStrings) {
    const std::size_t before = headless::liveBstrCount();
    BSTR string = CString(L"a\0中", 3).AllocSysString();
    EXPECT_EQ(SysStringLen(string), 3U);
    CStringA("\xD6\xD0").SetSysString(&string);
    EXPECT_STREQ(string, L"中");
    SysFreeString(string);
    EXPECT_EQ(headless::liveBstrCount(), before);
}

} // namespace
