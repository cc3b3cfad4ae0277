// What the user does with mouse and keys while a command prompts.
#pragma once

#include <afxwin.h>
#include <gepnt3d.h>

/// Watches the host's messages for as long as an instance lives: clicks with the left button,
/// Shift, and a shortcut key that runs a command. Every message goes on to the host.
///
/// All instances share one state, which the filter function has no other way to reach.
class AFX_EXT_CLASS CHookUseTool {
public:
    enum ShortcutKey {
        kNoShortcut = 0,
        kUcsShortcut = 1 // Alt+C
    };

    /// Begins without a shortcut.
    CHookUseTool();
    virtual ~CHookUseTool();
    CHookUseTool(const CHookUseTool&) = delete;
    CHookUseTool& operator=(const CHookUseTool&) = delete;

    /// Lets a key run a command line from now on; an empty line switches the shortcut off.
    static void InitShortcutKey(CHookUseTool::ShortcutKey const& kind, CString const& command);

    static int m_bMouseLeftDown;     ///< Set to 1 by a click, cleared by callers alone.
    static int m_bShiftDown;         ///< 1 when Shift was held at the last message.
    static AcGePoint3d m_LeftDownPt; ///< Of the last click, in world coordinates.

private:
    static int IsUcsShortcutKey(tagMSG* msg, CHookUseTool::ShortcutKey const& kind);
    static int QuillproDllFilterWinMsg(tagMSG* msg);

    static ShortcutKey m_eKey;
    static CString m_strCom; // what the shortcut runs
};
