// The command line's output: everything printed is kept for the session and handed to its sink.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "rx/types.h"

namespace headless {

class CommandLineOutput {
public:
    using Sink = std::function<void(std::wstring_view)>;

    /// Called with every piece of text at the moment it is printed; an empty sink stops that.
    void setSink(Sink sink) { sink_ = std::move(sink); }

    void print(std::wstring_view text);

    /// Everything printed since the start or the last clear().
    const std::wstring& text() const { return text_; }
    void clear() { text_.clear(); }

private:
    std::wstring text_;
    Sink sink_;
};

} // namespace headless

/// Prints formatted text; the format follows the platform's wide printf (`%s` is wide, `%hs`
/// narrow). RTNORM, or RTERROR for a null format.
int acutPrintf(const ACHAR* format, ...);

/// Prints the text as it stands. RTNORM, or RTERROR for null.
int acedPrompt(const ACHAR* text);

/// Shows the text in a message box of the session. RTNORM, or RTERROR for null.
int acedAlert(const ACHAR* text);
