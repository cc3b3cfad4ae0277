#include "save_command.h"

#include <iostream>

#include "json_output.h"
#include "open_drawing.h"

namespace orn {
namespace {

void printText(std::ostream& out, const std::filesystem::path& target,
               const headless::DxfWriteResult& result) {
    for (const std::string& note : result.notes)
        out << note << '\n';
    out << target.string() << ": ";
    if (!result.anyChange()) {
        out << "nothing changed\n";
        return;
    }
    out << result.changed << " changed, " << result.added << " added, " << result.removed
        << " removed\n";
    for (const std::string& variable : result.variables)
        out << "header variable " << variable << '\n';
}

Json::Value toJson(const headless::DxfWriteResult& result) {
    const auto list = [](const std::vector<std::string>& texts) {
        Json::Value values(Json::arrayValue);
        for (const std::string& text : texts)
            values.append(text);
        return values;
    };
    Json::Value report;
    report["version"] = result.version;
    report["changed"] = Json::UInt64(result.changed);
    report["added"] = Json::UInt64(result.added);
    report["removed"] = Json::UInt64(result.removed);
    report["variables"] = list(result.variables);
    report["notes"] = list(result.notes);
    return report;
}

} // namespace

CLI::App* declareSave(CLI::App& app, SaveOptions& options) {
    CLI::App* save = app.add_subcommand("save", "Read a drawing and write it again");
    save->add_option("IN", options.drawing, "Drawing (DXF)")->required();
    save->add_option("OUT", options.target, "File to write; may be the same")->required();
    save->add_flag("--json", options.json, "Print JSON");
    return save;
}

int runSave(const SaveOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    const headless::DxfWriteResult result = opened.session().saveDrawing(options.target);
    if (!result) {
        std::cerr << "orn: " << result.refusal << '\n';
        return kFailure;
    }
    if (options.json)
        printJson(std::cout, toJson(result));
    else
        printText(std::cout, options.target, result);
    return opened.finish();
}

} // namespace orn
