// Running the host's commands.
#pragma once

#include <vector>

#include <afxwin.h>

class AFX_EXT_CLASS CZelCmd {
public:
    /// Runs a command with its answers, each typed as it stands: an empty one is Enter.
    /// @return  RTNORM, or what the host answers when the command is unknown.
    static int Run(const CString& command, const std::vector<CString>& answers = {});

    /// Shows everything that is in the current space.
    static int ZoomExtents();
};
