#include "OrnCore/lj_export_param.h"

#include <algorithm>

void CLJUniSectGrids::MatchParam() {
    widths.resize(static_cast<std::size_t>(std::max(columns, 0)), defaultWidth);
    heights.resize(static_cast<std::size_t>(std::max(rows, 0)), defaultHeight);
}
