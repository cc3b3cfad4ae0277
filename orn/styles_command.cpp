#include "styles_command.h"

#include <iostream>

#include "OrnBoard/styles.h"
#include "OrnBoard/styles_report.h"
#include "open_drawing.h"
#include "saving.h"
#include "styles_output.h"
#include "win/code_page.h"

namespace orn {
namespace {

CString wide(const std::filesystem::path& path) {
    if (path.empty()) return {};
    return headless::fromUtf8(std::filesystem::absolute(path).string()).c_str();
}

/// False when it failed, which is said on standard error.
bool tell(const board::StyleTransfer& transfer, const char* done) {
    if (!transfer.problem.IsEmpty()) {
        std::cerr << "orn: " << headless::toUtf8(transfer.problem.GetString()) << '\n';
        return false;
    }
    std::cout << transfer.count << " styles " << done << '\n';
    return true;
}

int list(OpenDrawing& opened, bool json) {
    const board::StyleList styles = board::listStyles();
    if (json)
        printJson(std::cout, styles);
    else
        std::cout << headless::toUtf8(board::stylesReport(styles).GetString());
    return opened.finish();
}

} // namespace

CLI::App* declareStyles(CLI::App& app, StylesOptions& options) {
    CLI::App* styles = app.add_subcommand("styles", "List, load or save component styles");
    styles->require_subcommand(1);
    const auto declare = [&](const char* name, const char* purpose) {
        CLI::App* command = styles->add_subcommand(name, purpose);
        command->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
        return command;
    };
    CLI::App* list = declare("list", "The drawing's styles, else the product's defaults");
    list->add_flag("--json", options.json, "Print JSON");
    CLI::App* load = declare("load", "Put a file's styles into the drawing");
    load->add_option("STYLES", options.styles, "Styles (JSON); by default the product's own");
    declareOutput(*load, options.output);
    CLI::App* save = declare("save", "Write the drawing's styles to a file");
    save->add_option("STYLES", options.styles, "File to write (JSON)")->required();
    options.list = list;
    options.load = load;
    options.save = save;
    return styles;
}

int runStyles(const StylesOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    if (options.list->parsed()) return list(opened, options.json);
    if (options.save->parsed())
        return tell(board::saveStyles(wide(options.styles)), "saved") ? opened.finish() : kFailure;
    if (!tell(board::loadStyles(opened.database(), wide(options.styles)), "loaded"))
        return kFailure;
    return saveAndFinish(opened, options.drawing, options.output);
}

} // namespace orn
