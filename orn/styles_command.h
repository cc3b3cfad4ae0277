// `orn styles`: the component styles of a drawing.
#pragma once

#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

namespace orn {

struct StylesOptions {
    std::filesystem::path drawing;
    std::filesystem::path styles; // a JSON file
    std::filesystem::path output;
    bool json = false;
    const CLI::App* list = nullptr;
    const CLI::App* load = nullptr;
    const CLI::App* save = nullptr;
};

/// Declares the subcommand, its own subcommands and their options.
CLI::App* declareStyles(CLI::App& app, StylesOptions& options);

/// Lists, loads or saves. Returns the exit status.
int runStyles(const StylesOptions& options);

} // namespace orn
