#include "text/cleanup.h"

#include <gtest/gtest.h>

namespace {

struct Cleaned {
    const char* name;
    const wchar_t* text;
    const wchar_t* expected;
};

template <std::size_t kCount>
void expectAll(void (*clean)(CString&), const Cleaned (&cases)[kCount]) {
    for (const Cleaned& c : cases) {
        SCOPED_TRACE(c.name);
        CString text = c.text;
        clean(text);
        EXPECT_EQ(text, c.expected);
    }
}

TEST(ReplaceTab, LeavesOneSpaceForEveryRun) {
    const Cleaned cases[] = {
        {"ends are trimmed", L"\ta  b\t", L"a b"},
        {"mixed run", L"a \t \tb", L"a b"},
        {"odd run of spaces", L"a     b", L"a b"},
        {"nothing but blanks", L" \t ", L""},
        {"line ends at the ends go too", L"\na b\n", L"a b"},
    };
    expectAll(String::ReplaceTab, cases);
}

TEST(RemoveTCHTextCtrlMark, TakesMarksAwayInPairs) {
    const Cleaned cases[] = {
        {"pair and line end", L"x^Cy^Cz\r\nw", L"xyz w"},
        {"lone mark stays", L"x^Cy", L"x^Cy"},
        {"third mark stays", L"^Ca^Cb^Cc", L"ab^Cc"},
        {"two pairs", L"^Ca^C^Cb^C", L"ab"},
        {"adjacent marks", L"a^C^Cb", L"ab"},
        {"small letter is no mark", L"^ca^c", L"^ca^c"},
        {"removal makes a new pair", L"^^C^CC^Cz", L"z"},
        {"lone line feed stays inside", L"a\nb", L"a\nb"},
        {"ends are trimmed", L"\r\n a \r\n", L"a"},
    };
    expectAll(String::RemoveTCHTextCtrlMark, cases);
}

TEST(ParseMText, LeavesPlainText) {
    const Cleaned cases[] = {
        {"font and paragraph", L"{\\fSimSun|b0;ABC}\\PDEF", L"ABC DEF"},
        {"escaped braces", L"\\{x\\}", L"{x}"},
        {"code without an end stays", L"\\Hx", L"\\Hx"},
        {"each removable code", L"\\fa;\\Fb;\\pc;\\Cd;\\He;\\Wf;\\Tg;x", L"x"},
        {"other codes stay", L"\\Q15;\\A1;\\Lx\\l\\Oy\\o\\S1/2;",
         L"\\Q15;\\A1;\\Lx\\l\\Oy\\o\\S1/2;"},
        {"same piece everywhere", L"\\H2;a\\H2;b", L"ab"},
        {"value may hold a brace", L"\\C{1;x", L"x"},
        {"codes go in their order", L"\\H1;a\\Hb\\C1;c", L"a\\Hbc"},
        {"nested braces", L"{{a}b}", L"ab"},
        {"brace after an escaped one", L"\\{{a", L"{a"},
        {"capital paragraph code", L"a\\Pb\\P", L"a b "},
        {"CR LF is a space", L"a\r\nb", L"a b"},
        {"single line ends vanish", L"a\rb\nc", L"abc"},
        {"small paragraph format needs an end", L"\\pxi2;a", L"a"},
    };
    expectAll(String::ParseMText, cases);
}

TEST(ReplaceString, ReplacesAHalfOpenRange) {
    const struct {
        const char* name;
        int start, end;
        const wchar_t* expected;
        bool done;
    } ranges[] = {
        {"inside", 2, 4, L"abXYef", true},
        {"empty range inserts", 3, 3, L"abcXYdef", true},
        {"negative start", -2, 1, L"XYbcdef", true},
        {"start after end", 5, 3, L"abcdef", false},
        {"end beyond the text", 4, 99, L"abcdXY", true},
        {"start beyond the text", 90, 99, L"abcdefXY", true},
        {"both negative", -5, -3, L"abcdef", false},
    };
    for (const auto& r : ranges) {
        SCOPED_TRACE(r.name);
        CString text = L"abcdef";
        EXPECT_EQ(String::ReplaceString(text, r.start, r.end, L"XY"), r.done);
        EXPECT_EQ(text, r.expected);
    }
}

} // namespace
