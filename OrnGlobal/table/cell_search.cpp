#include "table/cell_search.h"

#include <algorithm>

#include "OrnCore/box_tree.h"
#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"

namespace table {
namespace {

using orncore::Box;

int lineCount(const EndLists& lines) {
    return std::min(lines.starts.length(), lines.ends.length());
}

Box boxOf(const EndLists& lines, int i) {
    const AcGePoint3d& s = lines.starts[i];
    const AcGePoint3d& e = lines.ends[i];
    return {std::min(s.x, e.x), std::min(s.y, e.y), std::max(s.x, e.x), std::max(s.y, e.y)};
}

std::span<const int> after(std::span<const int> ascending, int value) {
    const auto first = std::ranges::upper_bound(ascending, value);
    return {first, ascending.end()};
}

/// The first number that stands in both ascending lists; none: an empty optional. Goes through the
/// shorter list and leaps through the longer.
std::optional<int> firstCommon(std::span<const int> a, std::span<const int> b) {
    if (a.size() > b.size()) std::swap(a, b);
    auto from = b.begin();
    for (const int value : a) {
        from = std::lower_bound(from, b.end(), value);
        if (from == b.end()) return std::nullopt;
        if (*from == value) return value;
    }
    return std::nullopt;
}

} // namespace

Crossings::Crossings(const EndLists& rows, const EndLists& columns)
    : rows_{rows, {}, {}}, columns_{columns, {}, {}} {
    findCrossings();
    transposeCrossings();
}

bool Crossings::meet(int row, int column, AcGePoint3d& at) const {
    return CZelDwg::GetLineInterSect(rows_.ends.starts[row], rows_.ends.ends[row],
                                     columns_.ends.starts[column], columns_.ends.ends[column],
                                     at) > 0;
}

AcGePoint3d Crossings::corner(int row, int column) const {
    AcGePoint3d at;
    static_cast<void>(meet(row, column, at)); // It is one of those found.
    return at;
}

void Crossings::findCrossings() {
    const int count = lineCount(columns_.ends);
    std::vector<Box> boxes;
    for (int column = 0; column < count; ++column)
        boxes.push_back(boxOf(columns_.ends, column));
    const orncore::BoxTree tree(boxes);

    std::vector<std::size_t> near;
    AcGePoint3d at;
    rows_.first.push_back(0);
    for (int row = 0; row < lineCount(rows_.ends); ++row) {
        // Lines meet when they come as near as the tolerance.
        tree.find(orncore::widened(boxOf(rows_.ends, row), 2.0 * CZelMath::kTolerance), near);
        for (const std::size_t column : near)
            if (meet(row, static_cast<int>(column), at))
                rows_.crossing.push_back(static_cast<int>(column));
        rows_.first.push_back(rows_.crossing.size());
    }
    columns_.first.assign(static_cast<std::size_t>(count) + 1, 0);
}

void Crossings::transposeCrossings() {
    for (const int column : rows_.crossing)
        ++columns_.first[static_cast<std::size_t>(column) + 1];
    for (std::size_t i = 1; i < columns_.first.size(); ++i)
        columns_.first[i] += columns_.first[i - 1];
    std::vector<std::size_t> next(columns_.first.begin(), columns_.first.end() - 1);
    columns_.crossing.resize(rows_.crossing.size());
    for (int row = 0; row < rowCount(); ++row)
        for (const int column : columnsAt(row))
            columns_.crossing[next[static_cast<std::size_t>(column)]++] = row;
}

std::optional<CellOutline> Crossings::cellAt(int row, int column) const {
    const std::span<const int> below = after(rowsAt(column), row);
    if (below.empty()) return std::nullopt;
    for (const int right : after(columnsAt(row), column)) {
        const std::optional<int> bottom = firstCommon(below, after(rowsAt(right), row));
        if (bottom)
            return CellOutline{corner(row, column), corner(row, right), corner(*bottom, right),
                               corner(*bottom, column)};
    }
    return std::nullopt;
}

} // namespace table
