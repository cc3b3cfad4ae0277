// Which layer lies under a point: at the top level, in nested references, under clips.
#include <numbers>

#include <gmock/gmock.h>

#include <dbdim.h>
#include <dbents.h>

#include "../blocks/clipped_reference.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "ed/viewports.h"
#include "layerpick/layer_sets.h"
#include "layerpick/pick_layer.h"
#include "square_hatch.h"

namespace {

using std::numbers::pi;

class LayerPick : public ClippedReferences {
protected:
    // A unit a pixel, so that the pick square has sides of 7 and reaches 3.5 to either side.
    LayerPick() { setViewHeight(900.0); }

    void setViewHeight(double height) {
        headless::View view = headless::currentView(*database());
        view.height = height;
        headless::setCurrentView(*database(), view);
    }
    template <class T>
    AcDbObjectId put(T* entity, const wchar_t* layer, const wchar_t* block = ACDB_MODEL_SPACE) {
        std::unique_ptr<T> owned(entity);
        owned->setLayer(addLayer(layer));
        return add(std::move(owned), block);
    }
    AcDbObjectId text(const AcGePoint3d& at, double height, const wchar_t* layer,
                      const wchar_t* block) {
        return put(new AcDbText(at, L"HH", AcDbObjectId::kNull, height), layer, block);
    }
    AcDbObjectId blockId(const wchar_t* name) {
        AcDbObjectId id;
        EXPECT_EQ(ReadHandle<AcDbBlockTable>(database()->blockTableId())->getAt(name, id),
                  Acad::eOk);
        return id;
    }
    AcDbObjectId refer(const wchar_t* name, const AcGePoint3d& at, const wchar_t* layer,
                       const wchar_t* in = ACDB_MODEL_SPACE, const AcGeScale3d& scale = {},
                       double rotation = 0.0) {
        auto* const reference = new AcDbBlockReference(at, blockId(name));
        reference->setScaleFactors(scale);
        reference->setRotation(rotation);
        return put(reference, layer, in);
    }
    /// A square area with its lower left corner at x, y.
    AcDbObjectId hatch(double x, double y, double side, const wchar_t* layer,
                       const wchar_t* in = ACDB_MODEL_SPACE) {
        return hatch(squareLoop(x, y, side), layer, in);
    }
    AcDbObjectId hatch(const enttest::Groups& loop, const wchar_t* layer, const wchar_t* in) {
        return put(hatchOf(*database(), loop).release(), layer, in);
    }
    std::wstring pick(double x, double y, int mode = 0, int hatches = 0, int descend = 1) const {
        return std::wstring(
            kelmor::GetEntLayerByPt(AcGePoint3d(x, y, 0), excluded_, descend, mode, hatches));
    }

    std::set<CString> excluded_;
};

TEST_F(LayerPick, PlainEntitiesComeFirstThenReferencesThenHatches) {
    addBlock(L"B");
    addLine({0, 0, 0}, {10, 0, 0}, L"IN", L"B");
    refer(L"B", {0, 0, 0}, L"WALL");
    EXPECT_EQ(pick(5, 1), L"IN");
    EXPECT_EQ(pick(5, 1, 0, 0, 0), L"WALL") << "the reference itself, not looked into";
    hatch(-50, -50, 100, L"AREA");
    EXPECT_EQ(pick(5, 1), L"IN");
    EXPECT_EQ(pick(30, 30), L"AREA") << "whether or not hatches in blocks count";
    addLine({0, 2, 0}, {10, 2, 0}, L"OLD");
    EXPECT_EQ(pick(5, 1), L"OLD");
    addLine({0, 3, 0}, {10, 3, 0}, L"0");
    EXPECT_EQ(pick(5, 1), L"0") << "the newest, as it is";
    excluded_ = {L"0", L"OLD"};
    EXPECT_EQ(pick(5, 1), L"0") << "exclusion is for what is inside references";
    EXPECT_EQ(pick(500, 500), L"");
}

TEST_F(LayerPick, HeapsOfReferencesAreLookedIntoOnce) {
    addBlock(L"HEAP0");
    put(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 50.0), L"RING", L"HEAP0");
    for (int level = 1; level <= 12; ++level) {
        const std::wstring below = L"HEAP" + std::to_wstring(level - 1);
        const std::wstring name = L"HEAP" + std::to_wstring(level);
        addBlock(name.c_str());
        for (int i = 0; i < 10; ++i)
            refer(below.c_str(), {0, 0, 0}, L"0", name.c_str());
    }
    refer(L"HEAP12", {0, 0, 0}, L"0");
    EXPECT_EQ(pick(0, 0), L"") << "within all boxes, on none of 10^12 circles";
    EXPECT_EQ(pick(50, 0), L"RING");
}

