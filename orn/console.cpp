#include "console.h"

#include <unistd.h>

#include <fstream>
#include <iostream>
#include <optional>

#include "line_editor.h"
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

/// True when a person sits at both ends, and lines can be edited.
bool isInteractive() { return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0; }

bool runTyped(headless::Session& session, LineEditor* editor) {
    if (editor == nullptr) {
        // A terminal shows what is typed; from a pipe the session shows it, so that the record is
        // whole.
        session.setLineReader(typedLine, isatty(STDIN_FILENO) != 0);
    } else {
        editor->completeFrom([&session] { return session.offeredWords(); });
        session.setReader([editor] { return editor->read(); });
    }
    return session.runInput();
}

} // namespace

int runConsole(const ConsoleOptions& options) {
    std::ifstream script(options.script);
    if (!options.script.empty() && !script) {
        std::cerr << "orn: " << options.script.string() << ": the script cannot be read\n";
        return kFailure;
    }
    std::optional<LineEditor> editor;
    OpenDrawing opened(options.drawing, [&](std::wstring_view text) {
        if (editor) return editor->print(text);
        printNow(text);
    });
    if (!opened) return kFailure;
    if (options.script.empty() && isInteractive()) editor.emplace(historyFile());

    headless::Session& session = opened.session();
    const bool allKnown = options.script.empty() ? runTyped(session, editor ? &*editor : nullptr)
                                                 : session.runScript(script);
    session.setReader({});
    editor.reset();
    std::cout << '\n';
    const int status = opened.finish();
    return allKnown ? status : kFailure;
}

} // namespace orn
