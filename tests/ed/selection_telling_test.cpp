// acedSSNameX: how the entities of a set were selected.
#include <sstream>

#include "drawn_fixture.h"

namespace {

class SelectionTelling : public DrawnTest {
protected:
    SelectionTelling() {
        low_ = line({0, 0, 0}, {10, 0, 0});
        high_ = line({0, 5, 0}, {10, 5, 0});
    }

    /// The chain in words; entities are `low` and `high`, points [x,y,z].
    std::wstring told(const ads_name set, Adesk::Int32 index) const {
        resbuf* chain = nullptr;
        if (acedSSNameX(&chain, set, index) != RTNORM) return chain == nullptr ? L"none" : L"?";
        std::wostringstream words;
        for (const resbuf* item = chain; item != nullptr; item = item->rbnext)
            tell(words, *item);
        acutRelRb(chain);
        return words.str();
    }
    void tell(std::wostream& words, const resbuf& item) const {
        if (item.restype == RTLB) words << L"( ";
        if (item.restype == RTLE) words << L") ";
        if (item.restype == RTSHORT) words << item.resval.rint << L' ';
        if (item.restype == RT3DPOINT) {
            const ads_real* const p = item.resval.rpoint;
            words << L'[' << p[0] << L',' << p[1] << L',' << p[2] << L"] ";
        }
        if (item.restype != RTENAME) return;
        AcDbObjectId id;
        EXPECT_EQ(acdbGetObjectId(id, item.resval.rlname), Acad::eOk);
        words << (id == low_ ? L"low " : id == high_ ? L"high " : L"? ");
    }

    AcDbObjectId low_, high_;
};

TEST_F(SelectionTelling, GivesThePlaceOfTheMode) {
    const ads_point corner = {-1, -1, 0};
    const ads_point far = {11, 6, 0};
    const ads_point on = {3, 0, 0};
    resbuf* const fence = acutBuildList(RT3DPOINT, on, RT3DPOINT, far, RTNONE);
    resbuf* const polygon = acutBuildList(RT3DPOINT, corner, RT3DPOINT, far, RT3DPOINT, on, RTNONE);
    const std::wstring box = L"( -1 ( 0 [-1,-1,0] ) ( 0 [11,-1,0] ) ( 0 [11,6,0] ) "
                             L"( 0 [-1,6,0] ) ) ";
    const struct {
        const wchar_t* mode;
        const void *point1, *point2;
        Adesk::Int32 index;
        std::wstring told;
    } cases[] = {
        {L"X", nullptr, nullptr, 0, L"0 high 0 "},
        {L"X", nullptr, nullptr, -1, L"( 0 high 0 ) ( 0 low 0 ) "},
        {L"X", nullptr, nullptr, 2, L"none"},
        {L"", on, nullptr, 0, L"1 low 0 ( 0 [3,0,0] ) "},
        {L"W", corner, far, 1, L"2 low 0 -1 " + box},
        {L"C", corner, far, -1, L"( 3 high 0 -1 ) ( 3 low 0 -1 ) " + box},
        {L"CP", polygon, nullptr, 1,
         L"3 low 0 -1 ( -1 ( 0 [-1,-1,0] ) ( 0 [11,6,0] ) ( 0 [3,0,0] ) ) "},
        // From (3,0) to (11,6): at y = 5 it is at x = 3 + 8 * 5 / 6.
        {L"F", fence, nullptr, -1, L"( 4 high 0 ( 0 [9.66667,5,0] ) ) ( 4 low 0 ( 0 [3,0,0] ) ) "},
    };
    for (const auto& c : cases) {
        ads_name set;
        ASSERT_EQ(acedSSGet(c.mode, c.point1, c.point2, nullptr, set), RTNORM);
        EXPECT_EQ(told(set, c.index), c.told) << testing::PrintToString(std::wstring(c.mode));
        acedSSFree(set);
        EXPECT_EQ(told(set, c.index), L"none") << "the set is gone";
    }
    acutRelRb(fence);
    acutRelRb(polygon);
}

TEST_F(SelectionTelling, KeepsTheFirstGestureOfEachEntity) {
    for (const wchar_t* const typed : {L"4,5", L"W", L"-1,-1", L"11,1", L"C", L"2,-1", L"1,9", L""})
        type(typed);
    ads_name set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTNORM);
    EXPECT_EQ(told(set, -1), L"( 1 high 0 ( 0 [4,5,0] ) ) ( 2 low 0 -1 ) ( -1 ( 0 [-1,-1,0] ) "
                             L"( 0 [11,-1,0] ) ( 0 [11,1,0] ) ( 0 [-1,1,0] ) ) ");
    acedSSFree(set);
}

TEST_F(SelectionTelling, NamesTheDirectionToTheEye) {
    headless::View front = headless::currentView(drawing());
    front.direction = {0, -2, 0};
    show(front);
    const ads_point on = {3, 0, 0};
    ads_name set;
    ASSERT_EQ(acedSSGet(L"", on, nullptr, nullptr, set), RTNORM);
    EXPECT_EQ(told(set, 0), L"1 high 0 ( 0 [3,0,0] [0,-1,0] ) ");
    acedSSFree(set);
}

} // namespace
