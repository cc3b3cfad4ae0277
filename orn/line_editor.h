// Reads lines at a terminal: editing, history, completion, and Ctrl-C as Escape.
//
// What is printed through it is shown line by line; the piece after the last line end waits, and
// becomes the prompt of the line that is read next.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ed/input_queue.h"

namespace orn {

class LineEditor {
public:
    /// Gives the words that may stand where a line begins.
    using Words = std::function<std::vector<std::wstring>()>;

    /// @param history  the file that keeps the lines typed; it is made when it is missing, and done
    ///                 without where that is not possible.
    explicit LineEditor(const std::filesystem::path& history);
    /// Shows what waits, and keeps the history.
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    /// Tab completes the word that begins a line from these.
    void completeFrom(Words words);

    void print(std::wstring_view text);

    /// A line, or Escape for Ctrl-C, which may also have come since the last one was read. Nothing
    /// at the end of input.
    [[nodiscard]] std::optional<headless::InputItem> read();

private:
    class Terminal;
    std::unique_ptr<Terminal> terminal_;
};

/// Where the history of typed lines belongs: below $XDG_STATE_HOME, or ~/.local/state.
[[nodiscard]] std::filesystem::path historyFile();

} // namespace orn
