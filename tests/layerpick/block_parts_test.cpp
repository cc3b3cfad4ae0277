// Copies of what references show on layers, and the entities of a drawing by their layers.
#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include "../blocks/clipped_reference.h"
#include "OrnCore/zel_dwg.h"
#include "layerpick/block_parts.h"
#include "layerpick/layer_entities.h"
#include "layerpick/layer_highlight.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BlockParts : public ClippedReferences {
protected:
    void line(const wchar_t* block, double y, const wchar_t* layer) {
        addLine(AcGePoint3d(0, y, 0), AcGePoint3d(10, y, 0), layer, block);
    }
    /// "layer x1,y1 x2,y2" of each line, erased again.
    std::vector<std::string> taken(AcDbObjectIdArray ids) {
        std::vector<std::string> all;
        const auto number = [](double value) { return std::to_string(std::lround(value)); };
        for (int i = 0; i < ids.length(); ++i) {
            const ReadHandle<AcDbLine> line(ids[i]);
            if (!line) continue;
            const AcGePoint3d a = line->startPoint();
            const AcGePoint3d b = line->endPoint();
            const CString layer = AcUtSymTbl::GetStyleName(line->layerId());
            all.push_back(std::string(layer.GetString(), layer.GetString() + layer.GetLength()) +
                          " " + number(a.x) + "," + number(a.y) + " " + number(b.x) + "," +
                          number(b.y));
        }
        CZelDwg::ClearEntity(ids);
        EXPECT_TRUE(ids.isEmpty());
        return all;
    }
    std::vector<std::string> parts(AcDbObjectId reference, const wchar_t* layer) {
        return taken(kelmor::CreateBlockSubEntByLayer(reference, layer, 0, nullptr));
    }
    template <class Change>
    void change(AcDbObjectId reference, Change change) {
        const WriteHandle<AcDbBlockReference> open(reference);
        change(*open);
    }
    bool uses(AcDbObjectId reference, const std::vector<CString>& layers) {
        return kelmor::IsBlockInsideUseLayer(reference, layers, 0) != 0;
    }
    std::size_t inModel() { return entitiesOf(database()->modelSpaceId()).size(); }
};

TEST_F(BlockParts, StandWhereTheWholeChainOfReferencesShowsThem) {
    const AcDbObjectId inner = addBlock(L"INNER");
    line(L"INNER", 0, L"WALL");
    line(L"INNER", 1, L"0");
    line(L"INNER", 2, L"OTHER");
    const AcDbObjectId outer = addBlock(L"OUTER");
    const AcDbObjectId nested = addReference(inner, {100, 0, 0}, L"wall", L"OUTER");
    change(nested, [](AcDbBlockReference& r) { r.setRotation(std::numbers::pi / 2); });
    const AcDbObjectId top = addReference(outer, {1000, 0, 0}, L"DOOR");
    change(top, [](AcDbBlockReference& r) { r.setScaleFactors({-2, 2, 1}); });

    // Turned by a quarter, moved, then mirrored and doubled: (x, y) goes to 1000 - 2 (100 - y), 2
    // x.
    EXPECT_THAT(parts(top, L"Wall"), ElementsAre("WALL 800,0 800,20", "WALL 802,0 802,20"))
        << "layer 0 shows the layer of the nested reference";
    EXPECT_THAT(parts(top, L"DOOR"), IsEmpty());
    EXPECT_THAT(parts(nested, L"OTHER"), ElementsAre("OTHER 98,0 98,10"))
        << "of a reference inside a block: as the block has it, in the current space";

    clip(top, {.points = {{97, 5}, {99.5, 50}}});
    EXPECT_THAT(parts(top, L"WALL"), ElementsAre("WALL 802,10 802,20"));
    EXPECT_EQ(inModel(), 1U);
}

TEST_F(BlockParts, OfAReferenceOnASheetStandOnTheSheet) {
    const AcDbObjectId id = addBlock(L"B");
    line(L"B", 0, L"WALL");
    const AcDbObjectId reference = addReference(id, {}, L"0", ACDB_PAPER_SPACE);
    AcDbObjectIdArray made = kelmor::CreateBlockSubEntByLayer(reference, L"WALL", 0, nullptr);
    ASSERT_EQ(made.length(), 1);
    EXPECT_EQ(ReadHandle<AcDbEntity>(made[0])->ownerId(), database()->paperSpaceId());
    CZelDwg::ClearEntity(made);
}

