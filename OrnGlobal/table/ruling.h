// Ruled lines as values: the lines that a table is drawn with.
#pragma once

#include <span>
#include <vector>

#include <gepnt3d.h>
#include <gept3dar.h>

namespace table {

struct Ruling {
    AcGePoint3d start;
    AcGePoint3d end;
};

/// The lines but for those drawn before, in the same direction or the other, with ends equal under
/// the platform's tolerance. Order is kept.
[[nodiscard]] std::vector<Ruling> withoutRepeats(std::span<const Ruling> lines);

/// True for a line whose direction is within 0.01 of an axis; true for one without length.
[[nodiscard]] bool isAxisParallel(const Ruling& line);

/// Joins lines that continue each other, in place: each line in turn takes up, in one sweep over
/// those after it, every line that shares an end with what it has become.
///
/// The last line of the list is never taken up, and lines that a sweep has passed are not looked at
/// again in it: what is joined depends on the order. Lines joined away are gone; order is kept.
void uniteLines(std::vector<Ruling>& lines);

/// Lines of one kind as lists of their ends.
struct EndLists {
    AcGePoint3dArray starts;
    AcGePoint3dArray ends;
};

struct SortedRulings {
    EndLists rows;    // within 0.0001 of their length of horizontal
    EndLists columns; // the same for vertical
};

/// Keeps the lines that are horizontal, and those that are vertical, in their order.
[[nodiscard]] SortedRulings byDirection(const AcGePoint3dArray& starts,
                                        const AcGePoint3dArray& ends);

} // namespace table
