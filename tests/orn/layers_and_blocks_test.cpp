// `orn clean`, choosing layers, and pictures with highlighted layers.
#include <filesystem>

#include "orn_fixture.h"

namespace {

TEST_F(Orn, CleansWhatCommandsLeave) {
    const std::string script = put("work.scr", "BOARDBLOCK\nMake\nPACK\nBOARD\n0,0\n");
    const std::string output = (folder_.path() / "clean.dxf").string();
    const Outcome done = run("clean " + kPlan + " --script " + script + " --json -o " + output);
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_TRUE(done.json()["cleared"].isArray());
    EXPECT_TRUE(done.json()["cleared"].empty());
    EXPECT_EQ(done.json()["kept"][0], "PACK");
    EXPECT_TRUE(run("info " + output + " --json").json()["blocks"].isMember("PACK"));

    const Outcome undone = run("clean " + output + " --script " +
                               put("undo.scr", "BOARDBLOCK\nMake\nMORE\n0\n0,0\nU\n"));
    EXPECT_EQ(undone.out, "Blocks cleared: none\n") << undone.err;

    EXPECT_EQ(run("clean " + kPlan).status, 2);
    const std::string none = (folder_.path() / "none.dxf").string();
    EXPECT_EQ(run("clean " + kPlan + " --run NOSUCH -o " + none).status, 1);
    EXPECT_FALSE(std::filesystem::exists(none));
}

TEST_F(Orn, ChoosesLayersInAScript) {
    // The left end of a board's number, a board's upper edge, the number again.
    const Outcome chosen = run(kPlan + " --script " +
                               put("pick.scr", "LAYERPICK\n1000,1140\n"
                                               "1000,7410\n1000,1140\n\n"));
    EXPECT_EQ(chosen.status, 0) << chosen.err;
    EXPECT_NE(chosen.out.find("Layers: 板编号,BOARD\n"), std::string::npos) << chosen.out;
}

TEST_F(Orn, DrawsHighlightedLayersOtherwise) {
    const auto picture = [this](const std::string& options) {
        const std::string path = (folder_.path() / "plan.svg").string();
        const Outcome drawn = run("render " + kPlan + " -o " + path + options);
        EXPECT_EQ(drawn.status, 0) << drawn.err;
        std::ifstream file(path);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const std::string plain = picture("");
    EXPECT_EQ(picture(" --highlight nowhere"), plain);
    EXPECT_NE(picture(" --highlight board"), plain) << "in any case";
    EXPECT_NE(picture(" --highlight 吊点"), plain) << "references are on it";
}

} // namespace
