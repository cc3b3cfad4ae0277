// Boxes in space, found by place.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "ge/extents.h"

namespace headless {

/// A set of boxes with numbers. Boxes are kept in single precision, rounded outwards.
class BoxTree {
public:
    struct Item {
        std::array<float, 3> min;
        std::array<float, 3> max;
        std::uint32_t slot = 0;
        std::uint32_t stamp = 0;
    };
    static Item item(const Extents3d& box, std::uint32_t slot, std::uint32_t stamp);

    /// An empty one.
    BoxTree();
    /// Packs all boxes at once, which makes a better tree than one by one.
    explicit BoxTree(std::span<const Item> items);
    ~BoxTree();
    BoxTree(BoxTree&&) noexcept;
    BoxTree& operator=(BoxTree&&) noexcept;

    void insert(const Item& item);
    std::size_t size() const;

    using Visit = std::function<void(const Item&)>;
    /// Visits all whose boxes have a point in common with `box`, in no order.
    void forEachIn(const Extents3d& box, const Visit& visit) const;

private:
    struct Tree;
    std::unique_ptr<Tree> tree_;
};

} // namespace headless
