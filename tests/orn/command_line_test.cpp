// The program as its users run it: arguments in, text and an exit status out.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <json/json.h>

#include "orn_fixture.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kOldPlan = ORN_SAMPLES "/floor-plan-r12.dxf";

TEST_F(Orn, TellsWrongUseFromFailure) {
    const struct {
        const char* name;
        std::string arguments;
        int status;
        const char* complaint;
    } cases[] = {
        {"no arguments", "", 2, "Usage"},
        {"unknown option", "area --sideways " + kPlan, 2, "--sideways"},
        {"missing file name", "info", 2, "FILE"},
        {"two formats", "area --json --csv " + kPlan, 2, "--csv"},
        {"window of one corner", "table --window 1,2 " + kPlan, 2, "--window"},
        {"bound that is no number", "area --min-a wide " + kPlan, 2, "--min-a"},
        {"pick without a point", "pick " + kPlan, 2, "--at"},
        {"point of one number", "pick " + kPlan + " --at 5", 2, "no point"},
        {"point that is nowhere", "pick " + kPlan + " --at 1,nan", 2, "no point"},
        {"screen without height", "pick " + kPlan + " --at 1,1 --screen 9x0", 2, "no size"},
        {"script without a drawing", "--script x", 2, "FILE"},
        {"help", "--help", 0, ""},
        {"file that is not there", "info /nowhere.dxf", 1, "/nowhere.dxf: no such file"},
        {"folder", "area /", 1, "is a folder"},
        {"script that is not there", kPlan + " --script /nowhere.scr", 1, "/nowhere.scr"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Outcome result = run(c.arguments);
        EXPECT_EQ(result.status, c.status);
        EXPECT_THAT(result.err, HasSubstr(c.complaint));
    }
}

TEST_F(Orn, RefusesWhatIsNoDrawing) {
    const Outcome picture = run("info " + put("plan.dxf", "\xFF\xD8\xFF\xE0"
                                                          "JFIF"));
    EXPECT_EQ(picture.status, 1);
    EXPECT_TRUE(picture.out.empty());
    EXPECT_THAT(picture.err, HasSubstr("plan.dxf"));
    EXPECT_EQ(std::count(picture.err.begin(), picture.err.end(), '\n'), 1) << picture.err;
}

TEST_F(Orn, CountsWhatADrawingHolds) {
    const Json::Value info = run("info --json " + kPlan).json();
    EXPECT_EQ(info["version"], "AC1027");
    EXPECT_GT(info["entities"]["LWPOLYLINE"].asInt(), 0);
    EXPECT_TRUE(info["blocks"].isObject());
    Json::Value locked;
    for (const Json::Value& layer : info["layers"])
        if (layer["locked"].asBool()) locked = layer;
    for (const char* key : {"name", "off", "frozen", "color", "linetype", "lineweight", "plot"})
        EXPECT_TRUE(locked.isMember(key)) << key;

    int counted = 0;
    for (const Json::Value& count : info["entities"])
        counted += count.asInt();
    const Json::Value entities = run("info --entities --json " + kPlan).json()["entities"];
    EXPECT_EQ(static_cast<int>(entities.size()), counted);
    for (const Json::Value& entity : entities)
        EXPECT_TRUE(entity["extents"].isNull() || entity["extents"].size() == 6);
}

TEST_F(Orn, PrintsTheSameMeasuresInEveryForm) {
    const std::string layers = "--layers 板轮廓,board ";
    const Json::Value json = run("area --json " + layers + kPlan).json();
    const std::string csv = run("area --csv " + layers + kPlan).out;
    const std::string table = run("area " + layers + kPlan).out;

    ASSERT_EQ(json["polylines"].size(), 33U) << "boards that the sample draws directly";
    double sum = 0.0;
    for (const Json::Value& outline : json["polylines"]) {
        sum += outline["area_m2"].asDouble();
        EXPECT_THAT(csv, HasSubstr("polyline," + outline["handle"].asString() + ","));
        EXPECT_THAT(table, HasSubstr(outline["handle"].asString()));
    }
    double total = 0.0;
    for (const Json::Value& layer : json["layers"])
        total += layer["area_m2"].asDouble();
    EXPECT_NEAR(sum, total, 1e-9);
    EXPECT_THAT(csv, StartsWith("kind,handle,layer,closed,vertices,area_m2,length\n"));
}

// The old version of the sample has other kinds of polylines and another code page.
TEST_F(Orn, MeasuresOldAndNewDrawingsAlike) {
    const std::string arguments = "area --json --layers 板轮廓,BOARD ";
    const Json::Value now = run(arguments + kPlan).json()["polylines"];
    const Json::Value before = run(arguments + kOldPlan).json()["polylines"];
    ASSERT_EQ(now.size(), before.size());
    for (Json::ArrayIndex i = 0; i < now.size(); ++i) {
        EXPECT_EQ(now[i]["layer"], before[i]["layer"]);
        EXPECT_NEAR(now[i]["area_m2"].asDouble(), before[i]["area_m2"].asDouble(), 1e-9);
        EXPECT_NEAR(now[i]["length"].asDouble(), before[i]["length"].asDouble(), 1e-6);
    }
}

TEST_F(Orn, SavesWhatItReadsByteForByte) {
    const auto bytesOf = [](const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const std::string target = (folder_.path() / "saved.dxf").string();
    for (const std::string& plan : {kPlan, kOldPlan}) {
        const Outcome saved = run("save " + plan + " '" + target + "'");
        EXPECT_EQ(saved.status, 0) << saved.err;
        EXPECT_THAT(saved.out, HasSubstr("nothing changed"));
        EXPECT_EQ(bytesOf(target), bytesOf(plan));
    }
    const Json::Value again = run("save --json '" + target + "' '" + target + "'").json();
    EXPECT_EQ(again["changed"].asInt(), 0);
    EXPECT_EQ(bytesOf(target), bytesOf(kOldPlan));

    const Outcome failed = run("save " + kPlan + " /nowhere/x.dxf");
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.err, HasSubstr("/nowhere/x.dxf: its folder is not there"));
}

TEST_F(Orn, QuotesLayerNamesInCsv) {
    const std::string drawing =
        put("quoted.dxf", "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n8\na,b\n40\n1\n0\nENDSEC\n0\nEOF\n");
    const Outcome result = run("area --csv " + drawing);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(",\"a,b\",true,0,"));
}

