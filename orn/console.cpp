#include "console.h"

#include <unistd.h>

#include <fstream>
#include <iostream>
#include <optional>

#include "open_drawing.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace orn {
namespace {

void printNow(std::wstring_view text) { std::cout << headless::toUtf8(text) << std::flush; }

std::optional<std::wstring> typedLine() {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return headless::fromUtf8(line);
}

int runScript(OpenDrawing& opened, const std::filesystem::path& file) {
    std::ifstream script(file);
    if (!script) {
        std::cerr << "orn: " << file.string() << ": the script cannot be read\n";
        return kFailure;
    }
    const bool allKnown = opened.session().runScript(script);
    const int status = opened.finish();
    return allKnown ? status : kFailure;
}

int runTyped(OpenDrawing& opened) {
    opened.session().setLineReader(typedLine, isatty(STDIN_FILENO) != 0);
    while (true) {
        printNow(L"\nCommand: ");
        const std::optional<std::wstring> line = typedLine();
        if (!line || headless::equalNoCase(*line, L"QUIT")) break;
        opened.session().run(*line);
    }
    printNow(L"\n");
    return opened.finish();
}

} // namespace

int runConsole(const ConsoleOptions& options) {
    OpenDrawing opened(options.drawing, printNow);
    if (!opened) return kFailure;
    return options.script.empty() ? runTyped(opened) : runScript(opened, options.script);
}

} // namespace orn
