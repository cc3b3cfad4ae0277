// Block references: their transforms, and exact extents through nesting, arrays and recursion.
#include <cmath>
#include <numbers>

#include "db/arc.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/dimension.h"
#include "db/line.h"
#include "db/text.h"
#include "entity_support.h"

namespace {

using coretest::CoreTest;
using coretest::put;
using enttest::Box;
using headless::Residence;
using std::numbers::pi;

class ReferenceTest : public CoreTest {
protected:
    AcDbObjectId block(const ACHAR* name, const AcGePoint3d& origin = AcGePoint3d::kOrigin) {
        const AcDbObjectId id = coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), name);
        AcDbObjectPointer<AcDbBlockTableRecord> record(id, AcDb::kForWrite);
        record->setOrigin(origin);
        return id;
    }
    static AcDbBlockReference* reference(AcDbObjectId blockId, const AcGePoint3d& position,
                                         const AcGeScale3d& scale = {}, double rotation = 0.0) {
        auto* const made = new AcDbBlockReference(position, blockId);
        made->setScaleFactors(scale);
        made->setRotation(rotation);
        return made;
    }
};

/// Sweeps a unit circle's points through both references: another road to the box.
Box circleThrough(const AcGeMatrix3d& transform) {
    AcDbExtents box;
    constexpr int kCount = 200000;
    for (int i = 0; i < kCount; ++i) {
        const double angle = 2.0 * pi * i / kCount;
        box.addPoint(transform * AcGePoint3d(std::cos(angle), std::sin(angle), 0.0));
    }
    return {box.minPoint(), box.maxPoint()};
}

TEST_F(ReferenceTest, CirclesUnderUnevenMirroredNestedScalesAreExact) {
    const AcDbObjectId inner = block(L"inner");
    put(inner, new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 1.0));
    const AcDbObjectId outer = block(L"outer", {100, 50, 0});
    const AcDbBlockReference* const nested =
        put(outer, reference(inner, {101, 52, 0}, {3, -1, 1}, 0.6));
    const std::unique_ptr<AcDbBlockReference> top(reference(outer, {7, 8, 9}, {-2, 0.5, 1}, -1.1));
    top->setNormal({0, 0, -1});

    AcDbObjectPointer<AcDbBlockReference> opened(nested->objectId(), AcDb::kForRead);
    const AcGeMatrix3d whole = top->blockTransform() * opened->blockTransform();
    enttest::expectNear(enttest::boxOf(*top), circleThrough(whole), 1e-8);

    // The middle of the circle went (inner origin) -> (101, 52) -> 1, 2 off the outer base point.
    const AcGePoint3d center = whole * AcGePoint3d::kOrigin;
    AcGeVector3d offset(-2.0 * 1.0, 0.5 * 2.0, 0.0);
    offset.rotateBy(-1.1, AcGeVector3d::kZAxis);
    // Seen from below, x runs the other way.
    enttest::expectNear(center, {7 - offset.x, 8 + offset.y, 9}, 1e-12);
}

TEST_F(ReferenceTest, BlockTransformsComeBackFromTheirMatrix) {
    const AcDbObjectId based = block(L"based", {5, -3, 1});
    AcGeMatrix3d skewed;
    skewed.entry[0][1] = 0.5;
    AcDbBlockReference ref({1, 2, 3}, based);
    EXPECT_EQ(ref.setBlockTransform(skewed), Acad::eCannotScaleNonUniformly);
    for (const AcGeScale3d& scale : {AcGeScale3d(2, 3, 4), AcGeScale3d(-2, 3, 4),
                                     AcGeScale3d(2, -3, -4), AcGeScale3d(-1, -1, -1)}) {
        const std::unique_ptr<AcDbBlockReference> from(reference(based, {1, 2, 3}, scale, 0.4));
        from->setNormal({0.3, 0.1, -0.8});
        const AcGeMatrix3d wanted = from->blockTransform();
        ASSERT_EQ(ref.setBlockTransform(wanted), Acad::eOk);
        EXPECT_TRUE(ref.blockTransform().isEqualTo(wanted));
        enttest::expectNear(ref.blockTransform() * AcGePoint3d(5, -3, 1), {1, 2, 3}, 1e-12);
    }
    EXPECT_EQ(ref.setScaleFactors({1, 0, 1}), Acad::eInvalidInput);
}

