// Entities picked inside what shows them, by clicks.
#include "ed/nested_selection.h"

#include <gmock/gmock.h>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/polyline_2d.h"
#include "drawn_fixture.h"

namespace {

using headless::MouseClick;
using testing::ElementsAre;
using testing::IsEmpty;

class NestedSelection : public DrawnTest {
protected:
    ~NestedSelection() override { acutRelRb(chain_); }

    void click(double x, double y) { ed_.input.add(MouseClick{AcGePoint3d(x, y, 0), {}}); }
    int pick() {
        acutRelRb(std::exchange(chain_, nullptr));
        return acedNEntSel(L"\nPick: ", name_, point_, axes_, &chain_);
    }
    AcDbObjectId picked() const {
        AcDbObjectId id;
        EXPECT_EQ(acdbGetObjectId(id, name_), Acad::eOk);
        return id;
    }
    Ids containers() const {
        Ids ids;
        for (const resbuf* link = chain_; link != nullptr; link = link->rbnext) {
            EXPECT_EQ(link->restype, RTENAME);
            AcDbObjectId id;
            EXPECT_EQ(acdbGetObjectId(id, link->resval.rlname), Acad::eOk);
            ids.push_back(id);
        }
        return ids;
    }
    /// Where the transform takes a point of the block: rows are added up by the point's parts.
    AcGePoint3d toWorld(const AcGePoint3d& p) const {
        AcGePoint3d result;
        for (unsigned int axis = 0; axis < 3; ++axis)
            result[axis] =
                p.x * axes_[0][axis] + p.y * axes_[1][axis] + p.z * axes_[2][axis] + axes_[3][axis];
        return result;
    }

    ads_name name_{};
    ads_point point_{};
    ads_point axes_[4]{};
    resbuf* chain_ = nullptr;
};

TEST_F(NestedSelection, FindsWhatReferencesShow) {
    const AcDbObjectId inner = block(L"inner");
    const AcDbObjectId low = line({0, 0, 0}, {10, 0, 0}, inner);
    const AcDbObjectId high = line({0, 5, 0}, {10, 5, 0}, inner);
    const AcDbObjectId outer = block(L"outer");
    auto* const turned = new AcDbBlockReference({20, 0, 0}, inner); // x from 20 up
    turned->setRotation(kPi / 2.0);
    const AcDbObjectId nested = put(turned, outer);
    auto* const scaled = new AcDbBlockReference({10, 10, 0}, outer);
    scaled->setScaleFactors({2, 2, 2});
    const AcDbObjectId top = put(scaled);
    const AcDbObjectId plain = line({0, 90, 0}, {100, 90, 0});

    // The low line stands upright at x = 10 + 2 * 20 from y = 10 to 30, the high one at x = 40.
    setUcs({5, 0, 0}, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    click(50, 14);
    ASSERT_EQ(pick(), RTNORM);
    EXPECT_EQ(picked(), low);
    EXPECT_THAT(containers(), ElementsAre(nested, top)) << "the innermost first";
    expectNear(toWorld({0, 0, 0}), {50, 10, 0});
    expectNear(toWorld({10, 0, 0}), {50, 30, 0});
    expectNear(toWorld({0, 5, 1}), {40, 10, 2});
    EXPECT_DOUBLE_EQ(point_[0], 45.0) << "user coordinates";

    ads_matrix matrix;
    acutRelRb(std::exchange(chain_, nullptr));
    ads_point given = {35, 20, 0};
    ASSERT_EQ(acedNEntSelP(nullptr, name_, given, 1, matrix, &chain_), RTNORM);
    EXPECT_EQ(picked(), high);
    EXPECT_NEAR(matrix[0][3], 50.0, 1e-9) << "columns hold the axes and the place";
    EXPECT_NEAR(matrix[1][0], 2.0, 1e-9);
    EXPECT_NEAR(matrix[0][1], -2.0, 1e-9);
    EXPECT_EQ(matrix[3][3], 1.0);

    click(50, 90);
    ASSERT_EQ(pick(), RTNORM);
    EXPECT_EQ(picked(), plain);
    EXPECT_THAT(containers(), IsEmpty());
    EXPECT_EQ(toWorld({3, 4, 5}), AcGePoint3d(3, 4, 5));

    click(80, 50);
    EXPECT_EQ(pick(), RTERROR);
    EXPECT_EQ(integerOf(L"ERRNO"), 7);
    EXPECT_EQ(chain_, nullptr);
}

TEST_F(NestedSelection, TellsTheCellOfAnArray) {
    const AcDbObjectId mark = block(L"mark");
    const AcDbObjectId only = line({0, 0, 0}, {2, 0, 0}, mark);
    const AcDbObjectId array = put(new AcDbMInsertBlock({10, 10, 0}, mark, 3, 2, 20, 30));
    click(51, 40);
    ASSERT_EQ(pick(), RTNORM);
    EXPECT_EQ(picked(), only);
    EXPECT_THAT(containers(), ElementsAre(array));
    expectNear(toWorld({0, 0, 0}), {50, 40, 0});
}

TEST_F(NestedSelection, FindsAttributesAndVertices) {
    const AcDbObjectId sign = block(L"sign");
    line({0, 0, 0}, {10, 0, 0}, sign);
    const AcDbObjectId reference = put(new AcDbBlockReference({10, 10, 0}, sign));
    AcDbObjectId attribute;
    {
        AcDbObjectPointer<AcDbBlockReference> opened(reference, AcDb::kForWrite);
        auto* const text = new AcDbAttribute;
        text->setTextString(L"HHHH");
        text->setHeight(10.0);
        text->setPosition({10, 30, 0});
        ASSERT_EQ(opened->appendAttribute(attribute, text), Acad::eOk);
        text->close();
    }
    click(20, 35);
    ASSERT_EQ(pick(), RTNORM);
    EXPECT_EQ(picked(), attribute);
    EXPECT_THAT(containers(), IsEmpty());

    AcGePoint3dArray corners;
    for (const AcGePoint3d& corner :
         {AcGePoint3d(60, 60, 0), AcGePoint3d(80, 60, 0), AcGePoint3d(80, 80, 0)})
        corners.append(corner);
    const AcDbObjectId old = put(new AcDb2dPolyline(AcDb::k2dSimplePoly, corners));
    Ids vertices;
    {
        AcDbObjectPointer<AcDb2dPolyline> opened(old, AcDb::kForRead);
        const std::unique_ptr<AcDbObjectIterator> all(opened->vertexIterator());
        for (; !all->done(); all->step())
            vertices.push_back(all->objectId());
    }
    click(80, 75);
    ASSERT_EQ(pick(), RTNORM);
    EXPECT_EQ(picked(), vertices.at(1)) << "the one its segment begins with";
}

} // namespace
