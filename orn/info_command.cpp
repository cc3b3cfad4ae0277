#include "info_command.h"

#include <iostream>

#include "drawing_info.h"
#include "info_output.h"
#include "open_drawing.h"

namespace orn {
namespace {

template <class Report>
void print(const Report& report, bool json) {
    if (json)
        printJson(std::cout, report);
    else
        printTable(std::cout, report);
}

} // namespace

CLI::App* declareInfo(CLI::App& app, InfoOptions& options) {
    CLI::App* info = app.add_subcommand("info", "Count what a drawing holds");
    info->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    info->add_flag("--entities", options.entities, "List the entities of model space instead");
    info->add_flag("--json", options.json, "Print JSON");
    return info;
}

int runInfo(const InfoOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    if (options.entities)
        print(collectEntities(*opened.database()), options.json);
    else
        print(collectInfo(*opened.database()), options.json);
    return opened.finish();
}

} // namespace orn
