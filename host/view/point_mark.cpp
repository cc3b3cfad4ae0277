#include "view/point_mark.h"

namespace headless {
namespace {

void addLine(SheetPath& path, const AcGePoint2d& from, const AcGePoint2d& to) {
    path.moveTo(from);
    path.lineTo(to);
}

void addCircle(SheetPath& path, const AcGePoint2d& middle, double radius) {
    // How far along the tangent a quarter's curve bends.
    constexpr double kBend = 0.5522847498;
    const AcGeVector2d across(radius, 0.0);
    AcGeVector2d from = across;
    path.moveTo(middle + from);
    for (int quarter = 0; quarter < 4; ++quarter) {
        const AcGeVector2d to(-from.y, from.x);
        path.bezierTo(middle + from + to * kBend, middle + to + from * kBend, middle + to);
        from = to;
    }
    path.close();
}

void addSquare(SheetPath& path, const AcGePoint2d& middle, double half) {
    path.moveTo({middle.x - half, middle.y - half});
    path.lineTo({middle.x + half, middle.y - half});
    path.lineTo({middle.x + half, middle.y + half});
    path.lineTo({middle.x - half, middle.y + half});
    path.close();
}

} // namespace

PointStyle pointStyle(int mode, double size, double unit, double sheetHeight) {
    constexpr double kUsualPercent = 5.0;
    const double percent = size == 0.0 ? kUsualPercent : -size;
    return {mode, size > 0.0 ? size * unit : sheetHeight * percent / 100.0};
}

void addMark(SheetPath& path, const AcGePoint2d& at, const PointStyle& style) {
    constexpr int kCircle = 32;
    constexpr int kSquare = 64;
    const double half = style.size / 2.0;
    switch (style.mode % kCircle) {
    case 2: // a cross twice as large as what may surround it
        addLine(path, {at.x - style.size, at.y}, {at.x + style.size, at.y});
        addLine(path, {at.x, at.y - style.size}, {at.x, at.y + style.size});
        break;
    case 3:
        addLine(path, {at.x - style.size, at.y - style.size},
                {at.x + style.size, at.y + style.size});
        addLine(path, {at.x - style.size, at.y + style.size},
                {at.x + style.size, at.y - style.size});
        break;
    case 4: // a line up
        addLine(path, at, {at.x, at.y - half});
        break;
    default:
        break;
    }
    if ((style.mode & kCircle) != 0) addCircle(path, at, half);
    if ((style.mode & kSquare) != 0) addSquare(path, at, half);
}

} // namespace headless
