#include "OrnBoard/measure.h"

#include <array>
#include <cmath>
#include <numbers>

#include <dbents.h>

#include "OrnBoard/measure_report.h"
#include "support/session_fixture.h"

namespace {

using board::MeasureFilter;
using board::Measurement;
using test_support::BulgeVertex;

class Measure : public test_support::SessionTest {
protected:
    Measurement measure(const MeasureFilter& filter = {}) const {
        return board::measureBoards(database(), filter);
    }

    AcDbObjectId addRectangle(double a, double b, const ACHAR* layer) {
        return addPolyline({{{0, 0}}, {{a, 0}}, {{a, b}}, {{0, b}}}, true, layer);
    }

    AcDbObjectId addCircle(double radius, const ACHAR* layer) {
        auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, radius);
        circle->setLayer(addLayer(layer));
        return add(std::move(circle));
    }

    AcDbObjectId addOldPolyline(double a, double b, bool closed) {
        AcGePoint3dArray corners;
        for (const AcGePoint3d& p :
             {AcGePoint3d(0, 0, 0), AcGePoint3d(a, 0, 0), AcGePoint3d(a, b, 0)})
            corners.append(p);
        corners.append(AcGePoint3d(0, b, 0));
        return add(std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 0.0, closed));
    }
};

TEST_F(Measure, GivesSquareMetresAndMillimetres) {
    addRectangle(3000, 2000, L"BOARD");
    addCircle(1000, L"COLUMN");
    addPolyline({{{0, 0}, 1}, {{1000, 0}}}, false, L"BOARD"); // an open half circle
    const Measurement measured = measure();

    ASSERT_EQ(measured.polylines.size(), 2U);
    EXPECT_NEAR(*measured.polylines[0].areaSquareMetre, 6.0, 1e-12);
    EXPECT_NEAR(*measured.polylines[0].length, 10000.0, 1e-9);
    EXPECT_TRUE(measured.polylines[0].closed);
    EXPECT_EQ(measured.polylines[0].vertices, 4);
    EXPECT_NEAR(*measured.polylines[1].areaSquareMetre, std::numbers::pi / 8, 1e-12);
    EXPECT_NEAR(*measured.polylines[1].length, 500 * std::numbers::pi, 1e-9);
    EXPECT_FALSE(measured.polylines[1].closed);

    ASSERT_EQ(measured.circles.size(), 1U);
    EXPECT_NEAR(*measured.circles[0].areaSquareMetre, std::numbers::pi, 1e-12);
    EXPECT_NEAR(*measured.circles[0].length, 2000 * std::numbers::pi, 1e-9);
    EXPECT_EQ(measured.circles[0].vertices, 0);
}

TEST_F(Measure, SumsByLayerInTheOrderOfNames) {
    addRectangle(3000, 2000, L"WALL");
    addRectangle(1000, 2000, L"BOARD");
    addRectangle(3000, 2000, L"WALL");
    const Measurement measured = measure();
    ASSERT_EQ(measured.layers.size(), 2U);
    EXPECT_EQ(measured.layers[0].layer, L"BOARD");
    EXPECT_EQ(measured.layers[1].layer, L"WALL");
    EXPECT_EQ(measured.layers[1].count, 2);
    EXPECT_NEAR(measured.layers[1].areaSquareMetre, 12.0, 1e-12);
    EXPECT_NEAR(measured.layers[1].length, 20000.0, 1e-9);
    // Areas 6, 2 and 6: mean 14/3, deviation sqrt(32/9).
    EXPECT_NEAR(*measured.variation, std::sqrt(32.0) / 14.0 * 100.0, 1e-9);
}

TEST_F(Measure, TakesLayersInAnyCase) {
    addRectangle(1000, 1000, L"Board");
    addRectangle(1000, 1000, L"WALL");
    EXPECT_EQ(measure({.layers = {L"bOARD"}}).polylines.size(), 1U);
    EXPECT_EQ(measure({.layers = {L"board", L"wall"}}).polylines.size(), 2U);
    EXPECT_TRUE(measure({.layers = {L"板"}}).layers.empty());
}

