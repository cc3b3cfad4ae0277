// Choosing layers by clicks, as a user does it, and the drawing afterwards.
#include <functional>

#include <gmock/gmock.h>

#include <aced.h>
#include <rxmfcapi.h>

#include "../blocks/clipped_reference.h"
#include "ed/state.h"
#include "ed/viewports.h"
#include "frame/layer_lock.h"
#include "layerpick/pick_layers.h"
#include "square_hatch.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Looks at the drawing whenever the button goes down.
class ButtonWatch {
public:
    explicit ButtonWatch(std::function<void()> look) {
        look_ = std::move(look);
        acedRegisterFilterWinMsg(filter);
    }
    ~ButtonWatch() { acedRemoveFilterWinMsg(filter); }
    ButtonWatch(const ButtonWatch&) = delete;
    ButtonWatch& operator=(const ButtonWatch&) = delete;

private:
    static BOOL filter(MSG* message) {
        if (message->message == WM_LBUTTONDOWN) look_();
        return FALSE;
    }
    static inline std::function<void()> look_;
};

struct Click {
    double x, y;
    bool shift = false;
};
constexpr Click kWall{150, 100};
constexpr Click kLocked{150, 200};
constexpr Click kIn{505, 120};
constexpr Click kZero{505, 100};
constexpr Click kArea{360, 360};
constexpr Click kLineInArea{360, 330};
constexpr Click kNothing{50, 800};

Click shifted(Click click) { return {click.x, click.y, true}; }

class PickLayers : public ClippedReferences {
protected:
    PickLayers() {
        headless::View view = headless::currentView(*database());
        view.center.set(800, 450); // a drawing unit is a pixel
        view.height = 900.0;
        headless::setCurrentView(*database(), view);
        addLine({100, 100, 0}, {200, 100, 0}, L"WALL");
        addLine({100, 200, 0}, {200, 200, 0}, L"LOCKED");
        const AcDbObjectId block = addBlock(L"B");
        addLine({0, 0, 0}, {10, 0, 0}, L"0", L"B");
        addLine({0, 20, 0}, {10, 20, 0}, L"IN", L"B");
        addReference(block, {500, 100, 0}, L"REF");
        addLine({310, 330, 0}, {390, 330, 0}, L"UNDER");
        auto area = hatchOf(*database(), squareLoop(300, 300, 100));
        area->setLayer(addLayer(L"AREA"));
        add(std::move(area));
        frame::lockLayer(addLayer(L"LOCKED"));
    }

    void click(const Click& at) { session().clickAt({at.x, at.y, 0}, {.shift = at.shift}); }
    void click(const std::vector<Click>& all) {
        for (const Click& at : all)
            click(at);
    }
    void enter() { session().pressKey(VK_RETURN); }

    std::size_t shown() { return database()->highlights().shown(); }
    std::size_t inModel() { return entitiesOf(database()->modelSpaceId()).size(); }
    bool isLocked() { return ReadHandle<AcDbLayerTableRecord>(addLayer(L"LOCKED"))->isLocked(); }
    void expectAsBefore() {
        EXPECT_EQ(shown(), 0U);
        EXPECT_EQ(inModel(), 5U);
        EXPECT_TRUE(isLocked());
    }
};

