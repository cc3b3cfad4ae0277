#include "OrnBoard/layers.h"

#include <gmock/gmock.h>

#include "OrnBoard/layers_report.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using NumberedLayers = test_support::SessionTest;

TEST_F(NumberedLayers, AreMadeWhereTheyAreMissing) {
    const auto before = board::listNumberedLayers(database());
    ASSERT_GE(before.size(), 2U);
    addLayer(before[0].settings.name);
    EXPECT_TRUE(board::listNumberedLayers(database())[0].inDrawing);

    const unsigned int first = before[0].code;
    const unsigned int second = before[1].code;
    const board::LayersMade some = board::makeNumberedLayers(database(), {first, second, 99999});
    ASSERT_EQ(some.made.size(), 1U);
    EXPECT_EQ(some.made[0].code, second);
    EXPECT_THAT(some.refused, ElementsAre(99999));

    const board::LayersMade rest = board::makeNumberedLayers(database(), {});
    EXPECT_EQ(rest.made.size(), before.size() - 2);
    EXPECT_THAT(rest.refused, IsEmpty());
    for (const board::NumberedLayer& layer : board::listNumberedLayers(database()))
        EXPECT_TRUE(layer.inDrawing);
}

TEST_F(NumberedLayers, AreReportedWithTheirProperties) {
    const std::vector<board::NumberedLayer> layers = {
        {1, {.name = L"板", .color = 3, .linetype = L"DASHED", .lineWeight = 30}, true},
        {20, {.name = L"X", .plots = false}, false}};
    EXPECT_EQ(board::layersReport(layers),
              L"Code  Layer  Color  Linetype    Weight mm  Plotted  In drawing\n"
              L"   1  板         3  DASHED           0.30  yes      yes\n"
              L"  20  X          7  Continuous    default  no       no\n");
    EXPECT_EQ(board::layersMadeReport({{}, {7}}), L"0 layers made.\nNo layer with the number 7.\n");
}

} // namespace
