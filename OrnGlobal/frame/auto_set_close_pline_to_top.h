// Closed polylines above everything else.
#pragma once

#include <afxwin.h>

/// Brings the closed lightweight polylines that a user could select to the top of the draw order.
/// They stay there: the scope is that of the host's transaction around the change.
class AFX_EXT_CLASS AutoSetClosePlineToTop {
public:
    AutoSetClosePlineToTop();
    ~AutoSetClosePlineToTop();
};
