// Coordinate systems: acedTrans, user coordinates, pixels. Expected values are worked out by hand
// or by composing elementary rotations, another road than the host takes.
#include "db/circle.h"
#include "view_fixture.h"

namespace {

using headless::View;
using CoordinatesTest = ViewTest;

/// Seen from the lower right, twisted, with its target off the origin.
View slantedView() {
    View view;
    view.center.set(3, 4);
    view.height = 50;
    view.target.set(10, 20, 30);
    view.direction.set(1, -1, 1);
    view.twist = std::numbers::pi / 6;
    return view;
}

/// The same display by turning the world under a fixed eye: to look along (1, -1, 1) bring its
/// azimuth of -45 degrees to the y axis, then tip by the angle from the z axis; then the twist.
AcGePoint3d turned(const View& view, const AcGePoint3d& point) {
    const double azimuth = std::atan2(view.direction.y, view.direction.x);
    const double tip = std::atan2(std::hypot(view.direction.x, view.direction.y), view.direction.z);
    const AcGeMatrix3d turn =
        AcGeMatrix3d::rotation(view.twist, AcGeVector3d::kZAxis) *
        AcGeMatrix3d::rotation(-tip, AcGeVector3d::kXAxis) *
        AcGeMatrix3d::rotation(-std::numbers::pi / 2 - azimuth, AcGeVector3d::kZAxis) *
        AcGeMatrix3d::translation(AcGePoint3d() - view.target);
    return turn * point;
}

TEST_F(CoordinatesTest, DisplayOfASlantedView) {
    const View view = slantedView();
    show(view);
    for (const AcGePoint3d& point : {AcGePoint3d(10, 20, 30), AcGePoint3d(11, 20, 30),
                                     AcGePoint3d(-5, 70, 2), AcGePoint3d(1e6, -2e5, 0)})
        expectNear(translate(point, 0, 2), turned(view, point), 1e-8);
    // A displacement along the line of sight is all depth.
    expectNear(translate({2, -2, 2}, 0, 2, 1), {0, 0, std::sqrt(12.0)});
    // Worked by hand without the twist: x of the display is (1, 1, 0) / sqrt 2.
    View straight = view;
    straight.twist = 0;
    show(straight);
    expectNear(translate({12, 22, 30}, 0, 2), {std::sqrt(8.0), 0, 0});
}

TEST_F(CoordinatesTest, TwistTurnsThePictureCounterClockwise) {
    View plan;
    plan.twist = kPi / 6;
    show(plan);
    expectNear(translate({2, 0, 5}, 0, 2), {std::sqrt(3.0), 1, 5});
}

TEST_F(CoordinatesTest, PerspectiveBySimilarTriangles) {
    View view;
    view.target.set(10, 0, 0);
    view.direction.set(0, 0, 100); // the eye is 100 above the target
    view.mode = headless::kPerspectiveView;
    show(view);
    expectNear(translate({12, 3, 0}, 0, 2), {2, 3, 0});   // on the target's plane: true size
    expectNear(translate({12, 3, 50}, 0, 2), {4, 6, 50}); // half way to the eye: twice as large
    expectNear(translate({12, 3, -100}, 0, 2), {1, 1.5, -100});
    expectNear(translate({4, 6, 50}, 2, 0), {12, 3, 50});
    EXPECT_FALSE(translate({12, 3, 100}, 0, 2)) << "at the eye";
    EXPECT_FALSE(translate({12, 3, 101}, 0, 2)) << "behind the eye";
    expectNear(translate({2, 3, 50}, 0, 2, 1), {2, 3, 50}); // displacements are parallel
}

TEST_F(CoordinatesTest, UserCoordinates) {
    // Seen from below: x as in the world, y and z reversed.
    setUcs({10, 20, 30}, AcGeVector3d::kXAxis, -AcGeVector3d::kYAxis);
    expectNear(translate({11, 22, 33}, 0, 1), {1, -2, -3});
    expectNear(translate({1, -2, -3}, 1, 0), {11, 22, 33});
    expectNear(translate({1, 2, 3}, 0, 1, 1), {1, -2, -3});
    EXPECT_EQ(pointOf(L"UCSORG"), AcGePoint3d(10, 20, 30));
    EXPECT_EQ(pointOf(L"UCSYDIR"), AcGePoint3d(0, -1, 0));
    EXPECT_EQ(integerOf(L"WORLDUCS"), 0);
    AcGeMatrix3d got;
    ASSERT_EQ(acedGetCurrentUCS(got), Acad::eOk);
    EXPECT_EQ(got * AcGePoint3d(1, 1, 1), AcGePoint3d(11, 19, 29));

    AcGeMatrix3d mirrored;
    mirrored.setCoordSystem({}, -AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
    EXPECT_EQ(acedSetCurrentUCS(mirrored), Acad::eInvalidInput);
    EXPECT_EQ(acedSetCurrentUCS(AcGeMatrix3d::scaling(2)), Acad::eInvalidInput);
    EXPECT_EQ(acedSetCurrentUCS(AcGeMatrix3d::kIdentity), Acad::eOk);
    EXPECT_EQ(integerOf(L"WORLDUCS"), 1);
}

TEST_F(CoordinatesTest, SheetsHaveTheirOwnUserCoordinates) {
    setUcs({5, 0, 0}, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    addFloating();
    ASSERT_EQ(set(L"TILEMODE", 0), headless::SetOutcome::done);
    EXPECT_EQ(integerOf(L"WORLDUCS"), 1);
    ASSERT_EQ(set(L"CVPORT", 2), headless::SetOutcome::done);
    EXPECT_EQ(pointOf(L"UCSORG"), AcGePoint3d(5, 0, 0));
}

TEST_F(CoordinatesTest, ObjectCoordinates) {
    resbuf extrusion{};
    extrusion.restype = RT3DPOINT;
    extrusion.resval.rpoint[2] = -3; // any length; x of a downward extrusion is reversed
    expectNear(translate({1, 2, 3}, extrusion, code(0)), {-1, 2, -3});
    expectNear(translate({-1, 2, -3}, code(0), extrusion), {1, 2, 3});
    extrusion.resval.rpoint[2] = 0;
    EXPECT_FALSE(translate({1, 2, 3}, extrusion, code(0)));

    auto circle = std::make_unique<AcDbCircle>();
    circle->setNormal({1, 0, 0}); // object x is world y, object y is world z
    const AcDbObjectId id = add(drawing().modelSpaceId(), std::move(circle));
    resbuf entity{};
    entity.restype = RTENAME;
    acdbGetAdsName(entity.resval.rlname, id);
    expectNear(translate({1, 2, 3}, entity, code(0)), {3, 1, 2});
    {
        const AcDbObjectPointer<AcDbCircle> writer(id, AcDb::kForWrite);
        expectNear(translate({1, 2, 3}, entity, code(0)), {3, 1, 2});
        writer->erase();
    }
    EXPECT_FALSE(translate({1, 2, 3}, entity, code(0)));
}

TEST_F(CoordinatesTest, SheetAndItsViewport) {
    addFloating();
    EXPECT_FALSE(translate({7, 9, 0}, 2, 3)) << "no sheet is shown";
    set(L"TILEMODE", 0);
    EXPECT_FALSE(translate({7, 9, 0}, 2, 3)) << "the sheet itself is current";
    set(L"CVPORT", 2);
    expectNear(translate({7, 9, 10}, 2, 3), {100, 80, 2}); // z is scaled, never moved
    expectNear(translate({57, 9, 0}, 2, 3), {110, 80, 0});
    expectNear(translate({110, 80, 2}, 3, 2), {57, 9, 10});
    expectNear(translate({5, 10, 15}, 2, 3, 1), {1, 2, 3});
    expectNear(translate({1, 2, 3}, 3, 2, 1), {5, 10, 15});
    EXPECT_FALSE(translate({7, 9, 0}, 0, 3));
    EXPECT_FALSE(translate({7, 9, 0}, 3, 1));
    EXPECT_FALSE(translate({7, 9, 0}, 4, 0));

    {
        const AcDbObjectPointer<AcDbViewport> flat(headless::modelViewport(drawing(), 2),
                                                   AcDb::kForWrite);
        flat->setHeight(0);
    }
    EXPECT_FALSE(translate({110, 80, 2}, 3, 2)) << "a window without height shows nothing";
    EXPECT_GT(std::get<AcGePoint2d>(*ed_.variables.get(L"SCREENSIZE")).y, 0);
}

TEST_F(CoordinatesTest, ThereAndBackAmongAllSystems) {
    View view = slantedView();
    setUcs({-3, 8, 1}, AcGeVector3d(0, 1, 1) / std::sqrt(2.0), AcGeVector3d::kXAxis);
    for (const short mode : {short{0}, short{headless::kPerspectiveView}}) {
        view.direction.set(100, -100, 100);
        view.mode = mode;
        show(view);
        for (const short from : {short{0}, short{1}, short{2}}) {
            for (const short to : {short{0}, short{1}, short{2}}) {
                for (const int displacement : {0, 1}) {
                    const AcGePoint3d point(1, 2, 3);
                    const auto there = translate(point, from, to, displacement);
                    ASSERT_TRUE(there);
                    expectNear(translate(*there, to, from, displacement), point, 1e-9);
                }
            }
        }
    }
}

TEST_F(CoordinatesTest, PixelsOfThePlan) {
    View plan;
    plan.center.set(100, 50);
    plan.height = 90; // of 900 pixels: 0.1 each
    show(plan);
    acedDwgPoint world;
    ASSERT_TRUE(acedCoordFromPixelToWorld(2, CPoint(0, 0), world));
    EXPECT_NEAR(world[0], 100 - 80, 1e-9);
    EXPECT_NEAR(world[1], 50 + 45, 1e-9); // pixels count downwards
    CPoint pixel;
    const acedDwgPoint right = {101, 50, 7};
    ASSERT_TRUE(acedCoordFromWorldToPixel(2, right, pixel));
    EXPECT_EQ(pixel, CPoint(810, 450));
    EXPECT_FALSE(acedCoordFromPixelToWorld(3, CPoint(0, 0), world));
    EXPECT_EQ(acedGetWinNum(1600, 900), 2);
    EXPECT_EQ(acedGetWinNum(1601, 0), 0);
}

TEST_F(CoordinatesTest, ClicksMeetThePlaneOfTheUser) {
    View view = slantedView();
    show(view);
    setUcs({0, 0, 5}, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    ed_.variables.set(L"ELEVATION", 2.0);
    for (const CPoint& pixel : {CPoint(800, 450), CPoint(13, 870)}) {
        acedDwgPoint world;
        ASSERT_EQ(acedCoordFromPixelToWorld(pixel, world), 2);
        EXPECT_NEAR(world[2], 7, 1e-9);
        CPoint back;
        ASSERT_TRUE(acedCoordFromWorldToPixel(2, world, back));
        EXPECT_EQ(back, pixel);
    }
    // From the front nothing of the plane but its edge is seen.
    view.direction.set(0, -1, 0);
    show(view);
    acedDwgPoint world;
    ASSERT_EQ(acedCoordFromPixelToWorld(CPoint(800, 450), world), 2);
    EXPECT_NEAR(world[1], view.target.y, 1e-9);
}

} // namespace
