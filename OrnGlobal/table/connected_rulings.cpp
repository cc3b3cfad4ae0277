#include "table/connected_rulings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

#include "OrnCore/box_tree.h"
#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"

namespace table {
namespace {

using orncore::Box;
using Coordinate = double AcGePoint3d::*;

/// Joins what touches on one line; `along` is the coordinate that runs along the lines.
class PieceJoiner {
public:
    PieceJoiner(Coordinate along, Coordinate at) : along_(along), at_(at) {}

    void add(Ruling line) {
        if (line.start.*along_ > line.end.*along_) std::swap(line.start, line.end);
        lines_.push_back(line);
    }

    std::vector<Ruling> joined() {
        sortByPlace();
        std::vector<Ruling> result;
        for (const Ruling& line : lines_) {
            if (!result.empty() && continues(result.back(), line)) {
                Ruling& last = result.back();
                if (line.end.*along_ > last.end.*along_) last.end = line.end;
            } else {
                result.push_back(line);
            }
        }
        return result;
    }

private:
    /// Pieces on one line, as far as rounding lets them be, stand together in their order along it.
    void sortByPlace() {
        std::ranges::stable_sort(lines_, [this](const Ruling& a, const Ruling& b) {
            return a.start.*at_ < b.start.*at_;
        });
        const auto isElsewhere = [this](const Ruling& a, const Ruling& b) {
            return CZelMath::EqualTo(a.start.*at_, b.start.*at_) == 0;
        };
        for (auto first = lines_.begin(); first != lines_.end();) {
            auto last = std::adjacent_find(first, lines_.end(), isElsewhere);
            if (last != lines_.end()) ++last;
            std::stable_sort(first, last, [this](const Ruling& a, const Ruling& b) {
                return a.start.*along_ < b.start.*along_;
            });
            first = last;
        }
    }

    bool isStraight(const Ruling& line) const {
        return CZelMath::EqualTo(line.start.*at_, line.end.*at_) != 0;
    }
    bool continues(const Ruling& last, const Ruling& line) const {
        return isStraight(last) && isStraight(line) &&
               CZelMath::EqualTo(last.start.*at_, line.start.*at_) != 0 &&
               CZelMath::EqualLess(line.start.*along_, last.end.*along_) != 0;
    }

    Coordinate along_;
    Coordinate at_;
    std::vector<Ruling> lines_;
};

void addAll(PieceJoiner& pieces, const EndLists& lines) {
    for (int i = 0; i < lines.starts.length(); ++i)
        pieces.add({lines.starts[i], lines.ends[i]});
}

Box boxOf(const Ruling& line) {
    const auto [left, right] = std::minmax(line.start.x, line.end.x);
    const auto [bottom, top] = std::minmax(line.start.y, line.end.y);
    return {left, bottom, right, top};
}

bool meet(const Ruling& a, const Ruling& b) {
    AcGePoint3d at;
    return CZelDwg::GetLineInterSect(a.start, a.end, b.start, b.end, at) > 0;
}

/// Sets that grow together.
class Groups {
public:
    explicit Groups(std::size_t count) : parent_(count) {
        std::iota(parent_.begin(), parent_.end(), std::size_t{0});
    }
    std::size_t of(std::size_t i) {
        while (parent_[i] != i)
            i = parent_[i] = parent_[parent_[i]];
        return i;
    }
    void unite(std::size_t a, std::size_t b) { parent_[of(a)] = of(b); }

private:
    std::vector<std::size_t> parent_;
};

} // namespace

std::vector<Ruling> joinedPieces(const std::vector<Ruling>& lines) {
    AcGePoint3dArray starts;
    AcGePoint3dArray ends;
    for (const Ruling& line : lines) {
        starts.append(line.start);
        ends.append(line.end);
    }
    const SortedRulings sorted = byDirection(starts, ends);
    PieceJoiner rows(&AcGePoint3d::x, &AcGePoint3d::y);
    addAll(rows, sorted.rows);
    PieceJoiner columns(&AcGePoint3d::y, &AcGePoint3d::x);
    addAll(columns, sorted.columns);

    std::vector<Ruling> result = rows.joined();
    std::ranges::reverse(result);
    const std::vector<Ruling> upright = columns.joined();
    result.insert(result.end(), upright.begin(), upright.end());
    return result;
}

std::vector<std::vector<Ruling>> connected(const std::vector<Ruling>& lines) {
    std::vector<Box> boxes;
    for (const Ruling& line : lines)
        boxes.push_back(boxOf(line));
    const orncore::BoxTree tree(boxes);
    Groups groups(lines.size());
    std::vector<std::size_t> near;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        tree.find(orncore::widened(boxes[i], 2.0 * CZelMath::kTolerance), near);
        for (const std::size_t other : near) {
            if (other < i && groups.of(other) != groups.of(i) && meet(lines[i], lines[other]))
                groups.unite(other, i);
        }
    }
    std::map<std::size_t, std::vector<Ruling>> byGroup;
    for (std::size_t i = 0; i < lines.size(); ++i)
        byGroup[groups.of(i)].push_back(lines[i]);
    std::vector<std::vector<Ruling>> result;
    for (auto& [group, members] : byGroup)
        result.push_back(std::move(members));
    return result;
}

} // namespace table
