// Viewports, the variables that tell what they show, and the command ZOOM.
#include "db/dictionary.h"
#include "db/layer_table.h"
#include "db/layout.h"
#include "db/line.h"
#include "db/residence.h"
#include "db/undo_journal.h"
#include "ed/prompts.h"
#include "view_fixture.h"

namespace {

using headless::SetOutcome;
using headless::View;

class ViewsTest : public ViewTest {
protected:
    AcDbObjectId addTile(const AcGePoint2d& low, const AcGePoint2d& high) {
        auto tile = std::make_unique<AcDbViewportTableRecord>();
        tile->setName(L"*Active");
        tile->setLowerLeftCorner(low);
        tile->setUpperRightCorner(high);
        AcDbObjectPointer<AcDbViewportTable> table(drawing().viewportTableId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, tile.get()), Acad::eOk);
        tile.release()->close();
        return id;
    }

    void addLine(const AcGePoint3d& from, const AcGePoint3d& to) {
        add(drawing().currentSpaceId(), std::make_unique<AcDbLine>(from, to));
    }

    void run(const wchar_t* line) {
        ed_.input.type(line);
        EXPECT_TRUE(ed_.runner.runPending(false));
    }

    void expectView(double x, double y, double height) const {
        EXPECT_NEAR(pointOf(L"VIEWCTR").x, x, 1e-9);
        EXPECT_NEAR(pointOf(L"VIEWCTR").y, y, 1e-9);
        EXPECT_NEAR(realOf(L"VIEWSIZE"), height, 1e-9);
    }
};

TEST_F(ViewsTest, FreshDrawingShowsItsLimits) {
    expectView(210, 148.5, 297);
    EXPECT_EQ(pointOf(L"VIEWDIR"), AcGePoint3d(0, 0, 1));
    EXPECT_EQ(ed_.variables.get(L"SCREENSIZE"), headless::VariableValue(AcGePoint2d(1600, 900)));
    // Sixteen to nine of a height of 297.
    EXPECT_EQ(pointOf(L"VSMIN"), AcGePoint3d(210 - 264, 0, 0));
    EXPECT_EQ(pointOf(L"VSMAX"), AcGePoint3d(210 + 264, 297, 0));
    set(L"TILEMODE", 0);
    expectView(210, 148.5, 297);
}

TEST_F(ViewsTest, VariablesSpeakUserCoordinates) {
    View view;
    view.center.set(5, 0);
    view.height = 20;
    view.target.set(1, 2, 3);
    view.direction.set(10, 0, 0); // display x is world y, display y is world z
    view.twist = 0.25;
    view.lensLength = 35;
    view.frontClip = 4;
    view.backClip = -6;
    view.mode = headless::kFrontClipOn | headless::kFrontClipNotAtEye;
    show(view);
    setUcs({1, 0, 0}, AcGeVector3d::kYAxis, -AcGeVector3d::kXAxis);
    const double c = std::cos(0.25);
    const double s = std::sin(0.25);
    // World: target + 5 * (display x), which the twist turns clockwise in the display's plane.
    const AcGePoint3d center = pointOf(L"VIEWCTR");
    EXPECT_NEAR(center.x, 2 + 5 * c, 1e-9);
    EXPECT_NEAR(center.y, 0, 1e-9);
    EXPECT_NEAR(center.z, 3 - 5 * s, 1e-9);
    EXPECT_EQ(pointOf(L"TARGET"), AcGePoint3d(2, 0, 3));
    EXPECT_EQ(pointOf(L"VIEWDIR"), AcGePoint3d(0, -10, 0));
    EXPECT_EQ(integerOf(L"VIEWMODE"), 2 + 16);
    EXPECT_EQ(realOf(L"FRONTZ"), 4);
    EXPECT_EQ(realOf(L"BACKZ"), -6);
    EXPECT_EQ(realOf(L"LENSLENGTH"), 35);
    EXPECT_EQ(realOf(L"VIEWTWIST"), 0.25);
    EXPECT_EQ(set(L"PERSPECTIVE", 1), SetOutcome::done);
    EXPECT_EQ(integerOf(L"VIEWMODE"), 1 + 2 + 16);
    EXPECT_EQ(set(L"VIEWMODE", 0), SetOutcome::readOnly);
}

