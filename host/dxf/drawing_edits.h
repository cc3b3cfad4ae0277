// A file with stretches of it replaced, left out, or put in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "db/object.h"

namespace headless {

/// New bytes are collected in one buffer; the rest comes from the file itself when it is written.
class DrawingEdits {
public:
    /// Bytes of the buffer.
    struct Text {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    /// What is appended here between two calls of takeText becomes one text.
    std::string& buffer() { return buffer_; }
    /// What was appended since the last call.
    Text takeText();
    std::string_view pending() const { return std::string_view(buffer_).substr(taken_); }
    /// Forgets what was appended since.
    void dropText() { buffer_.resize(taken_); }
    /// Makes what was appended since take the place of that stretch, if it differs. Of what does,
    /// only the bytes from the first difference on are kept.
    /// @param file  whose stretch it is; the stretch is not empty.
    /// @return      whether it differs.
    bool replaceIfOther(std::string_view file, SourceSpan span);
    std::string_view bytes(Text text) const;

    void replace(SourceSpan span, Text text);
    void remove(std::uint64_t begin, std::uint64_t end);
    /// Puts the text before what stands at the offset, behind what was put there earlier.
    void insert(std::uint64_t offset, Text text);
    bool empty() const { return edits_.empty(); }

    using Sink = std::function<void(std::string_view)>;
    /// Passes the edited file on, in pieces. Edits within a removed stretch are lost with it.
    void write(std::string_view file, const Sink& sink);

private:
    struct Edit {
        std::uint64_t begin;
        std::uint64_t end;
        Text text;
    };

    std::string buffer_;
    std::size_t taken_ = 0;
    std::vector<Edit> edits_;
};

} // namespace headless
