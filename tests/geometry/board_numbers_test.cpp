// Clearing the numbers of boards.
#include <dbgroup.h>
#include <memory>

#include "OrnCore/rw_xdata.h"
#include "geometry/board_numbers.h"
#include "geometry/geometry_fixture.h"

namespace {

class BoardNumberTest : public test_support::SessionTest {
protected:
    BoardNumberTest() {
        addLayer(L"NUMBER");
        addLayer(L"OTHER");
        outline_ = addPolyline({{{100, 100}}, {{200, 100}}, {{200, 200}}, {{100, 200}}});
    }

    AcDbObjectId addText(double x, double y, const wchar_t* layer = L"NUMBER") {
        auto text = std::make_unique<AcDbText>(AcGePoint3d(x, y, 0), L"7", AcDbObjectId(), 5.0);
        text->setLayer(layer);
        return add(std::move(text));
    }

    void group(const std::vector<AcDbObjectId>& ids) {
        AcDbDictionary* groups = nullptr;
        ASSERT_EQ(database()->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
        auto made = std::make_unique<AcDbGroup>();
        AcDbObjectId id;
        ASSERT_EQ(groups->setAt(L"*", made.get(), id), Acad::eOk);
        AcDbGroup* const kept = made.release();
        for (const AcDbObjectId member : ids)
            kept->append(member);
        kept->close();
        groups->close();
    }

    void clear(const wchar_t* layers) {
        AcDbObjectIdArray outlines;
        outlines.append(outline_);
        Common::ClearBoardNumber(outlines, layers);
    }

    static bool stands(AcDbObjectId id) { return static_cast<bool>(ReadHandle<AcDbText>(id)); }

    AcDbObjectId outline_;
};

TEST_F(BoardNumberTest, TextsAcrossTheOutlineGoByTheirPoint) {
    const AcDbObjectId inside = addText(150, 150);
    const AcDbObjectId outside = addText(250, 150);
    const AcDbObjectId straddling =
        addText(99, 150); // its box crosses the edge, its point does not
    const AcDbObjectId otherLayer = addText(150, 120, L"OTHER");
    const AcDbObjectId moved = addText(98, 120);
    rwXData::WriteXdataPnt(moved, Common::kBoardNumberPoint, {120, 120, 0});
    const AcDbObjectId movedOut = addText(150, 180);
    rwXData::WriteXdataPnt(movedOut, Common::kBoardNumberPoint, {300, 180, 0});

    clear(L"none,num*");
    EXPECT_FALSE(stands(inside));
    EXPECT_FALSE(stands(moved)) << "the point it keeps counts";
    EXPECT_TRUE(stands(movedOut)) << "the point it keeps counts";
    EXPECT_TRUE(stands(outside));
    EXPECT_TRUE(stands(straddling));
    EXPECT_TRUE(stands(otherLayer));
}

TEST_F(BoardNumberTest, GroupsLimitTheSearchToTheirMembers) {
    const AcDbObjectId member = addText(150, 150);
    const AcDbObjectId stranger = addText(150, 120);
    const AcDbObjectId otherLayer = addText(150, 180, L"OTHER");
    const AcDbObjectId outside = addText(300, 150);
    group({outline_, member, otherLayer, outside});

    clear(L"num*");
    EXPECT_TRUE(stands(member)) << "members' layers are names, not wildcards";
    clear(L"number");
    EXPECT_TRUE(stands(member)) << "and are compared in capitals";
    clear(L"X,NUMBER");
    EXPECT_FALSE(stands(member));
    EXPECT_TRUE(stands(stranger));
    EXPECT_TRUE(stands(otherLayer));
    EXPECT_TRUE(stands(outside));
}

TEST_F(BoardNumberTest, OnlyLightweightPolylinesHaveAnInside) {
    const AcDbObjectId text = addText(150, 150);
    outline_ =
        add(std::make_unique<AcDbCircle>(AcGePoint3d(150, 150, 0), AcGeVector3d::kZAxis, 40.0));
    clear(L"NUMBER");
    outline_ = AcDbObjectId::kNull;
    clear(L"NUMBER");
    EXPECT_TRUE(stands(text));
}

} // namespace
