#include "OrnCore/box_tree.h"

#include <algorithm>
#include <cmath>

namespace orncore {
namespace {

constexpr std::size_t kGroup = 16;

Box around(const Box& a, const Box& b) noexcept {
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX),
            std::max(a.maxY, b.maxY)};
}

std::size_t groupsOf(std::size_t count) noexcept { return (count + kGroup - 1) / kGroup; }

/// The boxes around each group of neighbours.
template <class Items, class BoxOf>
std::vector<Box> grouped(const Items& items, BoxOf boxOf) {
    std::vector<Box> groups;
    groups.reserve(groupsOf(items.size()));
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i % kGroup == 0)
            groups.push_back(boxOf(items[i]));
        else
            groups.back() = around(groups.back(), boxOf(items[i]));
    }
    return groups;
}

} // namespace

Box widened(const Box& box, double margin) noexcept {
    constexpr double kRounding = 1e-14;
    const double farthest =
        std::max({std::abs(box.minX), std::abs(box.minY), std::abs(box.maxX), std::abs(box.maxY)});
    const double by = margin + farthest * kRounding;
    return {box.minX - by, box.minY - by, box.maxX + by, box.maxY + by};
}

BoxTree::BoxTree(std::span<const Box> boxes) {
    leaves_.reserve(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Box& box = boxes[i];
        if (box.minX <= box.maxX && box.minY <= box.maxY) leaves_.push_back({box, i});
    }
    pack();
}

void BoxTree::pack() {
    if (leaves_.empty()) return;
    const auto byX = [](const Leaf& a, const Leaf& b) { return a.box.minX < b.box.minX; };
    const auto byY = [](const Leaf& a, const Leaf& b) { return a.box.minY < b.box.minY; };
    std::sort(leaves_.begin(), leaves_.end(), byX);
    const double groups = static_cast<double>(groupsOf(leaves_.size()));
    const std::size_t slice = static_cast<std::size_t>(std::ceil(std::sqrt(groups))) * kGroup;
    for (std::size_t first = 0; first < leaves_.size(); first += slice) {
        const std::size_t last = std::min(first + slice, leaves_.size());
        std::sort(leaves_.begin() + static_cast<std::ptrdiff_t>(first),
                  leaves_.begin() + static_cast<std::ptrdiff_t>(last), byY);
    }
    levels_.push_back(grouped(leaves_, [](const Leaf& leaf) { return leaf.box; }));
    while (levels_.back().size() > 1)
        levels_.push_back(grouped(levels_.back(), [](const Box& box) { return box; }));
}

void BoxTree::visit(std::size_t level, std::size_t node, const Box& query,
                    std::vector<std::size_t>& found) const {
    if (!levels_[level][node].meets(query)) return;
    const std::size_t first = node * kGroup;
    const std::size_t below = level == 0 ? leaves_.size() : levels_[level - 1].size();
    const std::size_t last = std::min(first + kGroup, below);
    for (std::size_t child = first; child < last; ++child) {
        if (level > 0)
            visit(level - 1, child, query, found);
        else if (leaves_[child].box.meets(query))
            found.push_back(leaves_[child].index);
    }
}

void BoxTree::find(const Box& query, std::vector<std::size_t>& found) const {
    found.clear();
    if (levels_.empty()) return;
    visit(levels_.size() - 1, 0, query, found);
    std::sort(found.begin(), found.end());
}

} // namespace orncore
