// Windows and views, as far as programs ask for them.
#pragma once

#include "mfc/win_app.h"

class CWnd : public CCmdTarget {
public:
    CWnd() = default;

    HWND GetSafeHwnd() const { return m_hWnd; }

    HWND m_hWnd = nullptr;
};

/// What shows a document.
class CView : public CWnd {};
