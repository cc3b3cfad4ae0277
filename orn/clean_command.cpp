#include "clean_command.h"

#include <fstream>
#include <iostream>

#include "OrnBoard/clean.h"
#include "json_output.h"
#include "open_drawing.h"
#include "saving.h"
#include "win/code_page.h"

namespace orn {
namespace {

// The result alone goes to standard output.
void printBeside(std::wstring_view text) { std::cerr << headless::toUtf8(text); }

/// False when a command was unknown.
bool runWork(headless::Session& session, const CleanOptions& options, std::istream& script) {
    bool allKnown = true;
    for (const std::string& line : options.lines)
        allKnown = session.run(headless::fromUtf8(line)) && allKnown;
    if (!options.script.empty()) allKnown = session.runScript(script) && allKnown;
    return allKnown;
}

Json::Value listOf(const std::vector<CString>& names) {
    Json::Value list(Json::arrayValue);
    for (const CString& name : names)
        list.append(headless::toUtf8(name.GetString()));
    return list;
}

void print(const board::BlockCleaning& cleaning, bool json) {
    if (!json) {
        std::cout << headless::toUtf8(board::cleaningReport(cleaning).GetString());
        return;
    }
    Json::Value value;
    value["cleared"] = listOf(cleaning.cleared);
    value["kept"] = listOf(cleaning.kept);
    printJson(std::cout, value);
}

} // namespace

CLI::App* declareClean(CLI::App& app, CleanOptions& options) {
    CLI::App* clean = app.add_subcommand(
        "clean", "Run commands and clear the blocks that they added and left unused");
    clean->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    clean
        ->add_option("--run", options.lines,
                     "A line for the command prompt: a command and its answers; may be repeated")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    clean->add_option("--script", options.script, "Run the commands of this file")
        ->check(CLI::ExistingFile);
    clean->add_flag("--json", options.json, "Print JSON");
    declareOutput(*clean, options.output);
    return clean;
}

int runClean(const CleanOptions& options) {
    if (options.lines.empty() && options.script.empty()) {
        std::cerr << "orn: clean needs --run or --script: the work whose blocks are cleared\n";
        return kWrongUsage;
    }
    std::ifstream script(options.script);
    OpenDrawing opened(options.drawing, printBeside);
    if (!opened) return kFailure;
    bool allKnown = true;
    const board::BlockCleaning cleaning = board::clearBlocksOf(opened.database(), [&] {
        allKnown = runWork(opened.session(), options, script);
        std::cerr << '\n';
    });
    if (!allKnown) return kFailure;
    print(cleaning, options.json);
    return saveAndFinish(opened, options.drawing, options.output);
}

} // namespace orn
