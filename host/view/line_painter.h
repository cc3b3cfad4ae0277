// Lines by pens, areas and dots on a canvas.
#pragma once

#include <vector>

#include "view/letters.h"
#include "view/pen.h"
#include "view/sheet_path.h"

namespace headless {

/// @param margin  pixels beside the sheet from which something may reach onto it.
[[nodiscard]] bool isOnSheet(const Canvas& canvas, const SheetPath& path, double margin);

class LinePainter {
public:
    /// @param letters  for linetypes with texts.
    LinePainter(Canvas& canvas, Letters& letters, const PictureColor& background)
        : canvas_(canvas), letters_(letters), background_(background) {}

    void fillAreas(const std::vector<SheetPath::Line>& areas, const PictureColor& color);
    void strokeLines(const SheetPath& lines, const Pen& pen);
    /// As wide as the pen.
    void paintDot(const AcGePoint2d& at, const Pen& pen);

private:
    void strokeDashed(const SheetPath& lines, const Pen& pen);

    Canvas& canvas_;
    Letters& letters_;
    PictureColor background_;
};

} // namespace headless