TEST_F(BlockParts, AreLookedForByTheirOwnLayersAtAnyDepth) {
    const AcDbObjectId deep = addBlock(L"DEEP");
    line(L"DEEP", 0, L"Wall");
    line(L"DEEP", 1, L"0");
    AcDbObjectId id = deep;
    for (int i = 0; i < 30; ++i) { // twice each: a walk through all would take 2^30 steps
        const std::wstring name = L"LEVEL" + std::to_wstring(i);
        const AcDbObjectId next = addBlock(name.c_str());
        addReference(id, {}, L"HOLD", name.c_str());
        addReference(id, {}, L"HOLD", name.c_str());
        id = next;
    }
    addReference(id, {}, L"LOOP", L"DEEP"); // a damaged drawing: a block that holds itself
    const AcDbObjectId top = addReference(id, {}, L"TOP");
    const struct {
        const char* name;
        std::vector<CString> layers;
        bool used;
    } cases[] = {{"in any case, thirty levels down", {L"NONE", L"WALL"}, true},
                 {"a nested reference's own layer", {L"hold"}, true},
                 {"in the circle", {L"LOOP"}, true},
                 {"layer 0 as it is", {L"0"}, true},
                 {"not the reference itself", {L"TOP"}, false},
                 {"part of a name", {L"WAL"}, false},
                 {"no layer", {}, false}};
    for (const auto& c : cases)
        EXPECT_EQ(uses(top, c.layers), c.used) << c.name;
    EXPECT_FALSE(uses(AcDbObjectId::kNull, {L"WALL"}));
}

TEST_F(BlockParts, AreFiledUnderTheirLayers) {
    const AcDbObjectId id = addBlock(L"B");
    line(L"B", 0, L"WALL");
    line(L"B", 1, L"DOOR");
    line(L"B", 2, L"0");
    AcDbObjectIdArray references;
    references.append(addReference(id, {0, 0, 0}, L"WALL"));
    references.append(addReference(id, {50, 0, 0}, L"0"));
    std::map<CString, AcDbObjectIdArray> byLayer;
    byLayer[L"WALL"].append(references[0]);
    AcDbObjectIdArray temporary;
    kelmor::CreateBlockEntByLayer({L"wall", L"NONE"}, references, byLayer, temporary, 0);
    EXPECT_EQ(byLayer.size(), 1U);
    EXPECT_EQ(byLayer[L"WALL"].length(), 4) << "behind what was there";
    EXPECT_THAT(taken(temporary), ElementsAre("WALL 0,0 10,0", "WALL 0,2 10,2", "WALL 50,0 60,0"));
}

TEST_F(BlockParts, EntitiesOfAllSpacesAreFiledUnderTheirLayers) {
    line(ACDB_MODEL_SPACE, 0, L"A");
    line(ACDB_PAPER_SPACE, 1, L"B");
    const AcDbObjectId definition = addBlock(L"BLOCK");
    line(L"BLOCK", 2, L"C");
    const AcDbObjectId reference = addReference(definition, {}, L"A");
    std::map<CString, AcDbObjectIdArray> byLayer;
    AcDbObjectIdArray references;
    kelmor::GetLayerEntAndBlock(CZelDwg::GetDatabaseEntitys(nullptr), byLayer, references, 0);
    EXPECT_EQ(byLayer.size(), 2U) << "not what only stands in a block";
    EXPECT_EQ(byLayer[L"A"].length(), 2);
    EXPECT_EQ(byLayer[L"B"].length(), 1);
    ASSERT_EQ(references.length(), 1);
    EXPECT_EQ(references[0], reference);
}

TEST_F(BlockParts, ClearingALayerTakesItsEntitiesOutOfTheArray) {
    const AcDbObjectId a = addMark(1, L"A");
    const AcDbObjectId b = addMark(2, L"B");
    const AcDbObjectId inUse = addMark(3, L"A");
    AcDbObjectIdArray ids = list({a, b, inUse, a});
    {
        const ReadHandle<AcDbLine> opened(inUse);
        kelmor::ClearLayerEnt(ids, L"A");
        kelmor::ClearLayerEnt(ids, L"b");
    }
    ASSERT_EQ(ids.length(), 3) << "erased ids cannot be asked for their layer";
    EXPECT_EQ(ids[0], a);
    EXPECT_EQ(ids[2], inUse);
    EXPECT_TRUE(a.isErased());
    EXPECT_FALSE(b.isErased()) << "case counts";
    EXPECT_FALSE(inUse.isErased());
}

TEST_F(BlockParts, ShowHighlightedAndAreGoneAfterwards) {
    const AcDbObjectId id = addBlock(L"B");
    line(L"B", 0, L"WALL");
    addReference(id, {}, L"0");
    addMark(1, L"WALL");
    {
        const WriteHandle<AcDbLayerTableRecord> layer(addLayer(L"WALL"));
        layer->setIsLocked(true);
    }
    const auto shown = [this] { return database()->highlights().shown(); };
    {
        layerpick::LayerHighlight highlight;
        highlight.show(L"wall");
        EXPECT_EQ(shown(), 2U);
        highlight.hide(L"WALL");
        EXPECT_EQ(shown(), 0U);
        highlight.show({L"WALL", L"NONE"});
        EXPECT_EQ(shown(), 2U);
        EXPECT_EQ(inModel(), 3U) << "copies are made once";
    }
    EXPECT_EQ(shown(), 0U);
    EXPECT_EQ(inModel(), 2U);
    EXPECT_TRUE(ReadHandle<AcDbLayerTableRecord>(addLayer(L"WALL"))->isLocked());
}

} // namespace
