// The marks that points are shown as.
#pragma once

#include "view/sheet_path.h"

namespace headless {

/// How a drawing wants its points shown, as its variables PDMODE and PDSIZE say.
struct PointStyle {
    int mode = 0;
    double size = 0.0; // pixels
};

/// @param unit  pixels to a drawing unit.
/// @param sheetHeight  of which sizes that are not above 0 are a share, of 5 percent for 0.
[[nodiscard]] PointStyle pointStyle(int mode, double size, double unit, double sheetHeight);

/// True for the mode that shows points as dots, as wide as lines are.
[[nodiscard]] inline bool isDot(const PointStyle& style) { return style.mode % 32 == 0; }

/// The lines of a mark; nothing but what surrounds it for a dot.
void addMark(SheetPath& path, const AcGePoint2d& at, const PointStyle& style);

} // namespace headless