TEST_F(ViewsTest, Tiles) {
    {
        const AcDbObjectPointer<AcDbViewportTableRecord> first(
            headless::modelViewport(drawing(), 2), AcDb::kForWrite);
        first->setUpperRightCorner({0.5, 1});
    }
    addTile({0.5, 0.5}, {1, 1});
    EXPECT_EQ(acedGetWinNum(100, 100), 2);
    EXPECT_EQ(acedGetWinNum(1500, 100), 3);
    EXPECT_EQ(acedGetWinNum(1500, 800), 0) << "no tile is there";

    EXPECT_EQ(set(L"CVPORT", 3), SetOutcome::done);
    EXPECT_EQ(ed_.variables.get(L"SCREENSIZE"), headless::VariableValue(AcGePoint2d(800, 450)));
    View view;
    view.center.set(70, 80);
    view.height = 45;
    show(view);
    CPoint pixel;
    const acedDwgPoint point = {71, 80, 0};
    ASSERT_TRUE(acedCoordFromWorldToPixel(3, point, pixel));
    EXPECT_EQ(pixel, CPoint(1210, 225));
    EXPECT_EQ(set(L"CVPORT", 2), SetOutcome::done);
    expectView(210, 148.5, 297);

    // A click into another tile makes it current, and only the next one answers.
    ed_.input.add(headless::MouseClick{AcGePoint2d(1210, 225), {}});
    ed_.input.add(headless::MouseClick{AcGePoint2d(1210, 225), {}});
    ads_point answer;
    ASSERT_EQ(acedGetPoint(nullptr, nullptr, answer), RTNORM);
    expectNear(AcGePoint3d(answer[0], answer[1], answer[2]), {71, 80, 0});
    EXPECT_TRUE(ed_.input.isEmpty());
    EXPECT_EQ(integerOf(L"CVPORT"), 3);

    EXPECT_EQ(set(L"CVPORT", 1), SetOutcome::outOfRange);
    EXPECT_EQ(set(L"CVPORT", 4), SetOutcome::outOfRange);
}

TEST_F(ViewsTest, FloatingViewports) {
    const AcDbObjectId port = addFloating();
    EXPECT_EQ(set(L"CVPORT", 3), SetOutcome::outOfRange);
    set(L"TILEMODE", 0);
    EXPECT_EQ(integerOf(L"CVPORT"), 1);
    EXPECT_EQ(ed_.variables.get(L"CTAB"), headless::VariableValue(std::wstring(L"Layout1")));
    set(L"CVPORT", 2);
    EXPECT_EQ(drawing().currentSpaceId(), drawing().modelSpaceId());
    expectView(7, 9, 200);
    // The sheet shows 297 units on 900 pixels.
    const double pixels = 900.0 / 297.0;
    EXPECT_NEAR(std::get<AcGePoint2d>(*ed_.variables.get(L"SCREENSIZE")).x, 60 * pixels, 1e-9);
    const int x = static_cast<int>(800 + (100 - 210) * pixels);
    const int y = static_cast<int>(450 - (80 - 148.5) * pixels);
    EXPECT_EQ(acedGetWinNum(x, y), 2);
    EXPECT_EQ(acedGetWinNum(10, 10), 1);
    run(L"ZOOM 0.5XP");
    expectView(7, 9, 80);

    {
        const AcDbObjectPointer<AcDbViewport> open(port, AcDb::kForWrite);
        open->erase();
    }
    EXPECT_EQ(integerOf(L"CVPORT"), 1);
    EXPECT_EQ(set(L"CVPORT", 2), SetOutcome::outOfRange);
    EXPECT_EQ(ed_.variables.set(L"CTAB", std::wstring(L"model")), SetOutcome::done);
    EXPECT_EQ(integerOf(L"TILEMODE"), 1);
    EXPECT_EQ(ed_.variables.set(L"CTAB", std::wstring(L"Layout9")), SetOutcome::outOfRange);
}

