// Turns wide characters into the bytes of a drawing's texts.
#pragma once

#include <string>
#include <string_view>

#include "win/code_page.h"

namespace headless {

class TextDecoder;

/// The counterpart of TextDecoder. What the file's code page lacks becomes \U+XXXX, a control
/// character a caret and a letter (^J for a line's end): a text is one line of the file.
class TextEncoder {
public:
    /// @param codePage  0 writes escapes for everything beyond ASCII.
    explicit TextEncoder(unsigned codePage = kUtf8) : codePage_(codePage) {}

    /// For more texts of the file that the decoder reads. Where it guesses text by text what the
    /// bytes are, escapes are what every reader understands.
    /// @param since2007  texts are UTF-8, whatever page the file names.
    static TextEncoder like(const TextDecoder& decoder, bool since2007);

    void append(std::wstring_view text, std::string& to) const;

private:
    void appendBeyondAscii(std::wstring_view text, std::string& to) const;

    unsigned codePage_;
};

} // namespace headless