TEST_F(Orn, ReadsTheDrawnTableOfQuantities) {
    const std::string file = (folder_.path() / "quantities.csv").string();
    const Outcome written = run("table --json -o '" + file + "' " + kPlan);
    EXPECT_EQ(written.status, 0) << written.err;
    const Json::Value table = written.json();
    const Json::ArrayIndex cells = table["cells"].size();
    EXPECT_EQ(cells, table["rows"].asUInt() * table["columns"].asUInt());
    std::string csv;
    std::getline(std::ifstream(file), csv, '\0');
    for (const Json::Value& cell : table["cells"])
        EXPECT_THAT(csv, HasSubstr(cell["text"].asString()));
    EXPECT_THAT(run("table " + kPlan).out, HasSubstr(" rows, "));
    EXPECT_THAT(run(kPlan, "BOARDTABLE\n\n\n").out, HasSubstr(" rows, "));

    const std::string takeOff = (folder_.path() / "take-off.xlsx").string();
    EXPECT_EQ(run("area -o '" + takeOff + "' " + kPlan).status, 0);
    EXPECT_TRUE(std::filesystem::exists(takeOff));
    EXPECT_EQ(run("area -o /nowhere/t.xlsx " + kPlan).status, 1);

    const Outcome nothing = run("table --window -2,-1,0,1 " + kPlan);
    EXPECT_EQ(nothing.status, 1);
    EXPECT_THAT(nothing.err, HasSubstr("no table found"));
    const Outcome nowhere = run("table -o /nowhere/t.csv " + kPlan);
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_THAT(nowhere.err, HasSubstr("/nowhere/t.csv: "));
}

TEST_F(Orn, RunsTypedCommandsAndScripts) {
    const Outcome typed = run(kPlan, "BOARDAREA\nBOARD\nNOSUCH\nQUIT\nBOARDAREA\n");
    EXPECT_THAT(typed.out, HasSubstr("Layers, joined by commas <all>: BOARD"));
    EXPECT_THAT(typed.out, HasSubstr("Unknown command \"NOSUCH\""));
    EXPECT_EQ(typed.status, 1) << "a command was unknown";

    const std::string script = put("measure.scr", "; what the boards measure\nBOARDAREA\nBOARD\n");
    const Outcome scripted = run(kPlan + " --script " + script);
    EXPECT_EQ(scripted.status, 0) << scripted.err;
    EXPECT_THAT(scripted.out, HasSubstr("Coefficient of variation"));

    const Outcome cutShort = run(kPlan + " --script " + put("short.scr", "BOARDAREA\n"));
    EXPECT_EQ(cutShort.out.find("Coefficient"), std::string::npos) << "the prompt was cancelled";
}

