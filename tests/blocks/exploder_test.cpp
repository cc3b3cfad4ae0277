#include "blocks/block_ref_exploder.h"

#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include <dbelipse.h>
#include <dbpl.h>

#include "clipped_reference.h"

namespace {

using std::numbers::pi;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Exploder : public ClippedReferences {
protected:
    std::vector<AcDbObjectId> explode(AcDbObjectId reference,
                                      const AcUtBlockRefExploderParam& param = {}) {
        AcUtBlockReferenceExploder exploder(param);
        AcDbObjectIdArray made;
        EXPECT_EQ(exploder.explode(reference, made), Acad::eOk);
        leftOut_ = exploder.leftOut();
        return {made.asArrayPtr(), made.asArrayPtr() + made.length()};
    }

    /// "layer x" of each line, x its end's.
    std::vector<std::wstring> lines(const std::vector<AcDbObjectId>& ids) {
        std::vector<std::wstring> all;
        for (const AcDbObjectId& id : ids) {
            const ReadHandle<AcDbEntity> entity(id);
            all.push_back(std::wstring(AcUtSymTbl::GetStyleName(entity->layerId())) + L' ' +
                          std::to_wstring(static_cast<int>(std::lround(endOf(id)))));
        }
        return all;
    }

    template <class Change>
    void change(AcDbObjectId reference, Change change) {
        const WriteHandle<AcDbBlockReference> open(reference);
        change(*open);
    }

    static AcDbExtents boxOf(const std::vector<AcDbObjectId>& ids) {
        AcDbExtents box;
        for (const AcDbObjectId& id : ids) {
            AcDbExtents one;
            const ReadHandle<AcDbEntity> entity(id);
            EXPECT_EQ(entity->getGeomExtents(one), Acad::eOk);
            box.addExt(one);
        }
        return box;
    }

    int leftOut_ = 0;
};

TEST_F(Exploder, GoesThroughNestedReferences) {
    const AcDbObjectId inner = addBlock(L"INNER");
    const AcDbObjectId outer = addBlock(L"OUTER");
    addLine({0, 0, 0}, {1, 0, 0}, L"0", L"INNER");
    addLine({0, 0, 0}, {2, 0, 0}, L"WALL", L"INNER");
    addLine({0, 0, 0}, {3, 0, 0}, L"0", L"OUTER");
    addReference(inner, {10, 0, 0}, L"0", L"OUTER");
    addReference(inner, {20, 0, 0}, L"DOOR", L"OUTER");
    const AcDbObjectId reference = addReference(outer, {100, 0, 0}, L"PLAN");

    EXPECT_THAT(lines(explode(reference)),
                ElementsAre(L"PLAN 103", L"PLAN 111", L"WALL 112", L"DOOR 121", L"WALL 122"));
    EXPECT_FALSE(reference.isErased());
    AcUtBlockRefExploderParam param;
    param.layers = {L"plan", L"Door"};
    EXPECT_THAT(lines(explode(reference, param)),
                ElementsAre(L"PLAN 103", L"PLAN 111", L"DOOR 121"));

    AcDbObjectIdArray made;
    ASSERT_EQ(AcUtSymTbl::explodeToCurrentSpace(reference, made), Acad::eOk);
    ASSERT_EQ(made.length(), 3);
    const ReadHandle<AcDbBlockReference> moved(made[2]);
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->position(), AcGePoint3d(120, 0, 0));
}

TEST_F(Exploder, GivesWhatIsByBlockTheReferencesLook) {
    const AcDbObjectId block = addBlock(L"B");
    const AcDbObjectId line = addLine({0, 0, 0}, {1, 0, 0}, L"WALL", L"B");
    addLine({0, 0, 0}, {2, 0, 0}, L"WALL", L"B");
    {
        const WriteHandle<AcDbLine> open(line);
        open->setColorIndex(0);
        open->setLinetype(database()->byBlockLinetype());
        open->setLineWeight(AcDb::kLnWtByBlock);
    }
    const AcDbObjectId reference = addReference(block);
    change(reference, [&](AcDbBlockReference& r) {
        r.setColorIndex(5);
        r.setLinetype(database()->continuousLinetype());
        r.setLineWeight(AcDb::kLnWt050);
    });
    const std::vector<AcDbObjectId> made = explode(reference);
    const ReadHandle<AcDbLine> first(made.at(0));
    EXPECT_EQ(first->colorIndex(), 5);
    EXPECT_EQ(first->linetypeId(), database()->continuousLinetype());
    EXPECT_EQ(first->lineWeight(), AcDb::kLnWt050);
    const ReadHandle<AcDbLine> second(made.at(1));
    EXPECT_TRUE(second->color().isByLayer());
}

