#include <gmock/gmock.h>

#include "ed/prompts.h"
#include "editor_fixture.h"

namespace {

using PromptTest = EditorTest;

TEST_F(PromptTest, NumbersObeyTheRules) {
    const struct {
        const char* name;
        int flags;
        std::vector<const wchar_t*> typed;
        int result;
        double value;
    } cases[] = {
        {"a plain answer", 0, {L"2.5"}, RTNORM, 2.5},
        {"Enter is an answer of its own", 0, {L""}, RTNONE, 0},
        {"Enter refused", RSG_NONULL, {L"", L"1"}, RTNORM, 1},
        {"zero refused", RSG_NOZERO, {L"0", L"-1"}, RTNORM, -1},
        {"negative refused", RSG_NONEG, {L"-1", L"0"}, RTNORM, 0},
        {"asked again after nonsense", 0, {L"many", L"3"}, RTNORM, 3},
        {"nothing left", 0, {L"many"}, RTCAN, 0},
        {"a keyword", 0, {L"c"}, RTKWORD, 0},
        {"any other text", RSG_OTHER, {L"many"}, RTKWORD, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ed_.input.clear();
        for (const wchar_t* line : c.typed)
            type(line);
        acedInitGet(c.flags, L"Close");
        double value = 0.0;
        EXPECT_EQ(acedGetReal(L"\nWidth: ", &value), c.result);
        EXPECT_EQ(value, c.value);
        EXPECT_TRUE(ed_.input.isEmpty());
    }
}

TEST_F(PromptTest, RulesHoldForOnePromptOnly) {
    acedInitGet(RSG_NONULL, L"Close");
    type(L"1");
    type(L"");
    int value = 0;
    EXPECT_EQ(acedGetInt(L"\nCount: ", &value), RTNORM);
    EXPECT_EQ(acedGetInt(L"\nCount: ", &value), RTNONE);
}

TEST_F(PromptTest, KeywordsComeBackInFull) {
    ACHAR keyword[133] = L"";
    EXPECT_EQ(acedGetInput(keyword), RTERROR);

    acedInitGet(0, L"Ja Nein _Yes No");
    type(L"n");
    EXPECT_EQ(acedGetKword(L"\nOK [Ja/Nein]: ", keyword), RTNORM);
    EXPECT_STREQ(keyword, L"No");

    acedInitGet(0, L"Close Undo");
    type(L"und");
    ads_point point;
    EXPECT_EQ(acedGetPoint(nullptr, L"\nNext: ", point), RTKWORD);
    EXPECT_EQ(acedGetInput(keyword), RTNORM);
    EXPECT_STREQ(keyword, L"Undo");

    EXPECT_EQ(acedGetKword(L"\nNo list: ", keyword), RTERROR);
}

TEST_F(PromptTest, TextsFitTheirBuffers) {
    type(L"two words");
    ACHAR text[512];
    EXPECT_EQ(acedGetString(1, L"\nName: ", text), RTNORM);
    EXPECT_STREQ(text, L"two words");

    type(L"two words");
    EXPECT_EQ(acedGetString(0, L"\nName: ", text), RTNORM);
    EXPECT_STREQ(text, L"two");
    ed_.input.clear();

    type(std::wstring(600, L'x').c_str());
    EXPECT_EQ(acedGetString(0, nullptr, text, 5), RTNORM);
    EXPECT_STREQ(text, L"xxxx");
    type(std::wstring(600, L'x').c_str());
    EXPECT_EQ(acedGetString(0, nullptr, text), RTNORM);
    EXPECT_EQ(std::wcslen(text), 132U);

    type(L"");
    EXPECT_EQ(acedGetString(0, nullptr, text), RTNORM);
    EXPECT_STREQ(text, L"");
}

TEST_F(PromptTest, PointsStartFromTheBaseOrTheLastPoint) {
    ed_.variables.set(L"LASTPOINT", AcGePoint3d(100, 0, 0));
    ed_.variables.set(L"ELEVATION", 5.0);
    const ads_point base = {10, 10, 0};
    ads_point point;

    type(L"@1,1");
    EXPECT_EQ(acedGetPoint(base, L"\nPoint: ", point), RTNORM);
    EXPECT_THAT(point, testing::ElementsAre(11, 11, 0));
    type(L"@1,1");
    EXPECT_EQ(acedGetPoint(nullptr, L"\nPoint: ", point), RTNORM);
    EXPECT_THAT(point, testing::ElementsAre(101, 1, 0));
    type(L"1,1");
    EXPECT_EQ(acedGetPoint(nullptr, L"\nPoint: ", point), RTNORM);
    EXPECT_THAT(point, testing::ElementsAre(1, 1, 5));
    ed_.input.add(AcGePoint3d(3, 4, 6));
    EXPECT_EQ(acedGetPoint(nullptr, L"\nPoint: ", point), RTNORM);
    EXPECT_THAT(point, testing::ElementsAre(3, 4, 6));
}

TEST_F(PromptTest, EscapeAndTheEndOfInputCancel) {
    int value = 7;
    ed_.input.add(headless::EscapeKey{});
    EXPECT_EQ(acedGetInt(L"\nCount: ", &value), RTCAN);
    EXPECT_TRUE(printed(L"*Cancel*"));
    EXPECT_EQ(acedGetInt(L"\nCount: ", &value), RTCAN);
    EXPECT_TRUE(printed(L"no more input"));
    ACHAR text[133];
    EXPECT_EQ(acedGetString(0, nullptr, text), RTCAN);
    EXPECT_EQ(value, 7);
}

TEST_F(PromptTest, ScreenShowsPromptsAndAnswers) {
    type(L"12");
    int value = 0;
    acedGetInt(L"\nCount: ", &value);
    acutPrintf(L"\n%d of %s", value, L"板");
    EXPECT_EQ(ed_.output.text(), L"\nCount: 12\n12 of 板");

    ed_.output.clear();
    ed_.input.add(AcGePoint3d(0.1, -2, 0));
    ads_point point;
    acedGetPoint(nullptr, L"\nCorner: ", point);
    EXPECT_EQ(ed_.output.text(), L"\nCorner: 0.1,-2,0");
}

} // namespace
