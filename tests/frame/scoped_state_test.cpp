// Guards over the drawing's state: what they change, and that it is back when they end.
#include <numbers>
#include <optional>

#include <aced.h>
#include <dbidar.h>
#include <rxmfcapi.h>
#include <sorttab.h>

#include "OrnCore/zel_cmd.h"
#include "frame/ac_ut_sys_var.h"
#include "frame/auto_open_lock_layer.h"
#include "frame/auto_revert_view.h"
#include "frame/auto_set_close_pline_to_top.h"
#include "frame/auto_set_sys_var.h"
#include "frame/common_undo.h"
#include "frame/common_view.h"
#include "frame_fixture.h"

namespace {

class ScopedStateTest : public FrameTest {
protected:
    static int integer(const wchar_t* name) {
        int value = -1;
        EXPECT_EQ(AcUtSysVar::getSysVar(name, value), Acad::eOk);
        return value;
    }
    static double real(const wchar_t* name) {
        double value = -1;
        EXPECT_EQ(AcUtSysVar::getSysVar(name, value), Acad::eOk);
        return value;
    }
    static AcGePoint3d point(const wchar_t* name) {
        AcGePoint3d value;
        EXPECT_EQ(AcUtSysVar::getSysVar(name, value), Acad::eOk);
        return value;
    }
};

TEST_F(ScopedStateTest, VariablesOfEveryType) {
    EXPECT_EQ(AcUtSysVar::setSysVar(L"USERI1", 70000), Acad::eOk);
    EXPECT_EQ(integer(L"USERI1"), 4464) << "the low 16 bits";
    EXPECT_EQ(AcUtSysVar::setSysVar(L"USERI2", -3), Acad::eOk);
    EXPECT_EQ(integer(L"USERI2"), -3);
    EXPECT_EQ(AcUtSysVar::setSysVar(L"USERR1", 2.5), Acad::eOk);
    EXPECT_EQ(real(L"USERR1"), 2.5);
    EXPECT_EQ(AcUtSysVar::setSysVar(L"USERS1", L"梁"), Acad::eOk);
    CString text;
    EXPECT_EQ(AcUtSysVar::getSysVar(L"USERS1", text), Acad::eOk);
    EXPECT_EQ(text, L"梁");
    EXPECT_EQ(AcUtSysVar::setSysVar(L"LASTPOINT", AcGePoint3d(1, 2, 3)), Acad::eOk);
    EXPECT_EQ(point(L"LASTPOINT"), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(AcUtSysVar::setSysVar(L"SNAPBASE", AcGePoint2d(4, 5)), Acad::eOk);
    AcGePoint2d flat;
    EXPECT_EQ(AcUtSysVar::getSysVar(L"SNAPBASE", flat), Acad::eOk);
    EXPECT_EQ(flat, AcGePoint2d(4, 5));
    resbuf buffer = {};
    buffer.restype = RTSHORT;
    buffer.resval.rint = 12;
    EXPECT_EQ(AcUtSysVar::setVar(L"USERI3", &buffer), Acad::eOk);
    EXPECT_EQ(integer(L"USERI3"), 12);
}

TEST_F(ScopedStateTest, RefusedVariablesStayQuiet) {
    double untouched = 8;
    EXPECT_EQ(AcUtSysVar::getSysVar(L"NOSUCHVAR", untouched), Acad::eInvalidInput);
    EXPECT_EQ(untouched, 8);
    CString text(L"as it was");
    EXPECT_EQ(AcUtSysVar::getSysVar(L"NOSUCHVAR", text), Acad::eInvalidInput);
    EXPECT_EQ(text, L"as it was");
    printed();
    EXPECT_EQ(AcUtSysVar::setSysVar(L"NOSUCHVAR", 1), Acad::eInvalidInput);
    EXPECT_EQ(AcUtSysVar::setSysVar(L"VIEWSIZE", 1.0), Acad::eInvalidInput) << "read-only";
    EXPECT_EQ(AcUtSysVar::setVar(nullptr, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(printed(), L"");
    EXPECT_TRUE(session().messageBoxes().empty());
}

TEST_F(ScopedStateTest, SystemVariablesNest) {
    AcUtSysVar::setSysVar(L"USERI1", 5);
    {
        const AutoSetSysVar outer(L"useri1", 7);
        EXPECT_EQ(integer(L"USERI1"), 7);
        {
            const AutoSetSysVar inner(L"USERI1", 9);
            EXPECT_EQ(integer(L"USERI1"), 9);
        }
        EXPECT_EQ(integer(L"USERI1"), 7);
        { const AutoSetSysVar same(L"USERI1", 7); }
        EXPECT_EQ(integer(L"USERI1"), 7);
    }
    EXPECT_EQ(integer(L"USERI1"), 5);

    std::optional<AutoSetSysVar> copy;
    {
        const AutoSetSysVar guard(L"USERI1", 6);
        copy.emplace(guard);
    }
    AcUtSysVar::setSysVar(L"USERI1", 1);
    copy.reset();
    EXPECT_EQ(integer(L"USERI1"), 5) << "a copy restores the same value again";
    const AutoSetSysVar unknown(L"NOSUCHVAR", 3);
}

TEST_F(ScopedStateTest, LockedLayersAreLockedAgain) {
    changeLayer(L"locked", [](AcDbLayerTableRecord& layer) { layer.setIsLocked(true); });
    changeLayer(L"hidden from view", [](AcDbLayerTableRecord& layer) {
        layer.setIsLocked(true);
        layer.setIsOff(true);
    });
    changeLayer(L"open", [](AcDbLayerTableRecord&) {});
    const auto isLocked = [this](const wchar_t* name) {
        return ReadHandle<AcDbLayerTableRecord>(addLayer(name))->isLocked();
    };
    AcDbDatabase other;
    {
        const AutoOpenLockLayer guard;
        EXPECT_FALSE(isLocked(L"locked"));
        EXPECT_FALSE(isLocked(L"hidden from view"));
        { const AutoOpenLockLayer inner; }
        EXPECT_FALSE(isLocked(L"locked")) << "the inner guard unlocked nothing";
    }
    EXPECT_TRUE(isLocked(L"locked"));
    EXPECT_TRUE(isLocked(L"hidden from view"));
    EXPECT_FALSE(isLocked(L"open"));
    EXPECT_TRUE(ReadHandle<AcDbLayerTableRecord>(addLayer(L"hidden from view"))->isOff());

    AcDbObjectId lockedId = addLayer(L"locked");
    {
        const AutoOpenLockLayer guard;
        const ReadHandle<AcDbLayerTableRecord> reader(lockedId);
        const AutoOpenLockLayer copy(guard); // Ends while the layer cannot be opened.
    }
    EXPECT_TRUE(isLocked(L"locked"));
    EXPECT_EQ(kelmor::OpenAllLockLayer(&other).length(), 2) << "the working database all the same";
    EXPECT_FALSE(isLocked(L"locked"));
}

AcDbViewTableRecord& asSlanted(AcDbViewTableRecord& view) {
    view.setCenterPoint({12, 34});
    view.setHeight(50);
    view.setWidth(60);
    view.setTarget({7, 8, 9});
    view.setViewDirection({100, -100, 100});
    view.setViewTwist(std::numbers::pi / 6);
    view.setLensLength(35);
    view.setPerspectiveEnabled(true);
    view.setFrontClipEnabled(true);
    view.setFrontClipAtEye(false);
    view.setFrontClipDistance(20);
    view.setBackClipDistance(-30);
    return view;
}

TEST_F(ScopedStateTest, ViewIsTakenDownAndRestored) {
    AcGeMatrix3d ucs;
    ucs.setCoordSystem({5, 6, 7}, AcGeVector3d::kYAxis, -AcGeVector3d::kXAxis,
                       AcGeVector3d::kZAxis);
    ASSERT_EQ(acedSetCurrentUCS(ucs), Acad::eOk);
    AcDbViewTableRecord slanted;
    ASSERT_EQ(acedSetCurrentView(&asSlanted(slanted), nullptr), Acad::eOk);
    {
        const AutoRevertView guard;
        const AcDbViewTableRecord& view = guard.view();
        EXPECT_NEAR(view.centerPoint().x, 12, 1e-9);
        EXPECT_NEAR(view.centerPoint().y, 34, 1e-9);
        EXPECT_TRUE(view.target().isEqualTo({7, 8, 9}));
        EXPECT_TRUE(view.viewDirection().isEqualTo({100, -100, 100}));
        EXPECT_EQ(view.height(), 50);
        EXPECT_EQ(view.width(), 1600.0 / 900.0 * 50);
        EXPECT_EQ(view.viewTwist(), std::numbers::pi / 6);
        EXPECT_EQ(view.lensLength(), 35);
        EXPECT_TRUE(view.perspectiveEnabled());
        EXPECT_TRUE(view.frontClipEnabled());
        EXPECT_FALSE(view.backClipEnabled());
        EXPECT_FALSE(view.frontClipAtEye());
        EXPECT_EQ(view.frontClipDistance(), 20);
        EXPECT_EQ(view.backClipDistance(), -30);
        EXPECT_FALSE(view.isPaperspaceView());

        AcDbViewTableRecord plan;
        plan.setHeight(1000);
        ASSERT_EQ(acedSetCurrentView(&plan, nullptr), Acad::eOk);
        EXPECT_EQ(integer(L"VIEWMODE"), 0);
        {
            const AutoRevertView inner;
            EXPECT_TRUE(inner.view().frontClipAtEye());
            acedSetCurrentView(&asSlanted(slanted), nullptr);
        }
        EXPECT_EQ(real(L"VIEWSIZE"), 1000);
        const AutoRevertView copy(guard); // Ends first, with the same view.
        EXPECT_EQ(copy.view().lensLength(), 35);
    }
    EXPECT_EQ(real(L"VIEWSIZE"), 50);
    EXPECT_EQ(integer(L"VIEWMODE"), 1 + 2 + 16);
    EXPECT_NEAR(point(L"VIEWDIR").x, -100, 1e-9); // user x is world y
    EXPECT_EQ(real(L"FRONTZ"), 20);
    EXPECT_EQ(real(L"BACKZ"), -30);
}

TEST_F(ScopedStateTest, SheetsViewHasNoClips) {
    AcUtSysVar::setSysVar(L"TILEMODE", 0);
    AcDbViewTableRecord sheet;
    sheet.setIsPaperspaceView(true);
    sheet.setCenterPoint({30, 40});
    sheet.setHeight(60);
    sheet.setFrontClipDistance(5);
    sheet.setBackClipDistance(-5);
    ASSERT_EQ(acedSetCurrentView(&sheet, nullptr), Acad::eOk);
    ASSERT_EQ(real(L"FRONTZ"), 5);
    {
        const AutoRevertView guard;
        EXPECT_TRUE(guard.view().isPaperspaceView());
        EXPECT_EQ(guard.view().frontClipDistance(), 0);
        EXPECT_EQ(guard.view().backClipDistance(), 0);
        Common::ZoomAll();
        EXPECT_NE(real(L"VIEWSIZE"), 60);
    }
    EXPECT_EQ(real(L"VIEWSIZE"), 60);
    EXPECT_EQ(point(L"VIEWCTR"), AcGePoint3d(30, 40, 0));
    EXPECT_EQ(real(L"FRONTZ"), 0);
    EXPECT_EQ(real(L"BACKZ"), 0);
}

TEST(ZoomAll, NeedsAProgramThatCanBeDriven) {
    headless::SessionOptions options;
    options.automation = false;
    headless::Session session(options);
    session.newDrawing();
    CZelCmd::Run(L"ZOOM", {L"2X"});
    Common::ZoomAll();
    double height = 0;
    AcUtSysVar::getSysVar(L"VIEWSIZE", height);
    EXPECT_EQ(height, 148.5);
}

TEST_F(ScopedStateTest, WorkBetweenUndoCallsIsRolledBack) {
    const AcDbObjectId line = addLine();
    const auto startOf = [&] { return ReadHandle<AcDbLine>(line)->startPoint(); };
    printed();
    Common::UndoBegin();
    const AcDbObjectId drawn = addPolyline({{{0, 0}}, {{1, 0}}, {{1, 1}}});
    WriteHandle<AcDbLine>(line)->setStartPoint({1, 2, 3});
    ASSERT_EQ(CZelCmd::Run(L"ZOOM", {L"2X"}), RTNORM);
    { const AutoSetClosePlineToTop guard; }
    Common::UndoEnd();
    EXPECT_TRUE(drawn.isErased());
    EXPECT_EQ(startOf(), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(real(L"VIEWSIZE"), 297);
    EXPECT_EQ(printed().find(L"Unknown command"), std::wstring::npos);

    // The next pair brackets its own work only.
    WriteHandle<AcDbLine>(line)->setStartPoint({4, 5, 6});
    Common::UndoBegin();
    WriteHandle<AcDbLine>(line)->setStartPoint({7, 8, 9});
    Common::UndoEnd();
    EXPECT_EQ(startOf(), AcGePoint3d(4, 5, 6));
}

TEST_F(ScopedStateTest, ClosedPolylinesComeToTheTop) {
    const auto order = [this] {
        AcDbObjectIdArray ids;
        const ReadHandle<AcDbBlockTableRecord> space(database()->modelSpaceId());
        AcDbSortentsTable* table = nullptr;
        if (const_cast<AcDbBlockTableRecord&>(*space).getSortentsTable(table, AcDb::kForRead) !=
            Acad::eOk)
            return std::vector<AcDbObjectId>();
        table->getFullDrawOrder(ids);
        table->close();
        return std::vector<AcDbObjectId>(ids.begin(), ids.end());
    };
    const AcDbObjectId open = addPolyline({{{0, 0}}, {{1, 0}}}, false);
    { const AutoSetClosePlineToTop nothingClosed; }
    EXPECT_TRUE(order().empty()) << "no draw order was made";

    const AcDbObjectId first = addPolyline({{{0, 0}}, {{1, 0}}, {{1, 1}}});
    const AcDbObjectId line = addLine();
    const AcDbObjectId second = addPolyline({{{0, 0}}, {{2, 0}}, {{2, 2}}});
    const AcDbObjectId last = addLine();
    {
        const AutoSetClosePlineToTop guard;
        EXPECT_THAT(order(), testing::ElementsAre(open, line, last, first, second));
    }
    EXPECT_THAT(order(), testing::ElementsAre(open, line, last, first, second)) << "it stays";
}

} // namespace
