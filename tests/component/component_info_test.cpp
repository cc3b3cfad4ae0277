#include "component/component_info.h"

#include <gtest/gtest.h>

namespace {

using Change = void (*)(ComponentInfo&);

struct Difference {
    const char* name;
    Change one;   // applied to one record
    Change other; // applied to the other
    bool equal;
};

void outline(ComponentInfo&) {}
void line(ComponentInfo& c) { c.expressionStyle = 1; }

void expectComparisons(std::initializer_list<Difference> cases, Change base) {
    for (const Difference& c : cases) {
        SCOPED_TRACE(c.name);
        ComponentInfo a;
        ComponentInfo b;
        base(a);
        base(b);
        c.one(a);
        c.other(b);
        EXPECT_EQ(a == b, c.equal);
        EXPECT_EQ(b == a, c.equal);
    }
}

TEST(ComponentInfo, OutlinesAreEqualWhenTheyLookTheSame) {
    const Change none = outline;
    expectComparisons(
        {
            {"two new ones", none, none, true},
            {"shown otherwise", none, line, false},
            {"colour", none, [](auto& c) { c.lineColorIndex = 1; }, false},
            {"linetype", none, [](auto& c) { c.lineType = L"DASHED"; }, false},
            {"case of the linetype", none, [](auto& c) { c.lineType = L"BYLAYER"; }, true},
            {"width", none, [](auto& c) { c.lineWidth = 0; }, false},
            {"hatched or not", none, [](auto& c) { c.setHatch = 0; }, false},
            {"a blank more", none, [](auto& c) { c.hatchName = L"混凝土 "; }, false},
            {"case of the hatch", [](auto& c) { c.hatchName = L"solid"; },
             [](auto& c) { c.hatchName = L"SOLID"; }, false},
            {"hatch colour", none, [](auto& c) { c.hatchColorIndex = 8; }, false},
            {"layer", none, [](auto& c) { c.lineLayerInfo.layerName = L"A"; }, false},
            {"case of the hatch layer", [](auto& c) { c.hatchLayerInfo.layerName = L"a"; },
             [](auto& c) { c.hatchLayerInfo.layerName = L"A"; }, false},
            {"names", none, [](auto& c) { c.groupName = c.typeName = c.styleName = L"x"; }, true},
            {"attributes", none,
             [](auto& c) {
                 c.attributeName = L"x";
                 c.attributeValue1 = c.attributeValue2 = c.attributeValue3 = c.attributeValue4 = 1;
             },
             true},
            {"scales", none, [](auto& c) { c.lineScale = 2, c.hatchScale = 1; }, true},
            {"building", none, [](auto& c) { c.useFloorHeight = 0, c.dryConstructionMethod = 1; },
             true},
            {"the layer's other properties", none,
             [](auto& c) { c.lineLayerInfo.colorIndex = 5, c.hatchLayerInfo.print = 0; }, true},
            {"the line not shown", none,
             [](auto& c) {
                 c.simpleLineColorIndex = 1, c.simpleLineType = L"x", c.simpleLineWidth = 5;
                 c.setSimpleLineRealWidth = 0, c.simpleLineLayerInfo.layerName = L"x";
             },
             true},
        },
        outline);
}

TEST(ComponentInfo, WidthsOfSimpleLinesCountOnlyBetweenRealAndNot) {
    const Change none = outline;
    const Change notReal = [](ComponentInfo& c) { c.setSimpleLineRealWidth = 0; };
    expectComparisons(
        {
            {"two lines", none, none, true},
            {"any style but 0 is a line, but not the same", none,
             [](auto& c) { c.expressionStyle = 2; }, false},
            {"colour", none, [](auto& c) { c.simpleLineColorIndex = 1; }, false},
            {"layer", none, [](auto& c) { c.simpleLineLayerInfo.layerName = L"A"; }, false},
            {"both real: widths apart", none, [](auto& c) { c.simpleLineWidth = 5; }, true},
            {"both real: case of the linetype", none,
             [](auto& c) { c.simpleLineType = L"BYLAYER"; }, false},
            {"real and not", none, notReal, true},
            {"real and not: widths apart", none,
             [](auto& c) { c.setSimpleLineRealWidth = 0, c.simpleLineWidth = 5; }, false},
            {"real and not: case of the linetype", none,
             [](auto& c) { c.setSimpleLineRealWidth = 0, c.simpleLineType = L"BYLAYER"; }, true},
            {"real and not: linetype", none,
             [](auto& c) { c.setSimpleLineRealWidth = 0, c.simpleLineType = L"DASHED"; }, false},
            {"neither real: widths apart", notReal,
             [](auto& c) { c.setSimpleLineRealWidth = 0, c.simpleLineWidth = 5; }, true},
            {"the outline not shown", none,
             [](auto& c) { c.lineColorIndex = 1, c.lineWidth = 5, c.hatchName = L"x"; }, true},
        },
        line);
}

TEST(LayerInfo, IsEqualInEveryField) {
    using ChangeLayer = void (*)(LayerInfo&);
    const ChangeLayer changes[] = {
        [](LayerInfo& l) { l.layerName = L"a"; },         [](LayerInfo& l) { l.colorIndex = 7; },
        [](LayerInfo& l) { l.lineType = L"Continuous"; }, [](LayerInfo& l) { l.lineWidth = 25; },
        [](LayerInfo& l) { l.transparency = 50; },        [](LayerInfo& l) { l.print = 0; },
        [](LayerInfo& l) { l.newVpFreeze = 1; },
    };
    EXPECT_TRUE(LayerInfo() == LayerInfo());
    for (const ChangeLayer change : changes) {
        LayerInfo changed;
        change(changed);
        EXPECT_FALSE(changed == LayerInfo());
        EXPECT_TRUE(LayerInfo(changed) == changed);
    }
}

} // namespace
