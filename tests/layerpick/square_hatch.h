// Areas to pick.
#pragma once

#include <memory>

#include <dbhatch.h>

#include "../db/entity_support.h"

/// The groups of one loop: a square with its lower left corner at x, y.
inline enttest::Groups squareLoop(double x, double y, double side) {
    const auto number = [](double value) { return std::to_string(value); };
    enttest::Groups loop = {{92, "3"}, {72, "0"}, {73, "1"}, {93, "4"}};
    for (const auto& [dx, dy] :
         {std::pair(0.0, 0.0), std::pair(side, 0.0), std::pair(side, side), std::pair(0.0, side)}) {
        loop.emplace_back(10, number(x + dx));
        loop.emplace_back(20, number(y + dy));
    }
    return loop;
}

/// A filled area with one loop.
inline std::unique_ptr<AcDbHatch> hatchOf(AcDbDatabase& db, const enttest::Groups& loop) {
    enttest::Groups groups = {{100, "AcDbHatch"}, {2, "SOLID"}, {70, "1"}, {91, "1"}};
    groups.insert(groups.end(), loop.begin(), loop.end());
    for (const int code : {97, 75, 76, 98})
        groups.emplace_back(code, "0");
    return enttest::read<AcDbHatch>(db, groups);
}
