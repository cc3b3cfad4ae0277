// Colours, transparency and result buffers.
#include "core_support.h"

#include "db/color.h"
#include "db/resbuf.h"

using namespace coretest;

namespace {

static_assert(sizeof(AcCmEntityColor) == 4);
static_assert(sizeof(AcDbStub) == 32);

TEST(Colors, IndexStandsForTheMethod) {
    const struct {
        int index;
        Acad::ErrorStatus status;
        AcCmEntityColor::ColorMethod method;
        int answered;
    } cases[] = {
        {0, Acad::eOk, AcCmEntityColor::kByBlock, 0},
        {1, Acad::eOk, AcCmEntityColor::kByACI, 1},
        {255, Acad::eOk, AcCmEntityColor::kByACI, 255},
        {256, Acad::eOk, AcCmEntityColor::kByLayer, 256},
        {257, Acad::eOk, AcCmEntityColor::kNone, 257},
        {258, Acad::eBadColorIndex, AcCmEntityColor::kByColor, 7},
        {-1, Acad::eBadColorIndex, AcCmEntityColor::kByColor, 7},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.index);
        AcCmEntityColor color(1, 2, 3);
        EXPECT_EQ(color.setColorIndex(c.index), c.status);
        EXPECT_EQ(color.colorMethod(), c.method);
        EXPECT_EQ(color.colorIndex(), c.answered);
        AcCmEntityColor copy;
        EXPECT_EQ(copy.setColor(color.color()), Acad::eOk);
        EXPECT_EQ(copy, color) << "packed and unpacked";
    }
    AcCmEntityColor color;
    EXPECT_TRUE(color.isByLayer());
    EXPECT_EQ(color.setColor(0x01020304), Acad::eInvalidInput);
    EXPECT_EQ(AcCmEntityColor(0x12, 0x34, 0x56).color(), 0xC2123456U);
}

TEST(Colors, PaletteHasItsShades) {
    const struct {
        Adesk::UInt8 index;
        Adesk::UInt32 rgb;
    } cases[] = {
        {1, 0xFF0000},   {3, 0x00FF00},   {7, 0xFFFFFF},   {10, 0xFF0000},  {11, 0xFF7F7F},
        {12, 0xA50000},  {20, 0xFF3F00},  {21, 0xFF9F7F},  {40, 0xFFBF00},  {60, 0xBFFF00},
        {90, 0x00FF00},  {130, 0x00FFFF}, {150, 0x007FFF}, {170, 0x0000FF}, {210, 0xFF00FF},
        {240, 0xFF003F}, {250, 0x333333}, {255, 0xFFFFFF},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AcCmEntityColor::lookUpRGB(c.index), c.rgb) << int{c.index};
}

TEST(Transparencies, GoThroughFiles) {
    const struct {
        const char* name;
        AcCmTransparency value;
        Adesk::UInt32 packed;
    } cases[] = {
        {"by layer", AcCmTransparency(), 0},
        {"by block", AcCmTransparency(AcCmTransparency::kByBlock), 0x01000000},
        {"half", AcCmTransparency(Adesk::UInt8{127}), 0x0200007F},
        {"clear", AcCmTransparency(Adesk::UInt8{0}), 0x02000000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.value.serializeOut(), c.packed);
        AcCmTransparency back(Adesk::UInt8{1});
        back.serializeIn(c.packed);
        EXPECT_EQ(back, c.value);
    }
    AcCmTransparency odd;
    odd.serializeIn(0xFF000000);
    EXPECT_TRUE(odd.isInvalid());
    odd.setAlphaPercent(0.5);
    EXPECT_EQ(odd.alpha(), 128);
    odd.setAlphaPercent(2.0);
    EXPECT_TRUE(odd.isSolid());
}

TEST(ResultBuffers, ListsHoldTheirValues) {
    const headless::DbState state;
    const ads_point point = {1.0, 2.0, 3.0};
    const ads_name name = {11, 22};
    resbuf* const list =
        acutBuildList(RTLB, RTDXF0, L"LINE", 8, L"WALL", 62, 7, 40, 2.5, 10, point, RTPOINT, point,
                      RTENAME, name, RTLONG, 100000, 5, L"1F", RTT, RTLE, 0);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(state.liveResultBuffers, 12);
    const resbuf* at = list->rbnext;
    EXPECT_STREQ(at->resval.rstring, L"LINE");
    at = at->rbnext;
    EXPECT_EQ(at->restype, 8);
    EXPECT_STREQ(at->resval.rstring, L"WALL");
    at = at->rbnext;
    EXPECT_EQ(at->resval.rint, 7);
    at = at->rbnext;
    EXPECT_EQ(at->resval.rreal, 2.5);
    at = at->rbnext;
    EXPECT_EQ(at->resval.rpoint[2], 3.0);
    at = at->rbnext;
    EXPECT_EQ(at->resval.rpoint[1], 2.0);
    EXPECT_EQ(at->resval.rpoint[2], 0.0) << "a point of the plane";
    at = at->rbnext;
    EXPECT_EQ(at->resval.rlname[1], 22);
    at = at->rbnext;
    EXPECT_EQ(at->resval.rlong, 100000);
    at = at->rbnext;
    EXPECT_STREQ(at->resval.rstring, L"1F");
    at = at->rbnext;
    EXPECT_EQ(at->restype, RTT);
    EXPECT_EQ(at->rbnext->restype, RTLE);
    EXPECT_EQ(at->rbnext->rbnext, nullptr);
    EXPECT_EQ(acutRelRb(list), RTNORM);
    EXPECT_EQ(state.liveResultBuffers, 0);
}

TEST(ResultBuffers, UnknownTypesMakeNoList) {
    const headless::DbState state;
    EXPECT_EQ(acutBuildList(RTSTR, L"kept", 7777, 0), nullptr);
    EXPECT_EQ(acutBuildList(RTNONE), nullptr);
    EXPECT_EQ(acutRelRb(nullptr), RTNORM);
    EXPECT_EQ(state.liveResultBuffers, 0);
}

TEST(ResultBuffers, OwnTheirTexts) {
    const headless::DbState state;
    resbuf* const text = acutNewRb(RTSTR);
    text->resval.rstring = acutNewString(L"text");
    text->rbnext = acutNewRb(RTREAL);
    EXPECT_EQ(state.liveResultBuffers, 2);
    EXPECT_EQ(acutRelRb(text), RTNORM);
    EXPECT_EQ(acutNewString(nullptr), nullptr);
}

} // namespace
