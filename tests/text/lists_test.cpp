// Splitting and joining of texts.
#include <gmock/gmock.h>

#include "text/splitting.h"
#include "text/string_list.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Split, DropsEmptyRuns) {
    EXPECT_THAT(String::Split("a; b;;c", "; "), ElementsAre("a", "b", "c"));
    EXPECT_THAT(String::Split(",a,,b,", ","), ElementsAre("a", "b"));
    EXPECT_THAT(String::Split("a,b", ""), ElementsAre("a,b"));
    EXPECT_THAT(String::Split("", ","), IsEmpty());
    EXPECT_THAT(String::Split("", ""), IsEmpty());
    EXPECT_THAT(String::Split(";;", ";"), IsEmpty());
}

std::vector<CString> wide(const CStringArray& array) {
    std::vector<CString> items;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        items.push_back(array.GetAt(i));
    return items;
}

TEST(SplitString, ReplacesTheArray) {
    CStringArray out;
    out.Add(L"from before");
    String::SplitString(L"a,,b,", L',', out);
    EXPECT_THAT(wide(out), ElementsAre(L"a", L"b"));
    String::SplitString(L"abc", L',', out);
    EXPECT_THAT(wide(out), ElementsAre(L"abc"));
    String::SplitString(L"", L',', out);
    EXPECT_THAT(wide(out), IsEmpty());
    String::SplitString(L",板,墙", L',', out);
    EXPECT_THAT(wide(out), ElementsAre(L"板", L"墙"));
}

TEST(SplitLongString, KeepsEmptyPiecesOnDemand) {
    EXPECT_THAT(kelmor::splitLongString(L"a,,b,", L",", 0, 0), ElementsAre(L"a", L"b"));
    EXPECT_THAT(kelmor::splitLongString(L"a,,b,", L",", 0, 1), ElementsAre(L"a", L"", L"b", L""));
    EXPECT_THAT(kelmor::splitLongString(L"", L",", 0, 1), ElementsAre(L""));
    EXPECT_THAT(kelmor::splitLongString(L"", L",", 0, 0), IsEmpty());
}

TEST(SplitLongString, TakesSeparatorsWhole) {
    EXPECT_THAT(kelmor::splitLongString(L"a--b-c", L"--", 0, 0), ElementsAre(L"a", L"b-c"));
    EXPECT_THAT(kelmor::splitLongString(L"abc", L"", 0, 0), ElementsAre(L"abc"));
}

TEST(SplitLongString, UpperCasesBeforeItCuts) {
    EXPECT_THAT(kelmor::splitLongString(L"wall,Board", L",", 1, 0), ElementsAre(L"WALL", L"BOARD"));
    EXPECT_THAT(kelmor::splitLongString(L"axb", L"X", 1, 0), ElementsAre(L"A", L"B"));
}

TEST(SplicingString, WritesSeparatorsBetweenItemsOnly) {
    const std::vector<CString> items = {L"", L"A", L"", L"B"};
    EXPECT_EQ(kelmor::SplicingString(items, L",", 0), L"A,,B");
    EXPECT_EQ(kelmor::SplicingString(items, L",", 1), L"A,B");
    EXPECT_EQ(kelmor::SplicingString({}, L",", 0), L"");
}

TEST(DelStrByVecStr, RemovesEveryEqualItem) {
    std::vector<CString> list = {L"A", L"b", L"A", L"a"};
    kelmor::DelStrByVecStr(list, {L"A", L"X"}, 0);
    EXPECT_THAT(list, ElementsAre(L"b", L"a"));
}

TEST(IsStrInVecString, ComparesLettersOnDemand) {
    const std::vector<CString> list = {L"板", L"WALL", L""};
    EXPECT_EQ(kelmor::IsStrInVecString(L"wall", list, 0), 1);
    EXPECT_EQ(kelmor::IsStrInVecString(L"wall", list, 1), 0);
    EXPECT_EQ(kelmor::IsStrInVecString(L"WALL", list, 2), 1);
    EXPECT_EQ(kelmor::IsStrInVecString(L"", list, 0), 0);
    EXPECT_EQ(kelmor::IsStrInVecString(L"WALL", {}, 0), 0);
}

} // namespace
