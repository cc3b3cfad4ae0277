// What the product leaves behind when the host refuses one of its calls: nothing.
#include <functional>

#include <dbents.h>

#include "OrnBoard/blocks.h"
#include "OrnBoard/clean.h"
#include "OrnBoard/layers.h"
#include "OrnBoard/measure.h"
#include "OrnBoard/numbering.h"
#include "OrnBoard/pick.h"
#include "OrnBoard/styles.h"
#include "OrnBoard/tables.h"
#include "frame/auto_open_lock_layer.h"
#include "frame/auto_set_close_pline_to_top.h"
#include "support/fault_injection.h"
#include "support/session_fixture.h"

namespace {

class HostRefuses : public test_support::SessionTest {
protected:
    /// Three boards, one of them numbered, one on a locked layer, a table, and a block.
    void draw() {
        session().closeDrawings();
        session().newDrawing();
        for (const double x : {0.0, 2000.0, 4000.0})
            addPolyline({{{x, 0}}, {{x + 1000, 0}}, {{x + 1000, 900}}, {{x, 900}}}, true,
                        x > 3000 ? L"LOCKED" : L"BOARD");
        for (const double at : {0.0, 50.0, 100.0}) {
            add(std::make_unique<AcDbLine>(AcGePoint3d(8000, at, 0), AcGePoint3d(8100, at, 0)));
            add(std::make_unique<AcDbLine>(AcGePoint3d(8000 + at, 0, 0),
                                           AcGePoint3d(8000 + at, 100, 0)));
        }
        add(std::make_unique<AcDbText>(AcGePoint3d(8010, 10, 0), L"7", AcDbObjectId::kNull, 3));
        board::makeBlock(database(), {.name = L"OLD", .layers = {L"BOARD"}});
        board::insertBlock(database(), {.name = L"OLD", .position = AcGePoint3d(0, 5000, 0)});
        board::numberBoards(database(), {.layers = {L"BOARD"}});
        lock(addLayer(L"LOCKED"));
    }
    static void lock(AcDbObjectId layer) {
        AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsLocked(true);
    }
};

TEST_F(HostRefuses, AndNothingIsLeftBehind) {
    const struct {
        const char* name;
        std::function<void()> run;
    } cases[] = {
        {"measuring", [&] { board::measureBoards(database(), {}); }},
        {"numbering", [&] { board::numberBoards(database(), {}); }},
        {"clearing numbers", [&] { board::clearBoardNumbers(database(), {}, L""); }},
        {"making a block",
         [&] {
             board::makeBlock(database(), {.name = L"NEW", .layers = {L"BOARD"}, .replace = true});
         }},
        {"inserting a block",
         [&] { board::insertBlock(database(), {.name = L"OLD", .layer = L"NEW"}); }},
        {"clearing a block",
         [&] {
             board::clearBlocksOf(database(), [&] {
                 board::makeBlock(database(), {.name = L"NEW", .layers = {L"BOARD"}});
             });
         }},
        {"making layers",
         [&] {
             board::makeNumberedLayers(database(), {102, 108});
         }},
        {"styles",
         [&] {
             board::loadStyles(database(), CString());
             board::listStyles();
         }},
        {"a table", [&] { board::drawnTables(database(), {}); }},
        {"a pick in a block",
         [&] {
             board::pickLayers(database(), {{0, 5450, 0}, {10, 450, 0}}, {.hatches = true});
         }},
        {"unlocking layers", [&] { const AutoOpenLockLayer unlocked; }},
        {"closed outlines on top", [&] { const AutoSetClosePlineToTop onTop; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const int calls = test_support::failEachCall(
            session(), [&] { draw(); }, c.run, [](const std::string&) {});
        EXPECT_GT(calls, 1);
    }
}

} // namespace
