#include "table/ruling.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_set>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"
#include "table/point_sites.h"

namespace table {
namespace {

/// The ends of line i stand at 2 i and 2 i + 1.
std::vector<AcGePoint3d> endsOf(std::span<const Ruling> lines) {
    std::vector<AcGePoint3d> ends;
    ends.reserve(2 * lines.size());
    for (const Ruling& line : lines) {
        ends.push_back(line.start);
        ends.push_back(line.end);
    }
    return ends;
}

/// Two sites in either order.
std::uint64_t pairOf(Site a, Site b) noexcept {
    const auto [low, high] = std::minmax(a, b);
    return std::uint64_t{low} << 32U | high;
}

/// Which lines have an end at each site, and which of them are still there.
class LinesAtSites {
public:
    LinesAtSites(const PointSites& sites, std::size_t lines)
        : sites_(sites), first_(sites.count() + 1, 0) {
        for (std::size_t end = 0; end < 2 * lines; ++end)
            ++first_[sites.siteOf(end) + 1];
        for (std::size_t site = 0; site < sites.count(); ++site)
            first_[site + 1] += first_[site];
        std::vector<std::size_t> next(first_.begin(), first_.end() - 1);
        lines_.resize(2 * lines);
        for (std::size_t end = 0; end < 2 * lines; ++end)
            lines_[next[sites.siteOf(end)]++] = end / 2;
        nextLeft_.resize(2 * lines + 1);
        for (std::size_t k = 0; k < nextLeft_.size(); ++k)
            nextLeft_[k] = k;
        isGone_.resize(lines, false);
    }

    /// The first line after `line` that has an end equal to the site's; `lines` when there is none.
    [[nodiscard]] std::size_t firstAfter(std::size_t line, Site site) {
        std::size_t best = isGone_.size();
        for (const Site other : sites_.equalTo(site)) {
            const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(first_[other]);
            const auto end = lines_.begin() + static_cast<std::ptrdiff_t>(first_[other + 1]);
            const auto after = std::upper_bound(begin, end, line);
            const std::size_t k = nextLeftFrom(static_cast<std::size_t>(after - lines_.begin()));
            if (k < first_[other + 1]) best = std::min(best, lines_[k]);
        }
        return best;
    }
    void remove(std::size_t line) { isGone_[line] = true; }
    [[nodiscard]] bool isGone(std::size_t line) const { return isGone_[line]; }

private:
    /// The first place from k on whose line is still there; places passed on the way are skipped at
    /// once the next time.
    std::size_t nextLeftFrom(std::size_t k) {
        std::size_t left = k;
        while (left < lines_.size() && (nextLeft_[left] != left || isGone_[lines_[left]]))
            left = nextLeft_[left] != left ? nextLeft_[left] : left + 1;
        while (k < left) {
            const std::size_t next = nextLeft_[k] != k ? nextLeft_[k] : k + 1;
            nextLeft_[k] = left;
            k = next;
        }
        return left;
    }

    const PointSites& sites_;
    std::vector<std::size_t> first_; // where the lines of a site begin
    std::vector<std::size_t> lines_; // of each site ascending
    std::vector<std::size_t> nextLeft_;
    std::vector<bool> isGone_;
};

/// A line being joined: which original ends are its ends now.
struct Joined {
    std::size_t a, b;
};

/// Takes up line j, which shares an end.
void takeUp(Joined& line, std::size_t j, const std::vector<AcGePoint3d>& ends) {
    const auto equal = [&](std::size_t one, std::size_t other) {
        return ends[one].isEqualTo(ends[other]) != 0;
    };
    const std::size_t start = 2 * j;
    const std::size_t end = 2 * j + 1;
    if (equal(line.a, start))
        line.a = end;
    else if (equal(line.a, end))
        line.a = start;
    else if (equal(line.b, start))
        line.b = end;
    else
        line.b = start;
}

} // namespace

std::vector<Ruling> withoutRepeats(std::span<const Ruling> lines) {
    const PointSites sites(endsOf(lines));
    std::unordered_set<std::uint64_t> drawn;
    drawn.reserve(lines.size());
    const auto isDrawn = [&](std::size_t line) {
        for (const Site a : sites.equalTo(sites.siteOf(2 * line)))
            for (const Site b : sites.equalTo(sites.siteOf(2 * line + 1)))
                if (drawn.contains(pairOf(a, b))) return true;
        return false;
    };
    std::vector<Ruling> kept;
    kept.reserve(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (isDrawn(i)) continue;
        drawn.insert(pairOf(sites.siteOf(2 * i), sites.siteOf(2 * i + 1)));
        kept.push_back(lines[i]);
    }
    return kept;
}

bool isAxisParallel(const Ruling& line) {
    constexpr double kQuarter = std::numbers::pi / 2.0;
    constexpr double kLean = 0.01;
    const double angle = CZelDwg::GetAngle(line.start, line.end, 1);
    for (int quarter = 0; quarter <= 4; ++quarter)
        if (CZelMath::EqualTo(angle, quarter * kQuarter, kLean) != 0) return true;
    return false;
}

void uniteLines(std::vector<Ruling>& lines) {
    if (lines.size() < 3) return; // No line is ever joined to the last.
    const std::vector<AcGePoint3d> ends = endsOf(lines);
    const PointSites sites(ends);
    LinesAtSites left(sites, lines.size());

    const std::size_t last = lines.size() - 1;
    std::vector<Ruling> joined;
    for (std::size_t i = 0; i < last; ++i) {
        if (left.isGone(i)) continue;
        Joined line{2 * i, 2 * i + 1};
        for (std::size_t j = i;;) {
            j = std::min(left.firstAfter(j, sites.siteOf(line.a)),
                         left.firstAfter(j, sites.siteOf(line.b)));
            if (j >= last) break;
            takeUp(line, j, ends);
            left.remove(j);
        }
        joined.push_back({ends[line.a], ends[line.b]});
    }
    joined.push_back(lines[last]);
    lines = std::move(joined);
}

SortedRulings byDirection(const AcGePoint3dArray& starts, const AcGePoint3dArray& ends) {
    constexpr double kLean = 0.0001;
    SortedRulings sorted;
    for (int i = 0; i < std::min(starts.length(), ends.length()); ++i) {
        const AcGePoint3d& s = starts[i];
        const AcGePoint3d& e = ends[i];
        const double alongX = std::abs(s.x - e.x);
        const double alongY = std::abs(s.y - e.y);
        const bool isRow = CZelMath::EqualTo(s.y, e.y, alongX * kLean) != 0;
        if (!isRow && CZelMath::EqualTo(s.x, e.x, alongY * kLean) == 0) continue;
        EndLists& kind = isRow ? sorted.rows : sorted.columns;
        kind.starts.append(s);
        kind.ends.append(e);
    }
    return sorted;
}

} // namespace table
