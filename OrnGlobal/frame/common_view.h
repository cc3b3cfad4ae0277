// What the user sees.
#pragma once

#include <afxwin.h>

namespace Common {

/// Shows the whole drawing; nothing happens in a host that cannot be driven by automation.
AFX_EXT_API void ZoomAll();

} // namespace Common
