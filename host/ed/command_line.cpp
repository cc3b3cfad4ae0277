#include "ed/command_line.h"

#include <cstdarg>

#include "db/resbuf.h"
#include "ed/state.h"
#include "win/constants.h"
#include "win/format.h"
#include "win/user.h"

namespace headless {

void CommandLineOutput::print(std::wstring_view text) {
    text_ += text;
    if (sink_) sink_(text);
}

} // namespace headless

int acutPrintf(const ACHAR* format, ...) {
    if (format == nullptr) return RTERROR;
    std::va_list list;
    va_start(list, format);
    headless::EdState::current().output.print(headless::formatText(format, list));
    va_end(list);
    return RTNORM;
}

int acedPrompt(const ACHAR* text) {
    if (text == nullptr) return RTERROR;
    headless::EdState::current().output.print(text);
    return RTNORM;
}

int acedAlert(const ACHAR* text) {
    if (text == nullptr) return RTERROR;
    MessageBoxW(nullptr, text, L"Message", MB_OK);
    return RTNORM;
}
