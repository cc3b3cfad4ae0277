// orn boards: numbers boards in reading order, and clears the numbers.
#pragma once

#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

namespace orn {

struct BoardsOptions {
    std::filesystem::path drawing;
    std::filesystem::path output;
    std::string layers;  // of the boards, joined by commas
    std::string numbers; // of the texts to clear, joined by commas
    int method = 3;
    bool json = false;

    const CLI::App* number = nullptr; // the subcommands
    const CLI::App* clear = nullptr;
};

/// Adds the subcommand, whose arguments go to `options`.
CLI::App* declareBoards(CLI::App& app, BoardsOptions& options);

/// Returns the exit status.
int runBoards(const BoardsOptions& options);

} // namespace orn