TEST_F(ViewsTest, TheSheetShownIsTheBlockPaperSpace) {
    const AcDbObjectId first = drawing().paperSpaceId();
    AcDbObjectId second, layout;
    {
        AcDbObjectPointer<AcDbBlockTable> blocks(drawing().blockTableId(), AcDb::kForWrite);
        auto* const block = new AcDbBlockTableRecord;
        block->setName(L"*Paper_Space0");
        ASSERT_EQ(blocks->add(second, block), Acad::eOk);
        AcDbDictionary* root = nullptr;
        ASSERT_EQ(drawing().getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
        auto* const layouts = new AcDbDictionary;
        ASSERT_EQ(root->setAt(L"ACAD_LAYOUT", layouts, layout), Acad::eOk);
        root->close();
        auto* const made = new AcDbLayout;
        ASSERT_EQ(layouts->setAt(L"Plan", made, layout), Acad::eOk);
        block->setLayoutId(layout);
        made->close();
        layouts->close();
        block->close();
    }
    const auto named = [&](AcDbObjectId id) {
        return headless::Residence::peek<AcDbBlockTableRecord>(id)->nameOf();
    };
    drawing().disableUndoRecording(false);
    drawing().undoJournal()->mark();
    EXPECT_EQ(ed_.variables.set(L"CTAB", std::wstring(L"plan")), SetOutcome::done);
    EXPECT_EQ(drawing().paperSpaceId(), second);
    EXPECT_EQ(drawing().currentSpaceId(), second);
    EXPECT_EQ(named(first), L"*Paper_Space0");
    set(L"TILEMODE", 1);
    set(L"TILEMODE", 0);
    EXPECT_EQ(ed_.variables.get(L"CTAB"), headless::VariableValue(std::wstring(L"Plan")));
    drawing().undoJournal()->undoToMark();
    EXPECT_EQ(drawing().paperSpaceId(), first);
    EXPECT_EQ(named(second), L"*Paper_Space0");
}

TEST_F(ViewsTest, SheetKeepsItsView) {
    set(L"TILEMODE", 0);
    run(L"ZOOM C 30,40 60");
    expectView(30, 40, 60);
    set(L"TILEMODE", 1);
    expectView(210, 148.5, 297);
    set(L"TILEMODE", 0);
    expectView(30, 40, 60);
    EXPECT_TRUE(headless::modelViewports(drawing()).empty()) << "the sheet's own does not float";
    run(L"ZOOM P");
    expectView(210, 148.5, 297);
}

TEST_F(ViewsTest, Zoom) {
    addLine({0, 0, 0}, {500, 50, 0});
    {
        AcDbObjectPointer<AcDbLayerTable> layers(drawing().layerTableId(), AcDb::kForWrite);
        auto* frozen = new AcDbLayerTableRecord;
        frozen->setName(L"frozen");
        frozen->setIsFrozen(true);
        layers->add(frozen);
        frozen->close();
        auto line = std::make_unique<AcDbLine>(AcGePoint3d(), AcGePoint3d(9000, 9000, 0));
        line->setLayer(L"frozen");
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(),
                                                            AcDb::kForWrite);
        space->appendAcDbEntity(line.get());
        line.release()->close();
    }
    constexpr double kAspect = 1600.0 / 900.0;
    const struct {
        const wchar_t* line;
        double x, y, height;
    } cases[] = {
        {L"ZOOM E", 250, 25, 500 / kAspect},
        {L"ZOOM 2X", 250, 25, 250 / kAspect},
        {L"zoom P", 250, 25, 500 / kAspect},
        {L"ZOOM A", 250, 148.5, 297}, // limits are 420 by 297
        {L"ZOOM 0.5", 250, 148.5, 594},
        {L"ZOOM W 0,0 160,10", 80, 5, 90},
        {L"ZOOM 10,20 10,70", 10, 45, 50},
        {L"ZOOM C 1,2 25", 1, 2, 25},
        {L"ZOOM C 3,4 5X", 3, 4, 5},
        {L"ZOOM S .1X", 3, 4, 50},
        {L"ZOOM 0X", 3, 4, 50},  // refused
        {L"ZOOM 2XP", 3, 4, 50}, // not on a sheet
        {L"ZOOM what", 3, 4, 50},
        {L"ZOOM C 0,0 -5", 3, 4, 50},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.line));
        run(c.line);
        expectView(c.x, c.y, c.height);
    }
    EXPECT_EQ(acedCommandS(RTSTR, L".ZOOM", RTREAL, 2.0, RTNONE), RTNORM);
    expectView(3, 4, 148.5);
}

TEST_F(ViewsTest, ZoomRemembersTenViews) {
    for (int i = 0; i < 12; ++i)
        run(L"ZOOM 2X");
    for (int i = 0; i < 12; ++i)
        run(L"ZOOM P");
    EXPECT_NEAR(realOf(L"VIEWSIZE"), 297.0 / 4, 1e-9);
    EXPECT_TRUE(printed(L"No previous view"));
}

TEST_F(ViewsTest, ZoomExtentsIsExactInATwistedView) {
    View view;
    view.twist = kPi / 4;
    show(view);
    addLine({0, 0, 0}, {100, 100, 0}); // stands upright in the picture
    run(L"ZOOM E");
    EXPECT_NEAR(realOf(L"VIEWSIZE"), std::sqrt(2.0) * 100, 1e-9);
}

TEST_F(ViewsTest, SettingTheCurrentView) {
    AcDbViewTableRecord view;
    view.setCenterPoint({1, 2});
    view.setHeight(9);
    view.setWidth(16 * (1 + 1e-14)); // the screen's own proportion, but for rounding
    view.setTarget({5, 0, 0});
    EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
    EXPECT_EQ(realOf(L"VIEWSIZE"), 9.0);
    EXPECT_EQ(pointOf(L"VIEWCTR"), AcGePoint3d(6, 2, 0));
    view.setWidth(32);
    EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
    EXPECT_EQ(realOf(L"VIEWSIZE"), 18.0) << "its whole width is seen";

    set(L"UCSFOLLOW", 1);
    EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
    EXPECT_EQ(integerOf(L"UCSFOLLOW"), 1) << "the viewport's own";

    view.setIsPaperspaceView(true);
    EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eInvalidInput);
    view.setIsPaperspaceView(false);
    view.setHeight(0);
    EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(acedSetCurrentView(nullptr, nullptr), Acad::eInvalidInput);

    view.setHeight(30);
    const AcDbObjectId id = addFloating();
    const AcDbObjectPointer<AcDbViewport> port(id, AcDb::kForWrite);
    EXPECT_EQ(acedSetCurrentView(&view, port.object()), Acad::eOk);
    EXPECT_EQ(port->viewHeight(), 30.0);
    EXPECT_EQ(realOf(L"VIEWSIZE"), 18.0);
}

} // namespace
