// Running the host's commands.
#pragma once

#include <vector>

#include <afxwin.h>

class AFX_EXT_CLASS CZelCmd {
public:
    /// Runs a command with its answers, each typed as it stands: an empty one is Enter.
    /// @return  RTNORM, or what the host answers when the command is unknown.
    static int Run(const CString& command, const std::vector<CString>& answers = {});

    /// Sends a command line to the host's command line, to run as if the user had typed it and
    /// Enter.
    /// @return  RTNORM; RTERROR for null and when there is no drawing.
    static int ExecuteCommand(const wchar_t* line);

    /// Shows everything that is in the current space.
    static int ZoomExtents();
};
