#include "text/conversions.h"

#include <climits>

#include <gtest/gtest.h>
#include <oleauto.h>

#include "win/state.h"

namespace {

// Two different pages show which of them a function speaks.
class TwoCodePages : public testing::Test {
protected:
    TwoCodePages() {
        state_.ansiCodePage = 936;
        state_.oemCodePage = 437;
    }

    headless::WinState state_;
};

const std::string kEAcuteIn437 = "\x82";    // é
const std::string kZhongIn936 = "\xD6\xD0"; // 中
const std::string kZhongInUtf8 = "\xE4\xB8\xAD";

TEST_F(TwoCodePages, WidenFromAnsi) {
    EXPECT_EQ(String::ToCString(kZhongIn936, false), L"中");
    EXPECT_EQ(String::ToCString(kZhongInUtf8, true), L"中");
    EXPECT_EQ(String::ToCString("\xE2\x82\xAC", true), L"€");
    EXPECT_EQ(String::ToCString("\xE0\xB8\x81", true), L"?") << "page 936 has no Thai letters";
    EXPECT_TRUE(String::ToCString("", true).IsEmpty());
}

TEST_F(TwoCodePages, NarrowToOem) {
    EXPECT_EQ(String::ToString(L"é", false), kEAcuteIn437);
    EXPECT_EQ(String::ToString(L"中", false), "?");
    EXPECT_EQ(String::ToString(nullptr, false), "");
    // The OEM bytes 82 41 are one Chinese letter to the ANSI page.
    EXPECT_EQ(String::ToString(L"éA", true), String::ToUTF8("\x82\x41"));
    EXPECT_NE(String::ToString(L"éA", true), "\xC3\xA9"
                                             "A");
}

TEST_F(TwoCodePages, Utf8PassesThroughAnsi) {
    EXPECT_EQ(String::ToUTF8(kZhongIn936), kZhongInUtf8);
    EXPECT_EQ(String::FromUTF8(kZhongInUtf8), kZhongIn936);
    EXPECT_EQ(String::ToUTF8(""), "");
    EXPECT_EQ(String::FromUTF8(""), "");
}

TEST_F(TwoCodePages, BstrsPassThroughAnsi) {
    BSTR bstr = CStringToBStr(L"中é");
    EXPECT_EQ(SysStringLen(bstr), 2U);
    EXPECT_EQ(BStrToCString(bstr), L"中é");
    SysFreeString(bstr);
    EXPECT_TRUE(BStrToCString(nullptr).IsEmpty());

    BSTR thai = CStringToBStr(L"\u0E01");
    EXPECT_EQ(BStrToCString(thai), L"?");
    SysFreeString(thai);
}

TEST(Numbers, AreFilledWithZerosBeforeTheSign) {
    const struct {
        int value, width;
        const char* text;
    } cases[] = {{-5, 4, "00-5"}, {7, 3, "007"}, {1234, 3, "1234"},
                 {7, 0, "7"},     {7, -3, "7"},  {INT_MIN, 12, "0-2147483648"}};
    for (const auto& c : cases) {
        EXPECT_EQ(String::ToString(c.value, c.width), c.text);
        EXPECT_EQ(String::ToString(static_cast<long>(c.value), c.width), c.text);
    }
}

TEST(Numbers, HaveTheDecimalsAskedFor) {
    EXPECT_EQ(String::ToString(2.5, 0), "2.5");
    EXPECT_EQ(String::ToString(2.5, 2), "2.50");
    EXPECT_EQ(String::ToString(2.0, 1), "2.0");
    EXPECT_EQ(String::ToString(1234567.0, 0), "1.23457e+06");
    EXPECT_EQ(String::ToString(-0.125, -1), "-0.125");
}

TEST(Numbers, AreReadFromTheirLeadingPart) {
    EXPECT_EQ(String::ToInt("42mm"), 42);
    EXPECT_EQ(String::ToInt("mm"), 0);
    EXPECT_DOUBLE_EQ(String::ToDouble(" -1.5e1x"), -15.0);
    EXPECT_DOUBLE_EQ(String::ToDouble(""), 0.0);
}

TEST(Numbers, JoinWithASeparator) {
    EXPECT_EQ(MyFormat(3, 5, L"x"), L"3x5");
    EXPECT_EQ(MyFormat(-3, 0, L""), L"-30");
}

TEST(LetterCase, ChangesAsciiBytesOnly) {
    EXPECT_EQ(String::ToUpper("wall\xE4"
                              "b"),
              "WALL\xE4"
              "B");
    EXPECT_EQ(String::ToLower("WALL-9"), "wall-9");
}

TEST(LetterCase, DoesNotOrderNames) {
    EXPECT_TRUE(String::LessNoCase(L"abc", L"ABD"));
    EXPECT_FALSE(String::LessNoCase(L"ABC", L"abc"));
    EXPECT_FALSE(String::LessNoCase(L"b", L"A"));
}

TEST(Copies, TakeTheWholeText) {
    EXPECT_EQ(String::ToWString(L"板"), L"板");
    EXPECT_EQ(String::ToWString(nullptr), L"");
    EXPECT_TRUE(String::LoadStringW(64999).IsEmpty());
}

} // namespace
