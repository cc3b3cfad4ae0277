#include "db/hatch_islands.h"

#include <algorithm>
#include <numeric>

namespace headless {

bool encloses(const FlatLoop& loop, const AcGePoint2d& point) {
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

std::vector<std::size_t> countingLoops(std::span<const FlatLoop> loops,
                                       AcDbHatch::HatchStyle style) {
    std::vector<std::size_t> counting(loops.size());
    std::iota(counting.begin(), counting.end(), std::size_t{0});
    // Hatches of more loops than that are walls of letters, and each is compared to all others.
    constexpr std::size_t kMost = 2000;
    if (style == AcDbHatch::kNormal || loops.size() < 2 || loops.size() > kMost) return counting;
    const std::ptrdiff_t deepest = style == AcDbHatch::kOuter ? 1 : 0;
    std::erase_if(counting, [&](std::size_t index) {
        const FlatLoop& loop = loops[index];
        return std::ranges::count_if(loops, [&](const FlatLoop& other) {
                   return &other != &loop && encloses(other, loop.front());
               }) > deepest;
    });
    return counting;
}

} // namespace headless
