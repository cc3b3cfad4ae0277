// The order in which boards are read.
#include <algorithm>
#include <random>

#include "geometry/extent_order.h"
#include "geometry/geometry_fixture.h"

namespace {

class ExtentOrderTest : public test_support::SessionTest {
protected:
    ~ExtentOrderTest() override {
        SortPline::nSortMethod = 0;
        InitExtentLess();
    }

    /// Adds unit squares with these lower left corners and sorts them; the answer is the corners in
    /// the order found.
    std::vector<AcGePoint2d> sorted(int method, const std::vector<AcGePoint2d>& corners) {
        std::vector<AcDbObjectId> ids;
        for (const AcGePoint2d& c : corners)
            ids.push_back(
                addPolyline({{c}, {{c.x + 1, c.y}}, {{c.x + 1, c.y + 1}}, {{c.x, c.y + 1}}}));
        SortPline::nSortMethod = method;
        std::stable_sort(ids.begin(), ids.end(), SortPline());
        std::vector<AcGePoint2d> order;
        for (const AcDbObjectId id : ids) {
            const ReadHandle<AcDbPolyline> square(id);
            AcGePoint2d corner;
            square->getPointAt(0, corner);
            order.push_back(corner);
        }
        return order;
    }
};

AcDbExtents box(double low, double high, bool asColumn) {
    return asColumn ? AcDbExtents({low, 0, 0}, {high, 1000, 0})
                    : AcDbExtents({0, low, 0}, {1000, high, 0});
}

TEST(ExtentRows, StandTogetherByTheirEdgesAndOverlap) {
    const struct {
        const char* name;
        double lowA, highA, lowB, highB;
        bool together;
    } cases[] = {
        {"bottoms nearly level", 0, 10, 0.05, 90, true},
        {"tops nearly level", 0, 10, -50, 10.05, true},
        {"within the other", 3, 6, 0, 10, true},
        {"shifted by less than half", 0, 10, 4, 14, true},
        {"shifted by half", 0, 10, 5, 15, false},
        {"shifted by more than half", 0, 10, 6, 16, false},
        {"the middle of the longer is not reached", 0, 10, 4, 24, false},
        {"apart", 0, 10, 10.2, 20, false},
        {"ends meet", 0, 10, 10, 20, false},
        {"bottoms level to 0.1 are not", 0, 10, 0.1, 30, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const bool asColumn : {false, true}) {
            const AcDbExtents a = box(c.lowA, c.highA, asColumn);
            const AcDbExtents b = box(c.lowB, c.highB, asColumn);
            const auto equal = asColumn ? ExtColumnEqual : ExtLineEqual;
            EXPECT_EQ(equal(a, b), c.together) << (asColumn ? "column" : "row");
            EXPECT_EQ(equal(b, a), c.together) << (asColumn ? "column" : "row") << ", swapped";
        }
    }
}

TEST(ExtentRows, TopFirstAndLeftFirst) {
    const AcDbExtents low({0, 0, 0}, {10, 10, 0});
    const AcDbExtents high({0.05, 20, 0}, {10.05, 30, 0});
    EXPECT_TRUE(ExtLineLess(high, low));
    EXPECT_FALSE(ExtLineLess(low, high));
    EXPECT_FALSE(ExtColumnLess(low, high)) << "left and right edges are equal";

    const AcDbExtents right({15, 0, 0}, {25, 10.05, 0});
    EXPECT_TRUE(ExtColumnLess(low, right));
    EXPECT_FALSE(ExtColumnLess(right, low));
    EXPECT_FALSE(ExtLineLess(low, right) || ExtLineLess(right, low));
}

TEST_F(ExtentOrderTest, FourMethodsAndNone) {
    const std::vector<AcGePoint2d> grid = {{5, 10}, {0, 0}, {5, 0}, {0, 10}};
    const struct {
        int method;
        std::vector<AcGePoint2d> order;
    } cases[] = {
        {0, {{0, 0}, {0, 10}, {5, 0}, {5, 10}}},
        {1, {{0, 10}, {0, 0}, {5, 10}, {5, 0}}},
        {2, {{0, 0}, {5, 0}, {0, 10}, {5, 10}}},
        {3, {{0, 10}, {5, 10}, {0, 0}, {5, 0}}},
        {7, grid},
        {-1, grid},
    };
    for (const auto& c : cases)
        EXPECT_EQ(sorted(c.method, grid), c.order) << "method " << c.method;
}

TEST_F(ExtentOrderTest, NotedExtentsSortAsFreshOnesDo) {
    std::mt19937 random(17);
    std::uniform_real_distribution<double> place(0.0, 30.0);
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 400; ++i) {
        const double x = place(random);
        const double y = place(random);
        ids.push_back(addPolyline({{{x, y}}, {{x + 2, y}}, {{x + 2, y + 3}}, {{x, y + 3}}}));
    }
    for (int method = 0; method < 4; ++method) {
        SortPline::nSortMethod = method;
        std::vector<AcDbObjectId> fresh = ids;
        std::stable_sort(fresh.begin(), fresh.end(), SortPline());
        for (const AcDbObjectId& id : ids)
            NoteExtentLess(id);
        std::vector<AcDbObjectId> noted = ids;
        std::stable_sort(noted.begin(), noted.end(), SortPline());
        InitExtentLess();
        EXPECT_TRUE(noted == fresh) << method;
    }
}

TEST_F(ExtentOrderTest, NotedExtentsStayUntilForgotten) {
    const AcDbObjectId moved = addPolyline({{{0, 0}}, {{1, 0}}, {{1, 1}}});
    const AcDbObjectId other = addPolyline({{{5, 0}}, {{6, 0}}, {{6, 1}}});
    NoteExtentLess(moved);
    {
        const WriteHandle<AcDbPolyline> polyline(moved);
        polyline->transformBy(AcGeMatrix3d::translation({20, 0, 0}));
    }
    EXPECT_TRUE(SortPline()(moved, other));
    InitExtentLess();
    EXPECT_FALSE(SortPline()(moved, other));
    EXPECT_TRUE(SortPline()(other, moved));
}

} // namespace
