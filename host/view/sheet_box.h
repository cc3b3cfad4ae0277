// Rectangles of the sheet, and what of lines and polygons lies in them.
#pragma once

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "ge/point2d.h"

namespace headless {

/// In pixels, y downwards; empty when fresh.
struct SheetBox {
    double left = std::numeric_limits<double>::infinity();
    double top = left;
    double right = -left;
    double bottom = -left;

    void add(const AcGePoint2d& p) {
        left = std::min(left, p.x);
        right = std::max(right, p.x);
        top = std::min(top, p.y);
        bottom = std::max(bottom, p.y);
    }
    bool isEmpty() const { return !(left <= right && top <= bottom); }
    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool meets(const SheetBox& other) const {
        return left <= other.right && right >= other.left && top <= other.bottom &&
               bottom >= other.top;
    }
    bool holds(const SheetBox& other) const {
        return left <= other.left && right >= other.right && top <= other.top &&
               bottom >= other.bottom;
    }
    SheetBox grownBy(double margin) const {
        return {left - margin, top - margin, right + margin, bottom + margin};
    }
    std::array<AcGePoint2d, 4> corners() const {
        return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
    }
};

/// Shares of the way from a to b between which it runs in the box.
struct Visible {
    double from;
    double to;
};
[[nodiscard]] std::optional<Visible> visiblePart(const SheetBox& box, const AcGePoint2d& a,
                                                 const AcGePoint2d& b);

/// The polygon with what lies outside the box pulled in to its edge: it covers the same of the box.
[[nodiscard]] std::vector<AcGePoint2d> clippedPolygon(const SheetBox& box,
                                                      std::vector<AcGePoint2d> polygon);

} // namespace headless
