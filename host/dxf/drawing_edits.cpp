#include "dxf/drawing_edits.h"

#include <algorithm>
#include <cstring>

namespace headless {
namespace {

/// Passes few large pieces on instead of many small ones.
class Gathering {
public:
    explicit Gathering(const DrawingEdits::Sink& sink) : sink_(sink) { buffer_.reserve(kSize); }

    void put(std::string_view bytes) {
        const bool large = bytes.size() > kSize / 2;
        if (large || buffer_.size() + bytes.size() > kSize) flush();
        if (large)
            sink_(bytes);
        else
            buffer_ += bytes;
    }
    void flush() {
        if (!buffer_.empty()) sink_(buffer_);
        buffer_.clear();
    }

private:
    static constexpr std::size_t kSize = std::size_t{1} << 18;

    const DrawingEdits::Sink& sink_;
    std::string buffer_;
};

/// How many bytes both begin with.
std::size_t commonBeginning(std::string_view a, std::string_view b) {
    using Word = std::uint64_t;
    const std::size_t most = std::min(a.size(), b.size());
    const auto word = [](std::string_view text, std::size_t at) {
        Word value = 0;
        std::memcpy(&value, text.data() + at, sizeof value);
        return value;
    };
    std::size_t at = 0;
    while (at + sizeof(Word) <= most && word(a, at) == word(b, at))
        at += sizeof(Word);
    while (at < most && a[at] == b[at])
        ++at;
    return at;
}

} // namespace

DrawingEdits::Text DrawingEdits::takeText() {
    const Text text{taken_, buffer_.size()};
    taken_ = buffer_.size();
    return text;
}

std::string_view DrawingEdits::bytes(Text text) const {
    return std::string_view(buffer_).substr(text.begin, text.end - text.begin);
}

void DrawingEdits::replace(SourceSpan span, Text text) {
    edits_.push_back({span.offset, span.offset + span.length, text});
}

bool DrawingEdits::replaceIfOther(std::string_view file, SourceSpan span) {
    const std::string_view before = file.substr(span.offset, span.length);
    const std::size_t same = commonBeginning(before, pending());
    if (same == before.size() && same == pending().size()) {
        dropText();
        return false;
    }
    // A stretch without a byte would take its turn with what is put in at the same place.
    const std::size_t kept = std::min(same, before.size() - 1);
    buffer_.erase(taken_, kept);
    edits_.push_back({span.offset + kept, span.offset + span.length, takeText()});
    return true;
}

void DrawingEdits::remove(std::uint64_t begin, std::uint64_t end) {
    edits_.push_back({begin, end, {}});
}

void DrawingEdits::insert(std::uint64_t offset, Text text) {
    edits_.push_back({offset, offset, text});
}

void DrawingEdits::write(std::string_view file, const Sink& sink) {
    const auto isInsertion = [](const Edit& edit) { return edit.begin == edit.end; };
    const auto before = [&](const Edit& a, const Edit& b) {
        if (a.begin != b.begin) return a.begin < b.begin;
        if (isInsertion(a) != isInsertion(b)) return isInsertion(a);
        return a.end > b.end; // What is removed as a whole goes before its parts.
    };
    if (!std::is_sorted(edits_.begin(), edits_.end(), before))
        std::stable_sort(edits_.begin(), edits_.end(), before);
    Gathering out(sink);
    std::uint64_t done = 0;
    for (const Edit& edit : edits_) {
        if (edit.begin < done) continue;
        out.put(file.substr(done, edit.begin - done));
        out.put(bytes(edit.text));
        done = edit.end;
    }
    out.put(file.substr(done));
    out.flush();
}

} // namespace headless