TEST_F(Measure, FiltersBySideLengths) {
    addRectangle(3000, 2000, L"0");
    addOldPolyline(3000, 2000, true);
    addCircle(500, L"0");                                              // sides of 1000
    addPolyline({{{0, 0}}, {{3000, 0}}, {{3000, 2000}}}, false, L"0"); // open: has no sides

    const struct {
        const char* name;
        board::SideRange a, b;
        std::size_t polylines, circles;
    } cases[] = {
        {"first side within", {2999, 3001}, {}, 2, 0},
        {"upper bound counts", {0, 3000}, {0, 2000}, 2, 1},
        {"lower bound does not", {3000, 4000}, {}, 0, 0},
        {"second side too long", {}, {0, 1000}, 0, 1},
        {"second side within", {}, {1999, 2000}, 2, 0},
        {"circle by its square", {999, 1000}, {999, 1000}, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Measurement measured = measure({.a = c.a, .b = c.b});
        EXPECT_EQ(measured.polylines.size(), c.polylines);
        EXPECT_EQ(measured.circles.size(), c.circles);
    }
}

// Seen from below, x and the sense of bulges are mirrored together.
TEST_F(Measure, MeasuresSidesOfMirroredOutlines) {
    AcGePoint3dArray corners;
    AcGeDoubleArray bulges;
    const double rounded = std::tan(std::numbers::pi / 8);
    for (const auto& [x, y, bulge] : {std::array{100.0, 0.0, 0.0},
                                      {3000.0, 0.0, 0.0},
                                      {3000.0, 2000.0, 0.0},
                                      {0.0, 2000.0, 0.0},
                                      {0.0, 100.0, rounded}}) {
        corners.append(AcGePoint3d(x, y, 0));
        bulges.append(bulge);
    }
    auto outline = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 0.0, true, 0.0,
                                                    0.0, &bulges);
    outline->setNormal(-AcGeVector3d::kZAxis);
    add(std::move(outline));
    EXPECT_EQ(measure({.a = {2999, 3001}, .b = {1999, 2001}}).polylines.size(), 1U);
}

TEST_F(Measure, TakesPolylinesOfAllKinds) {
    addOldPolyline(3000, 2000, true);
    AcGePoint3dArray path;
    for (const AcGePoint3d& p :
         {AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 300), AcGePoint3d(400, 0, 300)})
        path.append(p);
    add(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, path, false));
    const Measurement measured = measure();
    ASSERT_EQ(measured.polylines.size(), 2U);
    EXPECT_NEAR(*measured.polylines[0].areaSquareMetre, 6.0, 1e-12);
    EXPECT_EQ(measured.polylines[0].vertices, 4);
    EXPECT_FALSE(measured.polylines[1].areaSquareMetre) << "lies in no plane of its own";
    EXPECT_NEAR(*measured.polylines[1].length, 700.0, 1e-9);
}

TEST_F(Measure, LeavesOutWhatIsNotThere) {
    const AcDbObjectId erased = addRectangle(1000, 1000, L"0");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(object, erased, AcDb::kForWrite), Acad::eOk);
    object->erase();
    object->close();
    const Measurement measured = measure();
    EXPECT_TRUE(measured.polylines.empty());
    EXPECT_FALSE(measured.variation);
    EXPECT_EQ(board::measureReport(measured), L"Nothing to measure.\n");
    EXPECT_TRUE(board::measureBoards(nullptr, {}).layers.empty());
}

TEST_F(Measure, ReportsAlignedTables) {
    addRectangle(3000, 2000, L"板轮廓");
    addRectangle(3000, 2000, L"WALL");
    const CString report = board::measureReport(measure());
    EXPECT_GE(report.Find(L"polyline  板轮廓  yes            4   6.0000    10000.0\n"), 0);
    EXPECT_GE(report.Find(L"polyline  WALL    yes            4   6.0000    10000.0\n"), 0);
    EXPECT_GE(report.Find(L"Total       2  12.0000    20000.0\n"), 0);
    EXPECT_GE(report.Find(L"variation of the areas: 0.00%\n"), 0);
}

} // namespace
