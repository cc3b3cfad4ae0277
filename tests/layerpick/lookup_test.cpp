// Layers, styles and blocks by number and by name.
#include <gmock/gmock.h>

#include "OrnCore/quill_config.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "layerpick/named_styles.h"
#include "layerpick/numbered_styles.h"
#include "support/product_folder.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Lookup : public test_support::SessionTest {
protected:
    Lookup() {
        product_.putData("quillConfig.json",
                         R"({"layers": [{"code": 1, "name": "板", "color": 3}],
 "textStyles": [{"code": 7, "name": "注释", "font": "gbenor.shx"}],
 "dimensionStyles": [{"first": 100, "second": 3, "third": 0, "textStyle": 7},
                     {"first": 0, "second": 1, "third": 0, "textStyle": 7}]})");
        g_pQuillCfgSet->Reset();
    }

    AcDbObjectId addTextStyle(const wchar_t* name, bool shapes = false) {
        const WriteHandle<AcDbTextStyleTable> table(database()->textStyleTableId());
        auto style = std::make_unique<AcDbTextStyleTableRecord>();
        style->setIsShapeFile(shapes);
        style->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, style.get()), Acad::eOk);
        style.release()->close();
        return id;
    }

    static std::wstring nameOf(AcDbObjectId id) {
        return std::wstring(AcUtSymTbl::GetStyleName(id));
    }

    int colorOf(AcDbObjectId id) {
        const ReadHandle<AcDbLayerTableRecord> layer(id);
        return layer ? layer->color().colorIndex() : -1;
    }

    test_support::ProductFolder product_;
};

TEST_F(Lookup, ByNumberMakesWhatIsMissing) {
    EXPECT_TRUE(kelmor::GetLayerId(L"板", nullptr).isNull());
    const AcDbObjectId layer = kelmor::GetLayerId(1);
    EXPECT_EQ(nameOf(layer), L"板");
    EXPECT_EQ(kelmor::GetLayerId(L"板", database()), layer);
    EXPECT_EQ(kelmor::GetLayerName(1), L"板");
    EXPECT_EQ(nameOf(kelmor::GetTextStyleId(7)), L"注释");
    EXPECT_EQ(nameOf(kelmor::GetDimStyleId(100, 3, 0, nullptr)), L"VANT_100_3");
    AcDbDatabase other;
    EXPECT_EQ(kelmor::GetDimStyleId(100, 3, 0, &other).database(), &other);
    EXPECT_TRUE(kelmor::GetLayerId(2).isNull());
    EXPECT_TRUE(kelmor::GetTextStyleId(2).isNull());
}

TEST_F(Lookup, ServesCallersWithoutClasses) {
    kelmor_create_layer(1);
    const AcDbObjectId layer = kelmor::GetLayerId(L"板", nullptr);
    EXPECT_FALSE(layer.isNull());
    EXPECT_EQ(kelmor_get_layer_id(1), layer);
    EXPECT_TRUE(kelmor_get_layer_id(2).isNull());

    wchar_t* name = nullptr;
    ASSERT_EQ(kelmor_get_layer_name(1, &name), 0);
    EXPECT_STREQ(name, L"板");
    delete[] name;
    wchar_t untouched[] = L"x";
    name = untouched;
    EXPECT_EQ(kelmor_get_layer_name(2, &name), 1);
    EXPECT_EQ(name, untouched);
    EXPECT_EQ(kelmor_get_layer_name(1, nullptr), 1);
}

TEST_F(Lookup, TextStylesWithoutThoseOfShapes) {
    const AcDbObjectId style = addTextStyle(L"仿宋");
    addTextStyle(L"SHAPES", true);
    addTextStyle(L"", true);
    EXPECT_EQ(kelmor::GetTextStyleId(L"仿宋", nullptr), style);
    EXPECT_TRUE(kelmor::GetTextStyleId(L"SHAPES", nullptr).isNull());
    EXPECT_TRUE(kelmor::GetTextStyleId(L"", nullptr).isNull());
    EXPECT_TRUE(kelmor::GetTextStyleId(L"none", nullptr).isNull());
    EXPECT_THAT(kelmor::GetAllTextStyleName(), ElementsAre(L"Standard", L"仿宋", L"SHAPES"));
}

