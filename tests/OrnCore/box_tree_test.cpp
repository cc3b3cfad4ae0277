#include "OrnCore/box_tree.h"

#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace {

using orncore::Box;

TEST(BoxTree, FindsWhatLookingAtEachBoxFinds) {
    std::mt19937 random(7);
    const auto number = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    const auto box = [&](double widest) {
        const double x = number(0, 100), y = number(0, 100);
        return Box{x, y, x + number(0, widest), y + number(0, widest)};
    };
    for (const std::size_t count : {0, 1, 16, 17, 300, 5000}) {
        std::vector<Box> boxes;
        for (std::size_t i = 0; i < count; ++i)
            boxes.push_back(box(i % 50 == 0 ? 100.0 : 2.0));
        if (count > 16) {
            boxes[5].minX = std::numeric_limits<double>::quiet_NaN();
            boxes[6] = {10, 0, 5, 100}; // inside out
            boxes[7] = boxes[8];
        }
        const orncore::BoxTree tree(boxes);
        std::vector<std::size_t> found;
        for (int query = 0; query < 200; ++query) {
            const Box asked = query % 10 == 0 ? boxes.empty() ? box(0) : boxes[0] : box(5.0);
            std::vector<std::size_t> expected;
            for (std::size_t i = 0; i < count; ++i)
                if (boxes[i].minX <= boxes[i].maxX && boxes[i].meets(asked)) expected.push_back(i);
            tree.find(asked, found);
            ASSERT_EQ(found, expected) << count << " boxes";
        }
    }
}

} // namespace
