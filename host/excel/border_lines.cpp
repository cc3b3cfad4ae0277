#include "excel/border_lines.h"

#include <array>

namespace headless::excel {
namespace {

constexpr std::array<Line, 4> kEdges = {&Borders::left, &Borders::right, &Borders::top,
                                        &Borders::bottom};
constexpr std::array<Line, 1> kDiagonal = {&Borders::diagonal};
constexpr std::span<const Line> kLeft(&kEdges[0], 1);
constexpr std::span<const Line> kRight(&kEdges[1], 1);
constexpr std::span<const Line> kTop(&kEdges[2], 1);
constexpr std::span<const Line> kBottom(&kEdges[3], 1);

} // namespace

std::vector<LinesOfCells> linesOf(const Area& area, LONG index) {
    switch (index) {
    case 1: // The older names of edges mean every cell's.
        return {{area, kLeft}};
    case 2:
        return {{area, kRight}};
    case 3:
        return {{area, kTop}};
    case 4:
        return {{area, kBottom}};
    case kDiagonalDown:
    case kDiagonalUp:
        return {{area, kDiagonal}};
    case kEdgeLeft:
        return {{{area.top, area.left, area.bottom, area.left}, kLeft}};
    case kEdgeTop:
        return {{{area.top, area.left, area.top, area.right}, kTop}};
    case kEdgeBottom:
        return {{{area.bottom, area.left, area.bottom, area.right}, kBottom}};
    case kEdgeRight:
        return {{{area.top, area.right, area.bottom, area.right}, kRight}};
    case kInsideVertical:
        if (area.columns() == 1) return {};
        return {{{area.top, area.left, area.bottom, area.right - 1}, kRight},
                {{area.top, area.left + 1, area.bottom, area.right}, kLeft}};
    case kInsideHorizontal:
        if (area.rows() == 1) return {};
        return {{{area.top, area.left, area.bottom - 1, area.right}, kBottom},
                {{area.top + 1, area.left, area.bottom, area.right}, kTop}};
    default:
        return {{area, kEdges}};
    }
}

} // namespace headless::excel
