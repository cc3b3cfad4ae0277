// `orn area`: areas and lengths of a drawing's boards.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

namespace orn {

enum class Format { kTable, kJson, kCsv };

struct AreaOptions {
    std::filesystem::path drawing;
    std::string layers; // joined by commas; empty: all
    std::optional<double> minA, maxA, minB, maxB;
    bool json = false;
    bool csv = false;
    std::string output; // a workbook; empty: none

    Format format() const { return json ? Format::kJson : csv ? Format::kCsv : Format::kTable; }
};

/// Declares the subcommand and its options.
CLI::App* declareArea(CLI::App& app, AreaOptions& options);

/// Measures and prints. Returns the exit status.
int runArea(const AreaOptions& options);

} // namespace orn
