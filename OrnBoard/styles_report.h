// Component styles as the table that people read.
#pragma once

#include "styles.h"

namespace board {

/// One line a style: its names, how it shows, and the layer, colour and linetype of its line. Each
/// line ends in a line feed.
AFX_EXT_API CString stylesReport(const StyleList& list);

} // namespace board
