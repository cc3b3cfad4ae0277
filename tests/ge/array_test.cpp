#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "acarray.h"
#include "geintrvl.h"

namespace {

using testing::ElementsAre;

template <class T, class... V>
AcArray<T> arrayOf(const V&... values) {
    AcArray<T> result;
    (result.append(values), ...);
    return result;
}

TEST(AcArray, GrowsAndShrinks) {
    AcArray<int> a(2, 3);
    EXPECT_EQ(a.physicalLength(), 2);
    EXPECT_EQ(a.growLength(), 3);
    EXPECT_TRUE(a.isEmpty());
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(a.append(i), i);
    EXPECT_EQ(a.length(), 100);
    EXPECT_EQ(a.last(), 99);

    a.setLogicalLength(3).setLogicalLength(5);
    EXPECT_THAT(a, ElementsAre(0, 1, 2, 0, 0)) << "what comes back is new";
    a.setPhysicalLength(2);
    EXPECT_THAT(a, ElementsAre(0, 1));
    EXPECT_EQ(a.physicalLength(), 2);
    a.setPhysicalLength(0).append(7);
    EXPECT_THAT(a, ElementsAre(7));
}

TEST(AcArray, EditsByPosition) {
    auto a = arrayOf<int>(10, 20, 30, 40, 50);
    EXPECT_THAT(a.insertAt(0, 5).insertAt(3, 25).insertAt(7, 60),
                ElementsAre(5, 10, 20, 25, 30, 40, 50, 60));
    EXPECT_THAT(a.removeAt(3).removeFirst().removeLast(), ElementsAre(10, 20, 30, 40, 50));
    EXPECT_THAT(a.removeSubArray(1, 2), ElementsAre(10, 40, 50));
    EXPECT_THAT(a.reverse(), ElementsAre(50, 40, 10));
    EXPECT_THAT(a.swap(0, 2), ElementsAre(10, 40, 50));
    EXPECT_THAT(a.append(a), ElementsAre(10, 40, 50, 10, 40, 50)) << "to itself";
    EXPECT_THAT(a.insertAt(1, a[5]), ElementsAre(10, 50, 40, 50, 10, 40, 50));
    EXPECT_THAT(a.setAll(a[1]), testing::Each(50));
}

TEST(AcArray, Finds) {
    const auto a = arrayOf<int>(7, 8, 7, 9);
    int at = -5;
    EXPECT_EQ(a.find(7), 0);
    EXPECT_EQ(a.findFrom(7, 1), 2);
    EXPECT_EQ(a.findFrom(7, 3), -1);
    EXPECT_TRUE(a.find(9, at));
    EXPECT_EQ(at, 3);
    EXPECT_FALSE(a.find(8, at, 2));
    EXPECT_EQ(at, 3);
    EXPECT_TRUE(a.contains(8));
    EXPECT_FALSE(a.contains(8, 2));
    auto b = a;
    EXPECT_TRUE(b.remove(7, 1));
    EXPECT_FALSE(b.remove(6));
    EXPECT_THAT(b, ElementsAre(7, 8, 9));
    EXPECT_TRUE(a == arrayOf<int>(7, 8, 7, 9));
    EXPECT_FALSE(a == b);
}

TEST(AcArray, HoldsObjects) {
    const std::string text = "longer than a string keeps within itself";
    AcArray<std::string> a(1);
    a.append(text);
    a.append(a[0]); // The storage moves while its own element is read.
    EXPECT_THAT(a, ElementsAre(text, text));
    std::string given = text;
    a.appendMove(given);
    EXPECT_EQ(a.length(), 3);
    AcArray<std::string> moved = std::move(a);
    EXPECT_THAT(moved, ElementsAre(text, text, text));

    const auto counted = std::make_shared<int>(1);
    AcArray<std::shared_ptr<int>> owners;
    for (int i = 0; i < 4; ++i)
        owners.append(counted);
    EXPECT_EQ(counted.use_count(), 5);
    owners.removeAt(0);
    EXPECT_EQ(counted.use_count(), 4) << "a removed element is let go at once";
    owners.removeAll();
    EXPECT_EQ(counted.use_count(), 1);

    AcArray<bool> flags;
    flags.append(true);
    bool& flag = flags[0];
    flag = false;
    EXPECT_THAT(flags, ElementsAre(false));
}

TEST(Interval, BoundsMayBeMissing) {
    const AcGeInterval closed(2.0, 5.0);
    const AcGeInterval above(Adesk::kTrue, 4);
    const AcGeInterval all;
    EXPECT_TRUE(all.isUnBounded() && all.contains(-1e300));
    EXPECT_TRUE(above.isBoundedBelow() && !above.isBoundedAbove());
    EXPECT_TRUE(above.contains(4 - 1e-13) && !above.contains(4 - 1e-9));
    AcGeInterval shared;
    ASSERT_TRUE(closed.intersectWith(above, shared));
    EXPECT_TRUE(shared == AcGeInterval(4.0, 5.0));
    EXPECT_FALSE(closed.intersectWith(AcGeInterval(6.0, 7.0), shared));
    closed.getMerge(AcGeInterval(7.0, 8.0), shared);
    EXPECT_TRUE(shared == AcGeInterval(2.0, 8.0));
    EXPECT_TRUE(AcGeInterval(5.0, 2.0) == closed);
}

} // namespace
