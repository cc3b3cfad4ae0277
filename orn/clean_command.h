// `orn clean`: runs commands on a drawing and clears the blocks that they added and left unused.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orn {

struct CleanOptions {
    std::filesystem::path drawing;
    std::filesystem::path output;
    std::filesystem::path script;   // run after the lines
    std::vector<std::string> lines; // typed at the command prompt
    bool json = false;
};

CLI::App* declareClean(CLI::App& app, CleanOptions& options);

/// Returns the exit status: kFailure, writing nothing, when a command was unknown.
int runClean(const CleanOptions& options);

} // namespace orn
