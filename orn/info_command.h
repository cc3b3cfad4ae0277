// `orn info`: what a drawing holds.
#pragma once

#include <filesystem>

#include <CLI/CLI.hpp>

namespace orn {

struct InfoOptions {
    std::filesystem::path drawing;
    bool entities = false;
    bool json = false;
};

/// Declares the subcommand and its options.
CLI::App* declareInfo(CLI::App& app, InfoOptions& options);

/// Counts and prints. Returns the exit status.
int runInfo(const InfoOptions& options);

} // namespace orn
