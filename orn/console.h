// The console: a drawing, the product's commands, and a prompt.
#pragma once

#include <filesystem>

namespace orn {

struct ConsoleOptions {
    std::filesystem::path drawing;
    std::filesystem::path script; // empty: commands are typed
};

/// Runs commands until the input or the script ends, or QUIT is typed. Returns the exit status: a
/// failure when the drawing does not open or a command was unknown.
int runConsole(const ConsoleOptions& options);

} // namespace orn
