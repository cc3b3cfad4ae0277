// The view that shows the current drawing.
#pragma once

#include "mfc/view.h"

/// Null while no drawing is open. Its window stands for the drawing area, see screen.h.
CView* acedGetAcadDwgView();

namespace headless {

class DrawingView : public CView {
public:
    /// A handle that no other window has; nothing is behind it.
    DrawingView() { m_hWnd = reinterpret_cast<HWND>(this); }
};

} // namespace headless