// Prompts of the other commands; what they do is tested with their functions.
TEST_F(Orn, RunsTheOtherCommands) {
    const std::string file = (folder_.path() / "styles.json").string();
    const Outcome typed =
        run(kPlan, "BOARDSTYLES\n\nBOARDSTYLES\nLoad\n\nBOARDSTYLES\nSave\n" + file +
                       "\nBOARDLAYERS\n\nBOARDLAYERS\n101,7\nBOARDBLOCK\nMake\n"
                       "BLK\nBOARD\n0,0\nBOARDBLOCK\nI\nBLK\n5,5\n\n"
                       "BOARDBLOCK\nI\nNONE\n5,5\n\n");
    EXPECT_EQ(typed.status, 0) << typed.err;
    EXPECT_THAT(typed.out, HasSubstr("Styles of the product's defaults file"));
    EXPECT_THAT(typed.out, HasSubstr("styles loaded into the drawing."));
    EXPECT_THAT(typed.out, HasSubstr("styles saved."));
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_THAT(typed.out, HasSubstr("PC-叠合板"));
    EXPECT_THAT(typed.out, HasSubstr("1 layers made."));
    EXPECT_THAT(typed.out, HasSubstr("No layer with the number 7."));
    EXPECT_THAT(typed.out, HasSubstr("9 entities are now the block BLK."));
    EXPECT_THAT(typed.out, HasSubstr("Inserted."));
    EXPECT_THAT(typed.out, HasSubstr("there is no block NONE"));
}

// The drawings that changing subcommands write are read again by others.
class ChangedDrawings : public Orn {
protected:
    std::string path(const char* name) const { return (folder_.path() / name).string(); }
};

TEST_F(ChangedDrawings, CarryTheStylesTheyWereGiven) {
    const Json::Value before = run("styles list --json " + kPlan).json();
    EXPECT_EQ(before["source"], "defaults");
    for (const std::string& plan : {kPlan, kOldPlan}) {
        SCOPED_TRACE(plan);
        const std::string out = path("styled.dxf");
        const Outcome loaded = run("styles load " + plan + " -o " + out);
        EXPECT_EQ(loaded.status, 0) << loaded.err;
        const Json::Value after = run("styles list --json " + out).json();
        EXPECT_EQ(after["source"], "drawing");
        EXPECT_EQ(after["styles"], before["styles"]);
    }

    const std::string styles = path("styles.json");
    EXPECT_EQ(run("styles save " + path("styled.dxf") + " " + styles).status, 0);
    const Outcome again = run("styles load " + path("styled.dxf") + " " + styles);
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(run("styles list --json " + path("styled.dxf")).json()["styles"], before["styles"]);
    EXPECT_THAT(run("styles list " + kPlan).out, StartsWith("Styles of the product's defaults"));

    EXPECT_EQ(run("styles save " + kPlan + " " + styles).status, 1) << "it carries none";
    EXPECT_EQ(run("styles load " + kPlan + " /nowhere.json -o " + path("x.dxf")).status, 1);
    EXPECT_FALSE(std::filesystem::exists(path("x.dxf")));
}

TEST_F(ChangedDrawings, HaveTheLayersMade) {
    const Json::Value listed = run("layers --json " + kPlan).json()["layers"];
    ASSERT_GT(listed.size(), 20U);
    EXPECT_FALSE(listed[0]["in_drawing"].asBool());
    const std::string out = path("layers.dxf");
    const Outcome made = run("layers " + kPlan + " --make 101,108 --json -o " + out);
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(made.json()["made"].size(), 2U);
    Json::Value beam;
    const Json::Value info = run("info --json " + out).json();
    for (const Json::Value& layer : info["layers"])
        if (layer["name"] == "PC-叠合梁") beam = layer;
    EXPECT_EQ(beam["color"], 4);
    EXPECT_EQ(beam["linetype"], "DASHED");
    EXPECT_EQ(beam["lineweight"], 30);

    EXPECT_EQ(run("layers " + kPlan + " --make 7 -o " + path("x.dxf")).status, 1);
    EXPECT_EQ(run("layers " + kPlan + " --make-all --make 101").status, 2);
}

TEST_F(ChangedDrawings, HaveTheBlocksMade) {
    const std::string out = path("blocks.dxf");
    const Outcome made =
        run("block make " + kPlan + " --name B --layers BOARD --replace --json -o " + out);
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(made.json()["entities"], 9);
    const Outcome inserted = run("block insert " + out + " --name b --at 100,-200 --layer REFS");
    EXPECT_EQ(inserted.status, 0) << inserted.err;

    const Json::Value info = run("info --json " + out).json();
    EXPECT_EQ(info["blocks"]["B"]["LWPOLYLINE"], 9);
    EXPECT_FALSE(info["by_layer"].isMember("BOARD"));
    EXPECT_EQ(info["by_layer"]["REFS"], 1);

    EXPECT_EQ(run("block make " + out + " --name B --layers BOARD").status, 1);
    EXPECT_EQ(run("block insert " + out + " --name NONE").status, 1);
    EXPECT_EQ(run("block make " + out + " --layers BOARD").status, 2);
}

} // namespace
