// Where prompts get their answers: one queue fed by typed lines, by values, by clicks and keys, and
// by a line reader.
//
// A typed line is taken word by word as at a real command line: a blank ends an answer, so does the
// end of the line, and an empty answer is Enter. A prompt for text with blanks takes the rest of
// the line. When nothing is queued the reader is asked for more; when it has none either, prompts
// are told so and cancel, so that no prompt ever waits for input that cannot come.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "ed/gestures.h"
#include "ge/point3d.h"

namespace headless {

/// Text as typed at the keyboard, ended by Enter.
struct TypedLine {
    std::wstring text;
    bool shown = false; // True when whoever typed it sees it already, as at a terminal.
};

/// Text that is one answer whatever it holds, blanks included.
struct WholeText {
    std::wstring text;
};

/// The Escape key.
struct EscapeKey {};

/// Stands in a command's arguments for an answer that its caller's input shall give.
struct PauseForUser {};

using InputItem = std::variant<TypedLine, WholeText, AcGePoint3d, double, int, EscapeKey,
                               MouseClick, KeyPress, PauseForUser>;

/// There is no more input.
struct InputEnded {};

/// What the queue gives: text (empty for Enter), a point in user coordinates, a number, Escape, the
/// end of all input; or a click or a key, which prompts see only for what it means.
struct InputAnswer {
    std::variant<std::wstring, AcGePoint3d, double, int, EscapeKey, InputEnded, MouseClick,
                 KeyPress>
        value;
    bool shown = false;
    std::optional<KeyModifiers> clicked = {}; // The keys held, when a click gave the point.

    bool isEnter() const {
        const auto* text = std::get_if<std::wstring>(&value);
        return text != nullptr && text->empty();
    }
};

class InputQueue {
public:
    using Reader = std::function<std::optional<InputItem>()>;

    InputQueue() : frames_(1) {}

    void add(InputItem item) { frames_.back().push_back(std::move(item)); }
    void type(std::wstring_view line) { add(TypedLine{std::wstring(line)}); }
    /// Types a line before everything that is queued.
    void typeFirst(std::wstring_view line) {
        frames_.back().push_front(TypedLine{std::wstring(line)});
    }
    /// Types the text's lines; a blank at the end of the last one is its Enter.
    void typeText(std::wstring_view text);

    /// Asked for an item whenever nothing is queued. An empty function takes the reader away.
    void setReader(Reader reader) { reader_ = std::move(reader); }

    /// The next answer of one word.
    InputAnswer nextWord() { return next(true); }
    /// The next answer up to the end of its line.
    InputAnswer nextLine() { return next(false); }

    /// True while a command runs on the arguments that another one gave it.
    bool isNested() const { return frames_.size() > 1; }
    /// True when nothing is queued for the command that runs; the reader may still have lines.
    bool isEmpty() const { return frames_.back().empty(); }
    /// Forgets what is queued for the command that runs.
    void clear() { frames_.back().clear(); }

private:
    friend class NestedInput;
    using Frame = std::deque<InputItem>;

    InputAnswer next(bool word);
    InputAnswer nextOf(std::size_t frame, bool word);
    bool refill(std::size_t frame);

    std::vector<Frame> frames_; // The last belongs to the command that runs; never empty.
    Reader reader_;
};

/// While it lives, prompts are answered by these items alone.
class NestedInput {
public:
    NestedInput(InputQueue& queue, std::vector<InputItem> items);
    ~NestedInput();
    NestedInput(const NestedInput&) = delete;
    NestedInput& operator=(const NestedInput&) = delete;

private:
    InputQueue& queue_;
};

} // namespace headless
