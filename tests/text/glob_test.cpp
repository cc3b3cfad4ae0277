#include "text/glob.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(StringMatch, FollowsThePattern) {
    const struct {
        const char *name, *pattern, *text;
        int nocase, expected;
    } cases[] = {
        {"both empty", "", "", 0, 1},
        {"empty pattern matches nothing else", "", "a", 0, 0},
        {"star matches an empty run", "a*b", "ab", 0, 1},
        {"stars collapse", "a***b", "axxb", 0, 1},
        {"lone star matches the empty text", "*", "", 0, 1},
        {"trailing stars need no text", "a**", "a", 0, 1},
        {"text left over", "a", "ab", 0, 0},
        {"pattern left over", "ab", "a", 0, 0},
        {"star tries a later place", "*ab", "aab", 0, 1},
        {"case counts", "*.DWG", "a.dwg", 0, 0},
        {"case does not count", "*.DWG", "a.dwg", 1, 1},
        {"question mark takes one byte", "a?c", "abc", 0, 1},
        {"question mark needs a byte", "a?", "a", 0, 0},
        {"set", "[abc]x", "bx", 0, 1},
        {"negated set", "[^a-c]x", "dx", 0, 1},
        {"negated set refuses", "[^a-c]x", "bx", 0, 0},
        {"range written high to low", "[c-a]", "b", 0, 1},
        {"both ends of a range count", "[b-d]", "d", 0, 1},
        {"range folds its bounds", "[A-C]", "b", 1, 1},
        {"caret counts only first", "[a^]", "^", 0, 1},
        {"escape in a set", "[\\]]", "]", 0, 1},
        {"escaped dash in a set", "[a\\-z]", "-", 0, 1},
        {"set left open", "[ab", "b", 0, 1},
        {"set left open at once matches nothing", "[", "a", 0, 0},
        {"set needs a byte", "[^a]", "", 0, 0},
        {"empty set matches nothing", "[]a", "a", 0, 0},
        {"escaped star", "a\\*", "a*", 0, 1},
        {"escaped star is no star", "a\\*", "ab", 0, 0},
        {"backslash at the end is itself", "a\\", "a\\", 0, 1},
        {"bytes above 127 form ranges", "[\x80-\x90]", "\x85", 0, 1},
        {"bytes above 127 lie above letters", "[a-\x90]", "z", 0, 1},
        {"last star decides", "*a*b*c", "aXbXbXc", 0, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(String::stringmatch(c.pattern, c.text, c.nocase), c.expected) << c.name;
}

// A matcher that tries every place for every star would need longer than the age of the universe.
TEST(StringMatch, StaysLinearInTextTimesPattern) {
    std::string pattern;
    for (int i = 0; i < 40; ++i)
        pattern += "*a";
    const std::string text(4000, 'a');
    EXPECT_EQ(String::stringmatch((pattern + "*b").c_str(), text.c_str(), 0), 0);
    EXPECT_EQ(String::stringmatch((pattern + "*").c_str(), text.c_str(), 0), 1);
}

TEST(StringMatch, NarrowsWideTexts) {
    EXPECT_TRUE(String::StringMatch(L"板*", L"板轮廓", false));
    EXPECT_FALSE(String::StringMatch(L"墙*", L"板轮廓", false));
    EXPECT_TRUE(String::StringMatch(L"WALL-?", L"wall-1", true));
    EXPECT_FALSE(String::StringMatch(L"WALL-?", L"wall-1", false));
}

} // namespace
