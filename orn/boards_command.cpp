#include "boards_command.h"

#include <iostream>

#include "OrnBoard/numbering.h"
#include "argument_text.h"
#include "json_output.h"
#include "open_drawing.h"
#include "win/code_page.h"

namespace orn {
namespace {

Json::Value toJson(const std::vector<board::NumberedBoard>& boards) {
    Json::Value list(Json::arrayValue);
    for (const board::NumberedBoard& board : boards) {
        Json::Value& entry = list.append(Json::objectValue);
        entry["number"] = board.number;
        entry["outline"] = headless::handleText(board.outline);
        entry["layer"] = headless::toUtf8(board.layer.GetString());
        entry["text"] = headless::handleText(board.text);
    }
    Json::Value report;
    report["boards"] = list;
    return report;
}

int save(OpenDrawing& opened, const BoardsOptions& options) {
    const auto& target = options.output.empty() ? options.drawing : options.output;
    const headless::DxfWriteResult result = opened.session().saveDrawing(target);
    if (!result) {
        std::cerr << "orn: " << result.refusal << '\n';
        return kFailure;
    }
    return opened.finish();
}

int number(OpenDrawing& opened, const BoardsOptions& options) {
    const auto boards = board::numberBoards(
        opened.database(), {.layers = namesIn(options.layers), .method = options.method});
    if (options.json)
        printJson(std::cout, toJson(boards));
    else
        std::cout << boards.size() << " boards numbered\n";
    return save(opened, options);
}

int clear(OpenDrawing& opened, const BoardsOptions& options) {
    const int count =
        board::clearBoardNumbers(opened.database(), namesIn(options.layers), wide(options.numbers));
    std::cout << count << " numbers cleared\n";
    return save(opened, options);
}

} // namespace

CLI::App* declareBoards(CLI::App& app, BoardsOptions& options) {
    CLI::App* boards = app.add_subcommand("boards", "Number boards, or clear their numbers");
    boards->require_subcommand(1);
    CLI::App* number = boards->add_subcommand("number", "Number boards in reading order");
    number->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    number->add_option("--layers", options.layers, "Layers of the boards, joined by commas");
    number
        ->add_option("--method", options.method,
                     "0, 1 by columns from the left, each from the bottom, the top; 2, 3 by rows "
                     "from the bottom, the top, each from the left")
        ->check(CLI::Range(0, 3));
    number->add_option("-o,--output", options.output, "File to write; FILE when left out");
    number->add_flag("--json", options.json, "Print JSON");
    CLI::App* clear = boards->add_subcommand("clear", "Clear the numbers inside boards");
    clear->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    clear->add_option("--outlines", options.layers, "Layers of the boards, joined by commas");
    clear->add_option("--layers", options.numbers, "Layers of the numbers, joined by commas");
    clear->add_option("-o,--output", options.output, "File to write; FILE when left out");
    options.number = number;
    options.clear = clear;
    return boards;
}

int runBoards(const BoardsOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    return options.clear->parsed() ? clear(opened, options) : number(opened, options);
}

} // namespace orn
