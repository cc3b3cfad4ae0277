#include "table/coordinates.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <set>

#include "OrnCore/zel_math.h"

namespace table {

std::vector<double> withoutRepeats(std::span<const double> values) {
    constexpr double kSame = 1e-6;
    std::set<double> seen;
    std::vector<double> kept;
    for (const double value : values) {
        // What is not a number equals nothing, and has no place in an order.
        if (!std::isnan(value)) {
            const auto above = seen.lower_bound(value);
            if (above != seen.end() && CZelMath::EqualTo(*above, value, kSame) != 0) continue;
            if (above != seen.begin() && CZelMath::EqualTo(*std::prev(above), value, kSame) != 0)
                continue;
            seen.insert(above, value);
        }
        kept.push_back(value);
    }
    return kept;
}

CoordinateIndex::CoordinateIndex(std::span<const double> coordinates) {
    constexpr double kShare = 1e-5;
    if (coordinates.empty()) return;
    tolerance_ = std::abs(coordinates.back() - coordinates.front()) * kShare;

    std::vector<int> order;
    for (std::size_t i = 0; i < coordinates.size(); ++i)
        if (!std::isnan(coordinates[i])) order.push_back(static_cast<int>(i));
    const auto valueOf = [&](int i) { return coordinates[static_cast<std::size_t>(i)]; };
    std::ranges::stable_sort(order, {}, valueOf);
    for (const int i : order)
        sorted_.push_back(valueOf(i));

    firsts_.push_back(std::move(order));
    for (std::size_t reach = 1; 2 * reach <= sorted_.size(); reach *= 2) {
        const std::vector<int>& half = firsts_.back();
        std::vector<int> whole(sorted_.size() - 2 * reach + 1);
        for (std::size_t i = 0; i < whole.size(); ++i)
            whole[i] = std::min(half[i], half[i + reach]);
        firsts_.push_back(std::move(whole));
    }
}

int CoordinateIndex::firstOf(std::size_t begin, std::size_t end) const {
    const auto level = static_cast<std::size_t>(std::bit_width(end - begin) - 1);
    const std::vector<int>& firsts = firsts_[level];
    return std::min(firsts[begin], firsts[end - (std::size_t{1} << level)]);
}

int CoordinateIndex::find(double value) const {
    // Both ends of the run are found by the comparison itself, so that rounding is the same.
    const auto isSame = [&](double line) {
        return CZelMath::EqualTo(line, value, tolerance_) != 0;
    };
    const auto begin = std::ranges::partition_point(
        sorted_, [&](double line) { return line < value && !isSame(line); });
    const auto end = std::partition_point(
        begin, sorted_.end(), [&](double line) { return line <= value || isSame(line); });
    if (begin == end) return -1;
    return firstOf(static_cast<std::size_t>(begin - sorted_.begin()),
                   static_cast<std::size_t>(end - sorted_.begin()));
}

} // namespace table
