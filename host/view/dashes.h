// Lines broken into the dashes, dots and gaps of a linetype.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "db/object_id.h"
#include "ge/vector2d.h"
#include "view/canvas.h"
#include "view/sheet_box.h"

namespace headless {

/// A text that a linetype writes along its lines, behind one of its dashes.
struct LineText {
    std::wstring text;
    AcDbObjectId style;
    AcGeVector2d offset; // along the line and to its left
    double height;
    double rotation; // radians
    bool upright;    // the rotation counts from the sheet, not from the line
};

/// A linetype in its own units.
struct LinePattern {
    std::vector<double> dashes; // positive for a dash, negative for a gap, 0 for a dot
    std::vector<std::pair<std::size_t, LineText>> texts; // by the dash that they follow
    double length = 0.0;                                 // of all dashes and gaps
};

/// Solid for what is no linetype.
[[nodiscard]] LinePattern linePatternOf(AcDbObjectId linetype);

/// True when lines of that pattern show as solid: it has no dashes, or is too fine to be seen.
/// @param unit  pixels to a unit of the linetype.
[[nodiscard]] bool looksSolid(const LinePattern& pattern, double unit);

/// Adds the dashes of a line to the canvas's path, as far as they show in the box. As with plotted
/// lines the dashes at both ends are alike, and a line shorter than the pattern is solid.
/// @param line   corners, pixels.
/// @param width  of dots, pixels.
/// @param onText called with each text of the pattern, its place and the line's direction.
using LineTextVisitor =
    std::function<void(const LineText& text, const AcGePoint2d& at, const AcGeVector2d& along)>;
void addDashes(Canvas& canvas, const LinePattern& pattern, double unit,
               std::span<const AcGePoint2d> line, const SheetBox& visible, double width,
               const LineTextVisitor& onText);

} // namespace headless
