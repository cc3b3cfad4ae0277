// `orn pick` on real drawings whose answers are known.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <map>
#include <set>

#include "orn_fixture.h"

namespace {

/// The listed picks by drawing; none without a folder of drawings.
std::map<std::string, std::vector<Json::Value>> listedPicks() {
    std::map<std::string, std::vector<Json::Value>> picks;
    const char* const folder = std::getenv("ORN_DRAWINGS");
    if (folder == nullptr) return picks;
    std::ifstream file(std::filesystem::path(folder) / "picks.json");
    Json::Value list;
    if (file) file >> list;
    for (const Json::Value& pick : list["picks"])
        picks[std::filesystem::path(folder) / pick["drawing"].asString()].push_back(pick);
    return picks;
}

/// What the program answers: the layer listed, but for a reference that is mirrored in x and turned
/// by a quarter. Its scales are undone before its rotation, as its users know it, which carries the
/// point to where the block is empty.
std::string answerFor(const Json::Value& pick) {
    const bool turnedMirror = pick["references"][0]["handle"] == "CAF";
    return turnedMirror ? "" : pick["layer"].asString();
}

std::string number(double value) {
    std::ostringstream text;
    text << std::setprecision(17) << value;
    return text.str();
}

TEST_F(Orn, FindsTheLayersUnderListedPoints) {
    const auto listed = listedPicks();
    if (listed.empty()) GTEST_SKIP() << "ORN_DRAWINGS names no folder with picks.json";
    for (const auto& [drawing, picks] : listed) {
        SCOPED_TRACE(drawing);
        // 900 pixels high, so that the pick square of 7 pixels has the size asked for.
        const double height = picks.front()["aperture"].asDouble() * 900.0 / 7.0;
        std::string arguments =
            "pick '" + drawing + "' --json --screen 1600x900 --view-height " + number(height);
        for (const Json::Value& pick : picks)
            arguments += " --at=" + number(pick["point"][0].asDouble()) + "," +
                         number(pick["point"][1].asDouble());
        const Outcome outcome = run(arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const Json::Value answers = outcome.json()["picks"];
        ASSERT_EQ(answers.size(), picks.size());
        for (Json::ArrayIndex i = 0; i < answers.size(); ++i)
            EXPECT_EQ(answers[i]["layer"], answerFor(picks[i])) << picks[i]["handle"].asString();
    }
}

} // namespace
