// `orn clean`, and pictures with highlighted layers.
#include <filesystem>

#include "orn_fixture.h"

namespace {

const std::string kPlan = ORN_SAMPLES "/floor-plan.dxf";

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

TEST_F(Orn, DrawsHighlightedLayersDashed) {
    const auto dashes = [this](const std::string& options) {
        const std::string picture = (folder_.path() / "plan.svg").string();
        const Outcome drawn = run("render " + kPlan + " -o " + picture + options);
        EXPECT_EQ(drawn.status, 0) << drawn.err;
        std::ifstream file(picture);
        std::size_t count = 0;
        for (std::string line; std::getline(file, line);)
            count += line.find("stroke-dasharray") != std::string::npos;
        return count;
    };
    const std::size_t plain = dashes("");
    EXPECT_EQ(dashes(" --highlight board"), plain + 9) << "the boards on that layer, in any case";
    EXPECT_EQ(dashes(" --highlight nowhere"), plain);
}

} // namespace
