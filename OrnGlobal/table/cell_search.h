// The cells of a table: the smallest rectangles whose corners are crossings of its lines.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "table/ruling.h"

namespace table {

/// Corners of a cell.
struct CellOutline {
    AcGePoint3d topLeft, topRight, bottomRight, bottomLeft;
};

/// Where rows of a table cross its columns.
///
/// A line is the start and the end of one rank in lists that are sorted each by itself: rows from
/// the top, columns from the left.
class Crossings {
public:
    Crossings(const EndLists& rows, const EndLists& columns);

    [[nodiscard]] int rowCount() const { return rows_.count(); }
    [[nodiscard]] int columnCount() const { return columns_.count(); }
    /// The columns that cross a row, by rank.
    [[nodiscard]] std::span<const int> columnsAt(int row) const { return rows_.others(row); }
    /// The rows that cross a column, by rank.
    [[nodiscard]] std::span<const int> rowsAt(int column) const { return columns_.others(column); }

    /// The cell whose top left corner is the crossing of a row and a column: right to the first
    /// column, then down to the first row, that close it. None when nothing does.
    [[nodiscard]] std::optional<CellOutline> cellAt(int row, int column) const;

private:
    /// Lines of one direction and which lines of the other direction cross each.
    struct Lines {
        const EndLists& ends;
        std::vector<std::size_t> first; // where the others of a line begin in `crossing`
        std::vector<int> crossing;

        [[nodiscard]] int count() const { return static_cast<int>(first.size()) - 1; }
        [[nodiscard]] std::span<const int> others(int line) const {
            const auto i = static_cast<std::size_t>(line);
            return std::span(crossing).subspan(first[i], first[i + 1] - first[i]);
        }
    };
    void findCrossings();
    void transposeCrossings();
    [[nodiscard]] bool meet(int row, int column, AcGePoint3d& at) const;
    [[nodiscard]] AcGePoint3d corner(int row, int column) const;

    Lines rows_;
    Lines columns_;
};

} // namespace table
