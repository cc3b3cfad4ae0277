#include "block_command.h"

#include <iostream>

#include "OrnBoard/blocks.h"
#include "argument_text.h"
#include "dxf/read_report.h"
#include "json_output.h"
#include "open_drawing.h"
#include "saving.h"
#include "win/code_page.h"

namespace orn {
namespace {

AcGePoint3d pointOf(const std::vector<double>& numbers) {
    AcGePoint3d point;
    for (unsigned int i = 0; i < numbers.size(); ++i)
        point[i] = numbers[i];
    return point;
}

/// False when there is a problem, which is said on standard error.
bool isFine(const CString& problem) {
    if (problem.IsEmpty()) return true;
    std::cerr << "orn: " << headless::toUtf8(problem.GetString()) << '\n';
    return false;
}

void printMade(const BlockOptions& options, const board::BlockMade& made) {
    const bool referred = !made.reference.isNull();
    if (options.json) {
        Json::Value value;
        value["block"] = options.name;
        value["entities"] = made.entities;
        value["reference"] =
            referred ? Json::Value(headless::handleText(made.reference)) : Json::Value();
        return printJson(std::cout, value);
    }
    std::cout << "block " << options.name << " of " << made.entities << " entities";
    if (referred) std::cout << ", reference " << headless::handleText(made.reference);
    std::cout << '\n';
}

void printInserted(const BlockOptions& options, const board::BlockInserted& inserted) {
    if (options.json) {
        Json::Value value;
        value["reference"] = headless::handleText(inserted.reference);
        return printJson(std::cout, value);
    }
    std::cout << "reference " << headless::handleText(inserted.reference) << " to " << options.name
              << '\n';
}

bool make(AcDbDatabase* db, const BlockOptions& options) {
    const board::BlockMade made = board::makeBlock(db, {.name = wide(options.name),
                                                        .layers = namesIn(options.layers),
                                                        .handles = namesIn(options.handles),
                                                        .base = pointOf(options.at),
                                                        .replace = options.replace,
                                                        .layer = wide(options.layer)});
    if (!isFine(made.problem)) return false;
    printMade(options, made);
    return true;
}

bool insert(AcDbDatabase* db, const BlockOptions& options) {
    const board::BlockInserted inserted = board::insertBlock(db, {.name = wide(options.name),
                                                                  .position = pointOf(options.at),
                                                                  .layer = wide(options.layer)});
    if (!isFine(inserted.problem)) return false;
    printInserted(options, inserted);
    return true;
}

} // namespace

CLI::App* declareBlock(CLI::App& app, BlockOptions& options) {
    CLI::App* block = app.add_subcommand("block", "Make a block of entities, or insert one");
    block->require_subcommand(1);
    const auto declare = [&](const char* name, const char* purpose, const char* point) {
        CLI::App* command = block->add_subcommand(name, purpose);
        command->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
        command->add_option("--name", options.name, "The block's name")->required();
        command->add_option("--at", options.at, point)->delimiter(',')->expected(2, 3);
        command->add_option("--layer", options.layer, "Layer of the reference, by default 0");
        command->add_flag("--json", options.json, "Print JSON");
        declareOutput(*command, options.output);
        return command;
    };
    CLI::App* make = declare("make", "Make a block of entities of model space",
                             "Base point X,Y or X,Y,Z, by default 0,0");
    make->add_option("--layers", options.layers, "The entities of these layers, joined by commas");
    make->add_option("--handles", options.handles, "Those with these handles, joined by commas");
    make->add_flag("--replace", options.replace, "Put a reference in their place");
    options.make = make;
    options.insert =
        declare("insert", "Insert a reference to a block", "Position X,Y or X,Y,Z, by default 0,0");
    return block;
}

int runBlock(const BlockOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    const bool done = options.make->parsed() ? make(opened.database(), options)
                                             : insert(opened.database(), options);
    return done ? saveAndFinish(opened, options.drawing, options.output) : kFailure;
}

} // namespace orn
