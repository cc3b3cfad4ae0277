#include "view/hatch_islands.h"

#include <algorithm>

namespace headless {
namespace {

bool encloses(const SheetPath::Line& loop, const AcGePoint2d& point) {
    bool inside = false;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const AcGePoint2d& a = loop[i];
        const AcGePoint2d& b = loop[(i + 1) % loop.size()];
        if ((a.y > point.y) != (b.y > point.y) &&
            point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
            inside = !inside;
    }
    return inside;
}

} // namespace

std::vector<SheetPath::Line> countingLoops(std::vector<SheetPath::Line> loops,
                                           AcDbHatch::HatchStyle style) {
    // Hatches of more loops than that are walls of letters, and each is compared to all others.
    constexpr std::size_t kMost = 2000;
    if (style == AcDbHatch::kNormal || loops.size() < 2 || loops.size() > kMost) return loops;
    const std::ptrdiff_t deepest = style == AcDbHatch::kOuter ? 1 : 0;
    std::vector<SheetPath::Line> counting;
    for (const SheetPath::Line& loop : loops) {
        const auto depth = std::count_if(loops.begin(), loops.end(), [&](const auto& other) {
            return &other != &loop && encloses(other, loop.front());
        });
        if (depth <= deepest) counting.push_back(loop);
    }
    return counting;
}

} // namespace headless
