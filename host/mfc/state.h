// What MFC holds for one session.
#pragma once

#include <string>
#include <vector>

#include "mfc/extension_module.h"
#include "win/session_state.h"

namespace headless {

/// The session's side of MFC.
class MfcState : public SessionState<MfcState> {
public:
    MfcState();
    ~MfcState();

    /// The newest living state; the process's own when no session made one.
    static MfcState& current();

    AFX_MODULE_STATE moduleState;

    /// Records between AfxInitExtensionModule and AfxTermExtensionModule, the oldest first.
    std::vector<AFX_EXTENSION_MODULE*> extensionModules;
    /// The chain in which resources are looked for after the current resource module.
    std::vector<CDynLinkLibrary*> libraries;

    /// How many calls of AfxInitExtensionModule succeed before the rest fail; negative for all.
    int initialisationsBeforeFailure = -1;

    /// The caption of message boxes.
    std::wstring applicationName;

private:
    struct ProcessWide {};
    explicit MfcState(ProcessWide);
};

} // namespace headless
