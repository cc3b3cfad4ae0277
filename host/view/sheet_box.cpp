#include "view/sheet_box.h"

namespace headless {
namespace {

/// Cuts the polygon by one line. `inside` is how far within a point lies, negative beyond the line.
template <class Inside>
std::vector<AcGePoint2d> cutBy(const std::vector<AcGePoint2d>& polygon, const Inside& inside) {
    std::vector<AcGePoint2d> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const AcGePoint2d& a = polygon[i];
        const AcGePoint2d& b = polygon[(i + 1) % polygon.size()];
        const double atA = inside(a);
        const double atB = inside(b);
        if (atA >= 0.0) kept.push_back(a);
        if ((atA >= 0.0) != (atB >= 0.0)) kept.push_back(a + (b - a) * (atA / (atA - atB)));
    }
    return kept;
}

} // namespace

std::optional<Visible> visiblePart(const SheetBox& box, const AcGePoint2d& a,
                                   const AcGePoint2d& b) {
    Visible part{0.0, 1.0};
    const auto cut = [&part](double from, double to, double low, double high) {
        const double way = to - from;
        if (way == 0.0) return from >= low && from <= high;
        const double atLow = (low - from) / way;
        const double atHigh = (high - from) / way;
        part.from = std::max(part.from, std::min(atLow, atHigh));
        part.to = std::min(part.to, std::max(atLow, atHigh));
        return true;
    };
    const bool meets = cut(a.x, b.x, box.left, box.right) && cut(a.y, b.y, box.top, box.bottom);
    if (!meets || !(part.from <= part.to)) return std::nullopt;
    return part;
}

std::vector<AcGePoint2d> clippedPolygon(const SheetBox& box, std::vector<AcGePoint2d> polygon) {
    polygon = cutBy(polygon, [&](const AcGePoint2d& p) { return p.x - box.left; });
    polygon = cutBy(polygon, [&](const AcGePoint2d& p) { return box.right - p.x; });
    polygon = cutBy(polygon, [&](const AcGePoint2d& p) { return p.y - box.top; });
    return cutBy(polygon, [&](const AcGePoint2d& p) { return box.bottom - p.y; });
}

} // namespace headless
