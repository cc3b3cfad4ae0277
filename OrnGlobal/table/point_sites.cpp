#include "table/point_sites.h"

#include <algorithm>
#include <compare>
#include <numeric>

namespace table {
namespace {

// An order of all doubles, so that coordinates that are no numbers do not upset sorting; the two
// zeros are one.
std::strong_ordering compare(double a, double b) noexcept {
    return std::strong_order(a + 0.0, b + 0.0);
}

bool isBefore(const AcGePoint3d& a, const AcGePoint3d& b) noexcept {
    if (const auto x = compare(a.x, b.x); x != 0) return x < 0;
    if (const auto y = compare(a.y, b.y); y != 0) return y < 0;
    return compare(a.z, b.z) < 0;
}

// Twice the tolerance: what rounding may add is far less.
double window() { return 2.0 * AcGeContext::gTol.equalPoint(); }

} // namespace

PointSites::PointSites(std::span<const AcGePoint3d> points) {
    groupPoints(points);
    const std::vector<Run> all = runs();
    first_.reserve(places_.size() + 1);
    for (std::size_t r = 0; r < all.size(); ++r) {
        // The runs within the window on either side; mostly there is none but the run itself.
        std::size_t from = r;
        while (from > 0 && all[r].x - all[from - 1].x <= window())
            --from;
        for (Site site = all[r].first; site < all[r].last; ++site) {
            first_.push_back(equal_.size());
            for (std::size_t k = from; k < all.size() && all[k].x - all[r].x <= window(); ++k)
                collectEqual(site, all[k]);
        }
    }
    first_.push_back(equal_.size());
}

void PointSites::groupPoints(std::span<const AcGePoint3d> points) {
    std::vector<Site> order(points.size());
    std::iota(order.begin(), order.end(), Site{0});
    std::sort(order.begin(), order.end(),
              [&](Site a, Site b) { return isBefore(points[a], points[b]); });
    siteOf_.resize(points.size());
    for (const Site point : order) {
        if (places_.empty() || isBefore(places_.back(), points[point]))
            places_.push_back(points[point]);
        siteOf_[point] = static_cast<Site>(places_.size() - 1);
    }
}

std::vector<PointSites::Run> PointSites::runs() const {
    std::vector<Run> all;
    for (Site site = 0; site < places_.size(); ++site) {
        const double x = places_[site].x;
        if (all.empty() || all.back().x != x) all.push_back({x, site, site});
        all.back().last = site + 1;
    }
    return all;
}

void PointSites::collectEqual(Site site, const Run& run) {
    const AcGePoint3d& place = places_[site];
    const auto begin = places_.begin() + run.first;
    const auto end = places_.begin() + run.last;
    auto other = std::partition_point(
        begin, end, [&](const AcGePoint3d& p) { return compare(p.y, place.y - window()) < 0; });
    for (; other != end && other->y <= place.y + window(); ++other) {
        if (other->isEqualTo(place)) equal_.push_back(static_cast<Site>(other - places_.begin()));
    }
}

} // namespace table
