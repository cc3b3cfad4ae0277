#include "table/snapped_rulings.h"

#include <algorithm>
#include <cmath>

namespace table {
namespace {

using Coordinate = double AcGePoint3d::*;

/// The rows of level lines, or the columns of upright ones: of those too close together the first.
class Places {
public:
    Places(const std::vector<Ruling>& lines, Coordinate along, Coordinate at, double reach)
        : reach_(reach) {
        std::vector<double> all;
        for (const Ruling& line : lines)
            if (runs(line, along, at)) all.push_back(line.start.*at);
        std::ranges::sort(all);
        for (const double place : all)
            if (kept_.empty() || place - kept_.back() > reach) kept_.push_back(place);
    }

    /// True for a line that runs along these places rather than across them.
    static bool runs(const Ruling& line, Coordinate along, Coordinate at) {
        return std::abs(line.end.*along - line.start.*along) >
               std::abs(line.end.*at - line.start.*at);
    }

    /// The place that is close enough; the value itself without one.
    [[nodiscard]] double near(double value) const {
        const auto above = std::ranges::lower_bound(kept_, value);
        double nearest = value;
        double distance = reach_;
        for (auto place = above == kept_.begin() ? above : std::prev(above);
             place != kept_.end() && place <= above; ++place) {
            if (std::abs(*place - value) > distance) continue;
            distance = std::abs(*place - value);
            nearest = *place;
        }
        return nearest;
    }

private:
    double reach_;
    std::vector<double> kept_;
};

} // namespace

std::vector<Ruling> snapped(std::vector<Ruling> lines, double reach) {
    if (!(reach > 0.0)) return lines;
    const Places rows(lines, &AcGePoint3d::x, &AcGePoint3d::y, reach);
    const Places columns(lines, &AcGePoint3d::y, &AcGePoint3d::x, reach);
    for (Ruling& line : lines) {
        for (AcGePoint3d* end : {&line.start, &line.end})
            *end = {columns.near(end->x), rows.near(end->y), end->z};
    }
    return lines;
}

} // namespace table
