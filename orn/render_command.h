// orn render: a picture of a drawing.
#pragma once

#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

namespace orn {

struct RenderOptions {
    std::filesystem::path drawing;
    std::filesystem::path output;
    std::string window;      // "x1,y1,x2,y2", drawing units
    std::string highlighted; // layers joined by commas
    std::string size;        // "WxH", pixels or for PDF points
    std::string layout;      // name of a sheet; empty for model space
    bool dark = false;       // black instead of white
};

/// Adds the subcommand, whose arguments go to `options`.
CLI::App* declareRender(CLI::App& app, RenderOptions& options);

/// Returns the exit status.
int runRender(const RenderOptions& options);

} // namespace orn
