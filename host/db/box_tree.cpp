// The only file that sees Boost's headers, which take long to compile.
#include "db/box_tree.h"

#include <cmath>

#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/geometry/strategies/strategies.hpp>
#include <boost/iterator/function_output_iterator.hpp>

namespace headless {

namespace {

using Point = boost::geometry::model::point<float, 3, boost::geometry::cs::cartesian>;
using Box = boost::geometry::model::box<Point>;

struct BoxOf {
    using result_type = Box;
    Box operator()(const BoxTree::Item& item) const {
        return {{item.min[0], item.min[1], item.min[2]}, {item.max[0], item.max[1], item.max[2]}};
    }
};

struct SameSlot {
    bool operator()(const BoxTree::Item& a, const BoxTree::Item& b) const {
        return a.slot == b.slot && a.stamp == b.stamp;
    }
};

constexpr std::size_t kMostInNode = 16;
using Rtree =
    boost::geometry::index::rtree<BoxTree::Item, boost::geometry::index::quadratic<kMostInNode>,
                                  BoxOf, SameSlot>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

float roundedDown(double value) {
    const auto nearest = static_cast<float>(value);
    return static_cast<double>(nearest) > value ? std::nextafter(nearest, -kInfinity) : nearest;
}

float roundedUp(double value) {
    const auto nearest = static_cast<float>(value);
    return static_cast<double>(nearest) < value ? std::nextafter(nearest, kInfinity) : nearest;
}

} // namespace

struct BoxTree::Tree {
    Rtree rtree;
};

BoxTree::Item BoxTree::item(const Extents3d& box, std::uint32_t slot, std::uint32_t stamp) {
    Item item{{}, {}, slot, stamp};
    for (unsigned int axis = 0; axis < 3; ++axis) {
        item.min[axis] = roundedDown(box.min[axis]);
        item.max[axis] = roundedUp(box.max[axis]);
    }
    return item;
}

BoxTree::BoxTree() : tree_(std::make_unique<Tree>()) {}
BoxTree::BoxTree(std::span<const Item> items)
    : tree_(std::make_unique<Tree>(Tree{Rtree(items.begin(), items.end())})) {}
BoxTree::~BoxTree() = default;
BoxTree::BoxTree(BoxTree&&) noexcept = default;
BoxTree& BoxTree::operator=(BoxTree&&) noexcept = default;

void BoxTree::insert(const Item& item) { tree_->rtree.insert(item); }

std::size_t BoxTree::size() const { return tree_->rtree.size(); }

void BoxTree::forEachIn(const Extents3d& box, const Visit& visit) const {
    const Box wanted = BoxOf()(item(box, 0, 0));
    tree_->rtree.query(boost::geometry::index::intersects(wanted),
                       boost::make_function_output_iterator(visit));
}

} // namespace headless
