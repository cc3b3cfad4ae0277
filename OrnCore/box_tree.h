// Boxes found by place: which of many meet a given one?
//
// A tree packed once and never changed: boxes are cut into upright slices, each slice into groups
// of neighbours, groups into groups of groups, and every group knows the box around it.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <afxwin.h>

namespace orncore {

/// An upright rectangle; edges count as inside.
struct Box {
    double minX, minY, maxX, maxY;

    [[nodiscard]] bool meets(const Box& other) const noexcept {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
};

/// The box wider by `margin` on every side, and by what far-off coordinates lose in rounding.
[[nodiscard]] AFX_EXT_API Box widened(const Box& box, double margin) noexcept;

class AFX_EXT_CLASS BoxTree {
public:
    /// Boxes whose minimum is above their maximum, or no number, are never found.
    explicit BoxTree(std::span<const Box> boxes);

    /// Replaces `found` by the indices of the boxes that meet `query`, ascending.
    void find(const Box& query, std::vector<std::size_t>& found) const;

private:
    struct Leaf {
        Box box;
        std::size_t index;
    };
    void pack();
    void visit(std::size_t level, std::size_t node, const Box& query,
               std::vector<std::size_t>& found) const;

    std::vector<Leaf> leaves_;
    std::vector<std::vector<Box>> levels_; // The last has one node; empty without leaves.
};

} // namespace orncore
