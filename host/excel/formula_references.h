// The references to cells in formulas, and how they move.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "excel/area.h"

namespace headless::excel {

/// One corner of a reference. 0 stands for what is not written, as in whole rows and columns.
struct ReferenceCorner {
    int row = 0;
    int column = 0;
    bool rowFixed = false;
    bool columnFixed = false;
};

struct Reference {
    std::string_view sheet; ///< As written, with its quotes; empty for the formula's own sheet.
    ReferenceCorner first;
    ReferenceCorner last; ///< Equals `first` for a single cell.
    bool isRange = false;
};

/// The formula with each reference replaced by what `change` makes of it; false makes it "#REF!".
/// Texts, sheet names and names of functions stay as they are.
[[nodiscard]] std::string changeReferences(std::string_view formula,
                                           const std::function<bool(Reference&)>& change);

/// The formula as it reads when copied so many cells down and to the right.
[[nodiscard]] std::string copiedFormula(std::string_view formula, int down, int right);

} // namespace headless::excel
