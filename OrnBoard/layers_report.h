// The product's numbered layers as the table that people read.
#pragma once

#include "layers.h"

namespace board {

/// One line a layer, each ending in a line feed.
AFX_EXT_API CString layersReport(const std::vector<NumberedLayer>& layers);

/// What was made and what was not, a line or more.
AFX_EXT_API CString layersMadeReport(const LayersMade& result);

} // namespace board
