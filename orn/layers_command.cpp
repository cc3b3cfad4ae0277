#include "layers_command.h"

#include <iostream>

#include "OrnBoard/layers.h"
#include "OrnBoard/layers_report.h"
#include "json_output.h"
#include "open_drawing.h"
#include "saving.h"
#include "win/code_page.h"

namespace orn {
namespace {

Json::Value jsonOf(const std::vector<board::NumberedLayer>& layers) {
    Json::Value array(Json::arrayValue);
    for (const board::NumberedLayer& layer : layers) {
        Json::Value value;
        value["code"] = layer.code;
        value["name"] = headless::toUtf8(layer.settings.name.GetString());
        value["color"] = layer.settings.color;
        value["linetype"] = headless::toUtf8(layer.settings.linetype.GetString());
        value["lineweight"] = layer.settings.lineWeight;
        value["plot"] = layer.settings.plots;
        value["in_drawing"] = layer.inDrawing;
        array.append(value);
    }
    return array;
}

void print(const LayersOptions& options, const char* key,
           const std::vector<board::NumberedLayer>& layers, const CString& report) {
    if (!options.json) {
        std::cout << headless::toUtf8(report.GetString());
        return;
    }
    Json::Value value;
    value[key] = jsonOf(layers);
    printJson(std::cout, value);
}

int list(OpenDrawing& opened, const LayersOptions& options) {
    const auto layers = board::listNumberedLayers(opened.database());
    print(options, "layers", layers, board::layersReport(layers));
    return opened.finish();
}

int make(OpenDrawing& opened, const LayersOptions& options) {
    const board::LayersMade result = board::makeNumberedLayers(
        opened.database(), options.makeAll ? std::vector<unsigned int>() : options.make);
    for (const unsigned int code : result.refused)
        std::cerr << "orn: no layer with the number " << code << '\n';
    if (!result.refused.empty()) return kFailure;
    print(options, "made", result.made, board::layersMadeReport(result));
    return saveAndFinish(opened, options.drawing, options.output);
}

} // namespace

CLI::App* declareLayers(CLI::App& app, LayersOptions& options) {
    CLI::App* layers = app.add_subcommand("layers", "List or make the product's numbered layers");
    layers->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    CLI::Option* make =
        layers->add_option("--make", options.make, "Make the layers of these numbers");
    make->delimiter(',');
    layers->add_flag("--make-all", options.makeAll, "Make all of them")->excludes(make);
    layers->add_flag("--json", options.json, "Print JSON");
    declareOutput(*layers, options.output);
    return layers;
}

int runLayers(const LayersOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    const bool makes = options.makeAll || !options.make.empty();
    return makes ? make(opened, options) : list(opened, options);
}

} // namespace orn