TEST_F(LayerPick, TheAreaOfThePickIsAnOctagon) {
    addLine({3.4, 3.4, 0}, {50, 3.4, 0}, L"CORNER"); // starts inside the square's corner
    EXPECT_EQ(pick(0, 0), L"CORNER");
    addLine({-50, 4.8, 0}, {50, 4.8, 0}, L"ABOVE"); // 3.5 times the root of 2 is 4.95
    EXPECT_EQ(pick(0, 0), L"ABOVE");
}

TEST_F(LayerPick, LayerZeroTakesTheLayerOfWhatHoldsIt) {
    addBlock(L"INNER");
    addLine({0, 0, 0}, {10, 0, 0}, L"0", L"INNER");
    addBlock(L"OUTER");
    refer(L"INNER", {100, 0, 0}, L"0", L"OUTER");
    refer(L"INNER", {200, 0, 0}, L"DOOR", L"OUTER");
    refer(L"OUTER", {0, 0, 0}, L"WALL");
    refer(L"OUTER", {0, 100, 0}, L"0");
    EXPECT_EQ(pick(105, 0), L"WALL");
    EXPECT_EQ(pick(205, 0), L"DOOR");
    EXPECT_EQ(pick(105, 100), L"0");
    EXPECT_EQ(pick(205, 100), L"DOOR");
    excluded_ = {L"WALL"};
    EXPECT_EQ(pick(105, 0), L"");
    EXPECT_EQ(pick(205, 0), L"DOOR") << "a reference on an excluded layer is still looked into";
}

