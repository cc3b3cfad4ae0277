// `orn block`: blocks made of a drawing's entities, and references to them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orn {

struct BlockOptions {
    std::filesystem::path drawing;
    std::filesystem::path output;
    std::string name;
    std::string layers; // joined by commas
    std::string handles;
    std::vector<double> at;
    std::string layer = "0";
    bool replace = false;
    bool json = false;
    const CLI::App* make = nullptr;
    const CLI::App* insert = nullptr;
};

/// Declares the subcommand, its own subcommands and their options.
CLI::App* declareBlock(CLI::App& app, BlockOptions& options);

/// Makes or inserts a block. Returns the exit status.
int runBlock(const BlockOptions& options);

} // namespace orn
