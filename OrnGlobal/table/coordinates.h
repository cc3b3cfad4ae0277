// The coordinates of a table's rows and columns.
#pragma once

#include <span>
#include <utility>
#include <vector>

namespace table {

/// The values but for those within 1e-6 of one kept before. Order is kept.
[[nodiscard]] std::vector<double> withoutRepeats(std::span<const double> values);

/// Finds lines by their coordinates.
///
/// A value is a line's when it is no farther from it than 1e-5 of the distance between the first
/// coordinate and the last; of several lines it is the first one's.
class CoordinateIndex {
public:
    explicit CoordinateIndex(std::span<const double> coordinates);

    /// -1 when the value is no line's.
    [[nodiscard]] int find(double value) const;

private:
    [[nodiscard]] int firstOf(std::size_t begin, std::size_t end) const;

    double tolerance_ = 0.0;
    std::vector<double> sorted_;
    /// firsts_[k][i]: the least position among the 2^k coordinates from sorted_[i] on.
    std::vector<std::vector<int>> firsts_;
};

} // namespace table