TEST_F(LayerPick, ThePointIsCarriedDownAndTheApertureShrinks) {
    WriteHandle<AcDbBlockTableRecord>(addBlock(L"B"))->setOrigin({5, 5, 0});
    addLine({5, 15, 0}, {25, 15, 0}, L"IN", L"B");
    const struct {
        const char* name;
        AcGeScale3d scale;
        double rotation;
        AcGePoint3d on; // a point on the line as it is drawn
    } cases[] = {
        {"plain", {1, 1, 1}, 0.0, {1010, 10, 0}},
        {"turned about the base point", {1, 1, 1}, pi / 2, {990, 10, 0}},
        {"larger", {3, 3, 3}, 0.0, {1030, 30, 0}},
        {"larger and turned", {2, 2, 2}, pi / 2, {980, 20, 0}},
        {"mirrored", {-1, 1, 1}, 0.0, {990, 10, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcDbObjectId id =
            refer(L"B", {1000, 0, 0}, L"0", ACDB_MODEL_SPACE, c.scale, c.rotation);
        EXPECT_EQ(pick(c.on.x, c.on.y), L"IN");
        const WriteHandle<AcDbEntity> reference(id);
        reference->erase();
    }
    // The square's half side is 3.5 in the world, so 0.875 in a block four times as large.
    const AcDbObjectId large = refer(L"B", {1000, 0, 0}, L"0", ACDB_MODEL_SPACE, {4, 4, 4});
    const auto inside = [&](double y) {
        const ReadHandle<AcDbEntity> reference(large);
        return std::wstring(kelmor::GetBlockInsideLayerByPt(
            reference.get(), AcGePoint3d(1040, y, 0), excluded_, 0, 0));
    };
    EXPECT_EQ(inside(40 + 3.4), L"IN");
    EXPECT_EQ(inside(40 + 3.6), L"");
}

TEST_F(LayerPick, UnevenScalesAreUndoneBeforeTheRotation) {
    addBlock(L"B");
    addLine({10, 0, 0}, {20, 0, 0}, L"IN", L"B");
    const AcDbObjectId id = refer(L"B", {0, 0, 0}, L"0", ACDB_MODEL_SPACE, {2, 0.5, 1}, pi / 2);
    const auto at = [&](double x, double y) {
        const ReadHandle<AcDbEntity> reference(id);
        return std::wstring(kelmor::GetBlockInsideLayerByPt(reference.get(), AcGePoint3d(x, y, 0),
                                                            excluded_, 0, 0));
    };
    // Drawn from (0, 20) to (0, 40). Without the scales (0, 30) becomes (0, 60), turned (60, 0).
    EXPECT_EQ(at(0, 30), L"");
    EXPECT_EQ(at(0, 7.5), L"IN") << "(0, 15), turned (15, 0)";
}

TEST_F(LayerPick, CurvesAreHitByTheSquaresEdges) {
    addBlock(L"B");
    addLine({-1, 0, 0}, {1, 0, 0}, L"SHORT", L"B"); // wholly inside the square
    addLine({20, 0, 7}, {40, 0, 7}, L"HIGH", L"B");
    put(new AcDbCircle({100, 0, 0}, AcGeVector3d::kZAxis, 20), L"RING", L"B");
    refer(L"B", {0, 0, 0}, L"0");
    EXPECT_EQ(pick(0, 0), L"");
    EXPECT_EQ(pick(4, 0), L"SHORT");
    EXPECT_EQ(pick(30, 0), L"HIGH") << "at another height";
    EXPECT_EQ(pick(100, 19), L"RING");
    EXPECT_EQ(pick(100, 0), L"") << "in the box of the circle only";
}

TEST_F(LayerPick, ModesChooseWhatIsLookedAtInside) {
    addBlock(L"INNER");
    addLine({0, 0, 0}, {10, 0, 0}, L"NESTED", L"INNER");
    addBlock(L"B");
    text({0, -1, 0}, 2, L"TEXT", L"B");
    addLine({0, 2, 0}, {10, 2, 0}, L"LINE", L"B");
    refer(L"INNER", {100, 0, 0}, L"0", L"B");
    refer(L"B", {0, 0, 0}, L"0");
    EXPECT_EQ(pick(1, 0), L"TEXT") << "the first in the block's order";
    EXPECT_EQ(pick(1, 0, 1), L"LINE");
    EXPECT_EQ(pick(1, 0, 2), L"TEXT");
    EXPECT_EQ(pick(8, 2, 2), L"");
    EXPECT_EQ(pick(105, 0, 1), L"NESTED");
    EXPECT_EQ(pick(8, 2, 9), L"LINE") << "any other mode takes all";
}

TEST_F(LayerPick, AttributesStandWhereTheReferenceDoes) {
    addBlock(L"B");
    addLine({0, 50, 0}, {10, 50, 0}, L"IN", L"B");
    const AcDbObjectId id = refer(L"B", {1000, 0, 0}, L"WALL", ACDB_MODEL_SPACE, {5, 5, 5});
    {
        const WriteHandle<AcDbBlockReference> reference(id);
        auto* const attribute = new AcDbAttribute;
        attribute->setPosition({1000, 0, 0});
        attribute->setHeight(10.0);
        attribute->setTextString(L"HH");
        attribute->setLayer(database()->layerZero());
        ASSERT_EQ(reference->appendAttribute(attribute), Acad::eOk);
        attribute->close();
    }
    EXPECT_EQ(pick(1003, 5), L"WALL");
    EXPECT_EQ(pick(1003, 5, 1), L"") << "not among curves";
    EXPECT_EQ(pick(1003, 12), L"") << "the point itself must be in its box";
    excluded_ = {L"WALL"};
    EXPECT_EQ(pick(1003, 5), L"");
}

TEST_F(LayerPick, TheSmallestAreaAroundThePointWins) {
    addBlock(L"B");
    hatch(0, 0, 100, L"LARGE", L"B");
    hatch(20, 20, 40, L"SMALL", L"B");
    hatch(10, 10, 60, L"0", L"B");
    refer(L"B", {1000, 0, 0}, L"WALL");
    EXPECT_EQ(pick(1040, 40), L"") << "areas only count when asked for";
    EXPECT_EQ(pick(1040, 40, 0, 1), L"SMALL");
    EXPECT_EQ(pick(1015, 30, 0, 1), L"WALL");
    EXPECT_EQ(pick(1001, 50, 0, 1), L"LARGE") << "by its edge";
    excluded_ = {L"SMALL"};
    EXPECT_EQ(pick(1040, 40, 0, 1), L"WALL");
    EXPECT_EQ(pick(1040, 40, 1, 1), L"") << "not among curves";
}

TEST_F(LayerPick, LoopsOfEdgesAreAreasToo) {
    addBlock(L"B");
    // A circle of radius 50, and of radius 20 as an ellipse.
    hatch("92=1|93=1|72=2|10=0,0|40=50|50=0|51=360|73=1", L"DISC", L"B");
    hatch("92=1|93=1|72=3|10=0,0|11=20,0|40=1|50=0|51=360|73=1", L"OVAL", L"B");
    refer(L"B", {1000, 0, 0}, L"0");
    EXPECT_EQ(pick(1000, 0, 0, 1), L"OVAL");
    EXPECT_EQ(pick(1030, 30, 0, 1), L"DISC");
    EXPECT_EQ(pick(1040, 40, 0, 1), L"") << "in the box only";
}

TEST_F(LayerPick, TextsAndDimensionsAreHitByTheirPieces) {
    setViewHeight(90.0); // The square has sides of 0.7.
    addBlock(L"B");
    auto* const note = new AcDbMText;
    note->setLocation({0, 0, 0});
    note->setTextHeight(10.0);
    note->setContents(L"HHHHHHHHHH\\PH");
    put(note, L"NOTE", L"B");
    refer(L"B", {1000, 0, 0}, L"0");
    EXPECT_EQ(pick(1050, -5), L"NOTE");
    EXPECT_EQ(pick(1004, -22), L"NOTE");
    EXPECT_EQ(pick(1050, -22), L"") << "right of the short second line";

    addBlock(L"D7");
    addLine({0, 100, 0}, {50, 100, 0}, L"0", L"D7");
    text({20, 110, 0}, 5.0, L"0", L"D7");
    auto* const dimension = new AcDbAlignedDimension;
    dimension->setDimBlockId(blockId(L"D7"));
    put(dimension, L"SIZES", L"B");
    EXPECT_EQ(pick(1040, 100), L"SIZES") << "on its line";
    EXPECT_EQ(pick(1022, 112), L"SIZES") << "on its text";
    EXPECT_EQ(pick(1040, 105), L"") << "between them";
}

TEST_F(LayerPick, ClipsHideWhatLiesBeyondThem) {
    addBlock(L"B");
    addLine({-100, 0, 0}, {100, 0, 0}, L"IN", L"B");
    const AcDbObjectId id = refer(L"B", {1000, 0, 0}, L"0");
    EXPECT_EQ(pick(1060, 0), L"IN");
    clip(id, {{{-50, -50}, {50, 50}}});
    EXPECT_EQ(pick(1060, 0), L"");
    EXPECT_EQ(pick(1040, 0), L"IN");
}

TEST_F(LayerPick, UserCoordinatesAreCarriedToTheWorldInsideReferencesOnly) {
    addBlock(L"B");
    addLine({0, 0, 0}, {10, 0, 0}, L"IN", L"B");
    const AcDbObjectId id = refer(L"B", {1000, 0, 0}, L"0");
    AcGeMatrix3d moved;
    moved.setToTranslation({1000, 0, 0});
    ASSERT_EQ(acedSetCurrentUCS(moved), Acad::eOk);
    const ReadHandle<AcDbEntity> reference(id);
    EXPECT_EQ(
        std::wstring(kelmor::GetBlockInsideLayerByPt(reference.get(), {5, 0, 0}, excluded_, 0, 0)),
        L"IN");
}

TEST_F(LayerPick, NeverFailsOnWhatIsDamaged) {
    EXPECT_TRUE(kelmor::GetBlockInsideLayerByPt(nullptr, {}, excluded_, 0, 0).IsEmpty());
    addBlock(L"SELF");
    addLine({0, 0, 0}, {10, 0, 0}, L"IN", L"SELF");
    refer(L"SELF", {1, 1, 0}, L"0", L"SELF");
    const AcDbObjectId id = refer(L"SELF", {0, 0, 0}, L"0");
    EXPECT_EQ(pick(5, 1), L"IN");
    EXPECT_EQ(pick(0, 30), L"");
    {
        const WriteHandle<AcDbBlockReference> reference(id);
        reference->setBlockTableRecord(AcDbObjectId::kNull);
    }
    EXPECT_EQ(pick(5, 1), L"");
    headless::EdState::current().drawingArea = AcGePoint2d(0.0, 0.0);
    EXPECT_EQ(pick(5, 1), L"") << "an infinite aperture";
}

TEST_F(LayerPick, HiddenLayersAreThoseOffOrFrozen) {
    for (const auto& [name, off, frozen] :
         {std::tuple(L"OFF", true, false), std::tuple(L"COLD", false, true),
          std::tuple(L"SHOWN", false, false)}) {
        const WriteHandle<AcDbLayerTableRecord> layer(addLayer(name));
        layer->setIsOff(off);
        EXPECT_EQ(layer->setIsFrozen(frozen), Acad::eOk);
    }
    kelmor::GetAllHideLayerByDwg(excluded_, nullptr);
    EXPECT_EQ(excluded_, (std::set<CString>{L"OFF", L"COLD"}));
}

} // namespace
