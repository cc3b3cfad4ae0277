// What Win32 holds for one session.
#pragma once

#include <bitset>
#include <deque>
#include <string>
#include <vector>

#include "win/class_objects.h"
#include "win/module_table.h"
#include "win/profile_store.h"
#include "win/session_state.h"
#include "win/types.h"

namespace headless {

/// A message box that was shown.
struct MessageBoxRecord {
    std::wstring text;
    std::wstring caption;
    UINT flags;
    int answer; ///< IDOK, IDYES, ...
};

/// The session's side of Win32. The platform's calls read and change the current one.
class WinState : public SessionState<WinState> {
public:
    WinState();
    ~WinState();

    /// The newest living state; the process's own when no session made one.
    static WinState& current();

    unsigned ansiCodePage = 936;
    unsigned oemCodePage = 936;

    std::vector<MessageBoxRecord> messageBoxes; ///< All boxes shown, the oldest first.
    std::deque<int> messageBoxAnswers;          ///< For the boxes to come; then default buttons.

    std::bitset<256> pressedKeys; ///< By virtual key.

    ProfileStore profiles; ///< Settings files, and the folder of those named without one.

    AutomationServers automationServers; ///< The applications that are installed.

    ModuleTable modules; ///< What the session loaded; detached when it ends.

private:
    struct ProcessWide {};
    explicit WinState(ProcessWide);
};

} // namespace headless
