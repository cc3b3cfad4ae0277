// `orn pick`: the layers under points of a drawing.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orn {

struct PickCommandOptions {
    std::filesystem::path drawing;
    std::vector<std::string> at; // "X,Y"
    int mode = 0;
    bool hatch = false;
    bool noDescend = false;
    std::optional<double> viewHeight; // drawing units; else as the drawing was last seen
    std::string screen;               // "WxH" in pixels; empty: the session's own
    bool json = false;
};

/// Declares the subcommand and its options.
CLI::App* declarePick(CLI::App& app, PickCommandOptions& options);

/// Picks and prints. Returns the exit status.
int runPick(const PickCommandOptions& options);

} // namespace orn