TEST_F(ReferenceTest, ArraysRunAlongTheTurnedAxesUnscaled) {
    const AcDbObjectId dot = block(L"dot");
    put(dot, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    AcDbMInsertBlock array({10, 10, 0}, dot, 3, 2, 20.0, 5.0);
    array.setScaleFactors({2, 2, 2});
    array.setRotation(pi / 2.0);
    // Columns run up, rows to the left; the last column's line reaches 2 further up.
    enttest::expectNear(enttest::boxOf(array), {{5, 10, 0}, {10, 52, 0}});

    const Box wanted = enttest::boxUnder(array, AcGeMatrix3d::scaling(2.0));
    ASSERT_EQ(array.transformBy(AcGeMatrix3d::scaling(2.0)), Acad::eOk);
    enttest::expectNear(enttest::boxOf(array), wanted);
    EXPECT_NEAR(array.columnSpacing(), 40.0, 1e-12);

    // As many cells as the numbers allow are no more work than four.
    AcDbMInsertBlock vast({0, 0, 0}, dot, 32767, 32767, 1.0, 1.0);
    enttest::expectNear(enttest::boxOf(vast), {{0, 0, 0}, {32767, 32766, 0}});
}

TEST_F(ReferenceTest, BlocksWithinThemselvesEnd) {
    const AcDbObjectId self = block(L"self");
    put(self, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    put(self, reference(self, {5, 5, 0}));
    const AcDbObjectId a = block(L"a");
    const AcDbObjectId b = block(L"b");
    put(a, reference(b, {1, 0, 0}));
    put(b, reference(a, {1, 0, 0}));
    const AcDbBlockReference first({0, 0, 0}, self);
    const AcDbBlockReference second({0, 0, 0}, a);
    enttest::expectNear(enttest::boxOf(first), {{0, 0, 0}, {1, 1, 0}});
    AcDbExtents box;
    EXPECT_EQ(second.getGeomExtents(box), Acad::eNullExtents);
}

TEST_F(ReferenceTest, DeepAndWideNestingIsMeasuredInTime) {
    // Each block holds the one before it twice: 2 to the 40th lines.
    AcDbObjectId last = block(L"line");
    put(last, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    for (int depth = 0; depth < 40; ++depth) {
        const AcDbObjectId next = block((L"level" + std::to_wstring(depth)).c_str());
        put(next, reference(last, {0, 0, 0}));
        put(next, reference(last, {0, 1, 0}));
        last = next;
    }
    const AcDbBlockReference top({0, 0, 0}, last);
    enttest::expectNear(enttest::boxOf(top), {{0, 0, 0}, {1, 40, 0}});

    // The same with every copy turned differently: no two of a size, so the box may be generous.
    AcDbObjectId turned = block(L"turned line");
    put(turned, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    for (int depth = 0; depth < 40; ++depth) {
        const AcDbObjectId next = block((L"turned" + std::to_wstring(depth)).c_str());
        put(next, reference(turned, {0, 0, 0}, {}, 0.1 + depth));
        put(next, reference(turned, {0, 0, 0}, {}, 0.37 * depth));
        turned = next;
    }
    const AcDbBlockReference spun({0, 0, 0}, turned);
    const Box around = enttest::boxOf(spun);
    EXPECT_LE(around.min.x, -0.99);
    EXPECT_GE(around.max.y, 0.99);

    // A chain longer than anybody draws neither crashes nor hangs.
    for (int depth = 0; depth < 2000; ++depth) {
        const AcDbObjectId next = block((L"chain" + std::to_wstring(depth)).c_str());
        put(next, reference(last, {0, 0, 0}));
        last = next;
    }
    const AcDbBlockReference chain({0, 0, 0}, last);
    AcDbExtents box;
    EXPECT_EQ(chain.getGeomExtents(box), Acad::eNullExtents);
}

TEST_F(ReferenceTest, TextsCountUnlessLeftOut) {
    const AcDbObjectId labelled = block(L"labelled");
    put(labelled, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    put(labelled, new AcDbText({0, 5, 0}, L"ab", {}, 10.0));
    put(labelled, new AcDbAttributeDefinition({0, 500, 0}, L"x", L"TAG", L"?"));
    AcDbBlockReference ref({100, 0, 0}, labelled);
    ref.appendAttribute(new AcDbAttribute({300, 0, 0}, L"x", L"TAG"));
    AcDbExtents box;
    ASSERT_EQ(headless::contentExtents(ref, headless::BoxOf::lines, box), Acad::eOk);
    enttest::expectNear({box.minPoint(), box.maxPoint()}, {{100, 0, 0}, {101, 1, 0}});
    ASSERT_EQ(headless::contentExtents(ref, headless::BoxOf::everything, box), Acad::eOk);
    enttest::expectNear(box.minPoint(), {100, 0, 0}, 1e-12);
    EXPECT_NEAR(box.maxPoint().y, 15.0, 1e-12); // The definition is not drawn.
    EXPECT_GE(box.maxPoint().x, 300.0);         // The attribute is.
}

TEST_F(ReferenceTest, ChangesWithinTheBlockShowAtOnce) {
    const AcDbObjectId changing = block(L"changing");
    AcDbLine* const line = put(changing, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    const AcDbBlockReference ref({0, 0, 0}, changing);
    enttest::expectNear(enttest::boxOf(ref), {{0, 0, 0}, {1, 1, 0}});
    AcDbObjectPointer<AcDbLine> opened(line->objectId(), AcDb::kForWrite);
    opened->setEndPoint({7, 7, 0});
    enttest::expectNear(enttest::boxOf(ref), {{0, 0, 0}, {7, 7, 0}});
    opened->erase();
    AcDbExtents box;
    EXPECT_EQ(ref.getGeomExtents(box), Acad::eNullExtents);
}

TEST_F(ReferenceTest, ReadsItsPlaceInObjectCoordinates) {
    const AcDbObjectId dot = block(L"DOT", {1, 0, 0});
    put(dot, new AcDbLine({1, 0, 0}, {2, 0, 0}));
    const auto ref = enttest::read<AcDbBlockReference>(
        db, "100=AcDbBlockReference|2=dot|10=10,5,2|41=3|42=-1|43=0|50=90|210=0,0,-1");
    EXPECT_EQ(ref->blockTableRecord(), dot);
    enttest::expectNear(ref->position(), {-10, 5, -2}, 1e-12);
    enttest::expectNear(enttest::boxOf(*ref), {{-10, 5, -2}, {-10, 8, -2}});
}

TEST_F(ReferenceTest, DimensionsShowTheirBlock) {
    const AcDbObjectId drawn = block(L"*D1");
    put(drawn, new AcDbLine({0, 0, 0}, {4, 2, 0}));
    const auto dimension =
        enttest::read<AcDbRotatedDimension>(db, "100=AcDbDimension|2=*D1|12=10,1,0|1=<>|42=4");
    enttest::expectNear(enttest::boxOf(*dimension), {{10, 1, 0}, {14, 3, 0}});
    double value = 0.0;
    EXPECT_EQ(dimension->measurement(value), Acad::eOk);
    EXPECT_EQ(value, 4.0);
    AcDbExtents box;
    const auto bare = enttest::read<AcDbAlignedDimension>(db, {{100, "AcDbDimension"}, {2, ""}});
    EXPECT_EQ(bare->getGeomExtents(box), Acad::eNullExtents);
    EXPECT_EQ(bare->measurement(value), Acad::eNotApplicable);
}

TEST_F(ReferenceTest, TurnedDimensionsGetABlockOfTheirOwn) {
    const AcDbObjectId shared = block(L"*D1");
    put(shared, new AcDbLine({0, 0, 0}, {8, 0, 0}));
    auto* const text = new AcDbText({1, 1, 0}, L"WIDE", {}, 2.0, pi / 6);
    put(shared, text);
    const struct {
        const char* name;
        AcGeMatrix3d transform;
        Box line;
        double textAngle;
    } cases[] = {
        {"a quarter turn",
         AcGeMatrix3d::rotation(pi / 2, AcGeVector3d::kZAxis),
         {{0, 0, 0}, {0, 8, 0}},
         pi * 2 / 3},
        {"left for right",
         AcGeMatrix3d::mirroring(AcGePlane({0, 0, 0}, AcGeVector3d::kXAxis)),
         {{-8, 0, 0}, {0, 0, 0}},
         pi * 11 / 6},
        {"up for down",
         AcGeMatrix3d::mirroring(AcGePlane({0, 0, 0}, AcGeVector3d::kYAxis)),
         {{0, 0, 0}, {8, 0, 0}},
         pi * 11 / 6},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto* const dimension = new AcDbAlignedDimension;
        dimension->setDimBlockId(shared);
        put(db.modelSpaceId(), dimension);
        AcDbExtents box;
        {
            AcDbObjectPointer<AcDbDimension> opened(dimension->objectId(), AcDb::kForWrite);
            ASSERT_EQ(opened->transformBy(c.transform), Acad::eOk);
            ASSERT_EQ(opened->getGeomExtents(box), Acad::eOk) << "before it has its block";
        }
        AcDbObjectPointer<AcDbDimension> opened(dimension->objectId());
        ASSERT_NE(opened->dimBlockId(), shared);
        const auto* const own = Residence::peek<AcDbBlockTableRecord>(opened->dimBlockId());
        EXPECT_TRUE(own->nameOf().starts_with(L"*D")) << headless::toUtf8(own->nameOf());
        ASSERT_EQ(own->entityIds().size(), 2U);
        enttest::expectNear(enttest::boxOf(*AcDbObjectPointer<AcDbLine>(own->entityIds()[0])),
                            c.line);
        AcDbObjectPointer<AcDbText> letters(own->entityIds()[1]);
        EXPECT_NEAR(letters->rotation(), c.textAngle, 1e-12);
        EXPECT_TRUE(letters->normal().isEqualTo(AcGeVector3d::kZAxis)) << "not seen from behind";
        AcGePoint3dArray before;
        AcDbObjectPointer<AcDbText>(text->objectId())->getBoundingPoints(before);
        AcDbExtents placed;
        for (const AcGePoint3d& corner : before)
            placed.addPoint(c.transform * corner);
        AcDbExtents shown;
        letters->getGeomExtents(shown);
        enttest::expectNear({shown.minPoint(), shown.maxPoint()},
                            {placed.minPoint(), placed.maxPoint()});
        enttest::expectNear(enttest::boxOf(*opened), {box.minPoint(), box.maxPoint()});
    }
    EXPECT_EQ(Residence::peek<AcDbBlockTableRecord>(shared)->entityIds().size(), 2U);
    AcDbAlignedDimension uneven;
    uneven.setDimBlockId(shared);
    AcGeMatrix3d stretched;
    stretched(0, 0) = 2.0;
    EXPECT_EQ(uneven.transformBy(stretched), Acad::eCannotScaleNonUniformly);
}

} // namespace
