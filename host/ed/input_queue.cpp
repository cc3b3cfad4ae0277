#include "ed/input_queue.h"

#include <iterator>

namespace headless {
namespace {

/// Cuts the answer off the front of a typed line.
/// @param finished  set when the line holds nothing more, not even the Enter that ends it.
InputAnswer takeAnswer(TypedLine& line, bool word, bool& finished) {
    const std::size_t blank = word ? line.text.find(L' ') : std::wstring::npos;
    finished = blank == std::wstring::npos;
    if (finished) return {std::move(line.text), line.shown};
    std::wstring answer = line.text.substr(0, blank);
    line.text.erase(0, blank + 1);
    return {std::move(answer), line.shown};
}

/// The answer of an item that is one answer as it stands.
struct WholeAnswer {
    InputAnswer operator()(TypedLine& item) const { return {std::move(item.text), item.shown}; }
    InputAnswer operator()(WholeText& item) const { return {std::move(item.text)}; }
    InputAnswer operator()(PauseForUser /*item*/) const { return {InputEnded{}}; }
    template <class Value>
    InputAnswer operator()(const Value& item) const {
        return {item};
    }
};

} // namespace

void InputQueue::typeText(std::wstring_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find(L'\n');
        std::wstring_view line = text.substr(0, end);
        if (end == std::wstring_view::npos && line.ends_with(L' ')) line.remove_suffix(1);
        type(line);
        text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    }
}

InputAnswer InputQueue::next(bool word) { return nextOf(frames_.size() - 1, word); }

InputAnswer InputQueue::nextOf(std::size_t frame, bool word) {
    if (!refill(frame)) return {InputEnded{}};
    Frame& items = frames_[frame];
    if (std::holds_alternative<PauseForUser>(items.front())) {
        items.pop_front();
        return frame > 0 ? nextOf(frame - 1, word) : InputAnswer{InputEnded{}};
    }
    bool finished = true;
    auto* line = std::get_if<TypedLine>(&items.front());
    InputAnswer answer = line != nullptr ? takeAnswer(*line, word, finished)
                                         : std::visit(WholeAnswer{}, items.front());
    if (finished) items.pop_front();
    return answer;
}

/// False when the frame is empty and stays so.
bool InputQueue::refill(std::size_t frame) {
    if (!frames_[frame].empty()) return true;
    if (frame > 0 || !reader_) return false;
    std::optional<InputItem> item = reader_();
    if (!item) return false;
    frames_[frame].push_back(std::move(*item));
    return true;
}

NestedInput::NestedInput(InputQueue& queue, std::vector<InputItem> items) : queue_(queue) {
    queue_.frames_.emplace_back(std::make_move_iterator(items.begin()),
                                std::make_move_iterator(items.end()));
}

NestedInput::~NestedInput() { queue_.frames_.pop_back(); }

} // namespace headless
