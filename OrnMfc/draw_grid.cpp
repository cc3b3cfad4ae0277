#include "OrnMfc/draw_grid.h"

#include <algorithm>

namespace {

bool isIn(const std::vector<double>& sizes, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < sizes.size();
}

double sizeAt(const std::vector<double>& sizes, int index) {
    return isIn(sizes, index) ? sizes[static_cast<std::size_t>(index)] : 0.0;
}

void setSize(std::vector<double>& sizes, int index, double size) {
    if (isIn(sizes, index)) sizes[static_cast<std::size_t>(index)] = size;
}

} // namespace

void CDrawGrid::SetGridSize(int rows, int columns) {
    heights_.assign(static_cast<std::size_t>(std::max(rows, 1)), kHeaderSize);
    widths_.assign(static_cast<std::size_t>(std::max(columns, 1)), kHeaderSize);
    cells_.assign(heights_.size() * widths_.size(), GridCell());
    merges_.clear();
}

double CDrawGrid::GetColumnWidth(int column) const { return sizeAt(widths_, column); }

double CDrawGrid::GetRowHeight(int row) const { return sizeAt(heights_, row); }

void CDrawGrid::SetColumnWidth(int column, double width) { setSize(widths_, column, width); }

void CDrawGrid::SetRowHeight(int row, double height) { setSize(heights_, row, height); }

const GridCell& CDrawGrid::GetCell(int row, int column) const {
    static const GridCell kNone;
    return has(row, column) ? cells_[indexOf(row, column)] : kNone;
}

bool CDrawGrid::SetCell(int row, int column, const GridCell& cell) {
    if (!has(row, column)) return false;
    cells_[indexOf(row, column)] = cell;
    return true;
}

bool CDrawGrid::MergeCells(const GridMerge& merge) {
    if (merge.moreRows < 0 || merge.moreColumns < 0) return false;
    if (merge.moreRows == 0 && merge.moreColumns == 0) return false;
    if (!has(merge.row, merge.column)) return false;
    if (merge.moreRows >= GetRowCount() - merge.row) return false;
    if (merge.moreColumns >= GetColumnCount() - merge.column) return false;
    merges_.push_back(merge);
    return true;
}
