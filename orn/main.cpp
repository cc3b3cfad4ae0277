// orn: opens drawings and runs the product's commands on them.
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <vector>

#include <CLI/CLI.hpp>

#include "area_command.h"
#include "block_command.h"
#include "boards_command.h"
#include "clean_command.h"
#include "console.h"
#include "info_command.h"
#include "layers_command.h"
#include "open_drawing.h"
#include "pick_command.h"
#include "render_command.h"
#include "save_command.h"
#include "styles_command.h"
#include "table_command.h"

namespace {

/// A subcommand with the options that its arguments go to.
struct Subcommand {
    const CLI::App* app;
    std::function<int()> run;
};

template <class Options>
Subcommand make(CLI::App& app, CLI::App* (*declare)(CLI::App&, Options&),
                int (*run)(const Options&)) {
    const auto options = std::make_shared<Options>();
    return {declare(app, *options), [options, run] { return run(*options); }};
}

std::vector<Subcommand> makeSubcommands(CLI::App& app) {
    return {
        make(app, orn::declareInfo, orn::runInfo),
        make(app, orn::declareArea, orn::runArea),
        make(app, orn::declarePick, orn::runPick),
        make(app, orn::declareBoards, orn::runBoards),
        make(app, orn::declareTable, orn::runTable),
        make(app, orn::declareStyles, orn::runStyles),
        make(app, orn::declareLayers, orn::runLayers),
        make(app, orn::declareBlock, orn::runBlock),
        make(app, orn::declareClean, orn::runClean),
        make(app, orn::declareRender, orn::runRender),
        make(app, orn::declareSave, orn::runSave),
    };
}

int run(int argc, char** argv) {
    CLI::App app("Opens a drawing and runs commands on it: `orn FILE` for a console");
    app.require_subcommand(0, 1);

    orn::ConsoleOptions console;
    CLI::Option* drawing = app.add_option("FILE", console.drawing, "Drawing (DXF) for the console");
    app.add_option("--script", console.script, "Run the commands of this file, then end")
        ->needs(drawing);
    const std::vector<Subcommand> subcommands = makeSubcommands(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& wrong) {
        return app.exit(wrong) == 0 ? orn::kSuccess : orn::kWrongUsage;
    }
    for (const Subcommand& subcommand : subcommands) {
        if (subcommand.app->parsed()) return subcommand.run();
    }
    if (drawing->count() > 0) return orn::runConsole(console);
    std::cerr << app.help();
    return orn::kWrongUsage;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "orn: " << failure.what() << '\n';
        return orn::kFailure;
    }
}
