// `orn table`: the tables that are drawn in a drawing.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orn {

struct TableOptions {
    std::filesystem::path drawing;
    std::string layers;         // joined by commas; empty: all
    std::vector<double> window; // x1, y1, x2, y2; empty: everywhere
    std::string output;         // empty: standard output
    bool json = false;
};

/// Declares the subcommand and its options.
CLI::App* declareTable(CLI::App& app, TableOptions& options);

/// Finds the tables and prints or writes them. Returns the exit status: a failure when there is no
/// table or the file cannot be written.
int runTable(const TableOptions& options);

} // namespace orn
