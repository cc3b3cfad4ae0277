// The product's grid of cells as a model without a window: what a grid control shows and what
// tables are written from.
//
// Row 0 and column 0 are the headers; the cells proper begin at 1. A merged range shows the content
// of its first cell.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbid.h>

/// What a cell shows, and how.
struct GridCell {
    CString text = {};
    int horizontal = 1;      // AcDb::TextHorzMode
    int vertical = 2;        // AcDb::TextVertMode
    int color = 0;           // colour index
    AcDbObjectId style = {}; // of texts
    double height = 350.0;
    double widthFactor = 0.0;
    bool isName = false; // a text even where it reads as a number
};

/// A range of cells shown as one.
struct GridMerge {
    int column = 0;
    int row = 0;
    int moreColumns = 0; // beyond the first
    int moreRows = 0;
};

class AFX_EXT_CLASS CDrawGrid {
public:
    static constexpr double kHeaderSize = 25.0; // width of column 0, height of row 0

    virtual ~CDrawGrid() = default;

    /// Makes a grid of empty cells, all of the headers' size, without merged ranges.
    /// @param rows, columns  with the header; less than 1 counts as 1.
    void SetGridSize(int rows, int columns);
    /// With the header.
    int GetRowCount() const { return static_cast<int>(heights_.size()); }
    int GetColumnCount() const { return static_cast<int>(widths_.size()); }

    /// 0 outside the grid.
    double GetColumnWidth(int column) const;
    double GetRowHeight(int row) const;
    void SetColumnWidth(int column, double width);
    void SetRowHeight(int row, double height);

    /// An empty cell outside the grid.
    const GridCell& GetCell(int row, int column) const;
    /// False outside the grid.
    bool SetCell(int row, int column, const GridCell& cell);

    /// False, and no change, for a range that is not in the grid whole or has one cell only.
    bool MergeCells(const GridMerge& merge);
    const std::vector<GridMerge>& GetMerges() const { return merges_; }

private:
    bool has(int row, int column) const {
        return row >= 0 && row < GetRowCount() && column >= 0 && column < GetColumnCount();
    }
    std::size_t indexOf(int row, int column) const {
        return static_cast<std::size_t>(row) * widths_.size() + static_cast<std::size_t>(column);
    }

    std::vector<double> widths_ = {kHeaderSize};
    std::vector<double> heights_ = {kHeaderSize};
    std::vector<GridCell> cells_ = {GridCell()}; // by rows
    std::vector<GridMerge> merges_;
};
