// `orn save`: reads a drawing and writes it again.
#pragma once

#include <filesystem>

#include <CLI/CLI.hpp>

namespace orn {

struct SaveOptions {
    std::filesystem::path drawing;
    std::filesystem::path target;
    bool json = false;
};

/// Declares the subcommand and its options.
CLI::App* declareSave(CLI::App& app, SaveOptions& options);

/// Saves and prints what is not as it was read. Returns the exit status.
int runSave(const SaveOptions& options);

} // namespace orn
