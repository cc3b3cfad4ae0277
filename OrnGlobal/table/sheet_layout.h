// A grid as it comes out on a sheet: which cells show, and how large things are.
#pragma once

#include <optional>
#include <vector>

#include <afxwin.h>

#include "OrnMfc/draw_grid.h"

namespace table {

/// How a cell takes part in merged ranges.
struct CellSpan {
    bool isCovered = false; // by a range that begins elsewhere
    int moreColumns = 0;
    int moreRows = 0;
};

/// Sizes of a grid on paper, in points, in proportion to the drawing: texts of the commonest height
/// come out at 10 points; without texts the lowest row is 15 points high.
class AFX_EXT_CLASS SheetLayout {
public:
    static constexpr double kTextPoints = 10.0; // size of texts of the commonest height

    explicit SheetLayout(const CDrawGrid& grid);

    /// Cells and sizes are numbered as in the grid, whose headers are not on the sheet.
    [[nodiscard]] const CellSpan& span(int row, int column) const;
    [[nodiscard]] double width(int column) const;
    [[nodiscard]] double height(int row) const;
    [[nodiscard]] double fontSize(const GridCell& cell) const { return cell.height * scale_; }

private:
    void cover(const GridMerge& merge);
    [[nodiscard]] std::size_t indexOf(int row, int column) const;

    const CDrawGrid& grid_;
    double scale_; // points per drawing unit
    std::vector<CellSpan> spans_;
};

/// The number that a whole text is: digits, perhaps a sign and a decimal point. None for what a
/// number would not show again, such as 007, and for more digits than a number keeps.
[[nodiscard]] AFX_EXT_API std::optional<double> numberIn(const CString& text);

/// Red, green and blue from the high byte down, as a colour index comes out on white paper: black
/// for white and for colours that are not the text's own.
[[nodiscard]] AFX_EXT_API unsigned paperColor(int colorIndex);

} // namespace table
