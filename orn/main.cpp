// orn: opens drawings and runs the product's commands on them.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "area_command.h"
#include "boards_command.h"
#include "console.h"
#include "info_command.h"
#include "open_drawing.h"
#include "pick_command.h"
#include "render_command.h"
#include "save_command.h"
#include "table_command.h"

namespace {

int run(int argc, char** argv) {
    CLI::App app("Opens a drawing and runs commands on it: `orn FILE` for a console");
    app.require_subcommand(0, 1);

    orn::ConsoleOptions console;
    CLI::Option* drawing = app.add_option("FILE", console.drawing, "Drawing (DXF) for the console");
    app.add_option("--script", console.script, "Run the commands of this file, then end")
        ->needs(drawing);
    orn::InfoOptions info;
    const CLI::App* infoCommand = orn::declareInfo(app, info);
    orn::AreaOptions area;
    const CLI::App* areaCommand = orn::declareArea(app, area);
    orn::PickCommandOptions pick;
    const CLI::App* pickCommand = orn::declarePick(app, pick);
    orn::SaveOptions save;
    const CLI::App* saveCommand = orn::declareSave(app, save);

    orn::BoardsOptions boards;
    const CLI::App* boardsCommand = orn::declareBoards(app, boards);
    orn::RenderOptions render;
    const CLI::App* renderCommand = orn::declareRender(app, render);
    orn::SaveOptions save;
    const CLI::App* saveCommand = orn::declareSave(app, save);
    orn::TableOptions table;
    const CLI::App* tableCommand = orn::declareTable(app, table);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& wrong) {
        return app.exit(wrong) == 0 ? orn::kSuccess : orn::kWrongUsage;
    }
    if (infoCommand->parsed()) return orn::runInfo(info);
    if (areaCommand->parsed()) return orn::runArea(area);
    if (pickCommand->parsed()) return orn::runPick(pick);
    if (boardsCommand->parsed()) return orn::runBoards(boards);
    if (renderCommand->parsed()) return orn::runRender(render);
    if (saveCommand->parsed()) return orn::runSave(save);
    if (tableCommand->parsed()) return orn::runTable(table);
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
