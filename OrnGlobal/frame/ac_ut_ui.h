// The library's one way to tell the user that the host refused something.
#pragma once

#include <acestext.h>
#include <afxwin.h>

class AFX_EXT_CLASS AcUtUi {
public:
    /// Prints "ARX ERROR: " and the host's text for the status on a line of its own; nothing for
    /// eOk.
    static void rxErrorMsg(Acad::ErrorStatus es);
    /// Shows nothing: callers rely on it to stay silent, in batch runs too.
    static void rxErrorAlert(Acad::ErrorStatus es);
    /// The host's text for the status.
    static const wchar_t* rxErrorStr(Acad::ErrorStatus es);
};