TEST_F(PickLayers, AddTakeOutAndEndAsTheUserWishes) {
    const auto escape = [this] { session().pressKey(VK_ESCAPE); };
    const auto pressEnter = [this] { enter(); };
    const auto typeEnter = [this] { session().typeLine(L""); };
    const struct {
        const char* name;
        const wchar_t* before;
        std::vector<Click> clicks;
        std::function<void()> end;
        int answer;
        const wchar_t* after;
    } cases[] = {
        {"one", L"", {kWall}, pressEnter, 1, L"WALL"},
        {"twice the same", L"", {kWall, kWall}, pressEnter, 1, L"WALL"},
        {"on a locked layer", L"", {kLocked}, typeEnter, 1, L"LOCKED"},
        {"inside a block", L"", {kIn}, pressEnter, 1, L"IN"},
        {"on layer 0 inside a block", L"", {kZero}, pressEnter, 1, L"REF"},
        {"a copy of a part", L"", {kIn, kIn, kWall}, pressEnter, 1, L"IN,WALL"},
        {"an area", L"", {kArea}, pressEnter, 1, L"AREA"},
        {"a line below an area", L"", {kLineInArea}, pressEnter, 1, L"UNDER"},
        {"taken out", L"", {kWall, kIn, shifted(kWall)}, pressEnter, 1, L"IN"},
        {"taken out and in", L"", {kIn, shifted(kIn), kIn}, pressEnter, 1, L"IN"},
        {"Shift on a new layer", L"", {shifted(kWall)}, pressEnter, 1, L"WALL"},
        {"beside everything", L"", {kNothing, kWall, kNothing}, pressEnter, 1, L"WALL"},
        {"behind earlier ones", L"X,LOCKED", {kWall}, pressEnter, 1, L"X,LOCKED,WALL"},
        {"named otherwise", L"wall,x", {shifted(kWall), kIn}, pressEnter, 1, L"x,IN"},
        {"chosen before", L"wall", {kWall}, pressEnter, 0, L"wall"},
        {"only taken out", L"WALL", {shifted(kWall)}, pressEnter, 0, L"WALL"},
        {"none", L"X", {}, pressEnter, 0, L"X"},
        {"Escape", L"X", {kWall, kLocked}, escape, 0, L"X"},
        {"no more input", L"X", {kWall}, [] {}, 0, L"X"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        click(c.clicks);
        c.end();
        CString layers = c.before;
        EXPECT_EQ(kelmor::PickLayerByDwg(L"\nPick: ", layers, 1, 0), c.answer);
        EXPECT_STREQ(layers, c.after);
        expectAsBefore();
    }
}

TEST_F(PickLayers, ShowTheChosenLayersMeanwhile) {
    std::vector<std::size_t> seen;
    std::vector<std::size_t> entities;
    const ButtonWatch watch([&] {
        seen.push_back(shown());
        entities.push_back(inModel());
        EXPECT_FALSE(isLocked());
    });
    click({kIn, kWall, kNothing, shifted(kIn), kLocked});
    enter();
    const long updates = headless::EdState::current().displayUpdates;
    CString layers = L"WALL,REF";
    EXPECT_EQ(kelmor::PickLayerByDwg(L"\nPick: ", layers, 1, 0), 1);
    // WALL's line, the reference and its part on layer 0; then the part on IN, too.
    EXPECT_THAT(seen, ElementsAre(3, 4, 4, 4, 3));
    EXPECT_THAT(entities, ElementsAre(6, 7, 7, 7, 7)) << "copies stay to the end";
    EXPECT_STREQ(layers, L"WALL,REF,LOCKED");
    EXPECT_EQ(headless::EdState::current().displayUpdates, updates + 2);
    expectAsBefore();
}

TEST_F(PickLayers, DoNotLookInsideUnlessAsked) {
    click(kIn);
    enter();
    CString layers;
    EXPECT_EQ(kelmor::PickLayerByDwg(L"\nPick: ", layers, 0, 0), 1);
    EXPECT_STREQ(layers, L"REF");
    click({kIn, kZero}); // neither is a text
    enter();
    EXPECT_EQ(kelmor::PickLayerByDwg(L"\nPick: ", layers, 1, 2), 0);
}

TEST_F(PickLayers, OneIsEnough) {
    click({kNothing, kLocked});
    CString layers = L"WALL,LOCKED";
    EXPECT_EQ(kelmor::PickOneEntLayerByDwg(L"\nPick: ", layers, 1, 0), 1);
    EXPECT_STREQ(layers, L"LOCKED");
    enter();
    EXPECT_EQ(kelmor::PickOneEntLayerByDwg(L"\nPick: ", layers, 1, 0), 0);
    session().pressKey(VK_ESCAPE);
    EXPECT_EQ(kelmor::PickOneEntLayerByDwg(L"\nPick: ", layers, 1, 0), 0);
    EXPECT_STREQ(layers, L"LOCKED");
    expectAsBefore();
}

TEST_F(PickLayers, TellHowThePickedEntityLooks) {
    const AcDbObjectId id = addPolyline({{{100, 300}}, {{200, 300}}}, false, L"WIDE");
    {
        const WriteHandle<AcDbPolyline> polyline(id);
        polyline->setConstantWidth(2.6);
        polyline->setColorIndex(3);
        polyline->setLinetype(L"Continuous");
        polyline->setLinetypeScale(1.5);
    }
    int color = -1, width = -1;
    CString linetype;
    double scale = -1.0;
    const auto pick = [&] {
        enter();
        CString layers;
        return kelmor::PickLayerByDwg(L"\nPick: ", layers, 1, color, linetype, scale, width, 0);
    };
    EXPECT_EQ(pick(), 0);
    EXPECT_EQ(color, -1) << "nothing picked";
    click({kWall, {150, 300}, {150, 300, true}});
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(color, 3);
    EXPECT_EQ(linetype.CompareNoCase(L"Continuous"), 0);
    EXPECT_EQ(scale, 1.5);
    EXPECT_EQ(width, 3);
    click(kIn);
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(color, 256) << "the reference's own";
    EXPECT_EQ(width, 3) << "no polyline: as it was";
}

TEST_F(PickLayers, LeaveNothingBehindWhicheverCallTheHostRefuses) {
    const auto pick = [this](int refused) {
        int calls = 0;
        session().setFaultHook([&](const char* /*call*/) { return calls++ == refused; });
        click({kWall, kIn, kLocked, shifted(kIn), kZero});
        enter();
        CString layers = L"IN";
        kelmor::PickLayerByDwg(L"\nPick: ", layers, 1, 0);
        session().setFaultHook({});
        headless::EdState::current().input.clear();
        return calls;
    };
    const int calls = pick(-1);
    ASSERT_GT(calls, 100);
    int leftUnlocked = 0;
    for (int refused = 0; refused < calls; ++refused) {
        SCOPED_TRACE(refused);
        pick(refused);
        EXPECT_THAT(session().leftovers(), IsEmpty());
        if (!isLocked()) {
            ++leftUnlocked;
            frame::lockLayer(addLayer(L"LOCKED"));
        }
        expectAsBefore();
    }
    EXPECT_LE(leftUnlocked, 1) << "only when locking it again is what was refused";
}

} // namespace