TEST_F(Exploder, KeepsPlaceAndSizeUnderAnyScale) {
    const AcDbObjectId block = addBlock(L"B");
    add(std::make_unique<AcDbCircle>(AcGePoint3d(2, 1, 0), AcGeVector3d::kZAxis, 3.0), L"B");
    add(std::make_unique<AcDbArc>(AcGePoint3d(0, 5, 0), AcGeVector3d::kZAxis, 2.0, 0.3, 2.0), L"B");
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {0, 0}, 0.6);
    polyline->addVertexAt(1, {6, 1}, 0.0);
    polyline->addVertexAt(2, {5, 8}, -1.4);
    polyline->setClosed(true);
    add(std::move(polyline), L"B");
    for (const AcGeScale3d& scale : {AcGeScale3d(2, 2, 2), AcGeScale3d(-1, 1, 1),
                                     AcGeScale3d(3, 1, 1), AcGeScale3d(-0.5, 2, 1)}) {
        SCOPED_TRACE(testing::Message() << scale.sx << " " << scale.sy);
        const AcDbObjectId reference = addReference(block, {7, -3, 0});
        change(reference, [&](AcDbBlockReference& r) {
            r.setScaleFactors(scale);
            r.setRotation(0.7);
        });
        const AcDbExtents made = boxOf(explode(reference));
        const AcDbExtents before = boxOf({reference});
        EXPECT_LT(made.minPoint().distanceTo(before.minPoint()), 1e-9);
        EXPECT_LT(made.maxPoint().distanceTo(before.maxPoint()), 1e-9);
        EXPECT_EQ(leftOut_, 0);
    }
}

TEST_F(Exploder, RepeatsArrays) {
    const AcDbObjectId block = addBlock(L"B");
    addLine({0, 0, 0}, {1, 0, 0}, L"0", L"B");
    auto array = std::make_unique<AcDbMInsertBlock>(AcGePoint3d(), block, 2, 2, 10.0, 7.0);
    array->setRotation(pi / 2);
    array->setLayer(addLayer(L"A"));
    const AcDbObjectId reference = add(std::move(array));
    const std::vector<AcDbObjectId> made = explode(reference);
    EXPECT_EQ(made.size(), 4U);
    const AcDbExtents box = boxOf(made);
    EXPECT_LT(box.minPoint().distanceTo(AcGePoint3d(-7, 0, 0)), 1e-9);
    EXPECT_LT(box.maxPoint().distanceTo(AcGePoint3d(0, 11, 0)), 1e-9);
}

TEST_F(Exploder, HonoursClipsAtEveryLevel) {
    const AcDbObjectId inner = addBlock(L"INNER");
    const AcDbObjectId outer = addBlock(L"OUTER");
    addLine({-10, 0, 0}, {10, 0, 0}, L"0", L"INNER");
    const AcDbObjectId nested = addReference(inner, {5, 0, 0}, L"0", L"OUTER");
    clip(nested, {{{-4, -1}, {8, 1}}});
    const AcDbObjectId reference = addReference(outer, {100, 0, 0});
    change(reference, [](AcDbBlockReference& r) { r.setScaleFactors(AcGeScale3d(2, 3, 1)); });
    clip(reference, {{{2, -1}, {30, 1}}});
    const auto ends = [&](const AcUtBlockRefExploderParam& param) {
        const std::vector<AcDbObjectId> made = explode(reference, param);
        EXPECT_EQ(made.size(), 1U);
        const ReadHandle<AcDbLine> line(made.at(0));
        return std::pair(line->startPoint().x, line->endPoint().x);
    };
    // 5 - 4 to 5 + 8 from within, 2 on from without; doubled and moved.
    const auto [start, end] = ends({});
    EXPECT_NEAR(start, 104, 1e-9);
    EXPECT_NEAR(end, 126, 1e-9);
    AcUtBlockRefExploderParam whole;
    whole.clips = false;
    EXPECT_EQ(ends(whole), std::pair(90.0, 130.0));
}

