// Points by the places where they lie: which of many points are equal under the platform's
// tolerance? Points with the same coordinates share one site.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <gepnt3d.h>

namespace table {

using Site = std::uint32_t;

class PointSites {
public:
    explicit PointSites(std::span<const AcGePoint3d> points);

    [[nodiscard]] Site siteOf(std::size_t point) const { return siteOf_[point]; }
    [[nodiscard]] std::size_t count() const { return places_.size(); }
    /// The sites whose points equal those of a site, itself among them; none for coordinates that
    /// are no numbers.
    [[nodiscard]] std::span<const Site> equalTo(Site site) const {
        return std::span(equal_).subspan(first_[site], first_[site + 1] - first_[site]);
    }

private:
    struct Run { // sites of one x
        double x;
        Site first, last;
    };
    void groupPoints(std::span<const AcGePoint3d> points);
    [[nodiscard]] std::vector<Run> runs() const;
    void collectEqual(Site site, const Run& run);

    std::vector<Site> siteOf_;
    std::vector<AcGePoint3d> places_; // by x, then y, then z
    std::vector<Site> equal_;         // for each site those equal to it
    std::vector<std::size_t> first_;  // where those of a site begin
};

} // namespace table
