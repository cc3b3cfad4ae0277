// Which loops of a hatch count, by its style.
#pragma once

#include <vector>

#include "db/hatch.h"
#include "view/sheet_path.h"

namespace headless {

/// The loops between which the hatch is drawn by even and odd: all of them by the normal style, the
/// outermost and those right within them by the outer style, the outermost alone where islands are
/// ignored.
[[nodiscard]] std::vector<SheetPath::Line> countingLoops(std::vector<SheetPath::Line> loops,
                                                         AcDbHatch::HatchStyle style);

} // namespace headless
