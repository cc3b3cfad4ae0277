// A point of the screen.
#pragma once

#include "win/types.h"

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int initX, int initY) : POINT{initX, initY} {}
    CPoint(POINT point) : POINT(point) {}

    friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};