TEST_F(Lookup, DimensionStylesByTheRuleOfTheirNames) {
    EXPECT_EQ(Common::GetDimensionName(100, 3), L"VANT_100_3");
    EXPECT_EQ(Common::GetDimensionName(-1, 0), L"VANT_-1_0");
    const struct {
        const wchar_t* name;
        const wchar_t* style; // empty: none
    } cases[] = {
        {L"VANT_100_3", L"VANT_100_3"},
        {L"ABC_VANT_1", L"VANT_0_1"}, // the mark anywhere; VANT is the number 0
        {L"VANT_100_3_1", L""},
        {L"VANT_100", L""},
        {L"VANT_", L""},
        {L"Standard", L"Standard"},
        {L"standard", L"Standard"},
        {L"VANT", L""},
        {L"vant_100_3", L"VANT_100_3"}, // no mark, but by now there is a style of that name
        {L"vant_0_2", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(CStringA(c.name).GetString());
        EXPECT_EQ(nameOf(Common::GetDimensionId(c.name)), c.style);
    }
    EXPECT_THAT(Common::GetDwgDimStyleName(), ElementsAre(L"Standard", L"VANT_100_3", L"VANT_0_1"));
}

TEST_F(Lookup, BlocksWithTheDocumentLocked) {
    EXPECT_EQ(Common::GetBlockId(L"*model_space"), database()->modelSpaceId());
    EXPECT_TRUE(Common::GetBlockId(L"none").isNull());
    const ReadHandle<AcDbBlockTable> busy(database()->blockTableId());
    EXPECT_TRUE(Common::GetBlockId(L"*Model_Space").isNull());
}

TEST_F(Lookup, LayersAreMadeInTheColorOfANumberedOne) {
    EXPECT_EQ(Common::ExamineAndCreatLayer(L"0", 1), database()->layerZero());
    EXPECT_TRUE(kelmor::GetLayerId(L"板", nullptr).isNull()) << "nobody asked for it yet";
    const AcDbObjectId made = Common::ExamineAndCreatLayer(L"梁", 1);
    EXPECT_EQ(nameOf(made), L"梁");
    EXPECT_EQ(colorOf(made), 3);
    EXPECT_EQ(Common::ExamineAndCreatLayer(L"梁", 2), made);
    EXPECT_EQ(colorOf(Common::ExamineAndCreatLayer(L"柱", 2)), 256) << "by-layer";
}

TEST_F(Lookup, AnswersNothingQuietly) {
    EXPECT_TRUE(AcUtSymTbl::GetStyleName(AcDbObjectId::kNull).IsEmpty());
    EXPECT_TRUE(AcUtSymTbl::GetStyleName(database()->layerTableId()).IsEmpty());
    {
        const WriteHandle<AcDbLayerTable> busy(database()->layerTableId());
        EXPECT_TRUE(kelmor::GetLayerId(L"0", nullptr).isNull());
        EXPECT_TRUE(kelmor::GetLayerId(1).isNull());
    }
    session().closeDrawings();
    EXPECT_TRUE(kelmor::GetLayerId(L"0", nullptr).isNull());
    EXPECT_TRUE(Common::GetBlockId(L"0").isNull());
    EXPECT_TRUE(Common::ExamineAndCreatLayer(L"0", 1).isNull());
    EXPECT_THAT(Common::GetDwgDimStyleName(), IsEmpty());
    EXPECT_EQ(session().output(), L"");
    EXPECT_THAT(session().messageBoxes(), IsEmpty());
}

} // namespace
