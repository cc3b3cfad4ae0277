#include "console.h"

#include <unistd.h>

#include <fstream>
#include <iostream>
#include <optional>

#include "open_drawing.h"
#include "win/code_page.h"

namespace orn {
namespace {

void printNow(std::wstring_view text) { std::cout << headless::toUtf8(text) << std::flush; }

std::optional<std::wstring> typedLine() {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return headless::fromUtf8(line);
}

// A terminal shows what is typed; from a pipe the session shows it, so that the record is whole.
bool runTyped(headless::Session& session) {
    session.setLineReader(typedLine, isatty(STDIN_FILENO) != 0);
    return session.runInput();
}

} // namespace

int runConsole(const ConsoleOptions& options) {
    std::ifstream script(options.script);
    if (!options.script.empty() && !script) {
        std::cerr << "orn: " << options.script.string() << ": the script cannot be read\n";
        return kFailure;
    }
    OpenDrawing opened(options.drawing, printNow);
    if (!opened) return kFailure;

    headless::Session& session = opened.session();
    const bool allKnown = options.script.empty() ? runTyped(session) : session.runScript(script);
    std::cout << '\n';
    const int status = opened.finish();
    return allKnown ? status : kFailure;
}

} // namespace orn
