// Runs registered commands by name, from the input or from another command.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "db/resbuf.h"

class AcEdCommandStack;

namespace headless {

/// Knows which commands are at work, the innermost last.
class CommandRunner {
public:
    /// Runs the command of that name: RTNORM when it ran. An unknown name is reported on the
    /// command line and gives RTERROR. `_` before the name looks up global names, `.`, `'` change
    /// nothing.
    int run(std::wstring_view name);

    /// Takes commands from the input and runs them until nothing is queued; with `fromReader`,
    /// until the input's reader has no more lines either; or until a command quits. Enter alone
    /// repeats the last command. False when a command was unknown.
    bool runPending(bool fromReader);
    /// Makes runPending stop after the command that is at work.
    void quit() { quitting_ = true; }

    bool isQuiescent() const { return active_.empty(); }
    /// The global names of the commands at work, joined by an apostrophe as in CMDNAMES.
    std::wstring activeNames() const;

private:
    class Activation;

    std::vector<std::wstring> active_;
    std::wstring last_; // What Enter repeats.
    bool quitting_ = false;
};

} // namespace headless

/// Runs commands with their answers as a list of pairs: a type (RTSTR, RTREAL, RTANG, RTORINT,
/// RTSHORT, RTLONG, RTPOINT or RT3DPOINT), then the value; RTNONE or 0 ends it. An empty text is
/// Enter, a lone backslash an answer of the user. Prompts beyond the list are cancelled. RTNORM,
/// RTERROR for a bad list or an unknown command, RTREJ for a bad type.
int acedCommandS(int rtype, ...);

/// The same with the list as a chain of result buffers.
int acedCmdS(const resbuf* list);
