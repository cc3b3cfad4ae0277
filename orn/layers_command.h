// `orn layers`: the product's numbered layers in a drawing.
#pragma once

#include <filesystem>
#include <vector>

#include <CLI/CLI.hpp>

namespace orn {

struct LayersOptions {
    std::filesystem::path drawing;
    std::filesystem::path output;
    std::vector<unsigned int> make;
    bool makeAll = false;
    bool json = false;
};

/// Declares the subcommand and its options.
CLI::App* declareLayers(CLI::App& app, LayersOptions& options);

/// Lists the layers, or makes some. Returns the exit status.
int runLayers(const LayersOptions& options);

} // namespace orn
