#include <numbers>

#include <gmock/gmock.h>

#include "ed/input_queue.h"
#include "ed/keywords.h"
#include "ed/parse_input.h"

namespace {

using namespace headless;

/// The answers of a queue as text, until its input ends.
std::vector<std::wstring> words(InputQueue& queue) {
    std::vector<std::wstring> result;
    for (;;) {
        const InputAnswer answer = queue.nextWord();
        if (std::holds_alternative<InputEnded>(answer.value)) return result;
        const auto* text = std::get_if<std::wstring>(&answer.value);
        result.push_back(text == nullptr ? L"(no text)" : *text);
    }
}

TEST(InputQueue, ABlankAndALineEndAreEnter) {
    const struct {
        const wchar_t* typed;
        std::vector<std::wstring> answers;
    } cases[] = {
        {L"LINE 0,0 1,1\n\n", {L"LINE", L"0,0", L"1,1", L""}},
        {L"LINE  1,1\n", {L"LINE", L"", L"1,1"}},
        {L"LINE \n", {L"LINE", L""}},
        {L"LINE ", {L"LINE"}},
        {L"LINE\nEND", {L"LINE", L"END"}},
        {L"\n", {L""}},
        {L"", {}},
    };
    for (const auto& c : cases) {
        InputQueue queue;
        queue.typeText(c.typed);
        EXPECT_EQ(words(queue), c.answers) << testing::PrintToString(c.typed);
    }
}

TEST(InputQueue, TextPromptTakesTheRestOfTheLine) {
    InputQueue queue;
    queue.type(L"TEXT two words");
    queue.type(L"next");
    EXPECT_EQ(std::get<std::wstring>(queue.nextWord().value), L"TEXT");
    EXPECT_EQ(std::get<std::wstring>(queue.nextLine().value), L"two words");
    EXPECT_EQ(std::get<std::wstring>(queue.nextLine().value), L"next");
    EXPECT_TRUE(queue.isEmpty());
}

TEST(InputQueue, NestedInputHidesTheRestUntilItPauses) {
    InputQueue queue;
    queue.type(L"outer1 outer2");
    {
        NestedInput nested(queue, {WholeText{L"a b"}, PauseForUser{}, WholeText{L"c"}});
        EXPECT_EQ(words(queue), (std::vector<std::wstring>{L"a b", L"outer1", L"c"}));
    }
    EXPECT_EQ(words(queue), (std::vector<std::wstring>{L"outer2"}));
}

TEST(InputQueue, ReaderIsAskedOnlyWhenNothingIsQueued) {
    InputQueue queue;
    int asked = 0;
    queue.setReader([&]() -> std::optional<InputItem> {
        if (++asked > 1) return std::nullopt;
        return TypedLine{L"read", true};
    });
    queue.type(L"queued");
    const InputAnswer queued = queue.nextWord();
    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(queued.shown);
    const InputAnswer read = queue.nextWord();
    EXPECT_EQ(std::get<std::wstring>(read.value), L"read");
    EXPECT_TRUE(read.shown);
    EXPECT_TRUE(std::holds_alternative<InputEnded>(queue.nextWord().value));
}

TEST(Keywords, MatchByTheirCapitals) {
    const struct {
        const wchar_t *list, *input;
        const wchar_t* keyword; // null: none
    } cases[] = {
        {L"Close Undo", L"c", L"Close"},
        {L"Close Undo", L"CLO", L"Close"},
        {L"Close Undo", L"closed", nullptr},
        {L"Close Undo", L"", nullptr},
        {L"eXit", L"x", L"eXit"},
        {L"eXit", L"EX", L"eXit"},
        {L"eXit", L"e", nullptr},
        {L"LType LTScale", L"lt", L"LType"},
        {L"LType LTScale", L"lts", L"LTScale"},
        {L"LType", L"l", nullptr},
        {L"LTYPE,LT", L"lty", L"LTYPE"},
        {L"LTYPE,LT", L"l", nullptr},
        {L"LTYPE", L"lt", nullptr},
        {L"LTYPE", L"ltype", L"LTYPE"},
        {L"all", L"al", nullptr},
        {L"all", L"ALL", L"all"},
        {L"Mode1 Mode2", L"mode2", L"Mode2"},
        {L"Ja Nein _Yes No", L"j", L"Yes"},
        {L"Ja Nein _Yes No", L"y", nullptr},
        {L"Ja Nein _Yes No", L"_y", L"Yes"},
        {L"Ja Nein _Yes No", L"_n", L"No"},
    };
    for (const auto& c : cases) {
        const auto keyword = Keywords(c.list).match(c.input);
        EXPECT_EQ(keyword.value_or(L"(none)"), c.keyword == nullptr ? L"(none)" : c.keyword)
            << testing::PrintToString(c.list) << " " << testing::PrintToString(c.input);
    }
}

TEST(ParseInput, ReadsNumbers) {
    const struct {
        const wchar_t* text;
        std::optional<double> value;
    } cases[] = {
        {L"12.5", 12.5},        {L"-3", -3.0},          {L"+3", 3.0},
        {L".5", 0.5},           {L"1e3", 1000.0},       {L"1/4", 0.25},
        {L"-1/4", -0.25},       {L"3-1/4", 3.25},       {L"-3-1/4", -3.25},
        {L"1/0", std::nullopt}, {L"", std::nullopt},    {L"+-3", std::nullopt},
        {L"1x", std::nullopt},  {L"nan", std::nullopt}, {L"1e999", std::nullopt},
        {L"１", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseReal(c.text), c.value) << testing::PrintToString(c.text);
    EXPECT_EQ(parseInteger(L"32767"), 32767);
    EXPECT_EQ(parseInteger(L"32768"), std::nullopt);
    EXPECT_EQ(parseInteger(L"-32768"), -32768);
    EXPECT_EQ(parseInteger(L"1.0"), std::nullopt);
}

TEST(ParseInput, ReadsPoints) {
    // The user's x runs along the world's y.
    const PointFrame frame{AcGePoint3d(10, 20, 30), 7.0,
                           AcGeMatrix3d::rotation(-std::numbers::pi / 2, AcGeVector3d::kZAxis)};
    const struct {
        const wchar_t* text;
        std::optional<AcGePoint3d> point;
    } cases[] = {
        {L"1,2", AcGePoint3d(1, 2, 7)},
        {L"1,2,3", AcGePoint3d(1, 2, 3)},
        {L"@1,2", AcGePoint3d(11, 22, 30)},
        {L"@1,2,3", AcGePoint3d(11, 22, 33)},
        {L"@", AcGePoint3d(10, 20, 30)},
        {L"@5<90", AcGePoint3d(10, 25, 30)},
        {L"5<0", AcGePoint3d(5, 0, 7)},
        {L"1", std::nullopt},
        {L"1,", std::nullopt},
        {L"1,2,3,4", std::nullopt},
        {L"1,b", std::nullopt},
        {L"*1,2", AcGePoint3d(2, -1, 7)},
        {L"*5<90,", std::nullopt},
        {L"*5<90", AcGePoint3d(5, 0, 7)},
        {L"@*1,2,3", AcGePoint3d(12, 19, 33)},
        {L"<90", std::nullopt},
        {L"", std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        const auto point = parsePoint(c.text, frame);
        ASSERT_EQ(point.has_value(), c.point.has_value());
        if (point) {
            EXPECT_TRUE(point->isEqualTo(*c.point));
        }
    }
}

} // namespace
