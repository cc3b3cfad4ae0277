// Which part of the drawing is shown, and where on the sheet.
#pragma once

#include <algorithm>

#include "ge/point2d.h"
#include "ge/point3d.h"

namespace headless {

/// A rectangle of the drawing seen from above, in drawing units.
struct PictureWindow {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
};

/// Puts a window into the middle of a sheet, as large as it fits.
class SheetMap {
public:
    SheetMap(const PictureWindow& window, double width, double height)
        : window_(window), scale_(std::min(width / (window.right - window.left),
                                           height / (window.top - window.bottom))),
          left_((width - scale_ * (window.right - window.left)) / 2.0),
          top_((height - scale_ * (window.top - window.bottom)) / 2.0) {}

    AcGePoint2d operator()(const AcGePoint3d& p) const {
        return {left_ + (p.x - window_.left) * scale_, top_ + (window_.top - p.y) * scale_};
    }
    /// Of a direction.
    AcGePoint2d operator()(const AcGeVector3d& v) const { return {v.x * scale_, -v.y * scale_}; }
    /// Pixels to a drawing unit.
    double scale() const { return scale_; }
    const PictureWindow& window() const { return window_; }

private:
    PictureWindow window_;
    double scale_;
    double left_;
    double top_;
};

} // namespace headless
