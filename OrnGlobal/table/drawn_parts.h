// The lines and texts that entities show. Inside this folder only.
#pragma once

#include <vector>

#include <dbidar.h>

#include "table/cell_texts.h"
#include "table/ruling.h"

namespace table {

struct DrawnParts {
    std::vector<Ruling> lines; // those along the axes
    std::vector<CellText> texts;
};

/// What the entities show that tables are made of, block references with what is in their blocks
/// and their attributes included. Texts as readers see them.
[[nodiscard]] DrawnParts drawnParts(const AcArray<AcDbObjectId>& ids);

} // namespace table
