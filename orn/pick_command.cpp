#include "pick_command.h"

#include <iostream>

#include "OrnBoard/pick.h"
#include "ed/state.h"
#include "ed/viewports.h"
#include "json_output.h"
#include "numbers.h"
#include "open_drawing.h"
#include "win/code_page.h"

namespace orn {
namespace {

/// Two numbers; empty unless the text is just that.
std::optional<std::vector<double>> pairOf(const std::string& text, char separator) {
    return parseNumbers(text, separator, 2);
}

std::string checkPoint(const std::string& text) {
    return pairOf(text, ',') ? "" : text + " is no point X,Y";
}

std::string checkScreen(const std::string& text) {
    const auto size = pairOf(text, 'x');
    return size && size->front() > 0.0 && size->back() > 0.0 ? "" : text + " is no size WxH";
}

/// Looks at model space as asked.
void setView(AcDbDatabase& db, const PickCommandOptions& options) {
    headless::showModel(db);
    if (!options.screen.empty()) {
        const std::vector<double> size = *pairOf(options.screen, 'x');
        headless::EdState::current().drawingArea = AcGePoint2d(size.front(), size.back());
    }
    if (!options.viewHeight) return;
    headless::View view = headless::currentView(db);
    view.height = *options.viewHeight;
    headless::setCurrentView(db, view);
}

void printPicks(std::ostream& out, const std::vector<board::Pick>& picks) {
    Json::Value value;
    Json::Value& list = value["picks"] = Json::Value(Json::arrayValue);
    for (const board::Pick& pick : picks) {
        Json::Value row;
        row["x"] = pick.at.x;
        row["y"] = pick.at.y;
        row["layer"] = headless::toUtf8(pick.layer.GetString());
        list.append(row);
    }
    printJson(out, value);
}

} // namespace

CLI::App* declarePick(CLI::App& app, PickCommandOptions& options) {
    CLI::App* pick = app.add_subcommand("pick", "Find the layers under points, in blocks too");
    pick->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    pick->add_option("--at", options.at, "A point X,Y in user coordinates; may be repeated")
        ->required()
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkPoint);
    pick->add_option("--mode", options.mode,
                     "In blocks hit 0 everything, 1 only curves, 2 only texts")
        ->check(CLI::Range(0, 2));
    pick->add_flag("--hatch", options.hatch, "In blocks hit areas of hatches, too");
    pick->add_flag("--no-descend", options.noDescend,
                   "Answer with layers of references themselves");
    pick->add_option("--view-height", options.viewHeight, "Height of the view, drawing units")
        ->check(CLI::PositiveNumber);
    pick->add_option("--screen", options.screen, "Size of the drawing area, pixels WxH")
        ->check(checkScreen);
    pick->add_flag("--json", options.json, "Print JSON");
    return pick;
}

int runPick(const PickCommandOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    setView(*opened.database(), options);
    std::vector<AcGePoint3d> points;
    for (const std::string& text : options.at) {
        const std::vector<double> point = *pairOf(text, ',');
        points.emplace_back(point.front(), point.back(), 0.0);
    }
    const std::vector<board::Pick> picks = board::pickLayers(
        opened.database(), points,
        {.descend = !options.noDescend, .kinds = options.mode, .hatches = options.hatch});
    if (options.json)
        printPicks(std::cout, picks);
    else
        std::cout << headless::toUtf8(board::pickReport(picks).GetString());
    return opened.finish();
}

} // namespace orn
