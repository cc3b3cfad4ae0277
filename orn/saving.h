// Where a subcommand writes the drawing that it changed.
#pragma once

#include <filesystem>

#include <CLI/CLI.hpp>

#include "open_drawing.h"

namespace orn {

/// Declares -o, --output: another file than the drawing's own.
void declareOutput(CLI::App& app, std::filesystem::path& output);

/// Writes the opened drawing, over its own file when `output` is empty, and says where on standard
/// error. Returns the exit status, see OpenDrawing::finish.
int saveAndFinish(OpenDrawing& opened, const std::filesystem::path& drawing,
                  const std::filesystem::path& output);

} // namespace orn