TEST_F(Exploder, PassesOverClipsThatAreOff) {
    const AcDbObjectId block = addBlock(L"B");
    addLine({0, 0, 0}, {10, 0, 0}, L"0", L"B");
    addLine({0, 0, 5}, {8, 0, 5}, L"0", L"B");
    const AcDbObjectId off = addReference(block);
    clip(off, {{{-1, -1}, {1, 1}}, false, false});
    EXPECT_THAT(lines(explode(off)), ElementsAre(L"0 10", L"0 8"));
    const AcDbObjectId low = addReference(block);
    clip(low, {{{-1, -1}, {20, 1}}, false, true, 1.0, -1.0});
    EXPECT_THAT(lines(explode(low)), ElementsAre(L"0 10")) << "the other is above the front plane";
}

TEST_F(Exploder, TurnsAttributesIntoTexts) {
    const AcDbObjectId block = addBlock(L"B");
    const auto definition = [&](bool constant) {
        auto made = std::make_unique<AcDbAttributeDefinition>();
        made->setTextString(constant ? L"fixed" : L"asked for");
        made->setTag(L"T");
        made->setHeight(2);
        made->setConstant(constant);
        add(std::move(made), L"B");
    };
    definition(true);
    definition(false);
    const AcDbObjectId reference = addReference(block, {}, L"SIGN");
    change(reference, [&](AcDbBlockReference& r) {
        auto attribute = std::make_unique<AcDbAttribute>();
        attribute->setTextString(L"W-12");
        attribute->setTag(L"T");
        attribute->setHeight(2);
        attribute->setPosition(AcGePoint3d(4, 5, 0));
        attribute->setLayer(database()->layerZero());
        AcDbObjectId id;
        ASSERT_EQ(r.appendAttribute(id, attribute.get()), Acad::eOk);
        attribute.release()->close();
    });
    std::vector<std::wstring> texts;
    for (const AcDbObjectId& id : explode(reference)) {
        const ReadHandle<AcDbText> text(id);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->isA(), AcDbText::desc());
        EXPECT_EQ(AcUtSymTbl::GetStyleName(text->layerId()), L"SIGN");
        texts.emplace_back(text->textStringConst());
    }
    EXPECT_THAT(texts, UnorderedElementsAre(L"fixed", L"W-12"));
}

TEST_F(Exploder, EndsWhereABlockHoldsItself) {
    const AcDbObjectId block = addBlock(L"B");
    addLine({0, 0, 0}, {1, 0, 0}, L"0", L"B");
    addReference(block, {5, 0, 0}, L"0", L"B");
    EXPECT_THAT(lines(explode(addReference(block))), ElementsAre(L"0 1"));
}

TEST_F(Exploder, RefusesMoreThanThereIsRoomFor) {
    AcDbObjectId inner = addBlock(L"B0");
    addLine({0, 0, 0}, {1, 0, 0}, L"0", L"B0");
    for (int level = 1; level <= 12; ++level) {
        const std::wstring name = L"B" + std::to_wstring(level);
        const AcDbObjectId block = addBlock(name.c_str());
        for (int i = 0; i < 10; ++i)
            addReference(inner, {1.0 * i, 0, 0}, L"0", name.c_str());
        inner = block;
    }
    addLine({0, 0, 0}, {7, 0, 0}, L"RARE", L"B12");
    const AcDbObjectId top = addReference(inner);
    AcDbObjectIdArray made;
    EXPECT_EQ(AcUtBlockReferenceExploder({}).explode(top, made), Acad::eOutOfRange);
    EXPECT_TRUE(made.isEmpty());

    AcUtBlockRefExploderParam chosen;
    chosen.layers = {L"rare"};
    EXPECT_THAT(lines(explode(top, chosen)), ElementsAre(L"RARE 7"))
        << "what is not chosen is not walked";
    AcUtBlockRefExploderParam flat;
    flat.nested = false;
    EXPECT_EQ(explode(top, flat).size(), 11U);
}

TEST_F(Exploder, RefusesWhatIsNoReference) {
    AcUtBlockReferenceExploder exploder({});
    AcDbObjectIdArray made;
    EXPECT_EQ(exploder.explode(addMark(1), made), Acad::eNotThatKindOfClass);
    EXPECT_EQ(exploder.explode(AcDbObjectId::kNull, made), Acad::eNullObjectId);
    const AcDbObjectId reference = addReference(addBlock(L"B"));
    const ReadHandle<AcDbBlockTableRecord> busy(database()->currentSpaceId());
    EXPECT_EQ(exploder.explode(reference, made), Acad::eWasOpenForRead);
    EXPECT_TRUE(made.isEmpty());
}

} // namespace
