// What the calls read from settings files and write to them.
//
// Expected texts were recorded from the platform's own calls, but for the layout of lines that a
// change does not concern: those have to stay byte for byte.
#include <iterator>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <windows.h>

#include "profile_fixture.h"
#include "win/profile_text.h"

using namespace std::string_literals;
using test_support::kDefault;

namespace {

class PrivateProfile : public test_support::ProfileTest {};

TEST_F(PrivateProfile, ReadsValues) {
    const std::string quotes = "[s]\r\na='v'\r\nb='  v  '\r\nc=''\r\nd='\r\ng='v' x\r\nh='v\"\r\n"
                               "j='\"v\"'\r\nm=\"  v  \"\r\n";
    const std::string brackets = "[]\r\nk=1\r\n[a]b]\r\nk=2\r\n[[c]\r\nk=3\r\n[d]]\r\nk=4\r\n"
                                 "[e] ; x\r\nk=5\r\n[f]junk\r\nk=6\r\n[g\r\nk=7\r\nj=8\r\n";
    const std::string signs =
        "[s]\r\na=x=y;z\r\nb==x\r\nd = = \r\ne=\r\n#k=v\r\n;c=1\r\nf\r\n=w\r\n";
    const struct {
        const char* name;
        std::string file;
        const wchar_t *section, *key, *value;
    } cases[] = {
        {"plain", "[s]\r\nk=v\r\n", L"s", L"k", L"v"},
        {"missing key", "[s]\r\nk=v\r\n", L"s", L"j", kDefault},
        {"missing section", "[s]\r\nk=v\r\n", L"t", L"k", kDefault},
        {"tabs around everything", "\t[s]\t\r\n\tk\t=\tv\t\r\n", L"s", L"k", L"v"},
        {"form feed and vertical tab", "[s]\r\n\f\vk\v=\fv \v\r\n", L"s", L"k", L"v"},
        {"blanks inside stay", "[s]\r\na b = c\td \r\n", L"s", L"a b", L"c\td"},
        {"blanks inside brackets", "[ s ]\r\nk=v\r\n", L"s", L"k", L"v"},
        {"names asked for are trimmed", "[s]\r\nk=v\r\n", L" s ", L"\tk ", L"v"},
        {"section case", "[SecTion]\r\nKeyName=v\r\n", L"sECTION", L"KEYNAME", L"v"},
        {"other letters keep their case", "[s]\r\n\xA8\xA6=v\r\n", L"s", L"É", kDefault},
        {"first of two sections", "[s]\na=1\n[t]\n[s]\na=2\nb=3\n", L"s", L"a", L"1"},
        {"second section is not found", "[s]\na=1\n[t]\n[s]\na=2\nb=3\n", L"s", L"b", kDefault},
        {"first of two keys", "[s]\r\na=1\r\nA=2\r\n", L"s", L"A", L"1"},
        {"single quotes", quotes, L"s", L"a", L"v"},
        {"blanks in quotes", quotes, L"s", L"b", L"  v  "},
        {"blanks in double quotes", quotes, L"s", L"m", L"  v  "},
        {"empty quotes", quotes, L"s", L"c", L""},
        {"lone quote", quotes, L"s", L"d", L"'"},
        {"quotes round a part", quotes, L"s", L"g", L"'v' x"},
        {"unequal quotes", quotes, L"s", L"h", L"'v\""},
        {"one layer of quotes", quotes, L"s", L"j", L"\"v\""},
        {"quotes belong to names", "[\"s\"]\r\n\"k\"=v\r\n", L"\"s\"", L"\"k\"", L"v"},
        {"empty brackets", brackets, L"", L"k", kDefault},
        {"last bracket ends the name", brackets, L"a]b", L"k", L"2"},
        {"bracket in the name", brackets, L"[c", L"k", L"3"},
        {"two brackets", brackets, L"d]", L"k", L"4"},
        {"comment behind the bracket", brackets, L"e", L"k", L"5"},
        {"text behind the bracket", brackets, L"f", L"k", L"6"},
        {"unclosed bracket is no section", brackets, L"g", L"k", kDefault},
        {"lines after it belong to the one before", brackets, L"f", L"j", L"8"},
        {"first = splits, ; stays", signs, L"s", L"a", L"x=y;z"},
        {"value begins with =", signs, L"s", L"b", L"=x"},
        {"blanks round =", signs, L"s", L"d", L"="},
        {"empty value is a value", signs, L"s", L"e", L""},
        {"# is part of a name", signs, L"s", L"#k", L"v"},
        {"comment is no key", signs, L"s", L"c", kDefault},
        {"line without =", signs, L"s", L"f", kDefault},
        {"key without a name", signs, L"s", L"", L"w"},
        {"no section at all", "k=v\r\n", L"", L"k", L"v"},
        {"LF", "[s]\nk=v\nj=w\n", L"s", L"j", L"w"},
        {"CR", "[s]\rk=v\rj=w\r", L"s", L"j", L"w"},
        {"CR CR LF and LF CR", "[s]\r\r\nk=v\r\r\nj=w\n\ri=x\r\n", L"s", L"i", L"x"},
        {"last line without an end", "[s]\r\nk=v", L"s", L"k", L"v"},
        {"NUL ends a value", "[s]\r\nk=v\0w\r\n"s, L"s", L"k", L"v"},
        {"line after a NUL", "[s]\r\nk=v\0w\r\nj=x\r\n"s, L"s", L"j", L"x"},
        {"code page", "[\xD6\xD0]\r\n\xCE\xC4=\xD6\xB5\x81\\\xD5_\r\n", L"中", L"文", L"值乗誣"},
        {"bracket as half a character", "[\x81]]\r\nk=\x81]\r\n", L"乚", L"k", L"乚"},
        {"half a character keeps the line end", "[s]\nk=\xD6\nj=1\n", L"s", L"j", L"1"},
        {"half a character", "[s]\nk=\xD6\nj=1\n", L"s", L"k", L"?"},
        {"UTF-16",
         "\xFF\xFE[\0-N]\0\r\0\n\0\x87"
         "e=\0<P\xAC \r\0\n\0"s,
         L"中", L"文", L"值€"},
        {"UTF-16 pair", "\xFF\xFE[\0s\0]\0\n\0k\0=\0=\xD8\0\xDE\n\0"s, L"s", L"k", L"\U0001F600"},
        {"half a unit at the end", "\xFF\xFE[\0s\0]\0\n\0k\0=\0v\0w"s, L"s", L"k", L"v"},
        {"UTF-8's mark hides the first section", "\xEF\xBB\xBF[s]\r\nk=v\r\n", L"s", L"k",
         kDefault},
        {"UTF-8's mark means nothing", "\xEF\xBB\xBF\r\n[s]\r\nk=v\r\n", L"s", L"k", L"v"},
        {"empty file", "", L"s", L"k", kDefault},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        put(c.file);
        EXPECT_EQ(get(c.section, c.key), c.value);
    }
    state_.ansiCodePage = 1252;
    put("[s]\nk=\xE9\n");
    EXPECT_EQ(get(L"s", L"k"), L"é");
    state_.ansiCodePage = 437;
    EXPECT_EQ(get(L"s", L"k"), L"Θ") << "read again in another code page";
}

TEST_F(PrivateProfile, ListsNamesAndLines) {
    put("x=0\r\n[s]\r\na = \"1\" \r\n; note\r\n\r\n bare \r\nA=2\r\n[]\r\n[t]\r\n[S]\r\nb=3\r\n");
    EXPECT_EQ(get(nullptr, nullptr), L"s|t|S|");
    EXPECT_EQ(get(nullptr, L"a"), L"s|t|S|");
    EXPECT_EQ(get(L"s", nullptr), L"a|A|");
    EXPECT_EQ(get(L"t", nullptr), L"") << "a section without keys";
    EXPECT_EQ(get(L"none", nullptr), kDefault);
    EXPECT_EQ(lines(L"S"), L"a=\"1\"|bare|A=2|") << "quotes stay, comments go";
    EXPECT_EQ(lines(L"none"), L"");
    wchar_t names[16];
    EXPECT_EQ(GetPrivateProfileSectionNamesW(names, 16, path().wstring().c_str()), 6U);
    EXPECT_EQ(shown({names, 7}), L"s|t|S||");
    put("k=v\r\n");
    EXPECT_EQ(get(nullptr, nullptr), L"");
    EXPECT_EQ(get(L"", nullptr), L"k|");
}

TEST_F(PrivateProfile, CutsWhatDoesNotFit) {
    put("[s]\r\nk=hello\r\nj=1\r\n");
    const std::wstring file = path().wstring();
    const struct {
        const wchar_t* key;
        DWORD capacity, result;
        std::wstring stored; ///< '|' for a NUL
    } cases[] = {
        {L"k", 0, 0, L"####"},      {L"k", 1, 0, L"|###"},      {L"k", 2, 1, L"h|##"},
        {L"k", 6, 5, L"hello|##"},  {L"k", 7, 5, L"hello|##"},  {nullptr, 0, 0, L"###"},
        {nullptr, 1, 0, L"|##"},    {nullptr, 2, 0, L"||#"},    {nullptr, 4, 2, L"k|||##"},
        {nullptr, 5, 4, L"k|j||#"}, {nullptr, 9, 4, L"k|j||#"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.capacity);
        std::wstring buffer(12, L'#');
        SetLastError(777);
        EXPECT_EQ(
            GetPrivateProfileStringW(L"s", c.key, L"", buffer.data(), c.capacity, file.c_str()),
            c.result);
        EXPECT_EQ(shown(buffer).substr(0, c.stored.size()), c.stored);
        EXPECT_EQ(GetLastError(), c.capacity == 0 ? 777U : ERROR_SUCCESS);
    }
}

TEST_F(PrivateProfile, TreatsDefaultsLikeValues) {
    put("[s]\r\n");
    EXPECT_EQ(get(L"s", L"k", nullptr), L"");
    EXPECT_EQ(get(L"s", L"k", L"  d  "), L"  d");
    EXPECT_EQ(get(L"s", L"k", L"d\t "), L"d\t");
    EXPECT_EQ(get(L"s", L"k", L"\" d \" "), L" d ");
}

TEST_F(PrivateProfile, ReadsNumbers) {
    const struct {
        const wchar_t* text;
        UINT number;
    } cases[] = {
        {L"42", 42},        {L"42A", 42},   {L"B4", 0},    {L"abc", 0},
        {L"+1", 1},         {L"-1", ~0U},   {L"0x1F", 31}, {L"-0x10g", ~0U - 15},
        {L"4294967298", 2}, {L"\" 7\"", 7}, {L"", 70},     {L"\"\"", 70},
        {L"- 1", 0},
    };
    const std::wstring file = path().wstring();
    for (const auto& c : cases) {
        ASSERT_TRUE(write(L"s", L"k", c.text));
        EXPECT_EQ(GetPrivateProfileIntW(L"s", L"k", 70, file.c_str()), c.number) << c.text;
    }
    EXPECT_EQ(GetPrivateProfileIntW(L"s", L"none", -1, file.c_str()), ~0U);
    EXPECT_EQ(GetPrivateProfileIntW(nullptr, nullptr, 1, file.c_str()), 1U);
}

TEST_F(PrivateProfile, ChangesOnlyTheLinesConcerned) {
    const std::string bom = "\xFF\xFE";
    const struct {
        const char* name;
        std::string before;
        const wchar_t *section, *key, *value;
        std::string after;
    } cases[] = {
        {"empty file", "", L"s", L"k", L"v", "[s]\r\nk=v\r\n"},
        {"key before the next section", "[s]\r\na=1\r\n[t]\r\nb=2\r\n", L"s", L"n", L"9",
         "[s]\r\na=1\r\nn=9\r\n[t]\r\nb=2\r\n"},
        {"key behind a comment", "[s]\r\na=1\r\n;note\r\n[t]\r\n", L"s", L"n", L"9",
         "[s]\r\na=1\r\n;note\r\nn=9\r\n[t]\r\n"},
        {"key before blank lines", "[s]\r\na=1\r\n\r\n \r\n[t]\r\n", L"s", L"n", L"9",
         "[s]\r\na=1\r\nn=9\r\n\r\n \r\n[t]\r\n"},
        {"key in an empty section", "[s]\r\n\r\n[t]\r\n", L"s", L"n", L"9",
         "[s]\r\nn=9\r\n\r\n[t]\r\n"},
        {"key behind an unended line", "[s]\r\na=1", L"s", L"n", L"9", "[s]\r\na=1\r\nn=9\r\n"},
        {"section behind an unended line", "[s]\r\na=1", L"t", L"b", L"2",
         "[s]\r\na=1\r\n[t]\r\nb=2\r\n"},
        {"key without a section", "[s]\r\na=1\r\n", L"", L"k", L"v", "k=v\r\n[s]\r\na=1\r\n"},
        {"old spelling stays", "[SecTion]\r\nKeyName=1\r\n", L"section", L"keyname", L"2",
         "[SecTion]\r\nKeyName=2\r\n"},
        {"layout stays", "; head\n\n [s] ; x\n  k =  \"1\"  \n\tj=2\n\n", L"s", L"k", L"3",
         "; head\n\n [s] ; x\n  k =  3\n\tj=2\n\n"},
        {"same value, other layout", "[s]\r\n  k = v \r\n", L"s", L"k", L" v",
         "[s]\r\n  k = v \r\n"},
        {"value is written as given", "[s]\r\nk=1\r\n", L"s", L"k", L"  \"v\" ",
         "[s]\r\nk=\"v\" \r\n"},
        {"first of two keys", "[s]\r\na=1\r\nA=2\r\n", L"s", L"A", L"3", "[s]\r\na=3\r\nA=2\r\n"},
        {"bytes that are no text", "[s]\r\n\xD6\xD0=\x81\\\xB8\xE8\r\nbad=\xFF\xD6\r\n", L"s", L"k",
         L"v", "[s]\r\n\xD6\xD0=\x81\\\xB8\xE8\r\nbad=\xFF\xD6\r\nk=v\r\n"},
        {"bytes before the first section", "junk \xFF\n\n[s]\nk=1\n", L"s", L"k", L"2",
         "junk \xFF\n\n[s]\nk=2\n"},
        {"added lines end in CR LF", "[s]\na=1\n[t]\nc=3\n", L"s", L"n", L"8",
         "[s]\na=1\nn=8\r\n[t]\nc=3\n"},
        {"bare name becomes a key", "[s]\r\nk \r\nj\r\n", L"s", L"k", L"v", "[s]\r\nk=v\r\nj\r\n"},
        {"bare name goes", "[s]\r\nk\r\nj\r\n", L"s", L"j", nullptr, "[s]\r\nk\r\n"},
        {"key goes", "[s]\na=1\nb=2 \nc=3\n", L"s", L"B", nullptr, "[s]\na=1\nc=3\n"},
        {"missing key goes", "[s]\na=1\n", L"s", L"b", nullptr, "[s]\na=1\n"},
        {"section goes with its comments", "[r]\nz=0\n[s]\na=1\n;note\n\n[t]\nc=3\n", L"s", nullptr,
         nullptr, "[r]\nz=0\n[t]\nc=3\n"},
        {"section goes whatever the value", "[s]\na=1\n[t]\nc=3", L"t", nullptr, L"x",
         "[s]\na=1\n"},
        {"missing section goes", "[s]\na=1\n", L"t", nullptr, nullptr, "[s]\na=1\n"},
        {"line end in the value", "[s]\r\nz=1\r\n", L"s", L"a", L"x\ny=2",
         "[s]\r\nz=1\r\na=x\ny=2\r\n"},
        {"name like a comment", "[s]\r\n;c=v\r\n", L"s", L";c", L"w", "[s]\r\n;c=w\r\n"},
        {"name like a section", "[s]\r\n", L"s", L"[k]", L"v", "[s]\r\n[k]=v\r\n"},
        {"bracket in the section", "", L"x]y", L"k", L"v", "[x]y]\r\nk=v\r\n"},
        {"code page", "", L"中", L"文", L"值乗ก\U0001F600",
         "[\xD6\xD0]\r\n\xCE\xC4=\xD6\xB5\x81\\???\r\n"},
        {"value behind half a character's =", "[s]\r\n\x81\\=1\r\n", L"s", L"乗", L"2",
         "[s]\r\n\x81\\=2\r\n"},
        {"UTF-16", bom + "[\0s\0]\0\r\0\n\0k\0=\0-N\r\0\n\0"s, L"s", L"k", L"文ก",
         bom + "[\0s\0]\0\r\0\n\0k\0=\0\x87"
               "e\x01\x0E\r\0\n\0"s},
        {"UTF-16 pair in a new section", bom, L"s", L"k", L"\U0001F600",
         bom + "[\0s\0]\0\r\0\n\0k\0=\0=\xD8\0\xDE\r\0\n\0"s},
        {"UTF-16 layout", bom + "[\0s\0]\0\n\0k\0 \0=\0 \0v\0"s, L"s", L"k", L"w",
         bom + "[\0s\0]\0\n\0k\0 \0=\0 \0w\0"s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        put(c.before);
        EXPECT_TRUE(write(c.section, c.key, c.value));
        EXPECT_EQ(bytes(), c.after);
    }
}

TEST_F(PrivateProfile, ReplacesSections) {
    const std::wstring file = path().wstring();
    put("[s]\r\na=1\r\n;note\r\n\r\n[t]\r\nb=2\r\n");
    EXPECT_TRUE(WritePrivateProfileSectionW(L"S", L"c= 3\0bare\0", file.c_str()));
    EXPECT_EQ(bytes(), "[s]\r\nc= 3\r\nbare\r\n\r\n[t]\r\nb=2\r\n");
    EXPECT_EQ(lines(L"s"), L"c=3|bare|");
    EXPECT_TRUE(WritePrivateProfileSectionW(L"u", L"d=4\0", file.c_str()));
    EXPECT_TRUE(WritePrivateProfileSectionW(L"s", nullptr, file.c_str()));
    EXPECT_EQ(bytes(), "[t]\r\nb=2\r\n[u]\r\nd=4\r\n");
    put("[s]");
    EXPECT_TRUE(WritePrivateProfileSectionW(L"s", L"a=1\0", file.c_str()));
    EXPECT_EQ(bytes(), "[s]\r\na=1\r\n");
}

// Changes keep the index up to date without parsing, so it must come out as parsing has it.
TEST(ProfileText, SaysAfterChangesWhatItsBytesSay) {
    std::mt19937 random(20260722);
    const auto pick = [&random](const auto& from) {
        return from[std::uniform_int_distribution<std::size_t>(0, std::size(from) - 1)(random)];
    };
    const wchar_t* const sections[] = {L"", L"s", L"T", L"u"};
    const wchar_t* const keys[] = {L"a", L"B", L"c", L"a=b", L";d", L"[e]", L"", L"f\ng"};
    const wchar_t* const values[] = {L"1", L"", L" long value ", L"x\r\na=9", L"\n[v]\nk=0", L"板"};
    for (const std::string& start :
         {"z=0\n\n[s]\na=1\nA=2\n\n;x\n[s]\nb\n[t]"s, "\xFF\xFE[\0s\0]\0\n\0a\0=\0"s}) {
        headless::ProfileText text(start, 936);
        for (int i = 0; i < 300; ++i) {
            const wchar_t* const section = pick(sections);
            const int action = std::uniform_int_distribution<int>(0, 19)(random);
            if (action == 0) text.removeSection(section);
            if (action == 1) text.setLines(section, {L"p=1", L"q", L"p=2"});
            if (action == 2) text.removeKey(section, pick(keys));
            if (action > 2) text.setValue(section, pick(keys), pick(values));

            const headless::ProfileText parsed(text.bytes(), 936);
            ASSERT_EQ(text.sectionNames(), parsed.sectionNames()) << text.bytes();
            for (const wchar_t* const name : {L"", L"s", L"t", L"u", L"v", L"e"}) {
                ASSERT_EQ(text.lines(name), parsed.lines(name)) << text.bytes();
                for (const wchar_t* const key : keys)
                    ASSERT_EQ(text.value(name, key), parsed.value(name, key)) << text.bytes();
            }
        }
    }
}

} // namespace
